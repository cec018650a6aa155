#include "leastsquares/valleywalk.h"

#include <algorithm>
#include <cmath>

namespace leastsquares
{

ValleyWalk::ValleyWalk(fit::Problem& problem, const fit::Parameters& from, std::size_t along, const FreeSlots& free,
                       const Ranges& ranges, const Strides& strides)
    : m_problem(problem), m_along(along), m_others(free), m_ranges(ranges),
      m_strides(strides), m_places{{from, sumOfSquares(problem, from)}}, m_here(m_places.front()),
      m_lowestSum(m_here.sumOfSquares)
{
    std::erase(m_others, along);
}

bool ValleyWalk::step()
{
    if (m_descent && m_descentSteps++ < m_strides.descentSteps && m_descent->step())
        return true;
    if (m_descent)
        arrive();
    if (canGoOn()) {
        stride();
        return true;
    }
    if (!m_upwards)
        return false;
    turn();
    return true;
}

double ValleyWalk::done() const { return ((m_upwards ? 0 : 1) + static_cast<double>(m_strode) / m_strides.each) / 2; }

double ValleyWalk::nextValue() const
{
    return m_here.values[m_along] * std::exp(m_upwards ? m_strides.length : -m_strides.length);
}

bool ValleyWalk::canGoOn() const
{
    constexpr double kTooHigh = 5; // times the lowest sum: the valley has ended
    return m_strode < m_strides.each && m_here.sumOfSquares <= kTooHigh * m_lowestSum &&
           nextValue() >= m_ranges[m_along].low && nextValue() <= m_ranges[m_along].high;
}

void ValleyWalk::stride()
{
    m_here.values[m_along] = nextValue();
    ++m_strode;
    m_descent.emplace(m_problem, m_here.values, m_others, m_ranges);
    m_descentSteps = 0;
}

void ValleyWalk::arrive()
{
    m_here = m_descent->reached();
    m_descent.reset();
    m_places.push_back(m_here);
    m_lowestSum = std::min(m_lowestSum, m_here.sumOfSquares);
}

void ValleyWalk::turn()
{
    m_upwards = false;
    m_strode = 0;
    m_here = m_places.front();
}

std::vector<Minimum> ValleyWalk::lowest(std::size_t most) const
{
    const double apart = 1.5 * m_strides.length;
    std::vector<Minimum> places = m_places, lowest;
    std::stable_sort(places.begin(), places.end(),
                     [](const Minimum& a, const Minimum& b) { return a.sumOfSquares < b.sumOfSquares; });
    for (const Minimum& place : places) {
        const bool isApart = std::all_of(lowest.begin(), lowest.end(), [&](const Minimum& other) {
            return std::abs(std::log(place.values[m_along] / other.values[m_along])) > apart;
        });
        if (isApart && lowest.size() < most)
            lowest.push_back(place);
    }
    return lowest;
}

} // namespace leastsquares
