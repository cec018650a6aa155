#pragma once

#include "leastsquares/profile.h"

#include <vector>

namespace trust
{

/// What a plot shows of a profile.
struct ProfileCurve {
    std::vector<leastsquares::ProfilePoint> points{}; // ascending by value, without the flat tails of open sides
    bool logarithmic = false;                         // the axis of the values

    /// The place of a value on the axis: 0 at the first point, 1 at the last.
    double along(double value) const;
};

/// An open side of an interval ends at the edge of a wide range, far beyond the place where the sum has flattened. The
/// curve keeps one point of such a tail, and all points of a level profile. The axis is logarithmic if the rest spans
/// more than two decades. fitted: the value at the minimum, which the curve always shows. highest: the sum at the ends
/// of the interval.
ProfileCurve profileCurve(const leastsquares::Profile& profile, double fitted, double highest);

} // namespace trust
