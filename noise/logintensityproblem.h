#pragma once

#include "noise/assumption.h"
#include "sternvolmer/ratioproblem.h"

#include <vector>

namespace noise
{

/// The fit of ln intensity, with the reference's own intensity as one more constant. For given parameters the best
/// value of this constant is a weighted mean, so that it needs no slot: the residual of sample i is (d_i - m) / e_i,
/// with d_i = ln(model ratio / observed ratio), e_i its relative error and m the mean of all d with the weights 1 /
/// e^2. Parameters are in their real units. Where a model ratio is not positive, residuals are NaN.
class LogIntensityProblem final : public fit::Problem
{
public:
    LogIntensityProblem(const sternvolmer::RatioPoints& points, int model, double Cp, const Errors& errors);

    int pointCount() const override { return m_points.count; }
    double residual(int point, const fit::Parameters& a) override;

private:
    struct Kept {
        fit::Parameters a{};
        std::vector<double> residuals; // of points 1, 2, ...; empty: not calculated yet
    };
    std::vector<double> calculated(const fit::Parameters& a);

    sternvolmer::RatioPoints m_points;
    sternvolmer::RatioProblem m_ratios;
    std::vector<double> m_errors;
    std::array<Kept, 2> m_kept; // central differences ask for two parameter vectors in turn
    std::size_t m_oldest = 0;
};

} // namespace noise
