#include "imports/titles.h"

#include "imports/asciitext.h"
#include "imports/quantities.h"
#include "imports/separators.h"

#include <algorithm>

namespace imports
{
namespace
{

bool isRowOfNumbers(const RowCount& count) { return count.numbers > 0 && 2 * count.numbers > count.texts; }

std::vector<RowCount> countRows(const Cells& cells)
{
    std::vector<RowCount> counts;
    for (const auto& row : cells.rows)
        counts.push_back(countCells(row));
    return counts;
}

// "40 mM" is a number, although it ends like a title.
bool namesQuantity(const std::string& cell) { return !isNumber(cell) && guessFromTitle(cell).quantity.has_value(); }

bool beginsWithNumber(const std::vector<std::string>& row)
{
    const auto text = std::ranges::find_if(row, [](const std::string& cell) { return !trimmed(cell).empty(); });
    return text != row.end() && isNumber(*text);
}

/// Whether a cell is nothing but a unit, with or without brackets.
bool isRowOfUnits(const std::vector<std::string>& row)
{
    return std::ranges::any_of(row, [](const std::string& cell) {
        std::string unit = asciiText(cell);
        std::erase_if(unit, [](char c) { return std::string_view("()[]").find(c) != std::string_view::npos; });
        return unitOf(unit).has_value();
    });
}

/// "c / mM" and "c (mM)" are one title.
std::vector<std::string> mergedTitles(const std::vector<std::string>& cells)
{
    std::vector<std::string> titles;
    bool open = false; // the last title ends with a "/"
    for (const std::string& cell : cells) {
        const bool continues = open || cell.starts_with('/') || cell.starts_with('(') || cell.starts_with('[');
        if (continues && !titles.empty())
            titles.back() += ' ' + cell;
        else
            titles.push_back(cell);
        open = cell == "/";
    }
    return titles;
}

std::string joined(std::string text, const std::string& more)
{
    if (!text.empty() && !more.empty())
        text += ' ';
    return text + more;
}

} // namespace

int foundFirstRow(const Cells& cells)
{
    const std::vector<RowCount> counts = countRows(cells);
    std::size_t first = 0;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        if (!isRowOfNumbers(counts[i]))
            continue;
        first = i;
        const auto next = std::find_if(counts.begin() + static_cast<std::ptrdiff_t>(i) + 1, counts.end(),
                                       [](const RowCount& count) { return count.texts > 0; });
        if (next == counts.end() || next->numbers > 0)
            break; // otherwise a number in a head of text lines
    }
    while (first > 0 && beginsWithNumber(cells.rows[first - 1])) // a sample that lacks its other numbers
        --first;
    return static_cast<int>(first) + 1;
}

std::vector<std::string> titlesAbove(const Cells& cells, int firstRow, bool blanksSeparate)
{
    std::vector<std::string> titles(static_cast<std::size_t>(cells.columnCount()));
    int row = firstRow - 1;
    while (row >= 1 && countCells(cells.rows[static_cast<std::size_t>(row - 1)]).texts == 0)
        --row;
    if (row < 1)
        return titles;
    const std::vector<std::string>& lowest = cells.rows[static_cast<std::size_t>(row - 1)];
    if (blanksSeparate && lowest.size() > cells.rows[static_cast<std::size_t>(firstRow - 1)].size()) {
        std::vector<std::string> merged = mergedTitles(lowest);
        merged.resize(titles.size());
        return merged;
    }
    const bool two = isRowOfUnits(lowest);
    for (std::size_t column = 0; column < titles.size(); ++column) {
        const int at = static_cast<int>(column) + 1;
        titles[column] = joined(two ? cells.at(row - 1, at) : std::string(), cells.at(row, at));
    }
    return titles;
}

bool foundSamplesInColumns(const Cells& cells)
{
    int across = 0, down = 0, rowsOfNumbers = 0;
    for (const auto& row : cells.rows) {
        across = std::max(across, static_cast<int>(std::ranges::count_if(row, namesQuantity)));
        down += !row.empty() && namesQuantity(row.front()) ? 1 : 0;
        rowsOfNumbers += isRowOfNumbers(countCells(row)) ? 1 : 0;
    }
    if (down >= 2 || across >= 2)
        return down >= 2 && across < 2;
    return rowsOfNumbers > 1 && rowsOfNumbers == cells.rowCount() && rowsOfNumbers < cells.columnCount();
}

} // namespace imports
