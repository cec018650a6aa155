#pragma once

#include "app/blocktext.h"
#include "ui/grid.h"

namespace app
{

/// From the current cell to the opposite corner of the selection.
inline Block selectedBlock(const ui::Grid& grid)
{
    return {grid.currentRow(), grid.currentColumn(), grid.farRow(), grid.farColumn()};
}

} // namespace app
