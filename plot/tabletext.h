#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace plot
{

inline constexpr int kTableRows = 501;
inline constexpr int kTableColumns = 101;

/// The interface through which a result table is written. Locate takes the column first.
class TableSink
{
public:
    virtual ~TableSink() = default;
    virtual void ClearSheet() = 0;
    virtual void SetTitle(std::string_view title) = 0;
    virtual void Rows(int count) = 0;
    virtual void Cols(int count) = 0;
    virtual void Locate(int column, int row) = 0;
    virtual void Value(std::string_view text) = 0;
    /// Turns repainting off while a table is filled, and on again afterwards.
    virtual void setRedraw(bool on) = 0;
};

/// The table window's own copy of every cell text; the clipboard copy is made from it.
class TableText
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
