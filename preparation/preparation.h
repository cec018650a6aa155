#pragma once

#include "preparation/replicates.h"
#include "preparation/series.h"

namespace preparation
{

/// 10^((Aex + Aem) / 2), by which absorption weakens light that is excited and gathered in the middle of a 1 cm cell:
/// half of the path of either light lies in the sample. 1 at Aex = Aem = 0.
/// Source: J. R. Lakowicz, Principles of Fluorescence Spectroscopy, 3rd ed., Springer 2006, eq. 2.6.
double innerFilterFactor(double Aex, double Aem);

/// Above this Aex + Aem the factor is only approximate.
inline constexpr double kLargestSureAbsorbance = 0.1;

struct PreparedSample {
    Replicates reading;
    double blank = 0;
    double absorbance = 0;    // Aex + Aem
    double innerFactor = 1;   // by which the intensity was multiplied
    double dilution = 1;      // (V0 + added) / V0, added: since the reference; multiplies the intensity, too
    double Q = 0;             // total quencher, M: stock * added / (V0 + added); 0 if the dilution is not corrected
    double Phi = 0;           // (mean reading - blank) * innerFactor * dilution
    double relativeError = 0; // of Phi; 0: unknown
};

struct Prepared {
    Steps steps;
    std::vector<PreparedSample> samples;
    std::optional<Pooled> scatter; // relative, of one reading; none: not known
};

/// Corrects the readings. All readings are taken to have the same relative deviation d, and all blanks the same
/// deviation b, each pooled over the samples; without repeated blanks d holds for blanks, too. So the relative error of
/// an intensity is sqrt((d mean)^2 / n + b^2 / nBlank) / (mean - blank). The factors are taken as exact. sheetSamples:
/// the samples that the sheet has; every one needs a reading.
std::variant<Prepared, Refusal> prepare(const TypedSeries& typed, int sheetSamples = 0);

} // namespace preparation
