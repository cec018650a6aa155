#pragma once

#include "trust/requestedfit.h"

#include <functional>
#include <string>

namespace trust
{

/// Asked once per iteration; false ends the run.
using KeepGoing = std::function<bool()>;

/// Limit of all engine runs together, in evaluations of the law at a point: half a second with the slowest law.
inline constexpr double kEvaluations = 1e6;

/// Where an analysis ends.
struct EngineRun {
    analysis::Result result;
    double sumOfSquares = 0; // infinity after an arithmetic fault
};

/// Runs the request. A run stops after maxEvaluations of the law.
EngineRun runEngine(const RequestedFit& requested, double maxEvaluations = kEvaluations,
                    const KeepGoing& keepGoing = {});

/// True when an analysis with the request's start ends at a sum of squares that is as good as the
/// minimum's.
bool leadsToMinimum(const RequestedFit& requested, const leastsquares::Minimum& minimum,
                    const KeepGoing& keepGoing = {});

/// Start values, rounded for the boxes, and the end of an analysis that starts from them.
struct EngineStart {
    fit::Parameters values{};
    double sumOfSquares = 0;     // at the start
    double reached = 0;          // at the end
    bool leadsToMinimum = false; // equally good at the end
};

/// The engine takes coarse steps and may leave a minimum at which it starts. Finds start values near the minimum from
/// which the engine ends at the minimum; if there are none, returns the minimum itself.
EngineStart engineStart(const RequestedFit& requested, const leastsquares::Minimum& minimum,
                        const KeepGoing& keepGoing = {});

/// The text of a start value for its box.
std::string startText(double value);

} // namespace trust
