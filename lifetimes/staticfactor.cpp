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

/// The line through the logarithms y of the rows and through the reference, at Q = 0 and y = 0. error: of each y.
Slope slopeOf(const std::vector<StaticRow>& rows, const std::vector<double>& y, double error, double quantile)
{
    const auto points = static_cast<double>(rows.size() + 1);
    double meanQ = 0, meanY = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        meanQ += rows[i].Q / points;
        meanY += y[i] / points;
    }
    double QQ = meanQ * meanQ, QY = meanQ * meanY; // of the reference
    for (std::size_t i = 0; i < rows.size(); ++i) {
        QQ += (rows[i].Q - meanQ) * (rows[i].Q - meanQ);
        QY += (rows[i].Q - meanQ) * (y[i] - meanY);
    }
    return {QY / QQ, quantile * error / std::sqrt(QQ)};
}

} // namespace

double StaticRow::logPerQ() const { return std::log(s) / Q; }

bool StaticRow::differsFromOne() const { return std::abs(std::log(s)) > 2 * relativeError; }

double StaticFactor::highestQ() const
{
    double Q = 0;
    for (const StaticRow& row : rows)
        Q = std::max(Q, row.Q);
    return Q;
}

StaticFactor staticFactorOf(const Measurements& measurements, const std::vector<CombinedFit>& fits,
                            const ErrorRatio& ratio)
{
    StaticFactor factor;
    if (!measurements.has(Kind::Intensity) || !measurements.has(Kind::Lifetime))
        return factor;
    std::vector<CombinedFit> all = withNegativeK(measurements, fits, ratio);
    all.insert(all.end(), fits.begin(), fits.end());
    const CombinedFit* describing = best(all);
    const RelativeErrors errors = describing ? describing->errors : RelativeErrors{0, 0};
    const double error = std::hypot(errors.intensity, errors.lifetime); // of s without the reference
    std::vector<double> logS, logLifetime;
    for (std::size_t i = 1; i < measurements.samples.size(); ++i) {
        const double Q = measurements.samples[i].Q, lifetime = measurements.ratio(Kind::Lifetime, i);
        const double s = lifetime > 0 ? measurements.ratio(Kind::Intensity, i) / lifetime : 0;
        if (s == 0 || Q == 0)
            continue;
        factor.rows.push_back({i, Q, s, std::sqrt(2.0) * error});
        logS.push_back(std::log(s));
        logLifetime.push_back(std::log(lifetime));
    }
    if (factor.rows.empty())
        return factor;
    const double quantile = describing ? describing->scatter[1].quantile : 0;
    factor.hasErrors = quantile > 0;
    factor.slope = slopeOf(factor.rows, logS, error, quantile);
    factor.lifetimeSlope = slopeOf(factor.rows, logLifetime, errors.lifetime, quantile);
    return factor;
}

} // namespace lifetimes
