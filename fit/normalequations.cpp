#include "fit/normalequations.h"

#include "fit/realparameters.h"

#include <algorithm>
#include <cassert>

namespace fit
{
namespace
{

using Column = std::array<double, kMostPointsAtOnce>;

/// One pass over the points, for n parameters: a constant, so that the sums stay in registers.
template <std::size_t n>
class Pass
{
public:
    NormalEquations result(Problem& problem, Parameters& a, const Vector7& h);

private:
    void shift(Parameters& a, const Vector7& h);
    void differentiate(std::size_t count, const Vector7& h);
    void add(std::size_t count);
    NormalEquations sums() const;

    std::array<Parameters, n + 1> m_shifts{}; // the parameters, and for each parameter a copy shifted by its step
    std::array<Column, n + 1> m_columns;      // residuals of these at some points, then derivatives; not initialised
    std::array<std::array<double, n>, n> m_matrix{};
    std::array<double, n> m_rightSide{};
    double m_sumOfSquares = 0;
};

template <std::size_t n>
NormalEquations Pass<n>::result(Problem& problem, Parameters& a, const Vector7& h)
{
    bool settled = false; // once subtraction restores the old value, it always does
    for (int first = 1, last = problem.pointCount(); first <= last;) {
        int count = 1;
        if (settled) {
            count = std::min({problem.pointsAtOnce(first), kMostPointsAtOnce, last - first + 1});
        } else {
            const Parameters before = a;
            shift(a, h);
            settled = sameBits(before, a);
        }
        const auto points = static_cast<std::size_t>(count);
        for (std::size_t j = 0; j <= n; ++j)
            problem.residuals(first, m_shifts[j], std::span(m_columns[j].data(), points));
        differentiate(points, h);
        add(points);
        first += count;
    }
    return sums();
}

template <std::size_t n>
void Pass<n>::shift(Parameters& a, const Vector7& h)
{
    m_shifts[0] = a;
    for (std::size_t j = 1; j <= n; ++j) {
        a[j] += h[j];
        m_shifts[j] = a;
        a[j] -= h[j]; // deliberately not restored from a copy: later points use the rounded value
    }
}

template <std::size_t n>
void Pass<n>::differentiate(std::size_t count, const Vector7& h)
{
    for (std::size_t j = 1; j <= n; ++j) {
        const double step = h[j];
        for (std::size_t i = 0; i < count; ++i)
            m_columns[j][i] = (m_columns[j][i] - m_columns[0][i]) / step;
    }
}

/// Adds up point by point, as sums over all points do.
template <std::size_t n>
void Pass<n>::add(std::size_t count)
{
    auto matrix = m_matrix;
    auto rightSide = m_rightSide;
    double sumOfSquares = m_sumOfSquares;
    for (std::size_t i = 0; i < count; ++i) {
        const double r = m_columns[0][i];
        sumOfSquares += r * r;
        for (std::size_t j = 0; j < n; ++j) {
            const double J = m_columns[j + 1][i];
            for (std::size_t k = j; k < n; ++k)
                matrix[j][k] += J * m_columns[k + 1][i];
            rightSide[j] -= r * J;
        }
    }
    m_matrix = matrix;
    m_rightSide = rightSide;
    m_sumOfSquares = sumOfSquares;
}

template <std::size_t n>
NormalEquations Pass<n>::sums() const
{
    NormalEquations equations;
    equations.sumOfSquares = m_sumOfSquares;
    for (std::size_t j = 0; j < n; ++j) {
        equations.rightSide[j + 1] = m_rightSide[j];
        for (std::size_t k = j; k < n; ++k)
            equations.matrix[j + 1][k + 1] = m_matrix[j][k];
    }
    return equations;
}

template <std::size_t n>
NormalEquations run(Problem& problem, Parameters& a, const Vector7& h)
{
    Pass<n> pass;
    return pass.result(problem, a, h);
}

} // namespace

NormalEquations normalEquations(Problem& problem, Parameters& a, const Vector7& h, int parameterCount)
{
    assert(parameterCount >= 1 && parameterCount <= kMaxParameters);
    switch (parameterCount) {
    case 1:
        return run<1>(problem, a, h);
    case 2:
        return run<2>(problem, a, h);
    default:
        return run<3>(problem, a, h);
    }
}

} // namespace fit
