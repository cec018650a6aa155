#include "fit/numbertext.h"
#include "imports/encoding.h"
#include "imports/sampletable.h"
#include "tests/fuzz/fuzz.h"

using fuzz::check;

namespace
{

imports::Choices takeChoices(fuzz::Input& input)
{
    imports::Choices choices;
    if (const int separator = input.takeUpTo(7); separator < 4)
        choices.separator = static_cast<imports::Separator>(separator);
    if (const int turned = input.takeUpTo(3); turned < 2)
        choices.samplesInColumns = turned == 1;
    if (const int sign = input.takeUpTo(3); sign < 2)
        choices.decimalSign = static_cast<imports::DecimalSign>(sign);
    if (const int row = input.takeUpTo(9); row < 5)
        choices.firstRow = row;
    for (auto& column : choices.columns)
        if (const int chosen = input.takeUpTo(15); chosen < 8)
            column = chosen;
    return choices;
}

/// A number that the program reads by itself must be the number that was imported.
void checkCell(const imports::SampleCell& cell, const imports::Layout& layout, std::size_t quantity)
{
    const auto read = fit::strictNumber(cell.text);
    check(cell.text.empty() || (read && cell.reading == imports::Reading::Fine));
    check(remarkOn(cell).empty() == (cell.reading == imports::Reading::Fine));
    const bool asItStands = layout.decimalSign == imports::DecimalSign::Point &&
                            layout.units[quantity] == imports::sheetUnit(imports::kQuantityRows[quantity].kind);
    const auto plain = fit::strictNumber(cell.source);
    if (asItStands && plain && !cell.text.empty())
        check(*read == *plain);
}

} // namespace

/// Any bytes as a table, with any choices: every cell is a number or has a remark.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Input input(data, size);
    const imports::Choices choices = takeChoices(input);
    const auto text = imports::decodedText(input.rest());
    if (!text || !imports::complaintAboutSize(*text).empty())
        return 0;
    const imports::FoundTable table = findTable(imports::withPlainLineEnds(*text), choices);
    for (const imports::SampleColumn& sample : readSamples(table).samples)
        for (std::size_t quantity = 0; quantity < imports::kQuantities; ++quantity) {
            const auto row = static_cast<std::size_t>(imports::kQuantityRows[quantity].sheetRow);
            if (sample[row].row > 0)
                checkCell(sample[row], table.layout, quantity);
        }
    return 0;
}
