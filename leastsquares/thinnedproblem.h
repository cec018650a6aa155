#pragma once

#include "fit/gaussnewton.h"

#include <vector>

namespace leastsquares
{

/// The points of a large problem that tell parameters apart, for a first search that is many times as fast. Its sum of
/// squares estimates the sum over all points.
class ThinnedProblem final : public fit::Problem
{
public:
    /// Until thin() it has all points. The problem must outlive it.
    explicit ThinnedProblem(fit::Problem& problem);

    bool isLarge() const; // so large that thinning pays
    /// Notes the residuals for one of the parameters among which the search will have to choose.
    void note(const fit::Parameters& values);
    /// Keeps points the more densely, the more their residuals differ between the parameters noted. A kept point has
    /// the weight of the left-out points for which it stands: systematic sampling with unequal probabilities.
    /// Source: W. G. Madow, Ann. Math. Stat. 20 (1949) 333.
    void thin();

    bool leavesOut() const { return !m_kept.empty(); }
    int pointCount() const override;
    double residual(int point, const fit::Parameters& a) override;

private:
    struct Span { // of the residuals of a point
        double low, high;
    };
    struct Kept {
        int point;
        double factor; // square root of its weight
    };

    fit::Problem& m_problem;
    std::vector<Span> m_noted;
    std::vector<Kept> m_kept;
};

} // namespace leastsquares
