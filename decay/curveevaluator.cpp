#include "decay/curveevaluator.h"

#include "decay/curvesums.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace decay
{
namespace
{

/// On a grid of even steps, exp(-rate t) is calculated at points 1, 2, 4, 8, ...; at the other points it is a product:
/// that of point p, the largest power of two not above i, and that of point i - p.
std::size_t leadingPoint(std::size_t i) { return std::bit_floor(i); }

/// The number of leading grid points at which t(i) = t(p) + t(i - p) holds to within the rounding of a running sum, so
/// that exponentials may be multiplied.
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

/// Enough for the different rates of one iteration in a sample, or for the rates that the samples share.
std::size_t mostRates(models::Evaluation evaluation, models::Composition composition)
{
    if (evaluation == models::Evaluation::Fast)
        return 8; // two for each of four vectors
    return composition == models::Composition::PoissonSeries
               ? 64
               : 24; // three components; a limited number of Poisson terms
}

} // namespace

CurveEvaluator::CurveEvaluator(const FittedLaw& law, const SampleRecord& reference, models::Evaluation evaluation)
    : m_law(law), m_evaluation(evaluation), m_reference(referenceOf(reference)), m_t(reference.T)
{
    if (evaluation == models::Evaluation::AsWritten)
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
    const models::Populations populations =
        models::populationsOf(m_law.model, {Q, m_law.Cp, fit::realParameters(m_law.logMode, a), m_evaluation});
    const models::Composition composition = models::compositionOf(m_law.model);
    if (m_evaluation == models::Evaluation::Fast && composition != models::Composition::Sites)
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
        for (const Exponential& term : bracket.sum)
            addWeighted(std::span(inner.data(), count), term.amplitude, exponentials(term.rate, count).data());
        addWeighted(std::span(sum.data(), count), bracket.factor, inner.data());
    }
}

void CurveEvaluator::addFactored(Grid& sum, std::size_t count, const models::Populations& populations)
{
    const std::vector<models::Population>& members = populations.members;
    // Powers of a factor above 1 could overflow although the exponentials do not.
    if (models::compositionOf(m_law.model) == models::Composition::PoissonSeries && members[1].addedRate >= 0) {
        addPopulation(sum, count, members[0], populations.total);
        addPoissonTerms(sum, count, members);
    } else {
        for (const models::Population& population : members)
            addPopulation(sum, count, population, populations.total);
    }
    multiply(std::span(sum.data(), count), m_components.data());
}

void CurveEvaluator::addPopulation(Grid& sum, std::size_t count, const models::Population& population, double total)
{
    const Grid& e = exponentials(m_slowest + population.addedRate, count);
    addWeighted(std::span(sum.data(), count), population.weight / total, e.data());
}

/// Population j = 1, 2, ... has j times the added rate of the first, so its exponential is that of the first times a
/// power of exp(-addedRate t). The sum is a polynomial, evaluated from its highest power (Horner's scheme).
void CurveEvaluator::addPoissonTerms(Grid& sum, std::size_t count, const std::vector<models::Population>& populations)
{
    const double addedRate = populations[1].addedRate;
    const Grid& first = exponentials(m_slowest + addedRate, count);
    const Grid& factor = exponentials(addedRate, count);
    m_weights.clear();
    for (std::size_t j = 1; j < populations.size(); ++j)
        m_weights.push_back(populations[j].weight);
    addSeries(sum, count, {first, factor, m_weights});
}

const Grid& CurveEvaluator::exponentials(double rate, std::size_t count)
{
    const auto same = [rate](const Kept& kept) { return kept.rate == rate; };
    auto kept = std::find_if(m_kept.begin(), m_kept.end(), same);
    if (kept == m_kept.end())
        kept = placeFor(rate);
    Grid& values = m_exponentials[static_cast<std::size_t>(kept - m_kept.begin())];
    if (kept->count < count)
        extend(values, *kept, count);
    kept->lastUse = ++m_uses;
    return values;
}

/// A new place for exponentials, or the place of the least recently used ones. At most two are in use at a time, and
/// these are not replaced.
std::vector<CurveEvaluator::Kept>::iterator CurveEvaluator::placeFor(double rate)
{
    const std::size_t most = mostRates(m_evaluation, models::compositionOf(m_law.model));
    if (m_kept.size() < most) {
        m_exponentials.reserve(most);
        m_exponentials.emplace_back();
        return m_kept.insert(m_kept.end(), {.rate = rate});
    }
    const auto earlier = [](const Kept& a, const Kept& b) { return a.lastUse < b.lastUse; };
    const auto oldest = std::min_element(m_kept.begin(), m_kept.end(), earlier);
    *oldest = {.rate = rate};
    return oldest;
}

void CurveEvaluator::extend(Grid& values, Kept& kept, std::size_t count) const
{
    for (std::size_t i = kept.count; i < count;) {
        const std::size_t top = leadingPoint(i);
        if (i == top || i >= m_evenPoints) {
            values[i] = std::exp(-kept.rate * m_t[i]);
            ++i;
            continue;
        }
        const std::size_t end = std::min({count, 2 * top, m_evenPoints});
        setWeighted(std::span(values).subspan(i, end - i), values[top], values.data() + (i - top));
        i = end;
    }
    kept.count = count;
}

} // namespace decay
