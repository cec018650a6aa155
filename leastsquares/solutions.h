#pragma once

#include "leastsquares/minimum.h"

namespace leastsquares
{

/// A minimum that represents all others like it.
struct Solution {
    fit::Parameters values{};
    double sumOfSquares = 0;
    double lowestSum = 0;   // of all that it represents; at most a tenth of the usual share lower
    FreeSlots undetermined; // the parameters that the data do not determine
};

/// Other parameters with the same curve; nullptr if there are none.
using Exchange = fit::Parameters (*)(const fit::Parameters&);

/// A problem and its preferences among equally good minima.
struct SolvedProblem {
    fit::Problem& problem;
    FreeSlots free;
    int countedPoints = 0;     // points that can deviate
    bool hasNoise = true;      // false: the data can tell any two sums apart
    Ranges usual = kAnySizes;  // preferred if the data do not determine a parameter
    fit::Parameters nearest{}; // positive values; solutions close to them are preferred, likewise
    Exchange exchanged = nullptr;
};

/// The largest sum of squares in the 95 % region of p parameters that are fitted to n points with equal errors of
/// unknown size: S (1 + p / (n - p) F(0.95; p, n - p)) for the least sum S. S itself without a degree of freedom.
/// Source: E. M. L. Beale, J. Roy. Statist. Soc. B 22 (1960) 41.
double regionLimit(double leastSum, int n, int p);

/// The deepest minimum and every different minimum that the data cannot tell from it, best first. Minima are the same
/// if no ridge parts them, or if they differ only in parameters that the data do not determine, or by an exchange; the
/// deepest is kept and, of equally deep ones, the nearest to the preferred values.
std::vector<Solution> equallyGoodSolutions(const SolvedProblem& solved, std::vector<Minimum> minima);

} // namespace leastsquares
