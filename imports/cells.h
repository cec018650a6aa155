#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace imports
{

enum class Separator { Tab, Semicolon, Comma, Blanks };

/// A table of texts. Rows may have different lengths.
struct Cells {
    std::vector<std::vector<std::string>> rows;

    int rowCount() const { return static_cast<int>(rows.size()); }
    int columnCount() const; // of the longest row
    /// Row and column from 1 on; empty outside the table.
    const std::string& at(int row, int column) const;
    /// Rows become columns.
    Cells turned() const;
};

/// One row for each line, also for empty lines and for lines that start with `comment`, which have no cells. Quoted
/// cells may hold separators and line ends. The text has LF as its line end.
Cells cellsOf(std::string_view text, Separator separator, std::string_view comment);

} // namespace imports
