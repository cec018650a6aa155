#include "app/sheetreading.h"

#include "fit/numberscanner.h"
#include "fit/numbertext.h"
#include "models/catalogue.h"

#include <optional>

namespace app
{
namespace
{

std::string readAs(std::string_view text, double value)
{
    return '"' + std::string(text) + "\" is read as " + fit::plainText(value);
}

/// 1 to 3; 0 for any other count, which no analysis reads.
int componentsOf(std::string_view text)
{
    const int count = fit::roundedInt32(fit::numberFrom(text)).value_or(0);
    return count >= 1 && count <= decay::kMaxComponents ? count : 0;
}

/// On a number that is not the count of components as which it is read.
std::string remarkOnComponents(std::string_view text)
{
    const int count = componentsOf(text);
    if (count == 0)
        return '"' + std::string(text) + R"(" is not 1, 2 or 3)";
    return fit::numberFrom(text) == count ? "" : readAs(text, count);
}

bool anyTypedFrom(const SheetText& sheet, int fromColumn)
{
    for (int row = 1; row < sheet.rowCount(); ++row)
        if (anyTyped(sheet, row, fromColumn, sheet.columnCount()))
            return true;
    return false;
}

} // namespace

std::string remarkOnNumber(std::string_view text)
{
    fit::NumberScanner scanner(text, fit::NumberScanner::Blanks::Ignored);
    const std::optional<double> value = scanner.scan();
    const std::size_t first = text.find_first_not_of(fit::kBlanks, value ? scanner.next() : 0);
    return first == std::string_view::npos ? std::string() : readAs(text, value.value_or(0));
}

std::string reasonToEnd(int column)
{
    return column > decay::kMaxSamples ? "there are at most " + std::to_string(decay::kMaxSamples) + " samples"
                                       : "column " + std::to_string(column) + " has no concentration";
}

SheetReading::SheetReading(const SheetText& sheet, int model)
{
    for (int row = 0; row < sheet.rowCount(); ++row) {
        m_texts.emplace_back();
        for (int column = 0; column < sheet.columnCount(); ++column)
            m_texts.back().push_back(sheet.cell(row, column));
    }
    m_end = decay::endOfSamples(cellsOf(sheet));
    m_anyBeyond = anyTypedFrom(sheet, m_end);
    m_anyIntensity = anyTyped(sheet, decay::kPhiRow, 1, m_end);
    m_allComponents = models::row(model).hasDecayLaw() && anyTyped(sheet, decay::kComponentRow, 2, m_end);
}

const std::string& SheetReading::text(int row, int column) const
{
    return m_texts[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
}

std::string SheetReading::remarkOn(int row, int column) const
{
    if (row < 1 || column < 1 || row > decay::kPhiRow)
        return {};
    if (column >= m_end)
        return remarkOnUnread(row, column);
    const std::string& typed = text(row, column);
    if (!isTyped(typed, row))
        return isNeeded(row, column) ? "needed for an analysis" : "";
    const bool blank = typed.find_first_not_of(fit::kBlanks) == std::string::npos;
    const std::string remark = blank ? readAs(typed, 0) : remarkOnNumber(typed);
    return remark.empty() && row == decay::kComponentRow ? remarkOnComponents(typed) : remark;
}

std::string SheetReading::remarkOnUnread(int row, int column) const
{
    if (isTyped(text(row, column), row))
        return "not read: " + reasonToEnd(m_end);
    const bool ends = row == decay::kConcRow && column == m_end && m_end <= decay::kMaxSamples;
    return ends && m_anyBeyond ? "needed: without a concentration, no sample from here on is read" : "";
}

bool SheetReading::isNeeded(int row, int column) const
{
    if (row == decay::kPhiRow)
        return m_anyIntensity;
    if (row == decay::kComponentRow)
        return column == 1 || m_allComponents;
    const int last = componentsOf(text(decay::kComponentRow, column));
    return row > decay::kComponentRow && row <= decay::lifetimeRow(last);
}

} // namespace app
