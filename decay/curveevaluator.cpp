#include "decay/curveevaluator.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace decay
{
namespace
{

/// On a grid of even steps exp(-rate t) is worked out at points 1, 2, 4, 8, ...; the others are products of these:
/// point i takes the power of two at or below i, and the point that is as far from there as from the beginning.
std::size_t leadingPoint(std::size_t i) { return std::bit_floor(i); }

/// How many points of a grid, from its beginning at 0, are the sums of the times that exponentials are multiplied for,
/// to the rounding of a running sum.
std::size_t evenPoints(const Grid& t)
{
    constexpr double kRounding = 6 * std::numeric_limits<double>::epsilon(); // 5.6 at most in grids of 50 steps
    const auto isSum = [&t](std::size_t i) {
        return std::abs(t[leadingPoint(i)] + t[i - leadingPoint(i)] - t[i]) <= kRounding * t[i];
    };
    std::size_t i = 0;
    while (i < t.size() && t[0] == 0 && isSum(i))
        ++i;
    return i;
}

double slowestRate(const Reference& reference)
{
    if (reference.components == 0)
        return 0;
    return *std::min_element(reference.Rate.begin() + 1, reference.Rate.begin() + 1 + reference.components);
}

} // namespace

CurveEvaluator::CurveEvaluator(int model, int logMode, double Cp, const SampleRecord& reference)
    : m_model(model), m_logMode(logMode), m_Cp(Cp), m_reference(referenceOf(reference)), m_t(reference.T),
      m_evenPoints(evenPoints(m_t)), m_slowest(slowestRate(m_reference))
{
    MultiExponential components;
    for (std::size_t k = 1; k <= static_cast<std::size_t>(m_reference.components); ++k)
        components.push_back({m_reference.A[k], m_reference.Rate[k] - m_slowest});
    for (std::size_t i = 0; i < kGridSize; ++i)
        m_components[i] = intensityAt(components, m_t[i]);
}

const Grid& CurveEvaluator::calculated(std::size_t sample, const fit::Parameters& a, double Q, std::size_t count)
{
    if (sample != m_sample || m_curveCount == m_curves.size())
        m_curveCount = 0;
    m_sample = sample;
    Curve& curve = m_curves[m_curveCount++];
    curve.a = a;
    Grid& sum = curve.intensity;
    std::fill_n(sum.begin(), count, 0.0);
    const Populations populations = populationsOf(m_model, Q, m_Cp, fit::realParameters(m_logMode, a));
    const Composition composition = compositionOf(m_model);
    if (composition == Composition::Sites) {
        addSites(sum, count, populations);
        return sum;
    }
    // Powers of a factor above 1 could overflow where the exponentials do not.
    if (composition == Composition::PoissonSeries && populations[1].addedRate >= 0) {
        addPopulation(sum, count, populations[0]);
        addPoissonTerms(sum, count, populations);
    } else {
        for (const Population& population : populations)
            addPopulation(sum, count, population);
    }
    for (std::size_t i = 0; i < count; ++i)
        sum[i] *= m_components[i];
    return sum;
}

void CurveEvaluator::addPopulation(Grid& sum, std::size_t count, const Population& population)
{
    const Grid& e = exponentials(m_slowest + population.addedRate, count);
    for (std::size_t i = 0; i < count; ++i)
        sum[i] += population.share * e[i];
}

/// Population j = 1, 2, ... has j times the added rate of the first, so that its exponential is the first one's times
/// a power of exp(-addedRate t): a polynomial, summed from its highest power.
void CurveEvaluator::addPoissonTerms(Grid& sum, std::size_t count, const Populations& populations)
{
    const double addedRate = populations[1].addedRate;
    const Grid& first = exponentials(m_slowest + addedRate, count);
    const Grid& factor = exponentials(addedRate, count);
    Grid series;
    std::fill_n(series.begin(), count, 0.0);
    for (std::size_t j = populations.size() - 1; j >= 1; --j)
        for (std::size_t i = 0; i < count; ++i)
            series[i] = series[i] * factor[i] + populations[j].share;
    for (std::size_t i = 0; i < count; ++i)
        sum[i] += first[i] * series[i];
}

void CurveEvaluator::addSites(Grid& sum, std::size_t count, const Populations& sites)
{
    for (const Exponential& term : siteComponents(m_reference, sites)) {
        const Grid& e = exponentials(term.rate, count);
        for (std::size_t i = 0; i < count; ++i)
            sum[i] += term.amplitude * e[i];
    }
}

const Grid& CurveEvaluator::exponentials(double rate, std::size_t count)
{
    const auto same = [rate](const Exponentials& e) { return e.count > 0 && e.rate == rate; };
    auto found = std::find_if(m_exponentials.begin(), m_exponentials.end(), same);
    if (found == m_exponentials.end()) {
        const auto earlier = [](const Exponentials& a, const Exponentials& b) { return a.lastUse < b.lastUse; };
        found = std::min_element(m_exponentials.begin(), m_exponentials.end(), earlier);
        found->rate = rate;
        found->count = 0;
    }
    if (found->count < count)
        extend(*found, count);
    found->lastUse = ++m_uses;
    return found->values;
}

void CurveEvaluator::extend(Exponentials& e, std::size_t count) const
{
    for (std::size_t i = e.count; i < count;) {
        const std::size_t top = leadingPoint(i);
        if (i == top || i >= m_evenPoints) {
            e.values[i] = std::exp(-e.rate * m_t[i]);
            ++i;
            continue;
        }
        const std::size_t end = std::min({count, 2 * top, m_evenPoints});
        for (const double first = e.values[top]; i < end; ++i)
            e.values[i] = first * e.values[i - top];
    }
    e.count = count;
}

} // namespace decay
