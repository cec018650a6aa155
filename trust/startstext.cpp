#include "trust/startstext.h"

#include "trust/constants.h"
#include "trust/texttable.h"
#include "trust/verdict.h"

#include <cmath>

namespace trust
{
namespace
{

std::string sumText(double sum) { return std::isfinite(sum) ? figure(sum) : std::string("not defined"); }

std::string endText(const FoundStart& found)
{
    if (found.start.leadsToMinimum)
        return "An analysis started from these values ends at this minimum (sum " + sumText(found.start.reached) + ").";
    std::string text =
        "An analysis started from these values does not stay there: with the present settings it ends at "
        "the sum " +
        sumText(found.start.reached);
    if (std::isfinite(found.start.reached))
        text += ", " + figure(100 * (found.start.reached / found.solution.sumOfSquares - 1)) + " % above the least";
    return text + ". The \"Calc\" command with input parameters shows the minimum itself.";
}

} // namespace

std::string valuesText(int model, const fit::Parameters& values)
{
    std::string text;
    for (std::size_t slot = 1; slot <= app::modelRow(model).fitted().size(); ++slot) {
        const std::string unit = constantUnit(model, slot);
        text += (slot > 1 ? ", " : "") + constantName(model, slot) + " = " + figure(values[slot]) +
                (unit.empty() ? "" : " ") + unit;
    }
    return text;
}

std::string foundText(int model, double typedSum, const std::vector<FoundStart>& starts, std::size_t chosen)
{
    const FoundStart& found = starts[chosen];
    std::string text = "Sum of squared residuals at the typed values: " + sumText(typedSum) + "\n" +
                       "at the values found: " + sumText(found.solution.sumOfSquares) + "\n\n";
    if (starts.size() > 1)
        text += std::to_string(starts.size()) +
                " different solutions are equally good; the data alone cannot tell them apart. Choose one above by "
                "what else is known, such as lifetimes.\n\n";
    if (!found.solution.undetermined.empty()) {
        std::vector<std::string> names;
        for (const std::size_t slot : found.solution.undetermined)
            names.push_back(constantName(model, slot));
        text += "But " + verdictText(Verdict::Undetermined, names) + ": other values are as good.\n\n";
    }
    return text + endText(found);
}

} // namespace trust
