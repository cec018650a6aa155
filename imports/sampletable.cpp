#include "imports/sampletable.h"

#include "imports/asciitext.h"

#include <algorithm>

namespace imports
{
namespace
{

std::string quoted(const std::string& text)
{
    constexpr std::size_t kMostShown = 40; // bytes
    std::size_t end = std::min(text.size(), kMostShown);
    while (end < text.size() && end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        --end; // no character is cut in two
    return '"' + text.substr(0, end) + (end < text.size() ? "...\"" : "\"");
}

std::string otherReading(const SampleCell& cell, DecimalSign sign)
{
    const auto number = spelledNumber(cell.source, sign);
    return number ? plainNumber(*number, 0).value_or("") : "";
}

/// Reads numbers as the layout says.
class CellReader
{
public:
    explicit CellReader(const FoundTable& table) : m_table(table) {}

    SampleCell read(int row, std::size_t quantity) const
    {
        const Layout& layout = m_table.layout;
        const int column = layout.columns[quantity];
        SampleCell cell{.text = {}, .source = std::string(trimmed(m_table.cells.at(row, column)))};
        cell.row = layout.samplesInColumns ? column : row;
        cell.column = layout.samplesInColumns ? row : column;
        if (!cell.source.empty())
            readNumber(cell, quantity);
        return cell;
    }

private:
    void readNumber(SampleCell& cell, std::size_t quantity) const
    {
        const Layout& layout = m_table.layout;
        const auto number = spelledNumber(cell.source, layout.decimalSign);
        const auto other = spelledNumber(cell.source, layout.decimalSign == DecimalSign::Point ? DecimalSign::Comma
                                                                                               : DecimalSign::Point);
        const UnitKind kind = kQuantityRows[quantity].kind;
        const Unit unit = number ? number->unit.value_or(layout.units[quantity]) : Unit{};
        const auto text = number ? plainNumber(*number, unit.power - sheetUnit(kind).power) : std::nullopt;
        if (number && unit.kind != kind)
            cell.reading = Reading::ForeignUnit;
        else if (!layout.signIsCertain && other && number != other)
            cell.reading = Reading::BothSigns;
        else if (!text)
            cell.reading = Reading::NotANumber;
        else
            cell.text = *text;
    }

    const FoundTable& m_table;
};

/// Whether any column gives a value of component k = 1..3.
int countComponents(const SampleColumn& sample)
{
    for (int k = decay::kMaxComponents; k >= 1; --k)
        for (const int row : {decay::amplitudeRow(k), decay::lifetimeRow(k)})
            if (!sample[static_cast<std::size_t>(row)].source.empty())
                return k;
    return 0;
}

void completeDecay(SampleColumn& sample, const Layout& layout)
{
    const int components = countComponents(sample);
    if (components == 0)
        return;
    sample[decay::kComponentRow].text = std::to_string(components);
    // A table of decays with one exponential needs no amplitudes: only their shares matter.
    if (components == 1 && layout.columns[indexOf(Quantity::A1)] == 0)
        sample[decay::amplitudeRow(1)].text = "1";
}

/// Whether a column has a number that is not the same in every unit.
bool needsUnit(const FoundTable& table, int column)
{
    for (int row = table.layout.firstRow; row <= table.cells.rowCount(); ++row)
        if (const auto number = spelledNumber(table.cells.at(row, column), table.layout.decimalSign))
            if (!number->unit && !number->digits.empty())
                return true;
    return false;
}

std::vector<std::string> notesOn(const FoundTable& table)
{
    const Layout& layout = table.layout;
    std::vector<std::string> notes;
    for (const Quantity quantity : {Quantity::Concentration, Quantity::Tau1, Quantity::Tau2, Quantity::Tau3})
        if (layout.columns[indexOf(quantity)] > 0 && !layout.unitIsKnown[indexOf(quantity)] &&
            needsUnit(table, layout.columns[indexOf(quantity)]))
            notes.push_back(std::string(row(quantity).name) + ": no unit was found, " +
                            (row(quantity).kind == UnitKind::Time ? "ns" : "M") + " is assumed.");
    const bool titled = std::ranges::any_of(table.titles, [](const std::string& title) { return !title.empty(); });
    std::string unused, untitled;
    for (int column = 1; column <= table.cells.columnCount(); ++column) {
        if (!hasNumbers(table, column))
            continue;
        if (std::ranges::find(layout.columns, column) == layout.columns.end())
            unused += (unused.empty() ? "" : ", ") + std::to_string(column);
        if (titled && table.titles[static_cast<std::size_t>(column - 1)].empty())
            untitled += (untitled.empty() ? "" : ", ") + std::to_string(column);
    }
    if (layout.columns[indexOf(Quantity::Added)] > 0)
        notes.emplace_back(
            "Each added volume counts since the sample before. Prepare Intensities opens after OK and calculates "
            "the concentrations.");
    const std::string columns = layout.samplesInColumns ? "Rows" : "Columns";
    if (!unused.empty())
        notes.push_back(columns + " of numbers that are not used: " + unused + ".");
    if (!untitled.empty()) // a comma that is decimal sign and separator in one
        notes.push_back(columns + " of numbers without a title: " + untitled +
                        ". Are the cells cut as they should be?");
    return notes;
}

std::string place(const SampleCell& cell)
{
    return "Row " + std::to_string(cell.row) + ", column " + std::to_string(cell.column);
}

} // namespace

std::string remarkOn(const SampleCell& cell)
{
    const std::string text = quoted(cell.source);
    switch (cell.reading) {
    case Reading::NotANumber:
        return text + " is not a number";
    case Reading::BothSigns:
        return text + " is " + otherReading(cell, DecimalSign::Point) + " with a decimal point and " +
               otherReading(cell, DecimalSign::Comma) + " with a decimal comma";
    case Reading::ForeignUnit:
        return text + " has the unit of another quantity";
    case Reading::Fine:
        break;
    }
    return {};
}

SampleList readSamples(const FoundTable& table)
{
    const CellReader reader(table);
    SampleList list;
    list.notes = notesOn(table);
    const std::array<int, kQuantities>& columns = table.layout.columns;
    const bool hasConcentrations = columns[indexOf(Quantity::Concentration)] > 0;
    const bool hasVolumes = columns[indexOf(Quantity::Added)] > 0;
    for (int row = table.layout.firstRow; row <= table.cells.rowCount(); ++row) {
        SampleColumn sample;
        bool any = false;
        for (std::size_t quantity = 0; quantity < kQuantities; ++quantity) {
            const SampleCell cell = reader.read(row, quantity);
            any = any || !cell.source.empty();
            if (cell.reading != Reading::Fine)
                list.remarks.push_back(place(cell) + ": " + remarkOn(cell) + ".");
            list.waitsForSign = list.waitsForSign || cell.reading == Reading::BothSigns;
            sample[static_cast<std::size_t>(kQuantityRows[quantity].sheetRow)] = cell;
        }
        const SampleCell& concentration = sample[decay::kConcRow];
        const bool usable = !concentration.text.empty() || concentration.reading == Reading::BothSigns;
        completeDecay(sample, table.layout);
        if (usable || (any && hasVolumes && !hasConcentrations))
            list.samples.push_back(sample);
        else if (any && hasConcentrations)
            list.remarks.push_back((table.layout.samplesInColumns ? "Column " : "Row ") + std::to_string(row) +
                                   " is left out, because it has no concentration.");
    }
    return list;
}

} // namespace imports
