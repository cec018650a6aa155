#include "trust/startsearch.h"

#include "fit/vectorregisters.h"
#include "leastsquares/spread.h"
#include "leastsquares/thinnedproblem.h"

#include <algorithm>
#include <cmath>

namespace trust
{
namespace
{

constexpr std::array<int, 4> kLookedAt{1, 40, 300, 600}; // starts whose sum is calculated, by number of free parameters
constexpr std::array<int, 4> kDescents{1, 6, 20, 24};    // the best starts, from which a fit descends

constexpr double kSearchShare = 0.4; // of the progress, if minima of the thinned data are continued with all points

bool isLower(const leastsquares::Minimum& a, const leastsquares::Minimum& b) { return a.sumOfSquares < b.sumOfSquares; }

/// The state of a running search.
class StartSearch
{
public:
    StartSearch(const RequestedFit& requested, const SearchProgress& progress)
        : m_requested(requested), m_free(requested.free()), m_sensible(sensibleRanges(requested.request.model)),
          m_thinned(requested.problem), m_progress(progress)
    {
    }

    SearchResult result();

private:
    std::vector<fit::Parameters> starts();
    leastsquares::Ranges wideRanges() const;
    void descendFrom(const std::vector<fit::Parameters>& starts);
    void add(const leastsquares::Minimum& minimum);
    bool sameValley(const leastsquares::Minimum& a, const leastsquares::Minimum& b);
    void refine();
    void stepDone();
    void report(double done);

    const RequestedFit& m_requested;
    const leastsquares::FreeSlots m_free;
    const leastsquares::Ranges m_sensible;
    leastsquares::ThinnedProblem m_thinned; // all points if there are few
    const SearchProgress& m_progress;
    std::vector<leastsquares::Minimum> m_minima;
    int m_stepsDone = 0;
    bool m_cancelled = false;
};

SearchResult StartSearch::result()
{
    fit::clearUpperHalves();
    SearchResult result;
    result.typedSum = leastsquares::sumOfSquares(m_requested.problem, m_requested.request.values);
    descendFrom(starts());
    refine();
    result.cancelled = m_cancelled;
    if (!m_cancelled)
        result.solutions = leastsquares::equallyGoodSolutions({.problem = m_requested.problem,
                                                               .free = m_free,
                                                               .countedPoints = m_requested.countedPoints(),
                                                               .usual = m_sensible,
                                                               .nearest = positiveStart(m_requested)},
                                                              m_minima);
    return result;
}

/// The typed values, then the best of the spread starts.
std::vector<fit::Parameters> StartSearch::starts()
{
    std::vector<leastsquares::Minimum> tried;
    for (int n = 1; n <= kLookedAt[m_free.size()] && !m_cancelled; ++n) {
        fit::Parameters values = m_requested.request.values;
        leastsquares::spread(values, m_free, m_sensible, n);
        tried.push_back({values, leastsquares::sumOfSquares(m_thinned, values)});
        stepDone();
    }
    std::sort(tried.begin(), tried.end(), isLower);
    tried.resize(std::min(tried.size(), static_cast<std::size_t>(kDescents[m_free.size()])));
    std::vector<fit::Parameters> starts{positiveStart(m_requested)};
    for (const leastsquares::Minimum& start : tried)
        starts.push_back(start.values);
    return starts;
}

leastsquares::Ranges StartSearch::wideRanges() const
{
    leastsquares::Ranges wide = m_sensible;
    for (const std::size_t slot : m_free) {
        wide[slot].low = m_sensible[slot].low / kSearchMargin;
        wide[slot].high = m_sensible[slot].high * kSearchMargin;
    }
    return wide;
}

void StartSearch::descendFrom(const std::vector<fit::Parameters>& starts)
{
    for (const fit::Parameters& start : starts) {
        if (m_cancelled)
            return;
        add(leastsquares::descend(m_thinned, start, m_free, wideRanges()));
        stepDone();
    }
}

/// Keeps the deepest minimum of each valley.
void StartSearch::add(const leastsquares::Minimum& minimum)
{
    for (leastsquares::Minimum& known : m_minima)
        if (sameValley(known, minimum)) {
            known = std::min(known, minimum, isLower);
            return;
        }
    m_minima.push_back(minimum);
}

/// True if there is no ridge between two minima: then they are the same minimum, or two ends of a flat valley.
bool StartSearch::sameValley(const leastsquares::Minimum& a, const leastsquares::Minimum& b)
{
    const double higher = std::max(a.sumOfSquares, b.sumOfSquares);
    for (const double share : {0.25, 0.5, 0.75}) {
        fit::Parameters middle = a.values;
        for (const std::size_t slot : m_free)
            middle[slot] = leastsquares::between({a.values[slot], b.values[slot]}, share);
        if (!leastsquares::equallyGood(leastsquares::sumOfSquares(m_thinned, middle), higher, m_thinned.pointCount()))
            return false;
    }
    return true;
}

/// Continues minima of the thinned data with all points.
void StartSearch::refine()
{
    constexpr double kWorthFollowing = 2; // times the lowest sum
    if (!m_thinned.leavesOut() || m_minima.empty())
        return;
    const double lowest = std::min_element(m_minima.begin(), m_minima.end(), isLower)->sumOfSquares;
    std::erase_if(m_minima, [=](const leastsquares::Minimum& minimum) {
        return minimum.sumOfSquares > lowest * kWorthFollowing;
    });
    const auto count = static_cast<double>(m_minima.size());
    for (std::size_t i = 0; i < m_minima.size() && !m_cancelled; ++i) {
        m_minima[i] = leastsquares::descend(m_requested.problem, m_minima[i].values, m_free, wideRanges());
        report(kSearchShare + (1 - kSearchShare) * static_cast<double>(i + 1) / count);
    }
}

void StartSearch::stepDone()
{
    const double steps = kLookedAt[m_free.size()] + kDescents[m_free.size()] + 1;
    report((m_thinned.leavesOut() ? kSearchShare : 1) * ++m_stepsDone / steps);
}

void StartSearch::report(double done)
{
    m_cancelled = m_progress && !m_progress(std::min(1.0, done));
    fit::clearUpperHalves(); // events have run
}

} // namespace

SearchResult searchStart(const RequestedFit& requested, const SearchProgress& progress)
{
    return StartSearch(requested, progress).result();
}

} // namespace trust
