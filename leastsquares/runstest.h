#pragma once

#include <span>

namespace leastsquares
{

inline constexpr int kLeastForRuns = 8; // residuals

/// Tests whether the signs of consecutive residuals change as often as by chance. Few changes mean that the curve has
/// another shape than the data.
struct RunsTest {
    int above = 0, below = 0; // number of residuals of each sign; residuals of exactly 0 are skipped
    int runs = 0;             // sequences of the same sign
    double probability = 1;   // of so few runs or fewer by chance

    /// With seven residuals even the rarest order has a probability of 5.7 %, so that the test can say nothing.
    bool hasEnough() const { return above + below >= kLeastForRuns; }
};

/// Exact. Method: A. Wald, J. Wolfowitz, Ann. Math. Stat. 11 (1940) 147.
RunsTest runsTest(std::span<const double> residuals);

} // namespace leastsquares
