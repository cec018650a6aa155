#pragma once

#include <span>

namespace leastsquares
{

/// Do the signs of consecutive residuals change as often as by chance? Few changes mean that the curve bends otherwise
/// than the data.
struct RunsTest {
    int above = 0, below = 0; // residuals of either sign; those of exactly 0 are left out
    int runs = 0;             // stretches of one sign
    double probability = 1;   // of so few runs or fewer by chance
};

/// Exact. Method: A. Wald, J. Wolfowitz, Ann. Math. Stat. 11 (1940) 147.
RunsTest runsTest(std::span<const double> residuals);

} // namespace leastsquares
