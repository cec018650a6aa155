#pragma once

#include "leastsquares/minimum.h"

namespace leastsquares
{

/// Goes from low (share 0) to high (share 1) in even factors.
double between(const Range& range, double share);

/// Sets the free parameters to the n-th (1, 2, ...) of values that are spread evenly over the logarithms of ranges.
/// Source: J. H. Halton, Numer. Math. 2 (1960) 84.
void spread(fit::Parameters& values, const FreeSlots& free, const Ranges& ranges, int n);

} // namespace leastsquares
