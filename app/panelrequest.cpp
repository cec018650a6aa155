#include "app/panelrequest.h"

#include "fit/report.h"

#include <cmath>
#include <utility>

namespace app
{
namespace
{

double typedValue(const PanelValues& panel, models::Box box)
{
    switch (box) {
    case models::Box::K:
        return panel.K;
    case models::Box::F:
        return panel.F;
    case models::Box::kq1:
        return panel.kq1;
    case models::Box::kq2:
        return panel.kq2;
    }
    return 0;
}

bool isFixed(const PanelValues& panel, const models::Parameter& parameter, models::Analysis analysis)
{
    if (analysis == models::Analysis::Decay && !parameter.fixableInDecay)
        return false;
    if (parameter.box == models::Box::kq2)
        return panel.fixKq2;
    return parameter.box == models::Box::F && panel.fixF;
}

} // namespace

analysis::Request requestOf(const PanelValues& panel, int logMode, analysis::Request earlier)
{
    analysis::Request request = std::move(earlier);
    request.model = panel.model;
    request.Cp = panel.Cp;
    request.values = {};
    request.options = {.logMode = logMode,
                       .aboveZero = {0, 1, 1, 1},
                       .iterationLimit = panel.iterationLimit,
                       .tolerance = panel.tolerance};
    for (const models::Parameter& parameter : models::row(panel.model).fitted()) {
        const auto slot = static_cast<std::size_t>(++request.options.parameterCount);
        request.values[slot] = typedValue(panel, parameter.box);
        request.options.fix[slot] = isFixed(panel, parameter, analysis::methodOf(request)) ? 1 : 0;
    }
    return request;
}

std::vector<analysis::Request> requestsOfAllModels(PanelValues panel, int logMode, const analysis::Request& earlier)
{
    std::vector<analysis::Request> requests;
    for (panel.model = 1; panel.model <= models::kModelCount; ++panel.model)
        requests.push_back(requestOf(panel, logMode, earlier));
    return requests;
}

std::optional<ResultRecord> recordOf(const analysis::Request& request, const analysis::Result& result, double s)
{
    const models::Model& row = models::row(request.model);
    const analysis::Constants constants = analysis::constantsOf(request.model, result.values);
    const double radius = row.hasRadius ? RadiusFromK(constants.K, s) : 0;
    if (!std::isfinite(radius))
        return std::nullopt;
    return ResultRecord{.Method = analysis::methodOf(request) == models::Analysis::Decay ? "Decay" : "SV",
                        .Model = request.model,
                        .KorF = row.uses(models::Box::F) ? constants.F : constants.K,
                        .Kq1 = constants.kq1,
                        .Kq2 = constants.kq2,
                        .Kq22 = constants.kq22,
                        .R2 = result.statistics.R2,
                        .Error = fit::errorText(result.status),
                        .R = radius,
                        .Se = result.statistics.sumOfSquares};
}

} // namespace app
