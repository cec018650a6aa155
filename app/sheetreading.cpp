#include "app/sheetreading.h"

#include "decay/samplecolumn.h"
#include "fit/numberscanner.h"
#include "fit/numbertext.h"
#include "models/catalogue.h"

#include <algorithm>
#include <optional>

namespace app
{
namespace
{

/// The first column without a sample that is read.
int endOfSamples(const decay::CellText& cell)
{
    int column = 1;
    while (decay::hasSample(cell, column))
        ++column;
    return column;
}

bool anyTypedFrom(const SheetText& sheet, int fromColumn)
{
    for (int row = 1; row < sheet.rowCount(); ++row)
        if (anyTyped(sheet, row, fromColumn, sheet.columnCount()))
            return true;
    return false;
}

std::string remarkOnUnread(const SheetText& sheet, int row, int column, int end)
{
    if (!sheet.cell(row, column).empty())
        return end > decay::kMaxSamples
                   ? "not read: there are at most " + std::to_string(decay::kMaxSamples) + " samples"
                   : "not read: column " + std::to_string(end) + " has no concentration";
    const bool ends = row == decay::kConcRow && column == end && end <= decay::kMaxSamples;
    return ends && anyTypedFrom(sheet, column) ? "needed: without a concentration, no sample from here on is read" : "";
}

/// Whether the number of components must be typed: for the reference always, for the others as soon as one has it.
bool needsComponents(const SheetText& sheet, int column, int end, int model)
{
    return column == 1 || (models::row(model).hasDecayLaw() && anyTyped(sheet, decay::kComponentRow, 2, end));
}

bool isNeeded(const SheetText& sheet, int row, int column, int end, int model)
{
    if (row == decay::kPhiRow)
        return anyTyped(sheet, row, 1, end);
    if (row == decay::kComponentRow)
        return needsComponents(sheet, column, end, model);
    const double count = fit::numberFrom(sheet.cell(decay::kComponentRow, column));
    const int last = std::min(fit::heldInt32(count), decay::kMaxComponents);
    return row > decay::kComponentRow && row <= decay::lifetimeRow(last);
}

} // namespace

std::string remarkOnNumber(std::string_view text)
{
    fit::NumberScanner scanner(text, fit::NumberScanner::Blanks::Ignored);
    const std::optional<double> value = scanner.scan();
    const bool whole = value && text.find_first_not_of(fit::kBlanks, scanner.next()) == std::string_view::npos;
    if (text.empty() || whole)
        return {};
    return '"' + std::string(text) + "\" is read as " + fit::plainText(value.value_or(0));
}

std::string remarkOnCell(const SheetText& sheet, int row, int column, int model)
{
    if (row < 1 || column < 1 || row > decay::kPhiRow)
        return {};
    const int end = endOfSamples(cellsOf(sheet));
    if (column >= end)
        return remarkOnUnread(sheet, row, column, end);
    const std::string text = sheet.cell(row, column);
    if (text.empty() && isNeeded(sheet, row, column, end, model))
        return "needed for an analysis";
    return remarkOnNumber(text);
}

} // namespace app
