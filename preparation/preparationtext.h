#pragma once

#include "preparation/preparation.h"

namespace preparation
{

/// Concentrations and intensities of the samples of the sheet, as its texts.
struct SheetSamples {
    std::vector<std::string> Q{}, Phi{}; // of equal length
    bool operator==(const SheetSamples&) const = default;
};

/// What goes into the sheet, with six significant digits. Without the correction of the dilution, the concentrations
/// stay as they are in the sheet.
SheetSamples sheetTexts(const Prepared& prepared, const SheetSamples& before);

/// Relative errors with three significant digits, for the analyses; empty if they are not known.
std::vector<double> relativeErrors(const Prepared& prepared);

/// What is shown of a sample.
enum class Figure { Mean, Deviation, Count, QBefore, QAfter, PhiBefore, PhiAfter, Error };

struct FigureRow {
    const char* title;
    bool Steps::*step; // without which it is not shown; none: shown always
    const char* meaning;
};
inline constexpr std::array<FigureRow, 8> kFigures{{
    {"Mean", &Steps::replicates, "mean of the readings"},
    {"SD", &Steps::replicates, "standard deviation of one reading"},
    {"n", &Steps::replicates, "number of readings"},
    {"Q in sheet", &Steps::dilution, "total quencher in M, as it stands in the sheet"},
    {"Q prepared", &Steps::dilution, "stock solution times added volume over total volume, M"},
    {"Φ in sheet", nullptr, "intensity as it stands in the sheet"},
    {"Φ prepared", nullptr, "intensity after all steps"},
    {"Error /%", &Steps::replicates, "relative standard error of the prepared intensity"},
}};

/// The figures of a sample (counted from 0) by Figure. Samples that are not prepared have only those of the sheet.
std::array<std::string, kFigures.size()> figuresOf(const Prepared& prepared, const SheetSamples& before,
                                                   std::size_t sample);

/// What the user should know of the corrections, in sentences.
std::string notes(const Prepared& prepared);

} // namespace preparation
