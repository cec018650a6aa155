#pragma once

#include "app/importcolumnsbox.h"
#include "app/importtablebox.h"
#include "app/sheetimport.h"
#include "ui/elided.h"

#include <QDialog>

class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;

namespace ui
{
class Grid;
}

namespace app
{

/// Shows the samples of a table as they will stand in the sheet, with all choices of how to read it. Changes nothing
/// itself: its owner writes columns() when the window is accepted.
class ImportWindow : public QDialog
{
    Q_OBJECT

public:
    /// `sheet` must outlive the window.
    explicit ImportWindow(const SheetText& sheet, QWidget* parent = nullptr);

    /// Shows a text of UTF-8 with LF as its line end. `origin` says where it comes from. Choices for a table of the
    /// same form stay, except the decimal sign: which number "1,000" is cannot be decided beforehand.
    void showTable(const std::string& text, const QString& origin);

    /// The whole sheet after the import, and the number of its first imported column.
    std::vector<imports::SampleColumn> columns() const;
    int firstColumn() const;
    /// The volumes added before each sample of columns(); empty if the table has concentrations instead.
    std::vector<std::string> addedVolumes() const;

    /// The sheet has changed.
    void refresh();

private:
    void nameControls();
    void layOut();
    void connectControls();
    void readTable();
    Placing placing() const;
    int room() const;
    void showPreview();
    QString complaint() const;
    bool hasVolumes() const;
    void showState();

    const SheetText& m_sheet;
    std::string m_text;
    QString m_origin;
    imports::Choices m_choices;
    imports::FoundTable m_found; // without any choice, to recognise a table of the same form
    imports::FoundTable m_table;
    imports::SampleList m_list;

    ImportTableBox* m_tableBox;
    ImportColumnsBox* m_columnsBox;
    QLineEdit* m_samples;
    QRadioButton* m_replace;
    QRadioButton* m_add;
    ui::Grid* m_preview;
    QPlainTextEdit* m_remarks;
    ui::ElidedLabel* m_state;
    QPushButton* m_ok;
    QPushButton* m_cancel;
    bool m_samplesTyped = false; // the user has chosen samples; otherwise the first are chosen
};

} // namespace app
