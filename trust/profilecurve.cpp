#include "trust/profilecurve.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace trust
{
namespace
{

using Points = std::vector<leastsquares::ProfilePoint>;

/// The number of points from one end up to the minimum that can be omitted, because the next one is as high.
template <class Iterator>
std::ptrdiff_t flatTail(Iterator end, Iterator minimum, double visible)
{
    const double height = end->sumOfSquares;
    const auto inner =
        std::find_if(end, minimum, [=](const auto& p) { return std::abs(p.sumOfSquares - height) > visible; });
    return std::max(std::distance(end, inner) - 1, std::ptrdiff_t{0});
}

bool spansDecades(double low, double high)
{
    constexpr double kTwoDecades = 100;
    const double inner = std::min(std::abs(low), std::abs(high)), outer = std::max(std::abs(low), std::abs(high));
    return low * high > 0 && outer > kTwoDecades * inner;
}

} // namespace

double ProfileCurve::along(double value) const
{
    const double first = points.front().value, last = points.back().value;
    if (!(last > first))
        return 0.5;
    return logarithmic ? std::log(value / first) / std::log(last / first) : (value - first) / (last - first);
}

ProfileCurve profileCurve(const leastsquares::Profile& profile, double fitted, double highest)
{
    if (profile.points.empty())
        return {};
    constexpr double kVisible = 0.02; // of the height of the interval's ends
    const Points& points = profile.points;
    const auto minimum =
        std::find_if(points.begin(), points.end() - 1, [=](const auto& point) { return point.value >= fitted; });
    const double lowest = minimum->sumOfSquares, visible = kVisible * (highest - lowest);
    const bool isLevel = std::all_of(points.begin(), points.end(),
                                     [=](const auto& point) { return point.sumOfSquares - lowest < visible; });
    const auto left = profile.low || isLevel ? 0 : flatTail(points.begin(), minimum, visible);
    const auto right =
        profile.high || isLevel ? 0 : flatTail(points.rbegin(), std::make_reverse_iterator(minimum + 1), visible);
    ProfileCurve curve{.points = {points.begin() + left, points.end() - right}};
    curve.logarithmic = spansDecades(curve.points.front().value, curve.points.back().value);
    return curve;
}

} // namespace trust
