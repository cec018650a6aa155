#include "leastsquares/minimum.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <unsupported/Eigen/NonLinearOptimization>

namespace leastsquares
{
namespace
{

constexpr double kStep = 6e-6;       // of a logarithm: the cube root of the rounding unit
constexpr double kFarAway = 1e30;    // replaces a residual that is NaN; its square is finite
constexpr double kTolerance = 1e-10; // relative, on the sum of squares, the parameters and the gradient
constexpr int kMaxSteps = 200;
constexpr double kFirstStep = 3; // of logarithms

double finite(double residual) { return std::isfinite(residual) ? residual : kFarAway; }

/// The residuals as a function of the logarithms of the free parameters, in the form that Eigen needs.
class LogResiduals
{
public:
    using Scalar = double;
    enum { InputsAtCompileTime = Eigen::Dynamic, ValuesAtCompileTime = Eigen::Dynamic };
    using InputType = Eigen::VectorXd;
    using ValueType = Eigen::VectorXd;
    using JacobianType = Eigen::MatrixXd;

    LogResiduals(fit::Problem& problem, const fit::Parameters& start, const FreeSlots& free, const Ranges& ranges)
        : m_problem(problem), m_start(start), m_ranges(ranges)
    {
        std::copy_if(free.begin(), free.end(), std::back_inserter(m_free),
                     [&](std::size_t slot) { return start[slot] != 0; });
    }

    Eigen::Index inputs() const { return static_cast<Eigen::Index>(m_free.size()); }
    Eigen::Index values() const { return m_problem.pointCount(); }

    Eigen::VectorXd logarithms() const
    {
        Eigen::VectorXd u(inputs());
        for (Eigen::Index j = 0; j < inputs(); ++j)
            u[j] = std::log(std::abs(m_start[slot(j)]));
        return u;
    }

    fit::Parameters parameters(const Eigen::VectorXd& u) const
    {
        fit::Parameters p = m_start;
        for (Eigen::Index j = 0; j < inputs(); ++j) {
            const Range& range = m_ranges[slot(j)];
            p[slot(j)] = std::copysign(std::clamp(std::exp(u[j]), range.low, range.high), m_start[slot(j)]);
        }
        return p;
    }

    int operator()(const Eigen::VectorXd& u, Eigen::VectorXd& r) const
    {
        const fit::Parameters p = parameters(u);
        for (Eigen::Index i = 0; i < values(); ++i)
            r[i] = finite(m_problem.residual(static_cast<int>(i) + 1, p));
        return 0;
    }

    int df(const Eigen::VectorXd& u, Eigen::MatrixXd& J) const
    {
        const fit::Parameters p = parameters(u);
        const auto columns = relativeDerivatives(m_problem, p, m_free);
        for (Eigen::Index j = 0; j < inputs(); ++j)
            J.col(j) = Eigen::Map<const Eigen::VectorXd>(columns[static_cast<std::size_t>(j)].data(), values());
        return 0;
    }

private:
    std::size_t slot(Eigen::Index j) const { return m_free[static_cast<std::size_t>(j)]; }

    fit::Problem& m_problem;
    fit::Parameters m_start;
    FreeSlots m_free;
    Ranges m_ranges;
};

} // namespace

FreeSlots freeSlots(int parameterCount, const fit::Flags& fix)
{
    FreeSlots slots;
    for (std::size_t j = 1; j <= static_cast<std::size_t>(parameterCount); ++j)
        if (fix[j] != 1)
            slots.push_back(j);
    return slots;
}

double sumOfSquares(fit::Problem& problem, const fit::Parameters& values)
{
    double sum = 0;
    for (int i = 1; i <= problem.pointCount(); ++i) {
        const double r = problem.residual(i, values);
        sum += r * r;
    }
    return std::isfinite(sum) ? sum : std::numeric_limits<double>::infinity();
}

std::vector<std::vector<double>> relativeDerivatives(fit::Problem& problem, const fit::Parameters& values,
                                                     const FreeSlots& free)
{
    std::vector<std::vector<double>> derivatives;
    for (const std::size_t slot : free) {
        fit::Parameters above = values, below = values;
        above[slot] *= std::exp(kStep);
        below[slot] *= std::exp(-kStep);
        std::vector<double>& column = derivatives.emplace_back();
        for (int i = 1; i <= problem.pointCount(); ++i)
            column.push_back((finite(problem.residual(i, above)) - finite(problem.residual(i, below))) / (2 * kStep));
    }
    return derivatives;
}

Minimum descend(fit::Problem& problem, const fit::Parameters& start, const FreeSlots& free, const Ranges& ranges)
{
    LogResiduals residuals(problem, start, free, ranges);
    Eigen::VectorXd u = residuals.logarithms();
    if (u.size() > 0 && residuals.values() >= u.size()) {
        Eigen::LevenbergMarquardt<LogResiduals> method(residuals);
        // All logarithms are scaled equally, and the first step is about a decade, so that a direction with little
        // effect does not diverge and slow down the others.
        method.useExternalScaling = true;
        method.diag.setOnes(u.size());
        method.parameters.factor = kFirstStep / std::max(1.0, u.norm());
        method.parameters.ftol = method.parameters.xtol = method.parameters.gtol = kTolerance;
        method.minimizeInit(u);
        for (int step = 0; step < kMaxSteps; ++step)
            if (method.minimizeOneStep(u) != Eigen::LevenbergMarquardtSpace::Running)
                break;
    }
    const fit::Parameters reached = residuals.parameters(u);
    return {reached, sumOfSquares(problem, reached)};
}

bool equallyGood(double sum, double best, int pointCount)
{
    // no instrument detects a deviation of a millionth
    constexpr double kExactPerPoint = 1e-12;
    return sum <= std::max(best * (1 + kEquallyGood), kExactPerPoint * pointCount);
}

} // namespace leastsquares
