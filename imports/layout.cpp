#include "imports/layout.h"

#include "imports/asciitext.h"
#include "imports/separators.h"
#include "imports/titles.h"

#include <algorithm>
#include <utility>

namespace imports
{
namespace
{

/// Columns of numbers by what their titles say. Of several columns for one quantity the first.
class ColumnGuesses
{
public:
    explicit ColumnGuesses(const FoundTable& table)
    {
        for (int column = 1; column <= table.cells.columnCount(); ++column) {
            if (!hasNumbers(table, column))
                continue;
            const Guess guess = guessFromTitle(table.titles[static_cast<std::size_t>(column - 1)]);
            if (!guess.quantity && !guess.excluded)
                m_untitled.push_back(column);
            else if (guess.quantity && m_columns[indexOf(*guess.quantity)] == 0)
                m_columns[indexOf(*guess.quantity)] = column;
        }
        // A single column with a title that says nothing is rather the intensity, besides volumes for instance.
        const bool single =
            m_untitled.size() == 1 && !table.titles[static_cast<std::size_t>(m_untitled[0] - 1)].empty();
        if (!single || m_columns[indexOf(Quantity::Intensity)] > 0)
            takeUntitled(Quantity::Concentration);
        if (m_columns[indexOf(Quantity::Tau1)] == 0)
            takeUntitled(Quantity::Intensity);
        if (m_columns[indexOf(Quantity::Concentration)] > 0)
            m_columns[indexOf(Quantity::Added)] = 0; // the concentrations need no volumes
    }
    int operator[](std::size_t quantity) const { return m_columns[quantity]; }

private:
    // Without titles, a table begins with the concentrations, and the intensities follow.
    void takeUntitled(Quantity quantity)
    {
        int& column = m_columns[indexOf(quantity)];
        if (column == 0 && !m_untitled.empty()) {
            column = m_untitled.front();
            m_untitled.erase(m_untitled.begin());
        }
    }

    std::array<int, kQuantities> m_columns{};
    std::vector<int> m_untitled;
};

std::optional<Unit> foundUnit(const FoundTable& table, std::size_t quantity)
{
    const UnitKind kind = kQuantityRows[quantity].kind;
    const auto column = static_cast<std::size_t>(table.layout.columns[quantity]);
    if (column >= 1 && column <= table.titles.size())
        if (const auto unit = unitOfTitle(asciiText(table.titles[column - 1])); unit && unit->kind == kind)
            return unit;
    return std::nullopt;
}

/// How many cells can be read with one sign only, and how many with both, but as different numbers.
struct SignCount {
    int point = 0, comma = 0, both = 0;
};

SignCount countSigns(const FoundTable& table)
{
    SignCount count;
    for (int row = table.layout.firstRow; row <= table.cells.rowCount(); ++row)
        for (const std::string& cell : table.cells.rows[static_cast<std::size_t>(row - 1)]) {
            const auto point = spelledNumber(cell, DecimalSign::Point), comma = spelledNumber(cell, DecimalSign::Comma);
            count.point += point && !comma ? 1 : 0;
            count.comma += comma && !point ? 1 : 0;
            count.both += point && comma && *point != *comma ? 1 : 0;
        }
    return count;
}

void findSign(FoundTable& table, const std::optional<DecimalSign>& chosen)
{
    const SignCount count = countSigns(table);
    const DecimalSign found = count.comma > count.point ? DecimalSign::Comma : DecimalSign::Point;
    table.layout.decimalSign = chosen.value_or(found);
    const bool oneSign = (count.point > 0) != (count.comma > 0);
    table.layout.signIsCertain = chosen || oneSign || count.both == 0;
}

} // namespace

bool hasNumbers(const FoundTable& table, int column)
{
    for (int row = table.layout.firstRow; row <= table.cells.rowCount(); ++row)
        if (isNumber(table.cells.at(row, column)))
            return true;
    return false;
}

FoundTable findTable(std::string_view text, const Choices& choices)
{
    FoundTable table;
    Layout& layout = table.layout;
    layout.separator = choices.separator ? *choices.separator : foundSeparator(text, choices.comment);
    table.cells = cellsOf(text, layout.separator, choices.comment);
    layout.samplesInColumns = choices.samplesInColumns ? *choices.samplesInColumns : foundSamplesInColumns(table.cells);
    if (layout.samplesInColumns)
        table.cells = table.cells.turned();
    const int rows = std::max(1, table.cells.rowCount());
    layout.firstRow = choices.firstRow ? std::clamp(*choices.firstRow, 1, rows) : foundFirstRow(table.cells);
    const bool blanksSeparate = layout.separator == Separator::Blanks && !layout.samplesInColumns;
    table.titles = titlesAbove(table.cells, layout.firstRow, blanksSeparate);
    findSign(table, choices.decimalSign);
    const ColumnGuesses guesses(table);
    for (std::size_t quantity = 0; quantity < kQuantities; ++quantity) {
        layout.columns[quantity] = choices.columns[quantity].value_or(guesses[quantity]);
        const auto unit = choices.units[quantity] ? choices.units[quantity] : foundUnit(table, quantity);
        layout.units[quantity] = unit.value_or(sheetUnit(kQuantityRows[quantity].kind));
        layout.unitIsKnown[quantity] = unit.has_value();
    }
    return table;
}

} // namespace imports
