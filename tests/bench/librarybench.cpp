#include "decay/decayproblem.h"
#include "tests/bench/cleanstate.h"
#include "tests/bench/jobs.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

#include <unsupported/Eigen/NonLinearOptimization>
#include <unsupported/Eigen/NumericalDiff>

namespace
{

/// The decays of all samples, point by point: populations are kept for consecutive points of a sample, and each
/// exponential of the formula is a call of exp. A general library cannot share more.
class PointByPoint final : public fit::Problem
{
public:
    explicit PointByPoint(const bench::DecayJob& job) : m_law(job.samples, job.model, 0, bench::kProbe)
    {
        for (std::size_t s = 2; s <= static_cast<std::size_t>(job.samples.SampleCount); ++s)
            for (std::size_t i = 0; i <= static_cast<std::size_t>(job.samples.SampleData[s].LastFitIndex); ++i)
                m_points.push_back({job.samples.SampleData[1].T[i], job.samples.SampleData[s].Conc,
                                    job.samples.SampleData[s].IExp[i]});
    }
    int pointCount() const override { return static_cast<int>(m_points.size()); }
    double residual(int point, const fit::Parameters& a) override
    {
        const Point& data = m_points[static_cast<std::size_t>(point - 1)];
        return m_law.value(data.t, data.Q, a) - data.observed;
    }

private:
    struct Point {
        double t = 0; // s
        double Q = 0; // M
        double observed = 0;
    };
    decay::DecayProblem m_law;
    std::vector<Point> m_points;
};

/// A problem in the form that Eigen's Levenberg-Marquardt method needs.
class Residuals
{
public:
    using Scalar = double;
    enum { InputsAtCompileTime = Eigen::Dynamic, ValuesAtCompileTime = Eigen::Dynamic };
    using InputType = Eigen::VectorXd;
    using ValueType = Eigen::VectorXd;
    using JacobianType = Eigen::MatrixXd;

    Residuals(fit::Problem& problem, int parameterCount) : m_problem(problem), m_parameterCount(parameterCount) {}
    int inputs() const { return m_parameterCount; }
    int values() const { return m_problem.pointCount(); }

    int operator()(const Eigen::VectorXd& x, Eigen::VectorXd& r) const
    {
        fit::Parameters a{};
        std::copy(x.begin(), x.end(), a.begin() + 1);
        for (int point = 1; point <= values(); ++point)
            r[point - 1] = m_problem.residual(point, a);
        return 0;
    }

private:
    fit::Problem& m_problem;
    int m_parameterCount;
};

/// Derivatives are forward differences, like the program's own.
void fitWithLibrary(benchmark::State& state, fit::Problem& problem, const bench::Job& job)
{
    const Residuals residuals(problem, job.options.parameterCount);
    const Eigen::VectorXd start = Eigen::Map<const Eigen::VectorXd>(job.start.data() + 1, residuals.inputs());
    const bench::CleanState clean(state);
    for (auto _ : state) {
        Eigen::VectorXd x = start;
        Eigen::NumericalDiff<Residuals> differences(residuals);
        Eigen::LevenbergMarquardt<Eigen::NumericalDiff<Residuals>> method(differences);
        method.parameters.ftol = method.parameters.xtol = job.options.tolerance;
        method.minimize(x);
        state.counters["steps"] = static_cast<double>(method.iter);
        state.counters["sum of squares"] = method.fnorm * method.fnorm;
    }
}

void decayFit(benchmark::State& state, int number)
{
    const bench::DecayJob& job = bench::decayJob(number);
    PointByPoint problem(job);
    fitWithLibrary(state, problem, job);
}

void ratioFit(benchmark::State& state, int number)
{
    const bench::RatioJob& job = bench::ratioJob(number);
    sternvolmer::RatioProblem problem = bench::problemOf(job);
    fitWithLibrary(state, problem, job);
}

const bool registered = [] {
    for (int number = 1; number <= bench::kDecayJobs + bench::kRatioJobs; ++number)
        benchmark::RegisterBenchmark(("fit/J" + std::to_string(number) + "/library").c_str(),
                                     number <= bench::kDecayJobs ? decayFit : ratioFit, number);
    return true;
}();

} // namespace
