#pragma once

#include "trust/enginestart.h"
#include "trust/requestedfit.h"

#include <span>
#include <string>

namespace trust
{

enum class Verdict {
    AtMinimum,    // no descent lowers the sum of squares noticeably, and the data determine all constants
    StillMoving,  // the engine itself gets lower with more iterations and a lower tolerance
    NotAMinimum,  // there is a lower sum of squares downhill or across a plateau, but the engine does not reach it
    Undetermined, // at the least sum, but some constants may have other values without a larger sum
    NotDefined,   // the law cannot be evaluated there
};

/// The verdict as text; undetermined: names of the constants that the data do not determine.
std::string verdictText(Verdict verdict, std::span<const std::string> undetermined);

/// undetermined: the undetermined parameters at the end of the fit.
Verdict judge(const RequestedFit& requested, const analysis::Result& result,
              const leastsquares::FreeSlots& undetermined);

} // namespace trust
