#pragma once

#include "plot/outputwindow.h"
#include "plot/tablecells.h"
#include "plot/tablesink.h"

class QLineEdit;

namespace ui
{
class Grid;
}

namespace plot
{

/// A table window. The grid shows the texts; the clipboard gets a separate copy of the texts that the user cannot
/// change.
class SpreadSheet : public OutputWindow, public TableSink
{
    Q_OBJECT

public:
    explicit SpreadSheet(QWidget* parent = nullptr);

    void ClearSheet() override;
    void SetTitle(std::string_view title) override;
    /// Clamped to 1..501 rows and 1..101 columns, the size of the table.
    void Rows(int count) override;
    void Cols(int count) override;
    void Locate(int column, int row) override;
    void Row(int row);
    void col(int column);
    /// Writes the current cell; the grid grows to hold it. The cell must lie within the largest size of the table.
    void Value(std::string_view txt) override;
    void setRedraw(bool on) override;
    /// Writes no file. The name is reserved for a later export, so it stays although nothing calls it.
    void SaveCSV(std::string_view fname);

private:
    void setUpMenu();
    void showPosition();
    void currentCellMoved();
    void copyTable();

    ui::Grid* m_grid;
    QLineEdit* m_cellText; // the current cell's text, which the column may be too narrow to show
    TableCells m_texts;
    int m_row = 1; // the next Value goes here
    int m_column = 1;
    bool m_redraw = true;
};

} // namespace plot
