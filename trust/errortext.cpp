#include "trust/errortext.h"

#include "models/catalogue.h"
#include "noise/constanttext.h"

#include <algorithm>
#include <cmath>

namespace trust
{
namespace
{

/// "K, kq1 and kq2"
std::string listed(const std::vector<std::string>& names)
{
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i)
        text += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + names[i];
    return text;
}

std::string nameOf(const ErrorDetails& details, std::size_t slot)
{
    return models::parameter(details.ratioFit.model, slot).name();
}

bool hasErrors(const ErrorDetails& details) { return details.fit.scatter.quantile > 0; }

std::string assumptionText(const ErrorDetails& details)
{
    std::string text = noise::sentence(details.fit.errors);
    std::vector<std::string> names;
    for (const std::size_t slot : details.fit.analysed.differing)
        names.push_back(nameOf(details, slot));
    if (names.empty())
        return text;
    return text + " " + listed(names) + (names.size() == 1 ? " differs" : " differ") +
           " by more than two standard errors between the analysis and the fit under this assumption.";
}

TitledRows assumedRows(const ErrorDetails& details)
{
    TitledRows table{{"Constant", "Fitted so", "Standard error", "95 % from", "95 % to", "95 % by profile"}};
    for (const std::size_t slot : details.ratioFit.free) {
        const double value = details.fit.minimum.values[slot];
        const double error = details.fit.uncertainty.standardError[slot];
        const double half = details.fit.uncertainty.halfWidth[slot];
        table.push_back({models::parameter(details.ratioFit.model, slot).caption(), figure(value)});
        std::vector<std::string>& row = table.back();
        if (!hasErrors(details))
            row.insert(row.end(), {"-", "-", "-"});
        else if (std::isinf(error))
            row.insert(row.end(), {figure(error), "", ""});
        else
            row.insert(row.end(), {figure(error), figure(value - half), figure(value + half)});
        row.push_back(intervalText(details.profiles[slot]));
    }
    return table;
}

TitledRows assumedFigures(const ErrorDetails& details)
{
    const noise::NoiseFit& fit = details.fit;
    TitledRows table{{"Figure", "Value"},
                     {fit.errors.areKnown() ? "Chi-square" : "Sum of squares under the assumption",
                      figure(fit.minimum.sumOfSquares)}};
    table.push_back({"Degrees of freedom", std::to_string(fit.scatter.degreesOfFreedom)});
    table.push_back({"AICc, to compare under this assumption only", fit.AICc ? figure(*fit.AICc) : "too few samples"});
    const bool areRelative = fit.errors.assumption != noise::Assumption::EqualOnRatios;
    if (fit.errors.areKnown())
        table.push_back({"Probability of so large a chi-square", figure(100 * fit.chiSquareProbability) + " %"});
    else if (hasErrors(details) && fit.errors.assumption == noise::Assumption::AsTyped)
        table.push_back({"Errors, in typed errors", figure(std::sqrt(fit.scatter.variance))});
    else if (hasErrors(details))
        table.push_back({areRelative ? "Error of an intensity" : "Error of a ratio",
                         areRelative ? figure(100 * std::sqrt(fit.scatter.variance)) + " %"
                                     : figure(std::sqrt(fit.scatter.variance))});
    return table;
}

TitledRows leftOutRows(const ErrorDetails& details)
{
    if (details.leftOut.empty())
        return {};
    TitledRows table{{"Without sample", "Q /M"}};
    for (const std::size_t slot : details.ratioFit.free)
        table[0].push_back(models::parameter(details.ratioFit.model, slot).caption());
    table[0].insert(table[0].end(), {"Influence", "on", "Outlyingness"});
    for (const noise::LeftOut& left : details.leftOut) {
        table.push_back(
            {std::to_string(left.sample), figure(details.ratioFit.points.Q[static_cast<std::size_t>(left.sample)])});
        std::vector<std::string>& row = table.back();
        for (const std::size_t slot : details.ratioFit.free)
            row.push_back(figure(left.values[slot]));
        row.insert(row.end(), {figure(left.influence), nameOf(details, left.slot), figure(left.outlyingness)});
    }
    return table;
}

TitledRows readyRows(const ErrorDetails& details)
{
    TitledRows table{{"Value ± standard error", "by scatter", "by τ0", "by s", "by Cp"}};
    for (const noise::ReadyConstant& constant : details.ready)
        table.push_back({noise::constantText(constant), figure(constant.error.scatter), figure(constant.error.tau0),
                         figure(constant.error.s), figure(constant.error.Cp)});
    return table;
}

std::string withoutErrors(const ErrorDetails& details)
{
    const noise::TypedErrors& typed = details.typed;
    const models::Model& row = models::row(details.ratioFit.model);
    std::vector<std::string> names;
    if (typed.tau0 == 0)
        names.emplace_back("τ0");
    if (typed.s == 0 && row.hasRadius)
        names.emplace_back("s");
    if (typed.Cp == 0 && row.usesProbe(models::Analysis::SternVolmer))
        names.emplace_back("Cp");
    return names.empty() ? ""
                         : "without the " + std::string(names.size() > 1 ? "errors" : "error") + " of " + listed(names);
}

std::string paperSentence(const ErrorDetails& details, const std::string& program)
{
    const noise::RatioFit& ratioFit = details.ratioFit;
    const models::Model& row = models::row(ratioFit.model);
    std::vector<std::string> texts;
    for (const noise::ReadyConstant& constant : details.ready)
        texts.push_back(noise::constantText(constant));
    std::string text = "Model " + std::to_string(ratioFit.model) + " (" + std::string(row.name) + ") gives " +
                       listed(texts) + " (± standard error";
    const std::string without = withoutErrors(details);
    text += (without.empty() ? "" : ", " + without) + "; n = " + std::to_string(ratioFit.points.count) +
            " samples with the reference, " + std::to_string(details.fit.scatter.degreesOfFreedom) +
            " degrees of freedom, τ0 = " + noise::withError(ratioFit.points.tau0 * 1e9, 0, "ns");
    if (row.usesProbe(models::Analysis::SternVolmer))
        text += ", Cp = " + noise::withError(ratioFit.Cp, 0, "M");
    return text + "; " + program + "). " + noise::sentence(details.fit.errors);
}

} // namespace

std::string intervalText(const leastsquares::Profile& profile)
{
    if (profile.points.empty())
        return "-";
    if (!profile.low && !profile.high)
        return "any value";
    if (!profile.low)
        return "< " + figure(*profile.high);
    if (!profile.high)
        return "> " + figure(*profile.low);
    return figure(*profile.low) + " to " + figure(*profile.high);
}

ErrorText errorText(const ErrorDetails& details, const std::string& program)
{
    return {.assumption = assumptionText(details),
            .constants = assumedRows(details),
            .figures = assumedFigures(details),
            .leftOut = leftOutRows(details),
            .ready = readyRows(details),
            .without = withoutErrors(details),
            .sentence = paperSentence(details, program)};
}

} // namespace trust
