#pragma once

#include "analysis/request.h"

#include <functional>
#include <memory>

namespace trust
{

/// Asked once per iteration; false ends the run.
using KeepGoing = std::function<bool()>;

/// Limit of a run, in evaluations of the law at a point: half a second with the slowest law.
inline constexpr double kEvaluations = 1e6;

/// The run of a request in single iterations.
class EngineRun
{
public:
    explicit EngineRun(const analysis::Request& request, double maxEvaluations = kEvaluations);

    /// False: the run has ended.
    bool step() { return m_run.iterate(m_limit); }
    double evaluations() const; // of the law so far

    /// Where the run is, without statistics and report.
    analysis::Result result() const;

private:
    class Limit final : public fit::Observer
    {
    public:
        explicit Limit(double iterations) : m_iterations(iterations) {}
        void letEventsRun() override {}
        bool keepGoing(double iterations) override { return iterations < m_iterations; }

    private:
        double m_iterations;
    };

    std::unique_ptr<fit::Problem> m_problem;
    int m_logMode;
    double m_evaluationsPerIteration;
    Limit m_limit;
    fit::GaussNewton m_run;
};

/// The same without pauses.
analysis::Result runEngine(const analysis::Request& request, const KeepGoing& keepGoing = {});

/// Sum of squares at the end of a run, with a problem that takes real units; infinity after an arithmetic fault.
double sumAtEnd(fit::Problem& problem, const analysis::Result& result);

} // namespace trust
