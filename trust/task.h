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

/// Sizes that the constants of quenching experiments have, where searches start; a search may leave them by a factor
/// of kLeave. Rate constants through a complex are s^-1, collisional ones M^-1 s^-1.
constexpr Range sensibleRange(app::PanelBox box)
{
    switch (box) {
    case app::PanelBox::K:
        return {1e-2, 1e6}; // M^-1
    case app::PanelBox::F:
        return {1e-3, 1e3};
    case app::PanelBox::kq1:
    case app::PanelBox::kq2:
        return {1e5, 1e13};
    }
    return {};
}
inline constexpr double kLeave = 1000;

/// The sensible ranges of a model's parameters, by slot.
Ranges sensibleRanges(int model);

/// Goes from low (share 0) to high (share 1) in even factors.
double between(const Range& range, double share);

/// The typed values; one that no logarithm stands for gives way to the middle of its sensible range.
fit::Parameters positiveStart(const Task& task);

/// Two sums of squares count as equally good within this share, and when both are those of an exact fit.
inline constexpr double kEquallyGood = 1e-3;
bool equallyGood(double sum, double best, int pointCount);

} // namespace trust
