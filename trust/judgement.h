#pragma once

#include "leastsquares/minimum.h"

#include <string>

namespace trust
{

enum class Verdict {
    Judging,      // nothing is known yet
    AtMinimum,    // at the least sum of squares, and the data determine all constants
    Undetermined, // at the least sum, but some constants may have other values without a larger sum
    Untested,     // at the least sum, but no sample is left over to test the constants
    NothingFree,  // all constants are fixed
    LocalMinimum, // no descent lowers the sum, and the data determine all constants, but elsewhere it is lower
    StillMoving,  // the engine itself gets to the least sum with other limits
    NotAMinimum,  // the sum is lower downhill or across a plateau, but the engine does not reach the least sum
    Stopped,      // the user stopped the run
    NotDefined,   // the law cannot be evaluated there
};

/// What brings a fit to the least sum.
enum class Advice {
    None,            // it is there, or nothing is known to help
    GoOn,            // the same analysis with the options of the judgement
    FindStartValues, // an analysis from the start values found
    OtherMode,       // the same in the other mode, because the engine leaves the minimum in the present mode
    Calculate,       // the engine leaves the minimum in both modes, but a calculation shows it
};

/// What is known of one fit or calculation.
struct Judgement {
    Verdict verdict = Verdict::Judging;
    leastsquares::FreeSlots undetermined; // the constants that the data do not determine, at the least sum
    double sumOfSquares = 0;              // infinity: not defined
    double leastSum = 0;                  // the lowest sum found anywhere; infinity: none
    fit::Parameters leastValues{};        // there, if there is advice to get there
    bool leastIsExact = false;            // so low that no instrument sees the deviations
    bool unusual = false;                 // the least lies at constants of a size at which no search looks
    bool likely = false;                  // the data cannot tell the sum from the least
    Advice advice = Advice::None;
    fit::Options options{}; // of the request; for GoOn, those that lead to the least sum
    bool raiseLimit = false, lowerTolerance = false;

    bool atLeastSum() const
    {
        return verdict == Verdict::AtMinimum || verdict == Verdict::Undetermined || verdict == Verdict::Untested;
    }
};

/// The judgement in one sentence, without a full stop: "at a minimum", "not a minimum: the sum is 1770 times the least.
/// Find Start Values".
std::string sentence(const Judgement& judgement, int model);

/// "3.20 % above the least", "1770 times the least". ratio: of a sum to the least.
std::string comparedWithLeast(double ratio);

/// "the data do not determine K and kq1"
std::string undeterminedText(const leastsquares::FreeSlots& undetermined, int model);

} // namespace trust
