#pragma once

#include "decay/normalization.h"
#include "tests/support/simulatedsession.h"

#include <vector>

/// The decay sessions with which fits are tested.
namespace support
{

inline constexpr double kFitRegionLevel = 1e-3;

inline decay::SampleTable tableFrom(const TypedSheet& sheet, int FitRegionMode = 2)
{
    decay::DecayData data = decay::readDecayData(cellsOf(sheet), kFitRegionLevel, 1);
    decay::normaliseAmplitudes(data.samples);
    decay::BuildDecayCurves(data.samples, FitRegionMode);
    return data.samples;
}

// Acridone quenched by iodide: lifetimes of github.com/chemfd/PhotochemistryWorkshopAnswers, 04-workshopweek4.Rmd.
inline const TypedSheet kAcridoneSheet{{"0", "1", "1", "17.6"},   {"0.04", "1", "1", "3.9"}, {"0.1", "1", "1", "1.8"},
                                       {"0.2", "1", "1", "0.95"}, {"0.3", "1", "1", "0.64"}, {"0.5", "1", "1", "0.39"},
                                       {"0.8", "1", "1", "0.25"}};

inline const std::vector<double> kWideRange{0, 0.02, 0.04, 0.06, 0.08, 0.1};               // M
inline const std::vector<double> kMicelleRange{0, 0.2e-3, 0.4e-3, 0.8e-3, 1.2e-3, 1.6e-3}; // M
inline constexpr double kProbe = 2e-4; // M, enough for a complex to bind a visible part of the quencher

// Ru-Re photocatalyst in DMF with BNAH, 298 K: PMC5897880, Table 4.
inline const decay::Reference kRuRe{2, {0, 0.04, 0.96}, {0, 1 / 142.9e-9, 1 / 900.9e-9}};
// Pyrene in SDS micelles with octyl iodide: J. Phys. Chem. 86 (1982) 1636; K = 1290 per M, kq1 = 5.9e6 per s.
inline const decay::Reference kPyrene{1, {0, 1}, {0, 1 / 200e-9}};
// Tryptophan of serum albumin; the amplitudes are chosen, not published.
inline const decay::Reference kAlbumin{3, {0, 0.5, 0.3, 0.2}, {0, 1 / 6.5e-9, 1 / 2.15e-9, 1 / 0.1e-9}};

} // namespace support
