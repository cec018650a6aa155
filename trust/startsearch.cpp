#include "trust/startsearch.h"

#include "fit/vectorregisters.h"
#include "leastsquares/spread.h"

#include <algorithm>
#include <cmath>

namespace trust
{
namespace
{

// By number of free parameters: how many starts a sum is calculated for, from how many of the best of these a fit
// descends, and from how many others, because the best ones may share a plateau.
constexpr std::array<int, 4> kLookedAt{1, 40, 300, 600};
constexpr std::array<int, 4> kBest{0, 3, 20, 24};
constexpr std::array<int, 4> kFirst{1, 3, 20, 24};

// Walks along the parameter at which a law jumps: the first one with thinned points, past jumps; the others closer to
// the best side of a jump.
constexpr std::array<leastsquares::ValleyWalk::Strides, 3> kWalks{{{1e-2, 500, 2}, {1e-3, 10, 2}, {1e-4, 10, 2}}};

constexpr double kLookShare = 0.2, kDescentsEnd = 0.6; // of the progress

bool isLower(const leastsquares::Minimum& a, const leastsquares::Minimum& b) { return a.sumOfSquares < b.sumOfSquares; }

const leastsquares::Minimum& lowest(const std::vector<leastsquares::Minimum>& minima)
{
    return *std::min_element(minima.begin(), minima.end(), isLower);
}

/// The free parameter along which the law jumps; 0 if there is none.
std::size_t jumpingSlot(const RequestedFit& requested)
{
    if (analysis::methodOf(requested.request) != models::Analysis::Decay)
        return 0;
    for (const std::size_t slot : requested.free())
        if (models::parameter(requested.request.model, slot).jumpsInDecay)
            return slot;
    return 0;
}

} // namespace

StartSearch::StartSearch(const RequestedFit& requested, const LeastSums& known)
    : m_requested(requested), m_free(requested.free()), m_sensible(sensibleRanges(requested.request.model)),
      m_counted(countedRanges(requested.request.model)),
      m_jumping(known.searched(requested.request) ? 0 : jumpingSlot(requested)), m_thinned(requested.problem)
{
    if (known.searched(requested.request))
        beginDescents({});
}

bool StartSearch::step()
{
    switch (m_stage) {
    case Stage::Thin:
        thin();
        break;
    case Stage::Look:
        look();
        break;
    case Stage::Descend:
        descend();
        break;
    case Stage::Refine:
        refine();
        break;
    case Stage::Walk:
        walk();
        break;
    case Stage::Done:
        break;
    }
    return m_stage != Stage::Done;
}

double StartSearch::done() const
{
    const auto share = [](std::size_t part, std::size_t whole) {
        return static_cast<double>(part) / static_cast<double>(std::max<std::size_t>(whole, 1));
    };
    const auto refined = [this](double part) {
        const double parts = m_jumping == 0 ? 1 : kWalks.size() + 2;
        return kDescentsEnd + (1 - kDescentsEnd) * (m_partsRefined + part) / parts;
    };
    switch (m_stage) {
    case Stage::Thin:
        return 0;
    case Stage::Look:
        return kLookShare * share(m_looked.size(), static_cast<std::size_t>(kLookedAt[m_free.size()]));
    case Stage::Descend:
        return kLookShare + (kDescentsEnd - kLookShare) * share(m_next, m_starts.size());
    case Stage::Refine:
        return refined(share(m_next, m_starts.size()));
    case Stage::Walk:
        return refined(m_walk->done());
    case Stage::Done:
        break;
    }
    return 1;
}

fit::Parameters StartSearch::spreadStart(int n) const
{
    fit::Parameters values = m_requested.request.values;
    leastsquares::spread(values, m_free, m_sensible, n);
    return values;
}

void StartSearch::thin()
{
    constexpr int kNoted = 16;
    if (m_thinned.isLarge() && m_noted < kNoted)
        return m_thinned.note(spreadStart(++m_noted));
    m_thinned.thin();
    m_stage = Stage::Look;
}

void StartSearch::look()
{
    const fit::Parameters values = spreadStart(static_cast<int>(m_looked.size()) + 1);
    m_looked.push_back({values, leastsquares::sumOfSquares(m_thinned, values)});
    if (m_looked.size() < static_cast<std::size_t>(kLookedAt[m_free.size()]))
        return;
    const auto others = m_looked.begin() + kFirst[m_free.size()];
    std::sort(others, m_looked.end(), isLower);
    m_looked.erase(others + kBest[m_free.size()], m_looked.end());
    std::vector<fit::Parameters> best;
    for (const leastsquares::Minimum& start : m_looked)
        best.push_back(start.values);
    beginDescents(std::move(best));
}

/// The typed values come first.
void StartSearch::beginDescents(std::vector<fit::Parameters> starts)
{
    m_starts = std::move(starts);
    m_starts.insert(m_starts.begin(), positiveStart(m_requested));
    m_next = 0;
    m_stage = Stage::Descend;
}

void StartSearch::descend()
{
    if (!m_descent)
        m_descent.emplace(m_thinned, m_starts[m_next], m_free, m_counted);
    if (m_descent->step())
        return;
    add(m_descent->reached());
    m_descent.reset();
    if (++m_next == m_starts.size())
        beginRefining();
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

/// Descents may end early in a narrow valley or have left out points: they are continued.
void StartSearch::beginRefining()
{
    constexpr double kWorthFollowing = 20; // times the lowest sum of thinned data
    const double leastSum = lowest(m_minima).sumOfSquares;
    m_starts.clear();
    for (const leastsquares::Minimum& minimum : m_minima)
        if (!m_thinned.leavesOut() || minimum.sumOfSquares <= leastSum * kWorthFollowing)
            m_starts.push_back(minimum.values);
    m_minima.clear();
    m_next = 0;
    m_stage = m_starts.empty() ? Stage::Done : Stage::Refine;
}

/// Descends from a minimum again and again, until that hardly helps.
void StartSearch::refine()
{
    constexpr double kHelps = 1 - 1e-2 * leastsquares::kEquallyGood;
    constexpr int kMostRounds = 10;
    if (!m_descent)
        m_descent.emplace(m_requested.problem, m_starts[m_next], m_free, m_counted);
    if (m_descent->step())
        return;
    const leastsquares::Minimum reached = m_descent->reached();
    m_descent.reset();
    const double before = leastsquares::sumOfSquares(m_requested.problem, m_starts[m_next]);
    if (reached.sumOfSquares < before * kHelps && ++m_rounds < kMostRounds) {
        m_starts[m_next] = reached.values;
        return;
    }
    keep(reached);
    m_rounds = 0;
    if (++m_next == m_starts.size())
        beginWalk();
}

/// A minimum found after a walk counts only if it is lower than all others.
void StartSearch::keep(const leastsquares::Minimum& minimum)
{
    if (m_walked == 0 || isLower(minimum, lowest(m_minima)))
        m_minima.push_back(minimum);
}

void StartSearch::beginWalk()
{
    const bool useful = m_jumping != 0 && m_walked < kWalks.size() && std::isfinite(lowest(m_minima).sumOfSquares);
    m_stage = useful ? Stage::Walk : Stage::Done;
    if (!useful)
        return;
    fit::Problem& problem = m_walked == 0 ? m_thinned : m_requested.problem;
    ++m_partsRefined;
    m_walk.emplace(problem, lowest(m_minima).values, m_jumping, m_free, m_counted, kWalks[m_walked++]);
}

/// The lowest places of the first walk are refined with all points.
void StartSearch::walk()
{
    constexpr std::size_t kRefined = 10;
    if (m_walk->step())
        return;
    if (m_walked > 1) {
        keep(m_walk->lowest(1).front());
        beginWalk();
        return;
    }
    m_starts.clear();
    for (const leastsquares::Minimum& place : m_walk->lowest(kRefined))
        m_starts.push_back(place.values);
    m_next = 0;
    ++m_partsRefined;
    m_stage = Stage::Refine;
}

SearchResult searchStart(const RequestedFit& requested, LeastSums& known, const SearchProgress& progress)
{
    fit::clearUpperHalves();
    SearchResult result{.typedSum = leastsquares::sumOfSquares(requested.problem, requested.request.values),
                        .solutions = {}};
    StartSearch search(requested, known);
    while (search.step()) {
        if (progress && !progress(search.done())) {
            result.cancelled = true;
            return result;
        }
        fit::clearUpperHalves(); // events have run
    }
    known.keep(requested.request, search.minima());
    result.solutions = knownSolutions(requested, known);
    return result;
}

std::vector<leastsquares::Solution> knownSolutions(const RequestedFit& requested, const LeastSums& known)
{
    const models::Model& model = models::row(requested.request.model);
    const leastsquares::FreeSlots free = requested.free();
    const bool allFree = free.size() == model.fitted().size();
    return leastsquares::equallyGoodSolutions(
        {.problem = requested.problem,
         .free = free,
         .countedPoints = requested.countedPoints(),
         .hasNoise = analysis::methodOf(requested.request) == models::Analysis::SternVolmer,
         .usual = sensibleRanges(requested.request.model),
         .nearest = positiveStart(requested),
         .exchanged = allFree ? model.exchanged : nullptr},
        known.minima(requested.request));
}

} // namespace trust
