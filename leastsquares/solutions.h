#pragma once

#include "leastsquares/minimum.h"

namespace leastsquares
{

/// A minimum; undetermined: the parameters that the data do not determine.
struct Solution {
    fit::Parameters values{};
    double sumOfSquares = 0;
    FreeSlots undetermined;
};

/// A problem and its preferences among equally good minima.
struct SolvedProblem {
    fit::Problem& problem;
    FreeSlots free;
    int countedPoints = 0;     // points that can deviate
    Ranges usual = kAnySizes;  // preferred if the data do not determine a parameter
    fit::Parameters nearest{}; // positive values; solutions close to them are preferred, likewise
};

/// The deepest minimum and every different minimum that is equally good, best first. Of solutions that differ only in
/// parameters that the data do not determine, only the one nearest to the preferred values is kept.
std::vector<Solution> equallyGoodSolutions(const SolvedProblem& solved, std::vector<Minimum> minima);

} // namespace leastsquares
