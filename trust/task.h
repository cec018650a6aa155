#pragma once

#include "app/panelvalues.h"
#include "leastsquares/minimum.h"

namespace trust
{

/// A least-squares fit to examine.
struct Task {
    fit::Problem& problem; // takes values in their real units
    int model = 0;
    app::StartParameters typed;
    int uncountedPoints = 0; // points that cannot deviate: the ratio of the reference is 1 by definition

    leastsquares::FreeSlots free() const { return leastsquares::freeSlots(typed.count, typed.fix); }
    int countedPoints() const { return problem.pointCount() - uncountedPoints; }
};

/// A search may leave the sizes that the parameters of a model usually have by this factor.
inline constexpr double kLeave = 1000;

/// The usual sizes of a model's parameters, by slot.
leastsquares::Ranges sensibleRanges(int model);

/// The typed values; a value that is not positive is replaced by the middle of its sensible range.
fit::Parameters positiveStart(const Task& task);

} // namespace trust
