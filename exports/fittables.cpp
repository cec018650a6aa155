#include "exports/fittables.h"

#include "fit/numbertext.h"
#include "sternvolmer/ratiodata.h"

#include <algorithm>
#include <functional>

namespace exports
{
namespace
{

using fit::exactText;

constexpr int kCurveSteps = 200; // so that straight lines between the points look like the curve

std::vector<std::string> texts(std::initializer_list<double> numbers)
{
    std::vector<std::string> row;
    for (const double number : numbers)
        row.push_back(exactText(number));
    return row;
}

/// A measured value and the model's one in the same place.
struct Compared {
    int sample = 0; // 1, 2, ...
    double Q = 0;   // M
    double t = 0;   // s; of decays only
    double measured = 0, model = 0;
};

std::vector<Compared> comparedRatios(const sternvolmer::RatioPoints& points, const std::function<double(double)>& ratio)
{
    std::vector<Compared> compared;
    for (int sample = 1; sample <= points.count; ++sample) {
        const auto slot = static_cast<std::size_t>(sample);
        compared.push_back(
            {.sample = sample, .Q = points.Q[slot], .measured = points.ratio[slot], .model = ratio(points.Q[slot])});
    }
    return compared;
}

std::vector<Compared> comparedDecays(const analysis::Request& request, const analysis::Result& result)
{
    const auto& table = std::get<decay::SampleTable>(request.data);
    const auto intensity = analysis::fittedDecay(request, result.parameters);
    std::vector<Compared> compared;
    for (int sample = 1; sample <= table.SampleCount; ++sample) {
        const decay::SampleRecord& record = table.SampleData[static_cast<std::size_t>(sample)];
        for (std::size_t i = 0; i <= static_cast<std::size_t>(record.LastFitIndex); ++i)
            compared.push_back({sample, record.Conc, record.T[i], record.IExp[i], intensity(record.T[i], record.Conc)});
    }
    return compared;
}

/// Rows of decays: measured and model, and with their difference if it is asked for.
Rows decayRows(const std::vector<Compared>& compared, bool withDifference)
{
    Rows rows{{"Sample", "Q /M", "t /s", "Measured I(t)", "Model I(t)"}};
    if (withDifference)
        rows[0].push_back("Residual");
    for (const Compared& point : compared) {
        rows.push_back(texts({double(point.sample), point.Q, point.t, point.measured, point.model}));
        if (withDifference)
            rows.back().push_back(exactText(point.measured - point.model));
    }
    return rows;
}

Rows ratioCurveRows(const sternvolmer::RatioPoints& points, const std::function<double(double)>& ratio)
{
    Rows rows{{"Q /M", "Measured ratio", "Model ratio"}};
    std::vector<Compared> compared = comparedRatios(points, ratio);
    std::stable_sort(compared.begin(), compared.end(), [](const auto& a, const auto& b) { return a.Q < b.Q; });
    const double Xmax = compared.empty() ? 0 : compared.back().Q;
    int step = 0;
    const auto nextQ = [&] { return step * Xmax / kCurveSteps; };
    for (const Compared& sample : compared) {
        for (; nextQ() < sample.Q; ++step)
            rows.push_back({exactText(nextQ()), "", exactText(ratio(nextQ()))});
        if (nextQ() == sample.Q)
            ++step;
        rows.push_back(texts({sample.Q, sample.measured, sample.model}));
    }
    return rows;
}

} // namespace

Rows curveRows(const analysis::Request& request, const analysis::Result& result)
{
    const auto* points = std::get_if<sternvolmer::RatioPoints>(&request.data);
    if (!points)
        return decayRows(comparedDecays(request, result), false);
    return ratioCurveRows(*points, analysis::fittedRatio(request, result.parameters));
}

Rows residualRows(const analysis::Request& request, const analysis::Result& result)
{
    const auto* points = std::get_if<sternvolmer::RatioPoints>(&request.data);
    if (!points)
        return decayRows(comparedDecays(request, result), true);
    Rows rows{{"Sample", "Q /M", "Measured ratio", "Model ratio", "Residual"}};
    for (const Compared& point : comparedRatios(*points, analysis::fittedRatio(request, result.parameters)))
        rows.push_back(
            texts({double(point.sample), point.Q, point.measured, point.model, point.measured - point.model}));
    return rows;
}

double lifetimeWithoutQuencher(const analysis::Request& request)
{
    if (const auto* points = std::get_if<sternvolmer::RatioPoints>(&request.data))
        return points->tau0;
    return sternvolmer::meanLifetime(std::get<decay::SampleTable>(request.data).SampleData[1]);
}

} // namespace exports
