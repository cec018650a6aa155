#include "ui/titlemouse.h"

#include "ui/grid.h"

#include <QAbstractButton>
#include <QGuiApplication>
#include <QHeaderView>

#include <algorithm>

namespace ui
{

TitleMouse::TitleMouse(Grid& grid, const QAbstractButton& corner) : QObject(&grid), m_grid(grid)
{
    const QHeaderView* across = grid.horizontalHeader();
    const QHeaderView* down = grid.verticalHeader();
    for (const QHeaderView* header : {across, down}) { // the view's own handling
        disconnect(header, &QHeaderView::sectionPressed, &grid, nullptr);
        disconnect(header, &QHeaderView::sectionEntered, &grid, nullptr);
    }
    disconnect(&corner, &QAbstractButton::clicked, &grid, nullptr);
    connect(across, &QHeaderView::sectionPressed, this, [this](int column) { click(0, column); });
    connect(down, &QHeaderView::sectionPressed, this, [this](int row) { click(row, 0); });
    connect(across, &QHeaderView::sectionEntered, this, [this](int column) { enter(0, column); });
    connect(down, &QHeaderView::sectionEntered, this, [this](int row) { enter(row, 0); });
    connect(&corner, &QAbstractButton::clicked, this, [this] { click(0, 0); });
}

void TitleMouse::click(int row, int column)
{
    m_grid.setFocus(Qt::MouseFocusReason);
    if (!m_select)
        m_grid.selectCell(row, column);
    else if (QGuiApplication::keyboardModifiers() & Qt::ShiftModifier)
        selectFrom(m_grid.currentRow(), m_grid.currentColumn(), row, column);
    else
        selectFrom(row, column, row, column);
    emit m_grid.cellChosen();
}

void TitleMouse::enter(int row, int column)
{
    if (m_select)
        selectFrom(m_grid.currentRow(), m_grid.currentColumn(), row, column);
}

/// Selects from a cell to the end of the row or column with this title; the corner has the title (0, 0).
void TitleMouse::selectFrom(int row, int column, int titleRow, int titleColumn)
{
    m_grid.setAutoScroll(false); // the title that was clicked stays in view
    m_grid.selectBlock(titleColumn > 0 ? 1 : std::max(row, 1), titleRow > 0 ? 1 : std::max(column, 1),
                       titleRow > 0 ? titleRow : m_grid.rows() - 1,
                       titleColumn > 0 ? titleColumn : m_grid.columns() - 1);
    m_grid.setAutoScroll(true);
}

} // namespace ui
