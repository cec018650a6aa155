#include "noise/jointproblem.h"

namespace noise
{

double JointProblem::residual(int point, const fit::Parameters& a)
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

void appendCentred(std::vector<double>& residuals, std::span<const double> deviations, std::span<const double> errors)
{
    double weighted = 0, weights = 0;
    for (std::size_t i = 0; i < deviations.size(); ++i) {
        const double weight = 1 / (errors[i] * errors[i]);
        weighted += weight * deviations[i];
        weights += weight;
    }
    for (std::size_t i = 0; i < deviations.size(); ++i)
        residuals.push_back((deviations[i] - weighted / weights) / errors[i]);
}

} // namespace noise
