#pragma once

#include "plot/outputwindow.h"
#include "plot/tabletext.h"

class QLineEdit;

namespace ui
{
class Grid;
}

namespace plot
{

/// A table window. The grid shows the texts; the copy for the clipboard is made from a copy of them that the user
/// cannot change.
class SpreadSheet : public OutputWindow, public TableSink
{
    Q_OBJECT

public:
    explicit SpreadSheet(QWidget* parent = nullptr);

    void ClearSheet() override;
    void SetTitle(std::string_view title) override;
    /// Held within 1 and what the table keeps, 501 rows and 101 columns.
    void Rows(int count) override;
    void Cols(int count) override;
    void Locate(int column, int row) override;
    void Row(int row);
    void col(int column);
    /// Writes the current cell; the grid grows to hold it. Nothing beyond what the table keeps may be written.
    void Value(std::string_view txt) override;
    void setRedraw(bool on) override;
    /// Reserved: writes no file.
    void SaveCSV(std::string_view fname);

private:
    void setUpMenu();
    void showPosition();
    void currentCellMoved();
    void copyTable();

    ui::Grid* m_grid;
    QLineEdit* m_cellText; // the current cell's text, also where its column is too narrow
    TableText m_texts;
    int m_row = 1; // the next Value goes here
    int m_column = 1;
    bool m_redraw = true;
};

} // namespace plot
