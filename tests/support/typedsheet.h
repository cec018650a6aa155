#pragma once

#include "decay/sampletable.h"

#include <string>
#include <vector>

namespace support
{

/// A sheet typed column by column: the texts of rows 1, 2, ... of each sample. All other cells are empty.
using TypedSheet = std::vector<std::vector<std::string>>;

inline decay::CellText cellsOf(const TypedSheet& sheet)
{
    return [&sheet](int row, int column) {
        const auto c = static_cast<std::size_t>(column - 1), r = static_cast<std::size_t>(row - 1);
        return c < sheet.size() && r < sheet[c].size() ? sheet[c][r] : std::string();
    };
}

} // namespace support
