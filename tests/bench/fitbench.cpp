#include "decay/curvefit.h"
#include "tests/bench/cleanstate.h"
#include "tests/bench/jobs.h"
#include "tests/bench/literallaws.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace
{

using bench::kProbe;

template <class Problem, class Fit>
void fit(benchmark::State& state, Problem& problem, const bench::Job& job, Fit fitted)
{
    bench::NoObserver observer;
    fit::Outcome outcome;
    const bench::CleanState clean(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(outcome = fitted(problem, job.options, job.start, observer));
    state.counters["updates"] = outcome.iterations;
}

void decayFit(benchmark::State& state, int number)
{
    const bench::DecayJob& job = bench::decayJob(number);
    decay::DecayProblem problem(job.samples, job.model, 0, kProbe);
    fit(state, problem, job, decay::fitCurves);
}

void literalDecayFit(benchmark::State& state, int number)
{
    const bench::DecayJob& job = bench::decayJob(number);
    literal::DecayProblem problem(job.samples, job.model, 0, kProbe);
    fit(state, problem, job, fit::gaussNewton);
}

void ratioFit(benchmark::State& state, int number)
{
    const bench::RatioJob& job = bench::ratioJob(number);
    sternvolmer::RatioProblem problem = bench::problemOf(job);
    fit(state, problem, job, fit::gaussNewton);
}

void literalRatioFit(benchmark::State& state, int number)
{
    const bench::RatioJob& job = bench::ratioJob(number);
    literal::RatioProblem problem(job.x, job.y, job.model, {.Cp = kProbe, .tau0 = job.tau0});
    fit(state, problem, job, fit::gaussNewton);
}

/// Evaluates all residuals once, for a new parameter vector.
template <class Problem>
void pass(benchmark::State& state, Problem& problem, fit::Parameters a)
{
    std::array<double, fit::kMostPointsAtOnce> room{};
    const bench::CleanState clean(state);
    for (auto _ : state) {
        a[1] *= 1 + 1e-12;
        for (int first = 1, last = problem.pointCount(); first <= last;) {
            const int count = std::min(problem.pointsAtOnce(first), last - first + 1);
            problem.residuals(first, a, std::span(room).first(static_cast<std::size_t>(count)));
            first += count;
        }
        benchmark::DoNotOptimize(room);
    }
}

void decayPass(benchmark::State& state, int number)
{
    const bench::DecayJob& job = bench::decayJob(number);
    decay::DecayProblem problem(job.samples, job.model, 0, kProbe);
    problem.setEvaluation(models::Evaluation::Fast);
    pass(state, problem, job.start);
}

void ratioPass(benchmark::State& state, int number)
{
    const bench::RatioJob& job = bench::ratioJob(number);
    sternvolmer::RatioProblem problem = bench::problemOf(job);
    pass(state, problem, job.start);
}

/// Only the calls of exp and sqrt that the formulas contain for one pass, with similar arguments.
void floorOfPass(benchmark::State& state, const std::vector<double>& exponents, const std::vector<double>& squares)
{
    const bench::CleanState clean(state);
    for (auto _ : state) {
        double sum = 0;
        for (double x : exponents)
            sum += std::exp(x);
        for (double x : squares)
            sum += std::sqrt(x);
        benchmark::DoNotOptimize(sum);
    }
}

void floorOfDecayPass(benchmark::State& state, int number)
{
    const bench::DecayJob& job = bench::decayJob(number);
    const decay::SampleRecord& reference = job.samples.SampleData[1];
    std::vector<double> exponents, squares;
    for (std::size_t s = 2; s <= static_cast<std::size_t>(job.samples.SampleCount); ++s) {
        const double Q = job.samples.SampleData[s].Conc;
        const auto populations = models::populationsOf(job.model, {Q, kProbe, job.start});
        for (std::size_t i = 0; i < 50; ++i) {
            for (std::size_t k = 1; k <= static_cast<std::size_t>(reference.NComp); ++k)
                for (const models::Population& population : populations.members)
                    exponents.push_back(-(reference.Rate[k] + population.addedRate) * reference.T[i]);
            if (job.model == 2)
                squares.push_back(1 + 4 * job.start[1] * Q);
        }
    }
    floorOfPass(state, exponents, squares);
}

/// The law of spheres (J4) has one exp for each ratio; the law of collisions (J5) has none, so it has no lower bound.
void floorOfRatioPass(benchmark::State& state, int number)
{
    const bench::RatioJob& job = bench::ratioJob(number);
    std::vector<double> exponents;
    for (std::size_t i = 1; i <= bench::kSamples; ++i)
        exponents.push_back(-job.start[1] * job.x[i] / (1 + job.start[1] * kProbe));
    floorOfPass(state, exponents, {});
}

constexpr int kSphereJob = 4;

const bool registered = [] {
    for (int number = 1; number <= bench::kDecayJobs + bench::kRatioJobs; ++number) {
        const std::string job = "J" + std::to_string(number);
        const bool isDecay = number <= bench::kDecayJobs;
        benchmark::RegisterBenchmark(("fit/" + job + "/literal").c_str(), isDecay ? literalDecayFit : literalRatioFit,
                                     number);
        benchmark::RegisterBenchmark(("fit/" + job + "/product").c_str(), isDecay ? decayFit : ratioFit, number);
        if (isDecay || number == kSphereJob)
            benchmark::RegisterBenchmark(("pass/" + job + "/floor").c_str(),
                                         isDecay ? floorOfDecayPass : floorOfRatioPass, number);
        benchmark::RegisterBenchmark(("pass/" + job + "/product").c_str(), isDecay ? decayPass : ratioPass, number);
    }
    return true;
}();

} // namespace
