#include "fit/roundingwatch.h"

#include <cmath>

namespace fit
{
namespace
{

constexpr double kClearChange = 1e8; // smallest safe change of the curves for a derivative, in units of the rounding
constexpr int kMostRises = 3;        // of the sum of squares; a fit that starts far away overshoots once or twice
constexpr double kSlowChange = 1e-4; // of the sum of squares, relative; the usual tolerance ends a fit there
constexpr int kMostSlowPasses = 10;  // rounding that doubles with each one grows at most a thousandfold

} // namespace

bool RoundingWatch::couldShow(const Linearisation& pass, double tolerance)
{
    if (m_rounding == 0)
        return false;
    if (pass.sum > m_lastSum)
        ++m_rises;
    m_lastSum = pass.sum;
    if (std::abs(1 - pass.ratio()) < kSlowChange)
        ++m_slowPasses;
    return m_rises > kMostRises || m_slowPasses > kMostSlowPasses || derivativesDrown(pass) ||
           convergenceIsATie(pass, tolerance);
}

/// Fixed parameters count as well: their columns enter the triangular system.
bool RoundingWatch::derivativesDrown(const Linearisation& pass) const
{
    const double smallest = kClearChange * m_rounding;
    for (int j = 1; j <= pass.parameterCount; ++j) {
        const double change = std::abs(pass.steps[j]) * std::sqrt(pass.normal[j][j] / pass.pointCount);
        if (!(change >= smallest))
            return true;
    }
    return false;
}

bool RoundingWatch::convergenceIsATie(const Linearisation& pass, double tolerance) const
{
    const double roundingOfRatio =
        (roundingOfSum(pass.sum, pass.pointCount) + pass.ratio() * roundingOfSum(pass.previousSum, pass.pointCount)) /
        pass.previousSum;
    return std::abs(std::abs(1 - pass.ratio()) - tolerance) <= roundingOfRatio;
}

/// Largest error of S = sum r^2 for errors rounding (1 + |r|) of the residuals: 2 rounding (sum |r| + S), where
/// sum |r| is sqrt(N S) at most.
double RoundingWatch::roundingOfSum(double sum, int pointCount) const
{
    return 2 * m_rounding * (std::sqrt(pointCount * sum) + sum);
}

} // namespace fit
