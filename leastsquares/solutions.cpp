#include "leastsquares/solutions.h"

#include "leastsquares/spread.h"
#include "leastsquares/uncertainty.h"

#include <algorithm>
#include <cmath>

#include <boost/math/distributions/fisher_f.hpp>

namespace leastsquares
{
namespace
{

bool contains(const FreeSlots& slots, std::size_t slot)
{
    return std::find(slots.begin(), slots.end(), slot) != slots.end();
}

bool sameWhereDetermined(const FreeSlots& free, const Solution& a, const Solution& b)
{
    constexpr double kSame = 0.01; // relative
    return std::all_of(free.begin(), free.end(), [&](std::size_t slot) {
        return contains(a.undetermined, slot) || contains(b.undetermined, slot) ||
               std::abs(std::log(a.values[slot] / b.values[slot])) < kSame;
    });
}

double distance(const FreeSlots& free, const fit::Parameters& a, const fit::Parameters& b)
{
    double sum = 0;
    for (const std::size_t slot : free)
        sum += std::abs(std::log(a[slot] / b[slot]));
    return sum;
}

/// Builds the list of solutions, whose minima come in ascending order of their sums.
class SolutionList
{
public:
    SolutionList(const SolvedProblem& solved, double leastSum)
        : m_solved(solved), m_limit(std::max(leastSum, limitOf(solved, leastSum)))
    {
    }

    bool accepts(const Minimum& minimum) const;
    void add(const Minimum& minimum);
    std::vector<Solution> solutions; // so far

private:
    static double limitOf(const SolvedProblem& solved, double leastSum);
    bool equallyDeep(double sum, double least) const { return equallyGood(sum, least, m_solved.problem.pointCount()); }
    bool mayStandFor(double sum, double least) const;
    Solution solutionOf(const Minimum& minimum) const;
    bool same(const Solution& a, const Solution& b) const;
    bool inOneRegion(const fit::Parameters& a, const fit::Parameters& b) const;
    bool sameWhenExchanged(const Solution& a, const Solution& b) const;

    const SolvedProblem& m_solved;
    double m_limit; // of the sums that the data cannot tell from the least
};

double SolutionList::limitOf(const SolvedProblem& solved, double leastSum)
{
    const double tight = leastSum * (1 + kEquallyGood);
    return solved.hasNoise
               ? std::max(tight, regionLimit(leastSum, solved.countedPoints, static_cast<int>(solved.free.size())))
               : tight;
}

bool SolutionList::accepts(const Minimum& minimum) const
{
    return std::isfinite(minimum.sumOfSquares) &&
           (minimum.sumOfSquares <= m_limit || equallyDeep(minimum.sumOfSquares, 0));
}

void SolutionList::add(const Minimum& minimum)
{
    const Solution solution = solutionOf(minimum);
    const auto known =
        std::find_if(solutions.begin(), solutions.end(), [&](const Solution& other) { return same(other, solution); });
    if (known == solutions.end())
        solutions.push_back(solution);
    else if (mayStandFor(solution.sumOfSquares, known->lowestSum) &&
             distance(m_solved.free, solution.values, m_solved.nearest) <
                 distance(m_solved.free, known->values, m_solved.nearest))
        *known = {solution.values, solution.sumOfSquares, known->lowestSum, solution.undetermined};
}

/// A representative may use up a tenth of the usual share; the rest is for sums that are compared with the solution.
bool SolutionList::mayStandFor(double sum, double least) const
{
    constexpr double kPart = 0.1;
    return equallyDeep(least + (sum - least) / kPart, least);
}

/// A parameter that the data do not determine is moved into its usual range if the fit stays equally good.
Solution SolutionList::solutionOf(const Minimum& minimum) const
{
    Solution solution{
        minimum.values, minimum.sumOfSquares, minimum.sumOfSquares,
        uncertaintyOf(m_solved.problem, minimum.values, m_solved.free, m_solved.countedPoints).undetermined};
    for (const std::size_t slot : solution.undetermined) {
        fit::Parameters held = solution.values;
        held[slot] = std::clamp(held[slot], m_solved.usual[slot].low, m_solved.usual[slot].high);
        const double sum = sumOfSquares(m_solved.problem, held);
        if (mayStandFor(sum, minimum.sumOfSquares)) {
            solution.values = held;
            solution.sumOfSquares = sum;
        }
    }
    return solution;
}

bool SolutionList::same(const Solution& a, const Solution& b) const
{
    return sameWhereDetermined(m_solved.free, a, b) || inOneRegion(a.values, b.values) || sameWhenExchanged(a, b);
}

/// True if no ridge rises out of the region between two minima.
bool SolutionList::inOneRegion(const fit::Parameters& a, const fit::Parameters& b) const
{
    for (const double share : {0.1, 0.25, 0.4, 0.5, 0.6, 0.75, 0.9}) {
        fit::Parameters middle = a;
        for (const std::size_t slot : m_solved.free)
            middle[slot] = between({a[slot], b[slot]}, share);
        const double sum = sumOfSquares(m_solved.problem, middle);
        if (!(sum <= m_limit || equallyDeep(sum, 0)))
            return false;
    }
    return true;
}

bool SolutionList::sameWhenExchanged(const Solution& a, const Solution& b) const
{
    if (!m_solved.exchanged)
        return false;
    Solution exchanged = b;
    exchanged.values = m_solved.exchanged(b.values);
    return equallyDeep(sumOfSquares(m_solved.problem, exchanged.values), b.sumOfSquares) &&
           (sameWhereDetermined(m_solved.free, a, exchanged) || inOneRegion(a.values, exchanged.values));
}

} // namespace

double regionLimit(double leastSum, int n, int p)
{
    if (p < 1 || n <= p)
        return leastSum;
    const double F = boost::math::quantile(boost::math::fisher_f(p, n - p), 0.95);
    return leastSum * (1 + static_cast<double>(p) / (n - p) * F);
}

std::vector<Solution> equallyGoodSolutions(const SolvedProblem& solved, std::vector<Minimum> minima)
{
    if (minima.empty())
        return {};
    std::sort(minima.begin(), minima.end(),
              [](const Minimum& a, const Minimum& b) { return a.sumOfSquares < b.sumOfSquares; });
    SolutionList list(solved, minima.front().sumOfSquares);
    for (const Minimum& minimum : minima)
        if (list.accepts(minimum))
            list.add(minimum);
    return list.solutions;
}

} // namespace leastsquares
