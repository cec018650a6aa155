#pragma once

#include "app/panelvalues.h"
#include "trust/leastsquares.h"

namespace trust
{

/// A fit to be looked at.
struct Task {
    fit::Problem& problem; // takes values in their real units
    int model = 0;
    app::StartParameters typed;
    int uncountedPoints = 0; // points that cannot deviate: the reference of a Stern-Volmer plot is 1 by definition

    FreeSlots free() const { return freeSlots(typed.count, typed.fix); }
    int countedPoints() const { return problem.pointCount() - uncountedPoints; }
};

/// A search may leave the sizes that the parameters of a model usually have by this factor.
inline constexpr double kLeave = 1000;

/// The usual sizes of a model's parameters, by slot.
Ranges sensibleRanges(int model);

/// Goes from low (share 0) to high (share 1) in even factors.
double between(const Range& range, double share);

/// The typed values; one that no logarithm stands for gives way to the middle of its sensible range.
fit::Parameters positiveStart(const Task& task);

/// Two sums of squares count as equally good within this share, and when both are those of an exact fit.
inline constexpr double kEquallyGood = 1e-3;
bool equallyGood(double sum, double best, int pointCount);

} // namespace trust
