#pragma once

#include "leastsquares/solutions.h"
#include "trust/requestedfit.h"

#include <functional>
#include <vector>

namespace trust
{

/// The minima reached from the typed values and other starts.
struct SearchResult {
    double typedSum = 0; // sum of squares at the typed values; infinity when it is not defined there
    std::vector<leastsquares::Solution>
        solutions;          // the best solution and every different solution that is equally good, best first
    bool cancelled = false; // then there are no solutions
};

/// Receives the progress of the search, 0..1; returning false cancels it.
using SearchProgress = std::function<bool(double done)>;

/// Searches for the least-squares minimum of a model with Levenberg-Marquardt fits from the typed values and from the
/// best of many starts, which are spread evenly over the logarithms of the sensible ranges. Fixed parameters keep their
/// typed values. The same input always gives the same result.
SearchResult searchStart(const RequestedFit& requested, const SearchProgress& progress = {});

} // namespace trust
