#pragma once

#include "sternvolmer/ratiodata.h"
#include "sternvolmer/ratioproblem.h"
#include "trust/task.h"

#include <vector>

namespace trust
{

/// Ratios and the panel that belongs to them, for any model.
struct RatioInput {
    sternvolmer::RatioData data; // complete, ratios computed
    app::PanelState panel;
    int logMode = 0; // of the engine

    /// The problem of the panel's model, with parameters in real units.
    sternvolmer::RatioProblem problem() const;
    std::vector<double> observed() const;
    /// The fit of this problem.
    Task task(fit::Problem& problem) const;
};

/// The ratio of the reference is 1 by definition, in the data and in every model, so it carries no information.
inline constexpr int kUncountedRatios = 1;

/// The engine's options in an analysis of the panel's model.
fit::Options engineOptions(const app::PanelState& panel, models::Analysis analysis, int logMode);

} // namespace trust
