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

std::vector<double> LogIntensityProblem::calculated(const fit::Parameters& a)
{
    const sternvolmer::RatioSlots fitted = m_ratios.fittedValues(a);
    std::vector<double> deviations, residuals;
    for (std::size_t i = 1; i <= m_errors.size(); ++i)
        deviations.push_back(std::log(fitted[i] / m_points.ratio[i]));
    appendCentred(residuals, deviations, m_errors);
    return residuals;
}

} // namespace noise
