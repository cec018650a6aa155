#include "app/panelvalues.h"

#include "fit/numbertext.h"

#include <cmath>

namespace app
{
namespace
{

double iterationLimit(double typed) { return std::isfinite(typed) ? fit::heldInt32(typed) : typed; }

} // namespace

PanelValues panelValues(const PanelState& panel)
{
    return {.model = panel.Model,
            .kq1 = fit::numberFrom(panel.kq1),
            .kq2 = fit::numberFrom(panel.kq2),
            .K = fit::numberFrom(panel.K),
            .F = fit::numberFrom(panel.F),
            .s = fit::numberFrom(panel.s),
            .Cp = fit::numberFrom(panel.Cp),
            .iterationLimit = iterationLimit(fit::numberFrom(panel.iteration)),
            .tolerance = fit::numberFrom(panel.tolerance),
            .fixKq2 = panel.FixKq2 == 1,
            .fixF = panel.FixF == 1};
}

} // namespace app
