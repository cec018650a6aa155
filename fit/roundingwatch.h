#pragma once

#include "fit/gausselimination.h"

#include <limits>

namespace fit
{

/// One pass of the engine over its data points.
struct Linearisation {
    int pointCount = 0;
    int parameterCount = 0;
    Vector7 steps{};        // of the derivatives, h(j)
    Matrix7 normal{};       // upper triangle of the normal matrix J'J
    double sum = 0;         // of squared residuals, S
    double previousSum = 1; // S of the previous pass; 1 before the first pass

    /// S / S_old, which decides whether the run has converged.
    double ratio() const { return sum / previousSum; }
};

/// Follows a run whose residuals have rounding errors and reports when these errors could change the result.
///
/// Rounding errors change no printed digit if four conditions hold. First, each derivative comes from a change of the
/// curves far above the rounding: its relative error is 2 rounding / c, where c = |h(j)| sqrt(A(j,j) / N) is the root
/// mean square of this change. Second, the convergence test is not so close that the rounding of S / S_old decides it.
/// Third, the run settles: if S rises repeatedly, the steps overshoot, and two runs that differ by rounding diverge.
/// Fourth, the run does not creep: while S falls slowly along a valley, the steps can overshoot across it, and rounding
/// doubles with every pass long before S rises.
class RoundingWatch
{
public:
    /// rounding: largest error of a residual, relative to 1 + |residual|; 0: never reports.
    explicit RoundingWatch(double rounding) : m_rounding(rounding) {}

    /// Must be called once for every pass. tolerance: of the convergence test.
    bool couldShow(const Linearisation& pass, double tolerance);

private:
    bool derivativesDrown(const Linearisation& pass) const;
    bool convergenceIsATie(const Linearisation& pass, double tolerance) const;
    double roundingOfSum(double sum, int pointCount) const;

    double m_rounding;
    double m_lastSum = std::numeric_limits<double>::infinity();
    int m_rises = 0;      // of the sum of squares so far
    int m_slowPasses = 0; // passes so far that have changed it little
};

} // namespace fit
