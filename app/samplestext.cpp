#include "app/samplestext.h"

#include "decay/normalization.h"
#include "decay/samplecolumn.h"
#include "models/catalogue.h"
#include "sternvolmer/ratiodata.h"

namespace app
{
namespace
{

bool isTyped(const SheetText& sheet, int column)
{
    for (int row = 1; row < sheet.rowCount(); ++row)
        if (!sheet.cell(row, column).empty())
            return true;
    return false;
}

int typedColumns(const SheetText& sheet)
{
    int count = 0;
    for (int column = 1; column < sheet.columnCount(); ++column)
        count += isTyped(sheet, column) ? 1 : 0;
    return count;
}

/// What one analysis reads; read: columns up to the first one without a concentration.
std::string readText(int read, int typed, int incompleteColumn)
{
    if (incompleteColumn > 0)
        return "column " + std::to_string(incompleteColumn) + " is incomplete";
    const std::string text = std::to_string(read) + " of " + std::to_string(typed) + " samples";
    if (read >= typed)
        return text;
    return read == decay::kMaxSamples ? text + ": a table has no more"
                                      : text + ": column " + std::to_string(read + 1) + " has no concentration";
}

std::string ratiosText(const decay::CellText& cell, int typed)
{
    const sternvolmer::RatioData data = sternvolmer::readSternVolmerData(cell);
    if (!data.referenceFirst)
        return "the first column is not at 0 M";
    return readText(data.samples.SampleCount, typed, data.incompleteColumn);
}

std::string decaysText(const decay::CellText& cell, int typed)
{
    constexpr double kAnyLevel = 1; // excludes nothing
    const decay::DecayData data = decay::readDecayData(cell, kAnyLevel, models::kModelCount);
    return readText(data.samples.SampleCount, typed, data.incompleteColumn);
}

} // namespace

std::string samplesText(const SheetText& sheet)
{
    const int typed = typedColumns(sheet);
    if (typed == 0)
        return "no samples";
    const bool hasDecays =
        anyTyped(sheet, decay::kComponentRow, 2, sheet.columnCount()); // the reference has its components for both
    const bool hasIntensities = anyTyped(sheet, decay::kPhiRow, 1, sheet.columnCount());
    const std::string ratios = ratiosText(cellsOf(sheet), typed);
    if (!hasDecays)
        return ratios;
    const std::string decays = decaysText(cellsOf(sheet), typed);
    if (!hasIntensities || ratios == decays)
        return decays;
    return "Stern-Volmer: " + ratios + "; decay curves: " + decays;
}

} // namespace app
