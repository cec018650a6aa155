#pragma once

#include "leastsquares/minimum.h"

namespace leastsquares
{

/// A minimum; undetermined: the parameters that may have other values as well.
struct Solution {
    fit::Parameters values{};
    double sumOfSquares = 0;
    FreeSlots undetermined;
};

/// A problem whose minima are sorted out.
struct SolvedProblem {
    fit::Problem& problem;
    FreeSlots free;
    int countedPoints = 0;     // points that can deviate
    Ranges usual = kAnySizes;  // preferred where the data leave a parameter open
    fit::Parameters nearest{}; // positive values; solutions close to them are preferred, likewise
};

/// The deepest of the minima and every different one that is equally good, best first. Where solutions differ only in
/// what the data do not determine, the one nearest the preferred values stands for all.
std::vector<Solution> equallyGoodSolutions(const SolvedProblem& solved, std::vector<Minimum> minima);

} // namespace leastsquares
