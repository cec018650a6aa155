#include "leastsquares/spread.h"

#include <array>
#include <cmath>

namespace leastsquares
{
namespace
{

/// The n-th number of a sequence spread evenly between 0 and 1: the digits of n, mirrored at the point.
double haltonNumber(int n, int base)
{
    double number = 0;
    for (double place = 1.0 / base; n > 0; n /= base, place /= base)
        number += place * (n % base);
    return number;
}

} // namespace

double between(const Range& range, double share) { return range.low * std::pow(range.high / range.low, share); }

void spread(fit::Parameters& values, const FreeSlots& free, const Ranges& ranges, int n)
{
    constexpr std::array<int, 4> kBases{0, 2, 3, 5};
    for (const std::size_t slot : free)
        values[slot] = between(ranges[slot], haltonNumber(n, kBases[slot]));
}

} // namespace leastsquares
