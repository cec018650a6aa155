#include "lifetimes/staticfactor.h"

#include "models/catalogue.h"

#include <algorithm>
#include <cmath>

namespace lifetimes
{
namespace
{

/// The fits of models with K from the other side of 0.
std::vector<CombinedFit> withNegativeK(const Measurements& measurements, const std::vector<CombinedFit>& fits,
                                       const ErrorRatio& ratio)
{
    std::vector<CombinedFit> negative;
    for (const CombinedFit& fit : fits)
        if (const models::Model& row = models::row(fit.model); row.uses(models::Box::K)) {
            fit::Parameters start = fit.minimum.values;
            start[1] = -models::parameter(fit.model, 1).usual.low;
            negative.push_back(fitFrom(measurements, fit.model, ratio, start));
        }
    return negative;
}

const CombinedFit* best(const std::vector<CombinedFit>& fits)
{
    const CombinedFit* found = nullptr;
    for (const CombinedFit& fit : fits)
        if (fit.AICc && (!found || *fit.AICc < *found->AICc))
            found = &fit;
    return found;
}

/// Fills the straight line of ln s against Q; the reference is one of its points.
void setSlope(StaticFactor& factor, double error, double quantile)
{
    double meanQ = 0, meanLog = 0, QQ = 0, QLog = 0;
    const auto points = static_cast<double>(factor.rows.size() + 1);
    for (const StaticRow& row : factor.rows) {
        meanQ += row.Q / points;
        meanLog += std::log(row.s) / points;
    }
    QQ = meanQ * meanQ; // of the reference, at Q = 0 and ln s = 0
    QLog = meanQ * meanLog;
    for (const StaticRow& row : factor.rows) {
        QQ += (row.Q - meanQ) * (row.Q - meanQ);
        QLog += (row.Q - meanQ) * (std::log(row.s) - meanLog);
    }
    factor.slope = QLog / QQ;
    factor.slopeError = error / std::sqrt(QQ);
    factor.halfWidth = quantile * factor.slopeError;
}

} // namespace

double StaticRow::logPerQ() const { return std::log(s) / Q; }

bool StaticRow::differsFromOne() const { return std::abs(std::log(s)) > 2 * relativeError; }

StaticFactor staticFactorOf(const Measurements& measurements, const std::vector<CombinedFit>& fits,
                            const ErrorRatio& ratio)
{
    StaticFactor factor;
    if (!measurements.has(Kind::Intensity) || !measurements.has(Kind::Lifetime))
        return factor;
    std::vector<CombinedFit> all = withNegativeK(measurements, fits, ratio);
    all.insert(all.end(), fits.begin(), fits.end());
    const CombinedFit* describing = best(all);
    const double ofOne = describing ? std::hypot(describing->errors.intensity, describing->errors.lifetime) : 0;
    for (std::size_t i = 1; i < measurements.samples.size(); ++i) {
        const double intensity = measurements.ratio(Kind::Intensity, i),
                     lifetime = measurements.ratio(Kind::Lifetime, i);
        if (intensity > 0 && lifetime > 0 && measurements.samples[i].Q > 0)
            factor.rows.push_back({i, measurements.samples[i].Q, intensity / lifetime, std::sqrt(2.0) * ofOne});
    }
    if (!factor.rows.empty())
        setSlope(factor, ofOne, describing ? describing->scatter[1].quantile : 0);
    return factor;
}

} // namespace lifetimes
