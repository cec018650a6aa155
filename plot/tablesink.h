#pragma once

#include <string_view>

namespace plot
{

// The largest table.
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

} // namespace plot
