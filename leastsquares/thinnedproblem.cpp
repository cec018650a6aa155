#include "leastsquares/thinnedproblem.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace leastsquares
{
namespace
{

constexpr int kMostKept = 120;

} // namespace

ThinnedProblem::ThinnedProblem(fit::Problem& problem) : m_problem(problem) {}

bool ThinnedProblem::isLarge() const { return m_problem.pointCount() > kMostKept; }

int ThinnedProblem::pointCount() const
{
    return leavesOut() ? static_cast<int>(m_kept.size()) : m_problem.pointCount();
}

double ThinnedProblem::residual(int point, const fit::Parameters& a)
{
    if (!leavesOut())
        return m_problem.residual(point, a);
    const Kept& kept = m_kept[static_cast<std::size_t>(point) - 1];
    return kept.factor * m_problem.residual(kept.point, a);
}

void ThinnedProblem::note(const fit::Parameters& values)
{
    constexpr double kNone = std::numeric_limits<double>::infinity();
    m_noted.resize(static_cast<std::size_t>(m_problem.pointCount()), {kNone, -kNone});
    int point = 0;
    for (Span& noted : m_noted) {
        const double residual = m_problem.residual(++point, values);
        if (std::isfinite(residual))
            noted = {std::min(noted.low, residual), std::max(noted.high, residual)};
    }
}

void ThinnedProblem::thin()
{
    constexpr double kEven = 0.1; // share of the points that are kept whatever their residuals are
    std::vector<double> shares;
    for (const Span& noted : m_noted)
        shares.push_back(noted.high > noted.low ? (noted.high - noted.low) * (noted.high - noted.low) : 0);
    const double sum = std::accumulate(shares.begin(), shares.end(), 0.0);
    if (!(sum > 0 && std::isfinite(sum)))
        return;
    double expected = 0; // number of points kept up to the present one
    int point = 0;
    for (double share : shares) {
        share = kMostKept * ((1 - kEven) * share / sum + kEven / static_cast<double>(shares.size()));
        const double before = expected;
        expected += share;
        ++point;
        if (std::floor(expected + 0.5) > std::floor(before + 0.5))
            m_kept.push_back({point, 1 / std::sqrt(std::min(share, 1.0))});
    }
}

} // namespace leastsquares
