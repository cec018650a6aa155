#pragma once

#include <optional>

class QKeyEvent;

/// How keys move the current cell of a grid.
namespace ui
{

struct GridStep {
    int rows = 0;
    int columns = 0;
};

/// Counted in rows and columns; page: the rows in view.
struct GridExtent {
    int rows = 0;
    int columns = 0;
    int page = 0;
};

/// The step that a key asks for; steps of the length of the whole grid end at its edge. nullopt: another key.
std::optional<GridStep> gridStep(const QKeyEvent& key, const GridExtent& grid);

/// Where a step ends. It may lead from a title (0) into the cells, but never from a cell to a title.
int stepped(int from, int step, int count);

} // namespace ui
