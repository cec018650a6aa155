#pragma once

#include "decay/samplecolumn.h"
#include "fit/numberscanner.h"

#include <array>
#include <string>
#include <string_view>

namespace app
{

inline constexpr int kSheetRows = 10;    // a title row and one row per quantity
inline constexpr int kSheetColumns = 21; // a title column and 20 samples

/// Titles in column 0, row by row.
inline constexpr std::array<std::string_view, kSheetRows> kSheetRowTitles{
    "", "Qtotal/ M", "Component", "A1", "τ1/ns", "A2", "τ2/ns", "A3", "τ3/ns", "Φ"};

/// The data sheet as analyses and files see it: texts in rows and columns, titles in row 0 and column 0. Outside the
/// sheet, reading gives an empty text and writing does nothing.
class SheetText
{
public:
    virtual ~SheetText() = default;
    virtual int rowCount() const = 0;
    virtual int columnCount() const = 0;
    virtual void setCounts(int rows, int columns) = 0; // restores the titles
    virtual std::string cell(int row, int column) const = 0;
    virtual void setCell(int row, int column, const std::string& text) = 0;
};

/// Whether the analyses read a cell otherwise than an empty one. Blanks alone are a concentration and a number of
/// components, both 0; elsewhere they are read as an empty cell.
inline bool isTyped(std::string_view text, int row)
{
    return row <= decay::kComponentRow ? !text.empty() : text.find_first_not_of(fit::kBlanks) != std::string_view::npos;
}

/// Whether a row has a typed cell in the columns fromColumn to endColumn - 1.
inline bool anyTyped(const SheetText& sheet, int row, int fromColumn, int endColumn)
{
    for (int column = fromColumn; column < endColumn; ++column)
        if (isTyped(sheet.cell(row, column), row))
            return true;
    return false;
}

/// A reader of the sheet for the analyses; `sheet` must outlive it.
inline decay::CellText cellsOf(const SheetText& sheet)
{
    return [&sheet](int row, int column) { return sheet.cell(row, column); };
}

} // namespace app
