#include "trust/comparisontext.h"

#include "fit/numbertext.h"

#include <limits>

namespace trust
{
namespace
{

constexpr double kLast = std::numeric_limits<double>::infinity(); // missing numbers sort last

std::string doubtText(Doubt doubt)
{
    switch (doubt) {
    case Doubt::None:
        return "";
    case Doubt::AboveDiffusionLimit:
        return "above the diffusion limit";
    case Doubt::Negative:
        return "negative";
    case Doubt::Undetermined:
        return "undetermined";
    }
    return "";
}

ComparisonCell constantCell(const ComparedModel& compared, models::Box box)
{
    std::size_t slot = 0;
    for (const models::Parameter& parameter : models::row(compared.model).fitted()) {
        ++slot;
        if (parameter.box == box)
            return {figure(compared.details.values[slot]), compared.details.values[slot]};
    }
    return {"", kLast};
}

ComparisonCell criterionCell(const std::optional<double>& value)
{
    return value ? ComparisonCell{fit::formatNumber(*value, "0.00"), *value} : ComparisonCell{"-", kLast};
}

std::string remarksText(const ComparedModel& compared)
{
    std::string text;
    const auto add = [&text](const std::string& remark) { text += (text.empty() ? "" : "; ") + remark; };
    for (std::size_t slot = 1; slot <= models::row(compared.model).fitted().size(); ++slot) {
        if (compared.details.options.fix[slot] == 1)
            add(models::parameter(compared.model, slot).name() + " fixed");
        if (const std::string doubt = doubtText(compared.doubts[slot]); !doubt.empty())
            add(models::parameter(compared.model, slot).name() + " " + doubt);
    }
    if (!compared.engineStays)
        add("an analysis leaves this minimum");
    return text;
}

} // namespace

const std::vector<std::string>& comparisonTitles()
{
    static const std::vector<std::string> titles{"Model",          "K /M-1", "F",          "kq1",     "kq2 /M-1s-1",
                                                 "Sum of squares", "AICc",   "Difference", "Verdict", "Remarks"};
    return titles;
}

std::vector<ComparisonCell> comparisonRow(const ComparedModel& compared)
{
    return {{std::to_string(compared.model), static_cast<double>(compared.model)},
            constantCell(compared, models::Box::K),
            constantCell(compared, models::Box::F),
            constantCell(compared, models::Box::kq1),
            constantCell(compared, models::Box::kq2),
            {figure(compared.details.sumOfSquares), compared.details.sumOfSquares},
            criterionCell(compared.details.AICc),
            criterionCell(compared.differenceToBest),
            {sentence(compared.details.judgement, compared.model)},
            {remarksText(compared)}};
}

} // namespace trust
