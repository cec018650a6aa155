#pragma once

#include "trust/task.h"

namespace trust
{

/// A least-squares minimum; undetermined: the constants that may have other values as well.
struct Solution {
    fit::Parameters values{};
    double sumOfSquares = 0;
    FreeSlots undetermined;
};

/// The deepest of the minima and every different one that is equally good, best first. Of those that differ only in
/// what the data do not determine, the one nearest the typed values stands for all.
std::vector<Solution> equallyGoodSolutions(const Task& task, std::vector<Minimum> minima);

} // namespace trust
