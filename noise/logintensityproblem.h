#pragma once

#include "noise/assumption.h"
#include "noise/jointproblem.h"
#include "sternvolmer/ratioproblem.h"

#include <vector>

namespace noise
{

/// The fit of ln intensity, with the reference's own intensity as one more constant, which appendCentred() determines.
/// The deviations are d_i = ln(model ratio / observed ratio). Where a model ratio is not positive, residuals are NaN.
class LogIntensityProblem final : public JointProblem
{
public:
    LogIntensityProblem(const sternvolmer::RatioPoints& points, int model, double Cp, const Errors& errors);

    int pointCount() const override { return m_points.count; }

private:
    std::vector<double> calculated(const fit::Parameters& a) override;

    sternvolmer::RatioPoints m_points;
    sternvolmer::RatioProblem m_ratios;
    std::vector<double> m_errors;
};

} // namespace noise
