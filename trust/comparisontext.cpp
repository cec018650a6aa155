#include "trust/comparisontext.h"

#include "leastsquares/akaike.h"
#include "models/guide.h"

#include <algorithm>
#include <limits>

namespace trust
{
namespace
{

constexpr double kLast = std::numeric_limits<double>::infinity(); // missing numbers sort last

std::string modelName(int model) { return "Model " + std::to_string(model); }

std::string doubtText(Doubt doubt)
{
    switch (doubt) {
    case Doubt::None:
        return "";
    case Doubt::AboveDiffusionLimit:
        return "above the diffusion limit in " + std::string(models::kDiffusionLimit.solvent);
    case Doubt::Negative:
        return "negative";
    case Doubt::Undetermined:
        return "not determined";
    }
    return "";
}

/// The cells of numbers, printed in one way.
class NumberCells
{
public:
    explicit NumberCells(NumberText text) : m_text(text) {}
    ComparisonCell cell(double value) const { return {m_text(value), value}; }
    ComparisonCell constant(const ComparedModel& compared, models::Box box) const;
    ComparisonCell criterion(const std::optional<double>& value) const
    {
        return value ? cell(*value) : ComparisonCell{"-", kLast};
    }

private:
    NumberText m_text;
};

ComparisonCell NumberCells::constant(const ComparedModel& compared, models::Box box) const
{
    std::size_t slot = 0;
    for (const models::Parameter& parameter : models::row(compared.model).fitted()) {
        ++slot;
        if (parameter.box == box && compared.fitted)
            return cell(compared.details.values[slot]);
    }
    return {"", kLast};
}

std::string verdictOf(const ComparedModel& compared)
{
    if (!compared.fitted)
        return "not fitted";
    return sentence(compared.details.judgement, compared.model);
}

/// Collisions shorten the lifetimes of all probes; a complex or a sphere does not change them outside.
bool hasCollisions(const ComparedModel& compared)
{
    const auto fitted = models::row(compared.model).fitted();
    return std::any_of(fitted.begin(), fitted.end(), [](const auto& parameter) { return parameter.isCollisional(); });
}

/// Writes the remarks on one model.
class Remarks
{
public:
    Remarks(const Comparison& comparison, const ComparedModel& compared)
        : m_comparison(comparison), m_compared(compared),
          m_isRatio(comparison.analysis == models::Analysis::SternVolmer)
    {
    }

    std::string text()
    {
        if (!m_compared.fitted)
            return models::reportedMask(m_compared.model, m_comparison.analysis) == 0
                       ? "no law for decay curves"
                       : "cannot be evaluated at any start tried";
        addScore();
        if (!m_compared.hasFreedom() && m_compared.details.judgement.verdict != Verdict::Untested)
            add("no degree of freedom");
        addSameCurve();
        addConstants();
        if (m_compared.solutionCount > 1)
            add("one of " + std::to_string(m_compared.solutionCount) + " solutions that fit equally well");
        if (const auto& effect = m_compared.probeEffect)
            add(nameOf(effect->slot) + " moves by " + figure(effect->standardErrors) +
                " standard errors if the probe concentration is ten times smaller");
        if (!m_compared.engineStays)
            add("an analysis leaves this minimum");
        return m_text;
    }

private:
    void add(const std::string& remark) { m_text += (m_text.empty() ? "" : "; ") + remark; }
    std::string nameOf(std::size_t slot) const { return models::parameter(m_compared.model, slot).name(); }
    void addScore();
    void addSameCurve();
    void addConstants();

    const Comparison& m_comparison;
    const ComparedModel& m_compared;
    const bool m_isRatio;
    std::string m_text;
};

void Remarks::addScore()
{
    if (!m_isRatio || m_compared.isScored())
        return;
    const FitDetails& details = m_compared.details;
    const int k = m_comparison.samples - details.uncertainty.degreesOfFreedom + 1; // and the variance
    add("not scored: " + std::to_string(m_comparison.samples) + " samples besides the reference, needs " +
        std::to_string(leastsquares::observationsForAkaike(k)));
}

/// Lifetimes tell two models apart if only one has collisions, unless one becomes the other.
void Remarks::addSameCurve()
{
    const int other = m_compared.sameCurveAs;
    if (other == 0)
        return;
    std::string remark = std::string(m_isRatio ? "same curve as " : "same curves as ") + modelName(other);
    const auto better = std::find_if(m_comparison.places.begin(), m_comparison.places.end(),
                                     [=](const ComparedModel& place) { return place.model == other; });
    const models::Limit* limit = models::limitBetween(m_compared.model, other);
    if (!m_isRatio)
        return add(remark);
    if (limit && limit->model == other)
        remark += ", its limit for " + std::string(limit->vanishes ? "a small " : "a large ") +
                  models::row(m_compared.model).typedInto(limit->constant)->name();
    else if (!limit && !models::limitBetween(other, m_compared.model) && m_compared.isDetermined() &&
             better->isDetermined() && hasCollisions(m_compared) != hasCollisions(*better))
        remark += " (" + std::string(models::row(other).name) + " or " +
                  std::string(models::row(m_compared.model).name) + ": only lifetimes tell)";
    add(remark);
}

/// The verdict names the constants that the data do not determine, unless there is worse to say.
void Remarks::addConstants()
{
    for (std::size_t slot = 1; slot <= models::row(m_compared.model).fitted().size(); ++slot) {
        if (m_compared.details.options.fix[slot] == 1)
            add(nameOf(slot) + " fixed");
        const Doubt doubt = m_compared.doubts[slot];
        if (doubt != Doubt::None &&
            !(doubt == Doubt::Undetermined && m_compared.details.judgement.verdict == Verdict::Undetermined))
            add(nameOf(slot) + " " + doubtText(doubt));
    }
}

std::string orderText(const Comparison& comparison)
{
    if (comparison.analysis == models::Analysis::Decay)
        return "The order is by the sum of squares only. The decay curves are computed from the typed lifetimes: the "
               "points of their grid are no observations, so there is no AICc, no F test and no error.";
    const bool scored = std::any_of(comparison.places.begin(), comparison.places.end(),
                                    [](const ComparedModel& compared) { return compared.isScored(); });
    if (!scored)
        return "There are too few samples for an AICc. The order is by the sum of squares only, which every further "
               "constant lowers.";
    return noise::sentence(comparison.errors) +
           " AICc, \"same curve\" and tests belong to the fits under this assumption, constants and sums of squares to "
           "the analyses. The order is by AICc; models without AICc follow by their sums of squares.";
}

std::string leaderText(const Comparison& comparison)
{
    if (comparison.places.front().mayLead())
        return "Models with a constant that the data do not determine, and models without a degree of freedom, come "
               "after the others.";
    return "No model leads: each one in the first group has a constant that the data do not determine, or no degree "
           "of freedom.";
}

std::string testsText(const Comparison& comparison)
{
    std::string text;
    for (const NestedTest& test : comparison.tests)
        text += (text.empty() ? "" : "; ") + modelName(test.model) + " against " + modelName(test.simpler) + ": " +
                figure(100 * test.probability) + " %";
    return text.empty()
               ? text
               : std::string(comparison.errors.areKnown() ? "Chi-square tests" : "F tests") +
                     ", probability of so much better a fit by chance: " + text +
                     ". Each is halved, because the further constant cannot be below 0. Be cautious: they hold only "
                     "if the assumption does.";
}

std::string probeText(const Comparison& comparison)
{
    if (comparison.samplesBelowProbe == 0)
        return "";
    const bool one = comparison.samplesBelowProbe == 1;
    return "The probe concentration, " + figure(comparison.Cp) + " M, is above the quencher's in " +
           std::to_string(comparison.samplesBelowProbe) + (one ? " sample." : " samples.");
}

} // namespace

std::vector<std::string> comparisonTitles(models::Analysis analysis)
{
    if (analysis == models::Analysis::Decay)
        return {"Place", "Model", "K /M-1", "F", "kq1", "kq2 /M-1s-1", "Sum of squares", "Verdict", "Remarks"};
    return {"Place",
            "Model",
            "K /M-1",
            "F",
            "kq1",
            "kq2 /M-1s-1",
            "Sum of squares of analysis",
            "AICc under assumption",
            "Difference",
            "Verdict",
            "Remarks"};
}

std::vector<ComparisonCell> comparisonRow(const Comparison& comparison, std::size_t place, NumberText text)
{
    const NumberCells numbers(text);
    const ComparedModel& compared = comparison.places[place];
    const auto number = static_cast<double>(place + 1);
    std::vector<ComparisonCell> cells{{std::to_string(place + 1), number},
                                      {std::to_string(compared.model), static_cast<double>(compared.model)},
                                      numbers.constant(compared, models::Box::K),
                                      numbers.constant(compared, models::Box::F),
                                      numbers.constant(compared, models::Box::kq1),
                                      numbers.constant(compared, models::Box::kq2),
                                      compared.fitted ? numbers.cell(compared.details.sumOfSquares)
                                                      : ComparisonCell{"-", kLast}};
    if (comparison.analysis == models::Analysis::SternVolmer) {
        cells.push_back(numbers.criterion(compared.AICc()));
        cells.push_back(numbers.criterion(compared.differenceToFirst));
    }
    cells.push_back({verdictOf(compared)});
    cells.push_back({Remarks(comparison, compared).text()});
    return cells;
}

std::string comparisonNotes(const Comparison& comparison)
{
    if (comparison.places.empty())
        return "";
    std::string text = orderText(comparison) + " " + leaderText(comparison);
    for (const std::string& paragraph : {testsText(comparison), probeText(comparison)})
        if (!paragraph.empty())
            text += "\n" + paragraph;
    return text;
}

} // namespace trust
