#pragma once

#include <QTableView>

class QAbstractButton;
class QStandardItemModel;

namespace ui
{

/// A grid of text cells whose row 0 and column 0 are titles: real headers that stay in view, and cells of the model
/// all the same. Texts are in the model, the current cell and the selected block in the selection model. Texts that are
/// too long for their column are drawn condensed.
class Grid : public QTableView
{
    Q_OBJECT

public:
    explicit Grid(QWidget* parent = nullptr);

    /// Rows and columns, the title row and the title column included. A new grid has one cell, the current one.
    void setCounts(int rows, int columns);
    int rows() const;
    int columns() const;

    /// A cell outside the grid reads as an empty text and is not written.
    QString text(int row, int column) const;
    void setText(int row, int column, const QString& text);

    /// Wider where the font is larger than usual.
    void setColumnTwips(int column, int twips);

    /// Makes a cell, title cells included, the current one and the only selected one.
    void selectCell(int row, int column);
    /// The current cell is the block's first corner. Cells outside the grid change nothing.
    void selectBlock(int row, int column, int farRow, int farColumn);
    int currentRow() const;
    int currentColumn() const;
    /// The corner of the selected block that lies opposite the current cell.
    int farRow() const;
    int farColumn() const;

    /// Repainting off while cells are filled, on again at the end.
    void setRedraw(bool on);

    /// All cells without the titles.
    void selectAll() override;

    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

signals:
    void cellChosen(); // by a click on a cell or a title, or by a key, even if it was the current one already
    void currentCellMoved();
    /// A printable character (code above 32) or a text that an input method committed.
    void textTyped(const QString& text);
    void deletePressed();

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
    void titleClicked(int row, int column);
    void moveBy(int rows, int columns, bool extend);
    void extendTo(int row, int column);
    void currentMoved();

    QStandardItemModel* m_cells;
    QAbstractButton* m_corner;
};

} // namespace ui
