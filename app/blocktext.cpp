#include "app/blocktext.h"

#include "app/textlines.h"

#include <algorithm>

namespace app
{
namespace
{

Block ordered(const Block& block)
{
    const auto [top, bottom] = std::minmax(block.row, block.farRow);
    const auto [left, right] = std::minmax(block.column, block.farColumn);
    return {top, left, bottom, right};
}

/// How many fields of a line have a text, the first ones left out.
int typedFields(std::string_view line, int leftOut)
{
    int count = 0;
    for (int field = 0; !line.empty(); ++field) {
        const std::size_t end = std::min(line.find('\t'), line.size());
        count += field >= leftOut && end > 0 ? 1 : 0;
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return count;
}

void pasteRow(SheetText& sheet, int row, int column, std::string_view line)
{
    for (const std::string& text : fieldsOf(line, sheet.columnCount() - column)) {
        if (row > 0 && column > 0)
            sheet.setCell(row, column, text);
        ++column;
    }
}

} // namespace

std::string blockText(const decay::CellText& cell, const Block& block)
{
    const auto [top, left, bottom, right] = ordered(block);
    std::string text;
    for (int row = top; row <= bottom; ++row)
        for (int column = left; column <= right; ++column) {
            text += oneField(cell(row, column), kSeparators);
            text += column == right ? kLineEnd : "\t";
        }
    return text;
}

void emptyBlock(SheetText& sheet, const Block& block)
{
    const auto [top, left, bottom, right] = ordered(block);
    for (int row = top; row <= bottom; ++row)
        for (int column = left; column <= right; ++column)
            sheet.setCell(row, column, {});
}

bool isBlock(std::string_view text) { return text.find_first_of(kSeparators) < text.find_last_not_of(kLineEnd) + 1; }

int pasteBlock(SheetText& sheet, int row, int column, std::string_view text)
{
    int dropped = 0;
    for (; const auto line = takeLine(text); ++row) {
        const bool inside = row < sheet.rowCount();
        if (inside)
            pasteRow(sheet, row, column, *line);
        dropped += typedFields(*line, inside ? sheet.columnCount() - column : 0);
    }
    return dropped;
}

} // namespace app
