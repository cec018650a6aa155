#pragma once

#include "app/commandinput.h"
#include "app/exportwindow.h"
#include "app/trustcommands.h"
#include "exports/headrows.h"

namespace app
{

/// Writes tables of numbers to files. A file appears whole or not at all, and never replaces another one unasked.
class ExportCommands : public QObject
{
    Q_OBJECT

public:
    ExportCommands(const CommandInput& input, const TrustCommands& fits, ExportWindow& window);

    void mnuExport_Click();
    /// The file of the session, from which proposed names begin; may be empty.
    void setSessionPath(const QString& path) { m_sessionPath = path; }

private:
    exports::Rows rowsOf(ExportedTable table) const;
    exports::Head headOf(ExportedTable table) const;
    QByteArray fileOf(ExportedTable table, const ExportForm& form) const;
    QString nameOf(const ExportedTableRow& row) const;
    void save(ExportedTable table, const ExportForm& form);
    void saveAll(const ExportForm& form);
    bool write(const QString& path, const QByteArray& bytes);

    CommandInput m_input;
    const TrustCommands& m_fits;
    ExportWindow& m_window;
    QString m_sessionPath;
};

} // namespace app
