#include "lifetimes/picture.h"

#include <algorithm>

namespace lifetimes
{
namespace
{

/// Concentrations at which the line of a model is calculated.
std::vector<double> stepsTo(double largest)
{
    constexpr int kSteps = 100;
    std::vector<double> Q;
    for (int i = 0; i <= kSteps; ++i)
        Q.push_back(largest * i / kSteps);
    return Q;
}

double largestQ(const Measurements& measurements)
{
    double largest = 0;
    for (const Sample& sample : measurements.samples)
        largest = std::max(largest, sample.Q);
    return largest;
}

std::vector<PicturePoint> pointsAt(const std::vector<double>& Q, const std::vector<double>& values, double unit = 1)
{
    std::vector<PicturePoint> points;
    for (std::size_t i = 0; i < Q.size(); ++i)
        points.push_back({Q[i], values[i] / unit});
    return points;
}

} // namespace

PictureSeries pictureOf(const Measurements& measurements, Kind kind, const CombinedFit* fit)
{
    PictureSeries series;
    std::vector<double> Q;
    for (const std::size_t i : measurements.observed(kind)) {
        const Sample& sample = measurements.samples[i];
        Q.push_back(sample.Q);
        series.ratios.push_back({sample.Q, measurements.ratio(kind, i)});
        if (kind == Kind::Lifetime)
            series.ratiosByIntensity.push_back(
                {sample.Q, measurements.samples.front().lifetimeByIntensity / sample.lifetimeByIntensity});
    }
    if (!fit || Q.empty())
        return series;
    constexpr double kPercent = 0.01;
    const std::vector<double> steps = stepsTo(largestQ(measurements));
    series.line = pointsAt(steps, fittedRatios(measurements, *fit, kind, steps));
    series.residuals = pointsAt(Q, relativeResiduals(measurements, *fit, kind), kPercent);
    return series;
}

} // namespace lifetimes
