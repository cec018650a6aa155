#pragma once

#include "leastsquares/solutions.h"
#include "leastsquares/thinnedproblem.h"
#include "leastsquares/valleywalk.h"
#include "trust/leastsums.h"

#include <functional>
#include <optional>
#include <vector>

namespace trust
{

/// The minima reached from the typed values and other starts.
struct SearchResult {
    double typedSum = 0; // sum of squares at the typed values; infinity when it is not defined there
    std::vector<leastsquares::Solution>
        solutions;          // the best solution and every different solution that the data cannot tell from it
    bool cancelled = false; // then there are no solutions
};

/// Searches for the least-squares minimum of a model with Levenberg-Marquardt fits from the typed values and from the
/// best of many starts, which are spread evenly over the logarithms of the sensible ranges. Fixed parameters keep their
/// typed values. Where the law jumps along a parameter, walks along it lead from the lowest minimum past the jumps.
/// The same input always gives the same result. What an earlier search has found is not searched again.
class StartSearch
{
public:
    /// requested must outlive it.
    StartSearch(const RequestedFit& requested, const LeastSums& known);

    /// A piece of work: at most one step of a fit. False: the search is complete.
    bool step();
    double done() const; // 0..1
    /// After the last step.
    const std::vector<leastsquares::Minimum>& minima() const { return m_minima; }

private:
    enum class Stage { Thin, Look, Descend, Refine, Walk, Done };

    fit::Parameters spreadStart(int n) const;
    void thin();
    void look();
    void descend();
    void refine();
    void walk();
    void beginDescents(std::vector<fit::Parameters> starts);
    void beginRefining();
    void beginWalk();
    void add(const leastsquares::Minimum& minimum);
    void keep(const leastsquares::Minimum& minimum);
    bool sameValley(const leastsquares::Minimum& a, const leastsquares::Minimum& b);

    const RequestedFit& m_requested;
    const leastsquares::FreeSlots m_free;
    const leastsquares::Ranges m_sensible, m_counted;
    const std::size_t m_jumping;            // the parameter along which to walk past jumps; 0: none
    leastsquares::ThinnedProblem m_thinned; // all points if there are few
    Stage m_stage = Stage::Thin;
    int m_noted = 0; // starts, for thinning
    std::vector<leastsquares::Minimum> m_looked;
    std::vector<fit::Parameters> m_starts; // of the descents or of the refining
    std::size_t m_next = 0;                // of the starts
    int m_rounds = 0;                      // of refining one minimum
    std::optional<leastsquares::Descent> m_descent;
    std::size_t m_walked = 0; // number of walks begun
    std::optional<leastsquares::ValleyWalk> m_walk;
    int m_partsRefined = 0; // walks, and refining before and after the first one
    std::vector<leastsquares::Minimum> m_minima;
};

/// Receives the progress of the search, 0..1; returning false cancels it.
using SearchProgress = std::function<bool(double done)>;

/// The search without pauses, and what it found. known: learns from the search.
SearchResult searchStart(const RequestedFit& requested, LeastSums& known, const SearchProgress& progress = {});

/// The solutions among all minima that are known, the best one first; the nearest to the typed values, if there is a
/// choice.
std::vector<leastsquares::Solution> knownSolutions(const RequestedFit& requested, const LeastSums& known);

} // namespace trust
