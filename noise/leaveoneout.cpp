#include "noise/leaveoneout.h"

#include <algorithm>
#include <cmath>

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

LeftOut leftOut(const NoiseFit& fitted, const RatioFit& ratioFit, int sample)
{
    const auto others = problemUnder(without(ratioFit, sample), without(fitted.errors, sample));
    const leastsquares::Minimum minimum = leastsquares::descend(*others, fitted.minimum.values, ratioFit.free);
    LeftOut row{
        .sample = sample, .values = minimum.values, .outlyingness = fitted.minimum.sumOfSquares - minimum.sumOfSquares};
    for (const std::size_t slot : ratioFit.free) {
        const double error = fitted.uncertainty.standardError[slot];
        if (std::isinf(error))
            continue;
        const double moved = std::abs(minimum.values[slot] - fitted.minimum.values[slot]);
        const double inErrors = moved > 0 && error > 0 ? moved / error : 0; // exact data have no errors
        if (row.slot == 0 || inErrors > row.influence) {
            row.slot = slot;
            row.influence = inErrors;
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
