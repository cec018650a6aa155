#include "trust/startstext.h"

#include "trust/judgement.h"
#include "trust/titledrows.h"

#include <cmath>

namespace trust
{
namespace
{

std::string sumText(double sum) { return std::isfinite(sum) ? figure(sum) : std::string("not defined"); }

std::string endText(const FoundStart& found, int logMode)
{
    if (found.start.leadsToMinimum)
        return "An analysis started from these values ends at this minimum (sum " + sumText(found.start.reached) + ").";
    std::string text =
        "An analysis started from these values leaves this minimum: with the present settings it ends at "
        "the sum " +
        sumText(found.start.reached);
    if (std::isfinite(found.start.reached))
        text += ", " + comparedWithLeast(found.start.reached / found.solution.sumOfSquares);
    text += ".";
    if (found.start.leadsInOtherMode)
        text += std::string(" With \"") + (logMode == 1 ? "normal" : "log mode") +
                "\" in the output settings it ends at this minimum.";
    return text + " The \"Calc\" command with input parameters shows the minimum itself.";
}

} // namespace

std::string valuesText(int model, const fit::Parameters& values)
{
    std::string text;
    for (std::size_t slot = 1; slot <= models::row(model).fitted().size(); ++slot) {
        const models::Parameter& parameter = models::parameter(model, slot);
        text += (slot > 1 ? ", " : "") + parameter.name() + " = " + figure(values[slot]) +
                (parameter.unit.empty() ? "" : " ") + std::string(parameter.unit);
    }
    return text;
}

std::string foundText(const FoundStarts& found, std::size_t chosen)
{
    const FoundStart& start = found.starts[chosen];
    std::string text = "Sum of squares at the typed values: " + sumText(found.typedSum) + "\n" +
                       "at the values found: " + sumText(start.solution.sumOfSquares) + "\n\n";
    if (found.starts.size() > 1)
        text += std::to_string(found.starts.size()) +
                " different solutions are equally good; the data alone cannot tell them apart. Use other knowledge, "
                "such as lifetimes, to choose one above.\n\n";
    if (!start.solution.undetermined.empty()) {
        text += "But " + undeterminedText(start.solution.undetermined, found.model) +
                ": other values fit equally well.\n\n";
    }
    return text + endText(start, found.logMode);
}

} // namespace trust
