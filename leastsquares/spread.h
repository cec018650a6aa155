#pragma once

#include "leastsquares/minimum.h"

namespace leastsquares
{

/// Interpolates from low (share 0) to high (share 1) on a logarithmic scale.
double between(const Range& range, double share);

/// Sets the free parameters to the n-th vector (1, 2, ...) of a sequence spread evenly over the logarithms of ranges.
/// Source: J. H. Halton, Numer. Math. 2 (1960) 84.
void spread(fit::Parameters& values, const FreeSlots& free, const Ranges& ranges, int n);

} // namespace leastsquares
