#pragma once

#include <QObject>

class QAbstractButton;

namespace ui
{

class Grid;

/// What clicks on the titles of a grid do. A click makes the title the current cell, unless titles select: then it
/// selects the row or column of the title, and a drag or Shift extends the selection.
class TitleMouse final : public QObject
{
public:
    /// The corner is the button between both headers.
    TitleMouse(Grid& grid, const QAbstractButton& corner);
    void selectByTitles() { m_select = true; }

private:
    void click(int row, int column);
    void enter(int row, int column);
    void selectFrom(int row, int column, int titleRow, int titleColumn);

    Grid& m_grid;
    bool m_select = false;
};

} // namespace ui
