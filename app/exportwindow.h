#pragma once

#include "app/exportedtables.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;

namespace app
{

/// How tables become files.
struct ExportForm {
    char separator = ',';
    bool withHead = true;
};

/// The choice of a table and of its form. It announces what is wanted and shows what was done.
class ExportWindow : public QWidget
{
    Q_OBJECT

public:
    ExportWindow();

    void showOutcome(const QString& text);

signals:
    void tableWanted(app::ExportedTable table, const app::ExportForm& form);
    void allWanted(const app::ExportForm& form);

private:
    void layOut();
    ExportForm form() const;

    QComboBox *m_table, *m_separator;
    QCheckBox* m_head;
    QLabel* m_outcome;
    QPushButton *m_save, *m_saveAll, *m_close;
};

} // namespace app
