#pragma once

#include "trust/enginestart.h"
#include "trust/task.h"

#include <span>
#include <string>

namespace trust
{

enum class Verdict {
    AtMinimum,    // no descent from there lowers the sum of squares noticeably, and all constants are determined
    StillMoving,  // the engine itself gets lower with more iterations and a lower tolerance
    NotAMinimum,  // there is a lower sum of squares downhill or across a plain, but the engine does not get there
    Undetermined, // at the least sum, but that is flat: some constants may have other values as well
    NotDefined,   // the law has no value there
};

/// The verdict in plain words; undetermined: names of the constants that the data do not determine.
std::string verdictText(Verdict verdict, std::span<const std::string> undetermined);

/// A finished analysis: how it ran, or a calculation with given values, which did not run.
struct FinishedFit {
    fit::Options options;     // as the analysis set them
    fit::Parameters start{};  // values in their real units
    fit::Parameters values{}; // where it ended, same units; start for a calculation
    double iterations = 0;    // completed updates
    bool calculated = false;
};

/// undetermined: those of the values where the fit ended.
Verdict judge(const Task& task, const FinishedFit& finished, const leastsquares::FreeSlots& undetermined);

} // namespace trust
