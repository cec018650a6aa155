#include "leastsquares/runstest.h"

#include <cmath>

namespace leastsquares
{
namespace
{

/// The binomial coefficient n over k, calculated with logarithms, because a fit may have a thousand points.
double logChoose(int n, int k) { return std::lgamma(n + 1.0) - std::lgamma(k + 1.0) - std::lgamma(n - k + 1.0); }

/// Probability that a elements of one kind and b of another, in random order, form x and y runs, for a given kind of
/// the first element.
double probabilityOfGroups(int a, int b, int x, int y)
{
    if (x < 1 || y < 1 || x > a || y > b)
        return 0;
    return std::exp(logChoose(a - 1, x - 1) + logChoose(b - 1, y - 1) - logChoose(a + b, a));
}

double probabilityOfRuns(int a, int b, int runs)
{
    const int half = runs / 2;
    if (runs % 2 == 0)
        return 2 * probabilityOfGroups(a, b, half, half);
    return probabilityOfGroups(a, b, half + 1, half) + probabilityOfGroups(a, b, half, half + 1);
}

} // namespace

RunsTest runsTest(std::span<const double> residuals)
{
    RunsTest test;
    double last = 0;
    for (const double residual : residuals) {
        if (residual == 0)
            continue;
        ++(residual > 0 ? test.above : test.below);
        if (residual * last <= 0)
            ++test.runs;
        last = std::copysign(1.0, residual);
    }
    if (test.above == 0 || test.below == 0)
        return test; // only one sign: the order means nothing
    test.probability = 0;
    for (int runs = 2; runs <= test.runs; ++runs)
        test.probability += probabilityOfRuns(test.above, test.below, runs);
    return test;
}

} // namespace leastsquares
