#include "ui/grid.h"

#include "ui/fittingfont.h"
#include "ui/gridpainting.h"
#include "ui/gridsteps.h"
#include "ui/titledcells.h"
#include "ui/titlemouse.h"
#include "ui/twips.h"

#include <QAbstractButton>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>

namespace ui
{
namespace
{

constexpr int kColumnTwips = 960; // initial width of a column
constexpr int kRowPadding = 4;    // pixels above and below a row's text together

bool isPrintable(const QString& text) { return !text.isEmpty() && text.front().unicode() > 32; }

} // namespace

Grid::Grid(QWidget* parent)
    : QTableView(parent), m_cells(new TitledCells(this)),
      m_corner(findChild<QAbstractButton*>(QString(), Qt::FindDirectChildrenOnly))
{
    setUpTitles();
    setModel(m_cells);
    setItemDelegate(new FittingDelegate(this));
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ContiguousSelection);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setAttribute(Qt::WA_InputMethodEnabled);
    setLayoutDirection(Qt::LeftToRight); // columns of numbers are counted from the left in every language
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, &Grid::currentMoved);
    setCounts(2, 2);
}

void Grid::setUpTitles()
{
    setHorizontalHeader(new TitleHeader(Qt::Horizontal, this));
    setVerticalHeader(new TitleHeader(Qt::Vertical, this));
    horizontalHeader()->setDefaultSectionSize(columnPixels(kColumnTwips));
    horizontalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setMinimumSectionSize(1);
    setColumnTwips(0, kColumnTwips);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowPadding);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_titleMouse = new TitleMouse(*this, *m_corner);
    m_corner->installEventFilter(this);
}

void Grid::setCounts(int rows, int columns)
{
    m_cells->setRowCount(std::max(rows, 1));
    m_cells->setColumnCount(std::max(columns, 1));
    setRowHidden(0, true); // the headers show the titles
    setColumnHidden(0, true);
    if (!currentIndex().isValid())
        selectCell(1, 1);
}

int Grid::rows() const { return m_cells->rowCount(); }

int Grid::columns() const { return m_cells->columnCount(); }

QString Grid::text(int row, int column) const { return m_cells->index(row, column).data().toString(); }

void Grid::setText(int row, int column, const QString& text)
{
    const QModelIndex cell = m_cells->index(row, column);
    if (!cell.isValid() || cell.data().toString() == text)
        return;
    m_cells->setData(cell, text, Qt::EditRole);
    if (row == 0 && column == 0) {
        m_corner->setAccessibleName(text);
        m_corner->update();
    }
}

void Grid::setRemark(int row, int column, const QString& remark)
{
    const QModelIndex cell = m_cells->index(row, column);
    if (!cell.isValid() || this->remark(row, column) == remark)
        return;
    m_cells->setData(cell, remark, Qt::ToolTipRole);
    m_cells->setData(cell, remark, Qt::AccessibleDescriptionRole);
}

QString Grid::remark(int row, int column) const { return m_cells->index(row, column).data(Qt::ToolTipRole).toString(); }

void Grid::numberColumns()
{
    m_cells->numberColumns();
    horizontalHeader()->viewport()->update();
}

void Grid::selectByTitles() { m_titleMouse->selectByTitles(); }

void Grid::showAllRows()
{
    const int around =
        horizontalHeader()->sizeHint().height() + horizontalScrollBar()->sizeHint().height() + 2 * frameWidth();
    setMinimumHeight(verticalHeader()->length() + around);
}

void Grid::setColumnTwips(int column, int twips)
{
    if (column == 0)
        verticalHeader()->setFixedWidth(columnPixels(twips));
    else
        setColumnWidth(column, columnPixels(twips));
}

int Grid::columnPixels(int twips) const { return qRound(toPixels(twips) * enlargement(font())); }

void Grid::selectCell(int row, int column) { selectBlock(row, column, row, column); }

void Grid::selectBlock(int row, int column, int farRow, int farColumn)
{
    const QModelIndex current = m_cells->index(row, column);
    const QModelIndex far = m_cells->index(farRow, farColumn);
    if (!current.isValid() || !far.isValid())
        return;
    const QItemSelection block(m_cells->index(std::min(row, farRow), std::min(column, farColumn)),
                               m_cells->index(std::max(row, farRow), std::max(column, farColumn)));
    selectionModel()->select(block, QItemSelectionModel::ClearAndSelect);
    selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
}

int Grid::currentRow() const { return currentIndex().row(); }

int Grid::currentColumn() const { return currentIndex().column(); }

int Grid::farRow() const
{
    const QItemSelection block = selectionModel()->selection();
    if (block.isEmpty())
        return currentRow();
    return currentRow() == block.front().top() ? block.front().bottom() : block.front().top();
}

int Grid::farColumn() const
{
    const QItemSelection block = selectionModel()->selection();
    if (block.isEmpty())
        return currentColumn();
    return currentColumn() == block.front().left() ? block.front().right() : block.front().left();
}

void Grid::setRedraw(bool on) { setUpdatesEnabled(on); }

void Grid::selectAll()
{
    if (rows() > 1 && columns() > 1)
        selectBlock(1, 1, rows() - 1, columns() - 1);
}

void Grid::extendTo(int row, int column)
{
    selectBlock(currentRow(), currentColumn(), row, column);
    scrollTo(m_cells->index(row, column));
}

void Grid::moveBy(int rowStep, int columnStep, bool extend)
{
    const int row = stepped(extend ? farRow() : currentRow(), rowStep, rows());
    const int column = stepped(extend ? farColumn() : currentColumn(), columnStep, columns());
    if (extend)
        extendTo(row, column);
    else
        selectCell(row, column);
}

void Grid::currentMoved()
{
    setAttribute(Qt::WA_InputMethodEnabled); // the view turns it off for cells that it cannot edit
    horizontalHeader()->viewport()->update();
    verticalHeader()->viewport()->update();
    m_corner->update();
    emit currentCellMoved();
}

// The view's own mouse handling moves the current cell to the end of a dragged block. Here the current cell stays at
// the start.
void Grid::mousePressEvent(QMouseEvent* event)
{
    const QModelIndex cell = indexAt(event->position().toPoint());
    if (!cell.isValid())
        return;
    if (event->button() == Qt::RightButton && selectionModel()->isSelected(cell))
        return; // the context menu is for the selected block
    if (event->button() != Qt::LeftButton && event->button() != Qt::RightButton)
        return;
    if (event->modifiers() & Qt::ShiftModifier)
        extendTo(cell.row(), cell.column());
    else
        selectCell(cell.row(), cell.column());
    emit cellChosen();
}

void Grid::mouseMoveEvent(QMouseEvent* event)
{
    const QRect area = viewport()->rect();
    const QPoint position = event->position().toPoint();
    const QModelIndex cell = indexAt(
        {std::clamp(position.x(), area.left(), area.right()), std::clamp(position.y(), area.top(), area.bottom())});
    if (event->buttons() & Qt::LeftButton && cell.isValid())
        extendTo(cell.row(), cell.column());
}

void Grid::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event);
    if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid())
        emit editWanted();
}

void Grid::keyPressEvent(QKeyEvent* event)
{
    const bool command = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const std::optional<GridStep> step =
        gridStep(*event, {.rows = rows(), .columns = columns(), .page = verticalScrollBar()->pageStep()});
    if (step && !(event->modifiers() & (Qt::AltModifier | Qt::MetaModifier))) {
        moveBy(step->rows, step->columns, event->modifiers() & Qt::ShiftModifier);
        emit cellChosen();
    } else if (event->key() == Qt::Key_Delete && !command)
        emit deletePressed();
    else if ((event->key() == Qt::Key_F2 || event->key() == Qt::Key_Backspace) && !command)
        emit editWanted();
    else if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)
        openContextMenu();
    else if (event->matches(QKeySequence::SelectAll))
        selectAll();
    else if (isPrintable(event->text()) && !command)
        emit textTyped(event->text());
    else
        event->ignore();
}

// Not every desktop takes Shift+F10 for the menu key.
void Grid::openContextMenu()
{
    const QPoint place = inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent wanted(QContextMenuEvent::Keyboard, place, mapToGlobal(place));
    QCoreApplication::sendEvent(this, &wanted);
}

void Grid::inputMethodEvent(QInputMethodEvent* event)
{
    if (isPrintable(event->commitString()))
        emit textTyped(event->commitString());
    event->accept();
}

QVariant Grid::inputMethodQuery(Qt::InputMethodQuery query) const
{
    if (query == Qt::ImEnabled)
        return true;
    if (query == Qt::ImCursorRectangle) // where the menu key opens the context menu
        return visualRect(currentIndex()).translated(viewport()->pos());
    return QTableView::inputMethodQuery(query);
}

bool Grid::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_corner || event->type() != QEvent::Paint)
        return QTableView::eventFilter(watched, event);
    paintCornerTitle(*m_corner, text(0, 0), currentRow() == 0 && currentColumn() == 0);
    return true;
}

} // namespace ui
