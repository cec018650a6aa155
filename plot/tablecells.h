#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace plot
{

/// The table window's own copy of every cell text; the clipboard copy is made from it.
class TableCells
{
public:
    const std::string& at(int row, int column) const;
    void set(int row, int column, std::string_view text);
    void clear();
    /// The filled block from the top-left corner on: tabs between cells, a single CR after each row.
    std::string copyText() const;

private:
    std::vector<std::string> m_cells; // allocated with the first text, because most tables are never filled
};

} // namespace plot
