#pragma once

#include "leastsquares/minimum.h"

#include <functional>
#include <string>

namespace trust
{

/// Asked once per iteration; false ends the run.
using KeepGoing = std::function<bool()>;

/// What engine runs may cost altogether, evaluations of the law at a point: half a second of the slowest law.
inline constexpr double kEvaluations = 1e6;

/// Where an analysis ends.
struct EngineRun {
    fit::Outcome outcome;
    fit::Parameters values{}; // in their real units
    double sumOfSquares = 0;  // infinity after an arithmetic fault
};

/// Runs the engine on a problem that takes values in their real units. options as the analysis sets them.
/// A run that takes more than maxEvaluations of the law is broken off.
EngineRun runEngine(fit::Problem& problem, const fit::Options& options, const fit::Parameters& start,
                    double maxEvaluations = kEvaluations, const KeepGoing& keepGoing = {});

/// True when the engine ends at a sum of squares that is as good as the minimum's.
bool leadsToMinimum(fit::Problem& problem, const fit::Options& options, const fit::Parameters& start,
                    const leastsquares::Minimum& minimum, const KeepGoing& keepGoing = {});

/// Start values, rounded for the boxes, and where the analysis ends that is started from them.
struct EngineStart {
    fit::Parameters values{};
    double sumOfSquares = 0;     // at the start
    double reached = 0;          // at the end
    bool leadsToMinimum = false; // equally good at the end
};

/// The engine takes coarse steps and may walk away from a minimum where it was put. Finds start values beside the
/// minimum from which it ends there; where there are none, the minimum itself.
EngineStart engineStart(fit::Problem& problem, const fit::Options& options, const leastsquares::FreeSlots& free,
                        const leastsquares::Minimum& minimum, const KeepGoing& keepGoing = {});

/// The text of a start value for its box.
std::string startText(double value);

} // namespace trust
