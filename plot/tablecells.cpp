#include "plot/tablecells.h"

#include "plot/tablesink.h"

#include <algorithm>
#include <cassert>

namespace plot
{
namespace
{

std::size_t slot(int row, int column)
{
    assert(row >= 0 && row < kTableRows && column >= 0 && column < kTableColumns);
    return static_cast<std::size_t>(row * kTableColumns + column);
}

} // namespace

const std::string& TableCells::at(int row, int column) const
{
    static const std::string kEmpty;
    return m_cells.empty() ? kEmpty : m_cells[slot(row, column)];
}

void TableCells::set(int row, int column, std::string_view text)
{
    m_cells.resize(kTableRows * kTableColumns);
    m_cells[slot(row, column)] = text;
}

void TableCells::clear() { std::fill(m_cells.begin(), m_cells.end(), std::string()); }

std::string TableCells::copyText() const
{
    std::string text;
    int row = 0;
    do {
        text += at(row, 0);
        for (int column = 1; column < kTableColumns && !at(row, column).empty(); ++column)
            text += '\t' + at(row, column);
        text += '\r';
        ++row;
    } while (row < kTableRows && !at(row, 0).empty());
    return text;
}

} // namespace plot
