#pragma once

#include "analysis/request.h"
#include "app/panelvalues.h"
#include "app/resultstore.h"

#include <optional>
#include <vector>

namespace app
{

/// What an analysis is asked: an earlier request, whose data are new already, with all that the panel and the output
/// settings say. In log mode the earlier one tells where a value without a logarithm starts.
analysis::Request requestOf(const PanelValues& panel, int logMode, analysis::Request earlier);

/// The same for every model in the order of their numbers, whatever the panel has chosen.
std::vector<analysis::Request> requestsOfAllModels(PanelValues panel, int logMode, const analysis::Request& earlier);

/// The result to be stored; s: radius of the probe, nm. nullopt when the model has an interaction radius and it is too
/// large for a number.
std::optional<ResultRecord> recordOf(const analysis::Request& request, const analysis::Result& result, double s);

} // namespace app
