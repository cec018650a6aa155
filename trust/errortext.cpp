#include "trust/errortext.h"

#include "fit/numbertext.h"
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

std::string assumptionText(const ErrorDetails& details)
{
    std::string text = noise::sentence(details.fit.errors);
    if (!details.fit.isDefined())
        return text + " But a ratio is not positive and has no logarithm: there are no errors under this assumption.";
    if (details.fit.isExact() && details.fit.scatter.degreesOfFreedom > 0 && !details.fit.errors.areKnown())
        text += " The data meet the model within roundings, so that the errors below mean nothing.";
    std::vector<std::string> names;
    for (const std::size_t slot : details.fit.analysed.differing)
        names.push_back(nameOf(details, slot));
    if (names.empty())
        return text;
    return text + " " + listed(names) + (names.size() == 1 ? " differs" : " differ") +
           " by more than two standard errors between the analysis and the fit under this assumption.";
}

TitledRows assumedRows(const ErrorDetails& details, NumberText number)
{
    TitledRows table{{"Constant", "Fitted so", "Standard error", "95 % from", "95 % to", "95 % by profile"}};
    for (const std::size_t slot : details.ratioFit.free) {
        const double value = details.fit.minimum.values[slot];
        const double error = details.fit.uncertainty.standardError[slot];
        const double half = details.fit.uncertainty.halfWidth[slot];
        table.push_back({models::parameter(details.ratioFit.model, slot).caption(), number(value)});
        std::vector<std::string>& row = table.back();
        if (!details.fit.hasErrors())
            row.insert(row.end(), {"-", "-", "-"});
        else if (std::isinf(error))
            row.insert(row.end(), {number(error), "", ""});
        else
            row.insert(row.end(), {number(error), number(value - half), number(value + half)});
        row.push_back(intervalText(details.profiles[slot], number));
    }
    return table;
}

TitledRows assumedFigures(const ErrorDetails& details, NumberText number)
{
    const noise::NoiseFit& fit = details.fit;
    TitledRows table{{"Figure", "Value"},
                     {fit.errors.areKnown() ? "Chi-square" : "Sum of squares under the assumption",
                      fit.isDefined() ? number(fit.minimum.sumOfSquares) : "-"}};
    table.push_back({"Degrees of freedom", std::to_string(fit.scatter.degreesOfFreedom)});
    table.push_back({"AICc, to compare under this assumption only", fit.AICc          ? number(*fit.AICc)
                                                                    : fit.isDefined() ? "too few samples"
                                                                                      : "-"});
    const bool areRelative = fit.errors.assumption != noise::Assumption::EqualOnRatios;
    if (fit.errors.areKnown() && fit.isDefined())
        table.push_back({"Probability of so large a chi-square", fit.chiSquareProbability
                                                                     ? number(100 * *fit.chiSquareProbability) + " %"
                                                                     : "no degree of freedom left"});
    else if (details.fit.hasErrors() && fit.errors.assumption == noise::Assumption::AsTyped)
        table.push_back({"Errors, in typed errors", number(std::sqrt(fit.scatter.variance))});
    else if (details.fit.hasErrors())
        table.push_back({areRelative ? "Error of an intensity" : "Error of a ratio",
                         areRelative ? number(100 * std::sqrt(fit.scatter.variance)) + " %"
                                     : number(std::sqrt(fit.scatter.variance))});
    return table;
}

TitledRows leftOutRows(const ErrorDetails& details, NumberText number)
{
    if (details.leftOut.empty())
        return {};
    TitledRows table{{"Without sample", "Q /M"}};
    for (const std::size_t slot : details.ratioFit.free)
        table[0].push_back(models::parameter(details.ratioFit.model, slot).caption());
    table[0].insert(table[0].end(), {"Influence", "on", "Outlyingness"});
    for (const noise::LeftOut& left : details.leftOut) {
        table.push_back(
            {std::to_string(left.sample), number(details.ratioFit.points.Q[static_cast<std::size_t>(left.sample)])});
        std::vector<std::string>& row = table.back();
        for (const std::size_t slot : details.ratioFit.free) {
            const bool isUndetermined =
                std::find(left.undetermined.begin(), left.undetermined.end(), slot) != left.undetermined.end();
            row.push_back(isUndetermined ? "not determined" : number(left.values[slot]));
        }
        row.insert(row.end(), {left.slot > 0 ? number(left.influence) : "-",
                               left.slot > 0 ? nameOf(details, left.slot) : "-", number(left.outlyingness)});
    }
    return table;
}

/// A typed value whose error can enter the constants.
struct TypedValue {
    const char* name;
    double noise::TypedErrors::*error;
    double noise::ErrorParts::*part;
};

constexpr TypedValue kTau0{"τ0", &noise::TypedErrors::tau0, &noise::ErrorParts::tau0};
constexpr TypedValue kS{"s", &noise::TypedErrors::s, &noise::ErrorParts::s};
constexpr TypedValue kCp{"Cp", &noise::TypedErrors::Cp, &noise::ErrorParts::Cp};

std::vector<TypedValue> typedValues(const ErrorDetails& details)
{
    const models::Model& row = models::row(details.ratioFit.model);
    std::vector<TypedValue> values;
    if (row.uses(models::Box::kq1) || row.uses(models::Box::kq2))
        values.push_back(kTau0);
    if (row.hasRadius)
        values.push_back(kS);
    if (row.usesProbe(models::Analysis::SternVolmer))
        values.push_back(kCp);
    return values;
}

TitledRows readyRows(const ErrorDetails& details, NumberText number)
{
    const std::vector<TypedValue> typed = typedValues(details);
    TitledRows table{{"Value ± standard error", "by scatter"}};
    for (const TypedValue& value : typed)
        table[0].push_back("by " + std::string(value.name));
    for (const noise::ReadyConstant& constant : details.ready) {
        table.push_back({noise::constantText(constant), number(constant.error.scatter)});
        for (const TypedValue& value : typed)
            table.back().push_back(number(constant.error.*value.part));
    }
    return table;
}

/// What stands behind the sign ±: "± standard error, with an error of 2 % of τ0, without the error of Cp".
std::string meaningOfErrors(const ErrorDetails& details)
{
    if (!details.fit.isDefined())
        return "without standard errors, because a ratio is not positive";
    if (!details.fit.hasErrors())
        return "without standard errors, because no degree of freedom is left";
    std::vector<std::string> with, without;
    for (const TypedValue& value : typedValues(details)) {
        const double error = details.typed.*value.error;
        if (error > 0)
            with.push_back(fit::plainText(100 * error) + " % of " + value.name);
        else
            without.emplace_back(value.name);
    }
    std::string text = "± standard error";
    if (!with.empty())
        text += ", with " + std::string(with.size() > 1 ? "errors" : "an error") + " of " + listed(with);
    if (!without.empty())
        text += ", without the " + std::string(without.size() > 1 ? "errors" : "error") + " of " + listed(without);
    return text;
}

/// What a reader must know of a fit that is not simply at a minimum. Empty, or a sentence that begins with a blank.
std::string caveat(const Judgement& judgement, int model)
{
    switch (judgement.verdict) {
    case Verdict::Judging:
        return " Whether the fit is at a minimum is not known yet.";
    case Verdict::AtMinimum:
    case Verdict::NothingFree:
        return "";
    case Verdict::Undetermined:
        return " In this fit " + undeterminedText(judgement.undetermined, model) + ".";
    case Verdict::Untested:
        return " There are as many constants as samples besides the reference, so that nothing tests them.";
    case Verdict::LocalMinimum:
        return " The sum of squares is lower at other constants.";
    case Verdict::StillMoving:
    case Verdict::NotAMinimum:
        return " These constants are not at a minimum of the sum of squares; their errors are a rough guide.";
    case Verdict::Stopped:
        return " The fit was stopped before its end; the errors are a rough guide.";
    case Verdict::NotDefined:
        return " The model has no value at these constants.";
    }
    return "";
}

std::string paperSentence(const ErrorDetails& details, const Judgement& judgement, const std::string& program)
{
    const noise::RatioFit& ratioFit = details.ratioFit;
    const models::Model& row = models::row(ratioFit.model);
    const int freedom = std::max(0, details.fit.scatter.degreesOfFreedom);
    std::vector<std::string> texts;
    for (const noise::ReadyConstant& constant : details.ready)
        texts.push_back(noise::constantText(constant));
    std::string text = "Model " + std::to_string(ratioFit.model) + " (" + std::string(row.name) + ") gives " +
                       listed(texts) + " (" + meaningOfErrors(details) +
                       "; n = " + std::to_string(ratioFit.points.count) + " samples with the reference, " +
                       std::to_string(freedom) + (freedom == 1 ? " degree" : " degrees") +
                       " of freedom, τ0 = " + noise::withError(ratioFit.points.tau0 * 1e9, 0, "ns");
    if (row.usesProbe(models::Analysis::SternVolmer))
        text += ", Cp = " + noise::withError(ratioFit.Cp, 0, "M");
    return text + "; " + program + "). " + noise::sentence(details.fit.errors) + caveat(judgement, ratioFit.model);
}

} // namespace

std::string intervalText(const leastsquares::Profile& profile, NumberText number)
{
    if (profile.points.empty())
        return "-";
    if (!profile.low && !profile.high)
        return "any value";
    if (!profile.low)
        return "< " + number(*profile.high);
    if (!profile.high)
        return "> " + number(*profile.low);
    return number(*profile.low) + " to " + number(*profile.high);
}

ErrorText errorText(const ErrorDetails& details, const Judgement& judgement, const std::string& program,
                    NumberText number)
{
    std::vector<double noise::TypedErrors::*> entering;
    for (const TypedValue& value : typedValues(details))
        entering.push_back(value.error);
    return {.assumption = assumptionText(details),
            .constants = assumedRows(details, number),
            .figures = assumedFigures(details, number),
            .leftOut = leftOutRows(details, number),
            .ready = readyRows(details, number),
            .entering = entering,
            .meaning = meaningOfErrors(details),
            .sentence = paperSentence(details, judgement, program)};
}

} // namespace trust
