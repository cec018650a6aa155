#pragma once

#include "fit/realparameters.h"
#include "fit/statistics.h"
#include "sternvolmer/ratiopoints.h"

namespace sternvolmer
{

/// The least-squares problem of fitting ratios F0/F against total quencher. Parameters are as the engine holds them:
/// natural logarithms in log mode.
class RatioProblem final : public fit::Problem
{
public:
    /// Cp: total probe, M.
    RatioProblem(const RatioPoints& points, int model, int logMode, double Cp);

    int pointCount() const override { return m_points.count; }
    double residual(int point, const fit::Parameters& a) override;
    void residuals(int first, const fit::Parameters& a, std::span<double> room) override;

    /// Model ratio at total quencher Q, M.
    double value(double Q, const fit::Parameters& a);

    /// Model ratios of points 1..N, 0 in the other slots.
    RatioSlots fittedValues(const fit::Parameters& a);

    fit::Statistics statistics(const fit::Parameters& a);

private:
    double law(double Q, const fit::Parameters& a);

    RatioPoints m_points;
    int m_model;
    int m_logMode;
    double m_Cp; // M
    fit::RealParameters m_real;
};

} // namespace sternvolmer
