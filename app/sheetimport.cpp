#include "app/sheetimport.h"

#include "fit/numbertext.h"

#include <algorithm>

namespace app
{
namespace
{

int lastTypedColumn(const SheetText& sheet)
{
    int last = 0;
    for (int row = 1; row <= decay::kPhiRow; ++row)
        for (int column = last + 1; column < sheet.columnCount(); ++column)
            if (!sheet.cell(row, column).empty())
                last = column;
    return last;
}

/// A number of a sample; 0 for any other text.
int sampleNumber(std::string_view text, int count)
{
    const double number = fit::strictNumber(text).value_or(0);
    return number >= 1 && number <= count && number == static_cast<int>(number) ? static_cast<int>(number) : 0;
}

/// "3" or "3-7"; false if it is neither.
bool addRange(std::string_view text, int count, std::vector<std::size_t>& chosen)
{
    const std::size_t dash = text.find('-');
    const int first = sampleNumber(text.substr(0, dash), count);
    const int last = dash == std::string_view::npos ? first : sampleNumber(text.substr(dash + 1), count);
    for (int sample = first; sample <= last; ++sample) {
        const auto index = static_cast<std::size_t>(sample - 1);
        if (std::ranges::find(chosen, index) != chosen.end())
            return false;
        chosen.push_back(index);
    }
    return first > 0 && last >= first;
}

} // namespace

std::vector<imports::SampleColumn> columnsOf(const SheetText& sheet)
{
    std::vector<imports::SampleColumn> columns(static_cast<std::size_t>(lastTypedColumn(sheet)));
    for (std::size_t i = 0; i < columns.size(); ++i)
        for (int row = 1; row <= decay::kPhiRow; ++row)
            columns[i][static_cast<std::size_t>(row)].text = sheet.cell(row, static_cast<int>(i) + 1);
    return columns;
}

int roomFor(const SheetText& sheet, Placing placing)
{
    return placing == Placing::Replace ? decay::kMaxSamples : std::max(0, decay::kMaxSamples - lastTypedColumn(sheet));
}

void writeColumns(SheetText& sheet, const std::vector<imports::SampleColumn>& columns)
{
    if (sheet.rowCount() < kSheetRows || sheet.columnCount() < kSheetColumns) // a session may be smaller
        sheet.setCounts(std::max(sheet.rowCount(), kSheetRows), std::max(sheet.columnCount(), kSheetColumns));
    for (int column = 1; column < sheet.columnCount(); ++column)
        for (int row = 1; row <= decay::kPhiRow; ++row) {
            const auto index = static_cast<std::size_t>(column - 1);
            sheet.setCell(row, column,
                          index < columns.size() ? columns[index][static_cast<std::size_t>(row)].text : std::string());
        }
}

std::optional<std::vector<std::size_t>> chosenSamples(std::string_view text, int count)
{
    std::vector<std::size_t> chosen;
    for (;;) {
        const std::size_t comma = text.find(',');
        if (!addRange(text.substr(0, comma), count, chosen))
            return std::nullopt;
        if (comma == std::string_view::npos)
            return chosen;
        text.remove_prefix(comma + 1);
    }
}

std::string firstSamples(int count) { return count == 0 ? "" : count == 1 ? "1" : "1-" + std::to_string(count); }

} // namespace app
