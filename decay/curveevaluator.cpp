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

/// Enough for what one iteration has of different rates in a sample, or of those that the samples share.
std::size_t mostRates(Evaluation evaluation, Composition composition)
{
    if (evaluation == Evaluation::Fast)
        return 8;                                               // two for each of four vectors
    return composition == Composition::PoissonSeries ? 64 : 24; // three components; of Poisson terms not too many
}

} // namespace

CurveEvaluator::CurveEvaluator(int model, int logMode, double Cp, const SampleRecord& reference, Evaluation evaluation)
    : m_model(model), m_logMode(logMode), m_Cp(Cp), m_evaluation(evaluation), m_reference(referenceOf(reference)),
      m_t(reference.T)
{
    if (evaluation == Evaluation::AsWritten)
        return;
    m_evenPoints = evenPoints(m_t);
    m_slowest = slowestRate(m_reference);
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
    const Populations populations = populationsOf(m_model, Q, m_Cp, fit::realParameters(m_logMode, a), m_evaluation);
    const Composition composition = compositionOf(m_model);
    if (m_evaluation == Evaluation::Fast && composition != Composition::Sites)
        addFactored(sum, count, populations);
    else
        addBrackets(sum, count, bracketsOf(composition, populations, m_reference));
    return sum;
}

void CurveEvaluator::addBrackets(Grid& sum, std::size_t count, const Brackets& brackets)
{
    for (const Bracket& bracket : brackets) {
        Grid inner;
        std::fill_n(inner.begin(), count, 0.0);
        for (const Exponential& term : bracket.sum) {
            const Grid& e = exponentials(term.rate, count);
            for (std::size_t i = 0; i < count; ++i)
                inner[i] += term.amplitude * e[i];
        }
        for (std::size_t i = 0; i < count; ++i)
            sum[i] += bracket.factor * inner[i];
    }
}

void CurveEvaluator::addFactored(Grid& sum, std::size_t count, const Populations& populations)
{
    const std::vector<Population>& members = populations.members;
    // Powers of a factor above 1 could overflow where the exponentials do not.
    if (compositionOf(m_model) == Composition::PoissonSeries && members[1].addedRate >= 0) {
        addPopulation(sum, count, members[0], populations.total);
        addPoissonTerms(sum, count, members);
    } else {
        for (const Population& population : members)
            addPopulation(sum, count, population, populations.total);
    }
    for (std::size_t i = 0; i < count; ++i)
        sum[i] *= m_components[i];
}

void CurveEvaluator::addPopulation(Grid& sum, std::size_t count, const Population& population, double total)
{
    const double share = population.weight / total;
    const Grid& e = exponentials(m_slowest + population.addedRate, count);
    for (std::size_t i = 0; i < count; ++i)
        sum[i] += share * e[i];
}

/// Population j = 1, 2, ... has j times the added rate of the first, so that its exponential is the first one's times
/// a power of exp(-addedRate t): a polynomial, summed from its highest power.
void CurveEvaluator::addPoissonTerms(Grid& sum, std::size_t count, const std::vector<Population>& populations)
{
    const double addedRate = populations[1].addedRate;
    const Grid& first = exponentials(m_slowest + addedRate, count);
    const Grid& factor = exponentials(addedRate, count);
    Grid series;
    std::fill_n(series.begin(), count, 0.0);
    for (std::size_t j = populations.size() - 1; j >= 1; --j)
        for (std::size_t i = 0; i < count; ++i)
            series[i] = series[i] * factor[i] + populations[j].weight;
    for (std::size_t i = 0; i < count; ++i)
        sum[i] += first[i] * series[i];
}

const Grid& CurveEvaluator::exponentials(double rate, std::size_t count)
{
    const auto same = [rate](const Exponentials& e) { return e.rate == rate; };
    const auto found = std::find_if(m_exponentials.begin(), m_exponentials.end(), same);
    Exponentials& e = found == m_exponentials.end() ? placeFor(rate) : *found;
    if (e.count < count)
        extend(e, count);
    e.lastUse = ++m_uses;
    return e.values;
}

/// A new place for exponentials, or that of those not used for longest. At once not more than two are in use, which
/// stay where they are.
CurveEvaluator::Exponentials& CurveEvaluator::placeFor(double rate)
{
    const std::size_t most = mostRates(m_evaluation, compositionOf(m_model));
    m_exponentials.reserve(most);
    const auto earlier = [](const Exponentials& a, const Exponentials& b) { return a.lastUse < b.lastUse; };
    Exponentials& e = m_exponentials.size() < most
                          ? m_exponentials.emplace_back()
                          : *std::min_element(m_exponentials.begin(), m_exponentials.end(), earlier);
    e.rate = rate;
    e.count = 0;
    return e;
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
