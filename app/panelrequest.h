#pragma once

#include "analysis/request.h"
#include "app/panelvalues.h"
#include "app/resultstore.h"

#include <optional>
#include <vector>

namespace app
{

/// The request of an analysis: an earlier request, which already has the new data, with the values of the panel and the
/// log mode. In log mode, a value without a logarithm keeps the start of the earlier request.
analysis::Request requestOf(const PanelValues& panel, int logMode, analysis::Request earlier);

/// The same for every model, in the order of the numbers; the model chosen in the panel does not matter.
std::vector<analysis::Request> requestsOfAllModels(PanelValues panel, int logMode, const analysis::Request& earlier);

/// The record to store; s: radius of the probe, nm. nullopt when the model has an interaction radius and it is too
/// large for a number.
std::optional<ResultRecord> recordOf(const analysis::Request& request, const analysis::Result& result, double s);

} // namespace app
