#pragma once

#include "noise/noisefit.h"

#include <string>
#include <vector>

namespace noise
{

/// Relative standard errors of typed values; 0: not typed.
struct TypedErrors {
    double tau0 = 0, s = 0, Cp = 0;
    bool operator==(const TypedErrors&) const = default;
};

/// The parts of a standard error, in the unit of the constant.
struct ErrorParts {
    double scatter = 0; // infinity: not determined
    double tau0 = 0, s = 0, Cp = 0;
    double total() const;
};

/// A constant ready to print.
struct ReadyConstant {
    std::string name;
    std::string unit; // "M⁻¹"; empty for a plain number
    double value = 0;
    bool fixed = false; // this constant or the one from which it follows: no error by scatter
    ErrorParts error{};
};

/// The constants of an analysis, and what follows from them: the Stern-Volmer constants KSV = k tau0 of collisions, the
/// accessible share 1 / (1 + F) or the share of the first site, and where the law has a sphere its radius r and the
/// volume that K adds to the probe's. s: radius of the probe, nm.
/// Errors of typed values move the least-squares constants to first order by -(J'J)^-1 J' dr for changes dr of the
/// residuals.
std::vector<ReadyConstant> readyConstants(const AnalysedConstants& analysed, const RatioFit& ratioFit, double s,
                                          const TypedErrors& typed = {});

} // namespace noise
