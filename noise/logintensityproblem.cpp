#include "noise/logintensityproblem.h"

#include <cmath>

namespace noise
{

LogIntensityProblem::LogIntensityProblem(const sternvolmer::RatioPoints& points, int model, double Cp,
                                         const Errors& errors)
    : m_points(points), m_ratios(points, model, 0, Cp)
{
    for (int sample = 1; sample <= points.count; ++sample)
        m_errors.push_back(errors.ofSample(sample));
}

double LogIntensityProblem::residual(int point, const fit::Parameters& a)
{
    const auto i = static_cast<std::size_t>(point - 1);
    for (const Kept& kept : m_kept)
        if (!kept.residuals.empty() && fit::sameBits(kept.a, a))
            return kept.residuals[i];
    Kept& replaced = m_kept[m_oldest];
    m_oldest = 1 - m_oldest;
    replaced = {a, calculated(a)};
    return replaced.residuals[i];
}

std::vector<double> LogIntensityProblem::calculated(const fit::Parameters& a)
{
    const sternvolmer::RatioSlots fitted = m_ratios.fittedValues(a);
    std::vector<double> residuals;
    double weighted = 0, weights = 0;
    for (std::size_t i = 0; i < m_errors.size(); ++i) {
        const double weight = 1 / (m_errors[i] * m_errors[i]);
        residuals.push_back(std::log(fitted[i + 1] / m_points.ratio[i + 1]));
        weighted += weight * residuals.back();
        weights += weight;
    }
    for (std::size_t i = 0; i < m_errors.size(); ++i)
        residuals[i] = (residuals[i] - weighted / weights) / m_errors[i];
    return residuals;
}

} // namespace noise
