#pragma once

#include "leastsquares/minimum.h"

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
    fit::Outcome outcome;
    fit::Parameters values{}; // in their real units
    double sumOfSquares = 0;  // infinity after an arithmetic fault
};

/// Runs the engine on a problem in real units, with the options of the analysis. A run stops after maxEvaluations of
/// the law.
EngineRun runEngine(fit::Problem& problem, const fit::Options& options, const fit::Parameters& start,
                    double maxEvaluations = kEvaluations, const KeepGoing& keepGoing = {});

/// True if the engine ends at a sum of squares that is as good as that of the minimum.
bool leadsToMinimum(fit::Problem& problem, const fit::Options& options, const fit::Parameters& start,
                    const leastsquares::Minimum& minimum, const KeepGoing& keepGoing = {});

/// Start values, rounded for the boxes, and the end of an analysis that starts from them.
struct EngineStart {
    fit::Parameters values{};
    double sumOfSquares = 0;     // at the start
    double reached = 0;          // at the end
    bool leadsToMinimum = false; // equally good at the end
};

/// The engine takes coarse steps and may leave a minimum at which it starts. Finds start values near the minimum from
/// which the engine ends at the minimum; if there are none, returns the minimum itself.
EngineStart engineStart(fit::Problem& problem, const fit::Options& options, const leastsquares::FreeSlots& free,
                        const leastsquares::Minimum& minimum, const KeepGoing& keepGoing = {});

/// The text of a start value for its box.
std::string startText(double value);

} // namespace trust
