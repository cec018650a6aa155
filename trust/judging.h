#pragma once

#include "trust/enginestart.h"
#include "trust/judgement.h"
#include "trust/startsearch.h"

#include <chrono>
#include <optional>

namespace trust
{

/// Judges the end of an analysis or of a calculation in slices, so that a program can do other things meanwhile.
class Judging
{
public:
    /// known: what is known of least sums; learns from the judging and must outlive it.
    Judging(analysis::Request request, analysis::Result result, LeastSums& known);
    Judging(const Judging&) = delete;
    Judging& operator=(const Judging&) = delete;

    /// Works for about the given time; true when the judgement is complete.
    bool advance(std::chrono::milliseconds budget);

    const Judgement& judgement() const { return m_judgement; }
    const analysis::Request& request() const { return m_request; }
    const analysis::Result& result() const { return m_result; }

private:
    enum class Stage { Search, Descend, GoOn, FindStart, Done };

    bool step();
    void endSearch();
    void endDescent();
    bool atLeast(double sum) const;
    Verdict verdictAtLeast();
    void goOn(bool raiseLimit, bool lowerTolerance);
    void endLongerRun();
    void findStart();
    void endFindStart();

    const analysis::Request m_request;
    const analysis::Result m_result;
    LeastSums& m_known;
    const std::unique_ptr<fit::Problem> m_problem;
    const RequestedFit m_requested;
    Stage m_stage = Stage::Search;
    std::optional<StartSearch> m_search;
    std::optional<leastsquares::Descent> m_descent; // from the end of the fit
    analysis::Request m_longer;                     // the same with other limits
    std::optional<EngineRun> m_longerRun;
    std::optional<StartFinder> m_startFinder;
    Judgement m_judgement;
};

/// The same without pauses.
Judgement judged(const analysis::Request& request, const analysis::Result& result, LeastSums& known);

} // namespace trust
