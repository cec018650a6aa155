#include "leastsquares/solutions.h"

#include "leastsquares/uncertainty.h"

#include <algorithm>
#include <cmath>

namespace leastsquares
{
namespace
{

/// A parameter that the data do not determine is moved into its usual range if the fit stays equally good.
Solution solutionOf(const SolvedProblem& solved, const Minimum& minimum)
{
    Solution solution{minimum.values, minimum.sumOfSquares,
                      uncertaintyOf(solved.problem, minimum.values, solved.free, solved.countedPoints).undetermined};
    for (const std::size_t slot : solution.undetermined) {
        fit::Parameters held = solution.values;
        held[slot] = std::clamp(held[slot], solved.usual[slot].low, solved.usual[slot].high);
        const double sum = sumOfSquares(solved.problem, held);
        if (equallyGood(sum, minimum.sumOfSquares, solved.problem.pointCount())) {
            solution.values = held;
            solution.sumOfSquares = sum;
        }
    }
    return solution;
}

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

} // namespace

std::vector<Solution> equallyGoodSolutions(const SolvedProblem& solved, std::vector<Minimum> minima)
{
    const FreeSlots& free = solved.free;
    std::sort(minima.begin(), minima.end(),
              [](const Minimum& a, const Minimum& b) { return a.sumOfSquares < b.sumOfSquares; });
    std::vector<Solution> solutions;
    for (const Minimum& minimum : minima) {
        if (!std::isfinite(minimum.sumOfSquares) ||
            !equallyGood(minimum.sumOfSquares, minima.front().sumOfSquares, solved.problem.pointCount()))
            break;
        const Solution solution = solutionOf(solved, minimum);
        const auto known = std::find_if(solutions.begin(), solutions.end(), [&](const Solution& other) {
            return sameWhereDetermined(free, other, solution);
        });
        if (known == solutions.end())
            solutions.push_back(solution);
        else if (distance(free, solution.values, solved.nearest) < distance(free, known->values, solved.nearest))
            *known = solution;
    }
    return solutions;
}

} // namespace leastsquares
