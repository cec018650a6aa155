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
    /// The method needs as many residuals as parameters; residuals beyond the last point are 0.
    Eigen::Index values() const { return std::max<Eigen::Index>(m_problem.pointCount(), inputs()); }

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
        r.setZero();
        for (Eigen::Index i = 0; i < m_problem.pointCount(); ++i)
            r[i] = finite(m_problem.residual(static_cast<int>(i) + 1, p));
        return 0;
    }

    int df(const Eigen::VectorXd& u, Eigen::MatrixXd& J) const
    {
        const fit::Parameters p = parameters(u);
        const auto columns = relativeDerivatives(m_problem, p, m_free);
        J.setZero();
        for (Eigen::Index j = 0; j < inputs(); ++j)
            J.col(j).head(m_problem.pointCount()) =
                Eigen::Map<const Eigen::VectorXd>(columns[static_cast<std::size_t>(j)].data(), m_problem.pointCount());
        return 0;
    }

    fit::Problem& problem() const { return m_problem; }

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

struct Descent::Method {
    Method(fit::Problem& problem, const fit::Parameters& start, const FreeSlots& free, const Ranges& ranges)
        : residuals(problem, start, free, ranges), method(residuals), u(residuals.logarithms())
    {
        // All logarithms are scaled equally, and the first step is about a decade, so that a direction with little
        // effect does not diverge and slow down the others.
        method.useExternalScaling = true;
        method.diag.setOnes(u.size());
        method.parameters.factor = kFirstStep / std::max(1.0, u.norm());
        method.parameters.ftol = method.parameters.xtol = method.parameters.gtol = kTolerance;
        if (u.size() > 0)
            method.minimizeInit(u);
    }

    LogResiduals residuals;
    Eigen::LevenbergMarquardt<LogResiduals> method;
    Eigen::VectorXd u;
    int steps = 0;
};

Descent::Descent(fit::Problem& problem, const fit::Parameters& start, const FreeSlots& free, const Ranges& ranges)
    : m_method(std::make_unique<Method>(problem, start, free, ranges))
{
}

Descent::Descent(Descent&&) noexcept = default;
Descent& Descent::operator=(Descent&&) noexcept = default;
Descent::~Descent() = default;

bool Descent::step()
{
    return m_method->u.size() > 0 && m_method->steps++ < kMaxSteps &&
           m_method->method.minimizeOneStep(m_method->u) == Eigen::LevenbergMarquardtSpace::Running;
}

Minimum Descent::reached() const
{
    const fit::Parameters values = m_method->residuals.parameters(m_method->u);
    return {values, sumOfSquares(m_method->residuals.problem(), values)};
}

Minimum descend(fit::Problem& problem, const fit::Parameters& start, const FreeSlots& free, const Ranges& ranges)
{
    Descent descent(problem, start, free, ranges);
    while (descent.step()) {
    }
    return descent.reached();
}

double sumOfExactFit(int pointCount)
{
    constexpr double kExactPerPoint = 1e-12;
    return kExactPerPoint * pointCount;
}

bool equallyGood(double sum, double best, int pointCount)
{
    return sum <= std::max(best * (1 + kEquallyGood), sumOfExactFit(pointCount));
}

} // namespace leastsquares
