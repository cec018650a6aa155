#pragma once

#include "trust/leastsums.h"
#include "trust/verdict.h"

#include <chrono>
#include <optional>
#include <string>

namespace trust
{

/// What brings a fit to the least sum.
enum class Advice {
    None,            // it is there
    GoOn,            // the same analysis with a higher iteration limit or a lower tolerance
    FindStartValues, // an analysis from the start values found
    OtherMode,       // the same in the other mode, because the engine leaves the minimum in the present mode
    Calculate,       // the engine leaves the minimum in both modes, but a calculation shows it
};

/// What is known of one fit or calculation.
struct Judgement {
    Verdict verdict = Verdict::NotDefined;
    leastsquares::FreeSlots undetermined; // the constants that the data do not determine
    double sumOfSquares = 0;              // infinity: not defined
    double leastSum = 0;                  // the lowest sum found anywhere; infinity: none
    Advice advice = Advice::None;
};

/// The judgement in one sentence, without a full stop: "at a minimum", "not a minimum: the sum is 1770 times the least.
/// Find Start Values".
std::string sentence(const Judgement& judgement, int model);

/// Judges the end of an analysis or of a calculation in slices, so that a program can do other things meanwhile.
class Judging
{
public:
    /// known: what is known of least sums; learns from the judging and must outlive it.
    Judging(analysis::Request request, analysis::Result result, LeastSums& known);

    /// Works for about the given time; true when the judgement is complete.
    bool advance(std::chrono::milliseconds budget);

    const Judgement& judgement() const { return m_judgement; }
    const analysis::Request& request() const { return m_request; }
    const analysis::Result& result() const { return m_result; }

private:
    analysis::Request m_request;
    analysis::Result m_result;
    LeastSums& m_known;
    Judgement m_judgement;
};

/// The same without pauses.
Judgement judged(const analysis::Request& request, const analysis::Result& result, LeastSums& known);

} // namespace trust
