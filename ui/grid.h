#pragma once

#include <QTableView>

class QAbstractButton;

namespace ui
{

class TitledCells;
class TitleMouse;

/// A grid of text cells with titles in row 0 and column 0. The titles are cells of the model, but headers that stay in
/// view show them. The model holds the texts, the selection model the current cell and the selected block. Texts that
/// are too long for their column are drawn condensed.
class Grid : public QTableView
{
    Q_OBJECT

public:
    explicit Grid(QWidget* parent = nullptr);

    /// Rows and columns, including the title row and the title column. A new grid has one cell, which is current.
    void setCounts(int rows, int columns);
    int rows() const;
    int columns() const;

    /// Outside the grid, reading gives an empty text and writing does nothing.
    QString text(int row, int column) const;
    void setText(int row, int column, const QString& text);

    /// A remark tints its cell and marks the corner; tooltip and screen reader tell it. An empty one removes it.
    void setRemark(int row, int column, const QString& remark);
    QString remark(int row, int column) const;
    /// Shows the number of each column that has no title.
    void numberColumns();
    /// From now on a click on a title selects its row or column, and the corner all cells. The titles themselves stay
    /// out of the selection.
    void selectByTitles();

    /// Never so low that rows would be out of view.
    void showAllRows();

    /// Wider where the font is larger than usual.
    void setColumnTwips(int column, int twips);

    /// Makes a cell the current and only selected cell. It may be a title cell.
    void selectCell(int row, int column);
    /// The current cell is the block's first corner. Cells outside the grid change nothing.
    void selectBlock(int row, int column, int farRow, int farColumn);
    int currentRow() const;
    int currentColumn() const;
    /// The corner of the selected block opposite the current cell.
    int farRow() const;
    int farColumn() const;

    /// Turns repainting off while cells are filled, and on again afterwards.
    void setRedraw(bool on);

    /// All cells without the titles.
    void selectAll() override;

    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

signals:
    void cellChosen(); // by a click on a cell or a title, or by a key, even if the cell was current already
    void currentCellMoved();
    /// A printable character (code above 32) or a text that an input method committed.
    void textTyped(const QString& text);
    void deletePressed();
    void editWanted(); // of the present text: by F2, Backspace or a double click on a cell

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setUpTitles();
    int columnPixels(int twips) const;
    void moveBy(int rows, int columns, bool extend);
    void extendTo(int row, int column);
    void openContextMenu();
    void currentMoved();

    TitledCells* m_cells;
    QAbstractButton* m_corner;
    TitleMouse* m_titleMouse = nullptr;
};

} // namespace ui
