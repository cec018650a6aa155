#include "app/samplestext.h"

#include "app/sheetreading.h"
#include "decay/normalization.h"
#include "models/catalogue.h"
#include "sternvolmer/ratiodata.h"

namespace app
{
namespace
{

bool anyTypedIn(const SheetText& sheet, int column)
{
    for (int row = 1; row < sheet.rowCount(); ++row)
        if (isTyped(sheet.cell(row, column), row))
            return true;
    return false;
}

int typedColumns(const SheetText& sheet)
{
    int count = 0;
    for (int column = 1; column < sheet.columnCount(); ++column)
        count += anyTypedIn(sheet, column) ? 1 : 0;
    return count;
}

/// What one analysis reads.
std::string readText(const decay::CellText& cell, int typed, int incompleteColumn)
{
    if (incompleteColumn > 0)
        return "column " + std::to_string(incompleteColumn) + " is incomplete";
    const int end = decay::endOfSamples(cell);
    const std::string text = std::to_string(end - 1) + " of " + std::to_string(typed) + " samples";
    return end > typed ? text : text + ": " + reasonToEnd(end);
}

std::string ratiosText(const decay::CellText& cell, int typed)
{
    const sternvolmer::RatioData data = sternvolmer::readSternVolmerData(cell);
    if (!data.referenceFirst)
        return "the first column is not at 0 M";
    return readText(cell, typed, data.incompleteColumn);
}

std::string decaysText(const decay::CellText& cell, int typed)
{
    constexpr double kAnyLevel = 1; // excludes nothing
    const decay::DecayData data = decay::readDecayData(cell, kAnyLevel, models::kModelCount);
    return readText(cell, typed, data.incompleteColumn);
}

std::string readSamplesText(const SheetText& sheet)
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

} // namespace

std::string samplesText(const SheetText& sheet, int droppedCells)
{
    const std::string dropped = droppedCells == 0   ? ""
                                : droppedCells == 1 ? "1 pasted cell did not fit; "
                                                    : std::to_string(droppedCells) + " pasted cells did not fit; ";
    return dropped + readSamplesText(sheet);
}

} // namespace app
