#pragma once

#include "leastsquares/solutions.h"
#include "trust/task.h"

#include <functional>
#include <vector>

namespace trust
{

/// What the typed values and other starts lead to.
struct SearchResult {
    double typedSum = 0; // sum of squares at the typed values; infinity when it is not defined there
    std::vector<leastsquares::Solution>
        solutions;          // the best one and every different one that is equally good, best first
    bool cancelled = false; // there are no solutions then
};

/// Told how far the search is, 0..1; false cancels it.
using SearchProgress = std::function<bool(double done)>;

/// Searches the least-squares minimum of a model: Levenberg-Marquardt fits from the typed values and from the best of
/// many others, spread evenly over the logarithms of the sensible ranges. Fixed parameters keep their typed values.
/// The same task always gives the same result.
SearchResult searchStart(const Task& task, const SearchProgress& progress = {});

} // namespace trust
