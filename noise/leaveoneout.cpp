#include "noise/leaveoneout.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace noise
{
namespace
{

RatioFit without(RatioFit ratioFit, int sample)
{
    sternvolmer::RatioPoints& points = ratioFit.points;
    for (auto* slots : {&points.Q, &points.ratio})
        std::copy(slots->begin() + sample + 1, slots->begin() + points.count + 1, slots->begin() + sample);
    --points.count;
    return ratioFit;
}

Errors without(Errors errors, int sample)
{
    if (errors.typed.size() > 1)
        errors.typed.erase(errors.typed.begin() + sample - 1);
    return errors;
}

bool contains(const leastsquares::FreeSlots& slots, std::size_t slot)
{
    return std::find(slots.begin(), slots.end(), slot) != slots.end();
}

/// The change of a constant in units of its standard error in the whole fit.
double influenceOn(std::size_t slot, const NoiseFit& fitted, const LeftOut& left)
{
    if (contains(left.undetermined, slot))
        return std::numeric_limits<double>::infinity();
    const double moved = std::abs(left.values[slot] - fitted.minimum.values[slot]);
    const double error = fitted.uncertainty.standardError[slot];
    return moved > 0 && error > 0 ? moved / error : 0; // exact data have no errors
}

LeftOut leftOut(const NoiseFit& fitted, const RatioFit& ratioFit, int sample)
{
    const auto others = problemUnder(without(ratioFit, sample), without(fitted.errors, sample));
    const leastsquares::Minimum minimum = leastsquares::descend(*others, fitted.minimum.values, ratioFit.free);
    LeftOut row{.sample = sample,
                .values = minimum.values,
                .undetermined =
                    leastsquares::uncertaintyOf(*others, minimum.values, ratioFit.free, fitted.scatter).undetermined,
                .outlyingness = fitted.minimum.sumOfSquares - minimum.sumOfSquares};
    for (const std::size_t slot : ratioFit.free) {
        if (contains(fitted.uncertainty.undetermined, slot))
            continue;
        const double influence = influenceOn(slot, fitted, row);
        if (row.slot == 0 || influence > row.influence) {
            row.slot = slot;
            row.influence = influence;
        }
    }
    return row;
}

} // namespace

std::vector<LeftOut> leaveOneOut(const NoiseFit& fitted, const RatioFit& ratioFit)
{
    std::vector<LeftOut> rows;
    if (fitted.scatter.degreesOfFreedom < 1 || !fitted.isDefined() || ratioFit.free.empty())
        return rows;
    const int first = fitted.errors.assumption == Assumption::EqualOnRatios ? 2 : 1;
    for (int sample = first; sample <= ratioFit.points.count; ++sample)
        rows.push_back(leftOut(fitted, ratioFit, sample));
    return rows;
}

} // namespace noise
