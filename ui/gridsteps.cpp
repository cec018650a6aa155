#include "ui/gridsteps.h"

#include <QKeyEvent>

#include <algorithm>

namespace ui
{

std::optional<GridStep> gridStep(const QKeyEvent& key, const GridExtent& grid)
{
    const bool toEdge = key.modifiers() & Qt::ControlModifier;
    const int rows = toEdge ? grid.rows : 1;
    const int columns = toEdge ? grid.columns : 1;
    switch (key.key()) {
    case Qt::Key_Left:
        return GridStep{0, -columns};
    case Qt::Key_Right:
        return GridStep{0, columns};
    case Qt::Key_Up:
        return GridStep{-rows, 0};
    case Qt::Key_Down:
        return GridStep{rows, 0};
    case Qt::Key_PageUp:
        return GridStep{-grid.page, 0};
    case Qt::Key_PageDown:
        return GridStep{grid.page, 0};
    case Qt::Key_Home:
        return GridStep{toEdge ? -grid.rows : 0, -grid.columns};
    case Qt::Key_End:
        return GridStep{toEdge ? grid.rows : 0, grid.columns};
    default:
        return std::nullopt;
    }
}

int stepped(int from, int step, int count) { return std::clamp(from + step, std::min(from, 1), count - 1); }

} // namespace ui
