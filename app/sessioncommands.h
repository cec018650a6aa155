#pragma once

#include "app/sessiontext.h"

#include <QObject>
#include <QString>

namespace ui
{
class Prompter;
}

namespace app
{

class ResultsTable;
struct SharedState;

/// The file menu: empties, opens and saves the session, which consists of sheet, panel, settings and results.
class SessionCommands : public QObject
{
    Q_OBJECT

public:
    /// The objects on which the commands work; they must outlive the commands.
    struct Dependencies {
        SheetText& sheet;
        PanelEditor& panel;
        SharedState& shared;
        ResultsTable& results;
        ui::Prompter& prompter;
    };
    explicit SessionCommands(const Dependencies& dependencies, QObject* parent = nullptr);

    void mnuNew_Click();
    void mnuOpen_Click();
    /// Opens a file as if it had been chosen in the dialog, but a dropped file that is not a session changes nothing.
    void openDropped(const QString& path);
    void mnuSaveAs_Click();

    /// The file of the session; empty if it has none yet.
    const QString& path() const { return m_path; }
    void setPath(const QString& path);

signals:
    /// A session was opened: the settings dialog follows.
    void opened();
    /// The file of the session, which the caption of the main window shows; empty if it has no file yet.
    void pathChanged(const QString& path);

private:
    enum class IfForeign { ClearResults, KeepResults };
    void open(const QString& path, IfForeign ifForeign);
    Session session() const;
    void show(const Session& session);

    Dependencies m_dependencies;
    QString m_path; // where "Save as" begins
};

/// Caption of the main window with the session's file: only the end of a long path, nothing for an empty path.
QString captionWithFile(const QString& title, const QString& path);

} // namespace app
