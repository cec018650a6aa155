#pragma once

#include "sternvolmer/ratiodata.h"
#include "sternvolmer/ratioproblem.h"
#include "trust/task.h"

#include <vector>

namespace trust
{

/// Ratios and the panel that goes with them, for any of the models.
struct RatioInput {
    sternvolmer::RatioData data; // complete, ratios computed
    app::PanelState panel;
    int logMode = 0; // of the engine

    /// Of the model that is chosen in the panel, taking values in their real units.
    sternvolmer::RatioProblem problem() const;
    std::vector<double> observed() const;
    /// The fit of that problem.
    Task task(fit::Problem& problem) const;
};

/// The ratio of the reference is 1 by definition, in the data as in every model, and so tells nothing.
inline constexpr int kUncountedRatios = 1;

/// As an analysis sets the engine for the panel's model.
fit::Options engineOptions(const app::PanelState& panel, models::Analysis analysis, int logMode);

} // namespace trust
