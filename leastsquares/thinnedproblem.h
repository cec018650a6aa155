#pragma once

#include "fit/gaussnewton.h"

namespace leastsquares
{

/// Every n-th point of a problem with many points, for a first search that is n times as fast.
class ThinnedProblem final : public fit::Problem
{
public:
    /// Roughly the largest number of points kept.
    static constexpr int kPointsKept = 120;

    explicit ThinnedProblem(fit::Problem& problem)
        : m_problem(problem), m_stride((problem.pointCount() + kPointsKept - 1) / kPointsKept)
    {
    }

    bool leavesOut() const { return m_stride > 1; }
    int pointCount() const override { return m_stride > 0 ? (m_problem.pointCount() + m_stride - 1) / m_stride : 0; }
    double residual(int point, const fit::Parameters& a) override
    {
        return m_problem.residual(1 + (point - 1) * m_stride, a);
    }

private:
    fit::Problem& m_problem;
    int m_stride;
};

} // namespace leastsquares
