#include "app/panelvalues.h"

#include "fit/numbertext.h"

#include <cmath>

namespace app
{
namespace
{

double typedValue(const PanelValues& values, models::Box box)
{
    switch (box) {
    case models::Box::K:
        return values.K;
    case models::Box::F:
        return values.F;
    case models::Box::kq1:
        return values.kq1;
    case models::Box::kq2:
        return values.kq2;
    }
    return 0;
}

int fixFlag(const PanelState& panel, const models::Parameter& parameter, models::Analysis analysis)
{
    if (analysis == models::Analysis::Decay && !parameter.fixableInDecay)
        return 0;
    if (parameter.box == models::Box::kq2)
        return panel.FixKq2;
    return parameter.box == models::Box::F ? panel.FixF : 0;
}

} // namespace

PanelValues panelValues(const PanelState& panel)
{
    return {.kq1 = fit::numberFrom(panel.kq1),
            .kq2 = fit::numberFrom(panel.kq2),
            .K = fit::numberFrom(panel.K),
            .F = fit::numberFrom(panel.F),
            .s = fit::numberFrom(panel.s),
            .Cp = fit::numberFrom(panel.Cp),
            .iterationLimit = fit::heldInt32(fit::numberFrom(panel.iteration)),
            .tolerance = fit::numberFrom(panel.tolerance)};
}

bool boxesFinite(const PanelState& panel, models::Analysis analysis)
{
    const PanelValues values = panelValues(panel);
    const models::Model& row = models::row(panel.Model);
    // The text of the limit is checked, because its number is already clamped to the largest integer.
    bool finite = std::isfinite(values.tolerance) && std::isfinite(fit::numberFrom(panel.iteration)) &&
                  (std::isfinite(values.Cp) || !row.usesProbe(analysis));
    for (const models::Parameter& parameter : row.fitted())
        finite = finite && std::isfinite(typedValue(values, parameter.box));
    return finite;
}

StartParameters startParameters(const PanelState& panel, models::Analysis analysis)
{
    const PanelValues values = panelValues(panel);
    StartParameters start;
    for (const models::Parameter& parameter : models::row(panel.Model).fitted()) {
        const auto slot = static_cast<std::size_t>(++start.count);
        start.values[slot] = typedValue(values, parameter.box);
        start.fix[slot] = fixFlag(panel, parameter, analysis);
    }
    return start;
}

} // namespace app
