#include "trust/judgement.h"

#include "fit/numbertext.h"
#include "models/catalogue.h"
#include "trust/titledrows.h"

#include <cmath>

namespace trust
{
namespace
{

/// "the sum is 1770 times the least"
std::string sumText(const Judgement& judgement)
{
    if (judgement.unusual)
        return "the sum is lower at constants of unusual size";
    if (judgement.leastIsExact)
        return "other constants fit exactly";
    return "the sum is " + comparedWithLeast(judgement.sumOfSquares / judgement.leastSum);
}

/// ". With kq2 fixed the least lies at K = 1.24126 M-1"; empty without fixed constants.
std::string whereText(const Judgement& judgement, int model)
{
    std::string fixed, free;
    for (std::size_t slot = 1; slot <= models::row(model).fitted().size(); ++slot) {
        const models::Parameter& parameter = models::parameter(model, slot);
        if (judgement.options.fix[slot] == 1)
            fixed += (fixed.empty() ? "" : " and ") + parameter.name();
        else
            free += (free.empty() ? "" : ", ") + parameter.name() + " = " + figure(judgement.leastValues[slot]) +
                    (parameter.unit.empty() ? "" : " ") + std::string(parameter.unit);
    }
    return fixed.empty() ? "" : ". With " + fixed + " fixed the least lies at " + free;
}

/// What to do comes first, because a narrow window cuts off the end.
std::string adviceText(const Judgement& judgement, int model)
{
    switch (judgement.advice) {
    case Advice::None:
    case Advice::GoOn:
        break;
    case Advice::FindStartValues:
        return ". Find Start Values";
    case Advice::OtherMode:
        return std::string(". Find Start Values in ") + (judgement.options.logMode == 1 ? "normal" : "log") + " mode" +
               whereText(judgement, model);
    case Advice::Calculate:
        return ". Find Start Values, then \"Calc\" with input parameters shows the least; no analysis ends there" +
               whereText(judgement, model);
    }
    return "";
}

std::string goOnText(const Judgement& judgement)
{
    std::string text;
    if (judgement.raiseLimit)
        text = "raise the iteration limit to " + fit::formatNumber(judgement.options.iterationLimit, "0");
    if (judgement.lowerTolerance)
        text += (text.empty() ? "" : " and ") + std::string("lower the tolerance to ") +
                fit::formatNumber(judgement.options.tolerance, "0.0##e+0");
    return text;
}

std::string stoppedText(const Judgement& judgement, int model)
{
    const bool there = judgement.advice == Advice::None;
    return "stopped" +
           (there ? std::string(" at the least sum") : ": " + sumText(judgement) + adviceText(judgement, model));
}

} // namespace

std::string comparedWithLeast(double ratio)
{
    if (ratio < 2)
        return fit::formatNumber(100 * (ratio - 1), ratio < 1.1 ? "0.00" : "0.0") + " % above the least";
    const char* pattern = ratio < 10 ? "0.00" : ratio < 100 ? "0.0" : ratio < 1e5 ? "0" : "0.0e+0";
    return fit::formatNumber(ratio, pattern) + " times the least";
}

std::string undeterminedText(const leastsquares::FreeSlots& undetermined, int model)
{
    std::string names;
    for (std::size_t i = 0; i < undetermined.size(); ++i) {
        if (i > 0)
            names += i + 1 == undetermined.size() ? " and " : ", ";
        names += models::parameter(model, undetermined[i]).name();
    }
    return "the data do not determine " + names;
}

std::string sentence(const Judgement& judgement, int model)
{
    switch (judgement.verdict) {
    case Verdict::Judging:
        return "judging";
    case Verdict::AtMinimum:
        return "at a minimum";
    case Verdict::Undetermined:
        return undeterminedText(judgement.undetermined, model);
    case Verdict::Untested:
        return judgement.leastIsExact
                   ? "the constants are not tested: as many as samples, so the curve meets all samples"
                   : "at a minimum, but the constants are not tested: as many as samples";
    case Verdict::NothingFree:
        return "all constants are fixed";
    case Verdict::LocalMinimum:
        return (judgement.likely ? "at a minimum, but another fits equally well: "
                                 : "at a minimum, but not the least: ") +
               sumText(judgement) + adviceText(judgement, model);
    case Verdict::StillMoving:
        return "still moving: " + goOnText(judgement);
    case Verdict::NotAMinimum:
        return "not a minimum: " + sumText(judgement) + adviceText(judgement, model);
    case Verdict::Stopped:
        return stoppedText(judgement, model);
    case Verdict::NotDefined:
        return "the model cannot be evaluated at these constants" +
               std::string(judgement.advice == Advice::None ? "" : ". Find Start Values");
    }
    return {};
}

} // namespace trust
