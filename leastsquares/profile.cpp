#include "leastsquares/profile.h"

#include "leastsquares/uncertainty.h"

#include <algorithm>
#include <cmath>

#include <boost/math/tools/toms748_solve.hpp>

namespace leastsquares
{
namespace
{

/// A point of the valley. u: natural logarithm of the size of the profiled parameter.
struct ValleyPoint {
    double u = 0;
    Minimum least{};
};

class ProfileWalk
{
public:
    ProfileWalk(fit::Problem& problem, const Minimum& minimum, const FreeSlots& free, std::size_t slot,
                const Scatter& scatter, const Range& range);

    Profile result();

private:
    std::optional<double> end(int direction);
    double crossing(const ValleyPoint& inside, const ValleyPoint& outside);
    ValleyPoint at(double u, const ValleyPoint& near, const ValleyPoint& before);
    fit::Parameters extrapolated(double u, const ValleyPoint& near, const ValleyPoint& before) const;
    void note(const ValleyPoint& point);
    double rise(const ValleyPoint& point) const;
    double valueAt(double u) const { return std::copysign(std::exp(u), m_minimum.values[m_slot]); }

    fit::Problem& m_problem;
    const Minimum m_minimum;
    const std::size_t m_slot;
    const double m_highest;
    FreeSlots m_others;
    Range m_range;
    ValleyPoint m_start;
    double m_firstStep = 0; // of u
    Profile m_profile;
};

ProfileWalk::ProfileWalk(fit::Problem& problem, const Minimum& minimum, const FreeSlots& free, std::size_t slot,
                         const Scatter& scatter, const Range& range)
    : m_problem(problem), m_minimum(minimum), m_slot(slot), m_highest(highestSum(minimum, scatter)), m_range(range)
{
    constexpr double kShareOfError = 0.4, kShortest = 1e-9, kLongest = 0.5;
    std::copy_if(free.begin(), free.end(), std::back_inserter(m_others),
                 [=](std::size_t other) { return other != slot; });
    const double size = std::abs(minimum.values[slot]);
    if (size > 0)
        m_range = {std::min(range.low, size), std::max(range.high, size)};
    m_start = {std::log(size > 0 ? size : range.low), minimum};
    const double error = uncertaintyOf(problem, minimum.values, free, scatter).standardError[slot];
    m_firstStep =
        size > 0 && std::isfinite(error) ? std::clamp(kShareOfError * error / size, kShortest, kLongest) : kLongest;
}

Profile ProfileWalk::result()
{
    m_profile.points.push_back({m_minimum.values[m_slot], m_minimum.sumOfSquares});
    const bool isNegative = m_minimum.values[m_slot] < 0;
    const auto inner = m_minimum.values[m_slot] == 0 ? std::nullopt : end(-1), outer = end(1);
    m_profile.low = isNegative ? outer : inner;
    m_profile.high = isNegative ? inner : outer;
    std::sort(m_profile.points.begin(), m_profile.points.end(),
              [](const ProfilePoint& a, const ProfilePoint& b) { return a.value < b.value; });
    return m_profile;
}

/// The end of the interval on one side: direction -1 towards 0, 1 away from it.
std::optional<double> ProfileWalk::end(int direction)
{
    constexpr double kRise = 0.12;       // wanted from point to point, of the distance to the end
    constexpr double kMostRise = 0.3;    // a longer step is halved, as far as the number of halvings allows
    constexpr double kLongestStep = 2.3; // about a decade; the valley may bend
    int halvings = 12;
    const double edge = std::log(direction < 0 ? m_range.low : m_range.high);
    ValleyPoint before = m_start, inside = m_start;
    double step = m_firstStep;
    while ((edge - inside.u) * direction > 0) {
        const double u = direction < 0 ? std::max(edge, inside.u - step) : std::min(edge, inside.u + step);
        const ValleyPoint next = at(u, inside, before);
        if (rise(next) - rise(inside) > kMostRise && halvings-- > 0) {
            step = std::abs(u - inside.u) / 2;
            continue;
        }
        if (!(rise(next) < 1)) {
            const double found = crossing(inside, next);
            m_profile.points.push_back({found, m_highest});
            return found;
        }
        note(next);
        const double risen = rise(next) - rise(inside);
        step = std::min(step * (risen > 0 ? std::clamp(kRise / risen, 0.5, 2.0) : 2.0), kLongestStep);
        before = inside;
        inside = next;
    }
    return std::nullopt;
}

double ProfileWalk::crossing(const ValleyPoint& inside, const ValleyPoint& outside)
{
    constexpr double kClose = 1e-8;  // of u: eight digits of the value
    constexpr double kSteepest = 10; // replaces the rise where the sum is not defined
    std::uintmax_t evaluations = 60;
    const auto beyond = [&](const ValleyPoint& point) { return std::min(rise(point), kSteepest) - 1; };
    const auto beyondAt = [&](double u) { return beyond(at(u, inside, outside)); };
    const bool upwards = inside.u < outside.u;
    const ValleyPoint &left = upwards ? inside : outside, &right = upwards ? outside : inside;
    const auto [a, b] = boost::math::tools::toms748_solve(
        beyondAt, left.u, right.u, beyond(left), beyond(right),
        [=](double low, double high) { return high - low < kClose; }, evaluations);
    return valueAt((a + b) / 2);
}

/// The least sum with the parameter held at u, downhill from the better of two guesses.
ValleyPoint ProfileWalk::at(double u, const ValleyPoint& near, const ValleyPoint& before)
{
    fit::Parameters guess = near.least.values;
    guess[m_slot] = valueAt(u);
    const fit::Parameters further = extrapolated(u, near, before);
    if (sumOfSquares(m_problem, further) < sumOfSquares(m_problem, guess))
        guess = further;
    return {u, descend(m_problem, guess, m_others)};
}

/// Continues the line through two points of the valley, in logarithms.
fit::Parameters ProfileWalk::extrapolated(double u, const ValleyPoint& near, const ValleyPoint& before) const
{
    fit::Parameters values = near.least.values;
    values[m_slot] = valueAt(u);
    if (near.u != before.u)
        for (const std::size_t other : m_others)
            if (values[other] != 0)
                values[other] *=
                    std::pow(values[other] / before.least.values[other], (u - near.u) / (near.u - before.u));
    return values;
}

void ProfileWalk::note(const ValleyPoint& point)
{
    const double sum = point.least.sumOfSquares;
    const double lowest = m_profile.lower ? m_profile.lower->sumOfSquares : m_minimum.sumOfSquares;
    if (lowest - sum > m_highest - m_minimum.sumOfSquares)
        m_profile.lower = point.least;
    m_profile.points.push_back({valueAt(point.u), sum});
}

/// 0 at the minimum, 1 at the ends; proportional to the distance from the minimum if the law is linear.
double ProfileWalk::rise(const ValleyPoint& point) const
{
    const double above = std::max(0.0, point.least.sumOfSquares - m_minimum.sumOfSquares);
    return above == 0 ? 0 : std::sqrt(above / (m_highest - m_minimum.sumOfSquares));
}

} // namespace

double highestSum(const Minimum& minimum, const Scatter& scatter)
{
    return minimum.sumOfSquares + scatter.variance * scatter.quantile * scatter.quantile;
}

Profile profileOf(fit::Problem& problem, const Minimum& minimum, const FreeSlots& free, std::size_t slot,
                  const Scatter& scatter, const Range& range)
{
    if (scatter.quantile == 0 || !std::isfinite(minimum.sumOfSquares))
        return {};
    return ProfileWalk(problem, minimum, free, slot, scatter, range).result();
}

} // namespace leastsquares
