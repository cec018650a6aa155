#include "trust/detailstext.h"

#include "sternvolmer/ratiodata.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace trust
{
namespace
{

constexpr std::string_view kNoErrorsForDecays =
    "The decay curves are computed from the typed lifetimes and carry no noise, so there are no standard errors "
    "and no AICc.";

/// Builds one text.
class Writer
{
public:
    Writer(const FitDetails& details, const FitLabels& labels, NumberText number)
        : m_details(details), m_labels(labels), m_number(number),
          m_free(leastsquares::freeSlots(details.options.parameterCount, details.options.fix))
    {
    }

    DetailsText text() const
    {
        return {.heading = heading(),
                .verdict = sentence(m_details.judgement, m_labels.model),
                .remarks = remarks(),
                .constants = constants(),
                .figures = figures(),
                .correlations = correlations(),
                .residuals = residuals(),
                .errors = m_details.errors ? errorText(*m_details.errors, m_details.judgement, "Vorlo " VORLO_VERSION)
                                           : ErrorText{}};
    }

private:
    bool hasErrors() const { return m_labels.analysis == models::Analysis::SternVolmer; }
    /// An error needs a degree of freedom unless it is typed as known.
    bool hasStandardErrors() const
    {
        return m_details.errors ? m_details.errors->fit.hasErrors() : m_details.uncertainty.degreesOfFreedom > 0;
    }
    std::string heading() const;
    std::vector<std::string> names(const leastsquares::FreeSlots& slots) const;
    std::string remarks() const;
    TitledRows constants() const;
    std::vector<std::string> errorCells(std::size_t slot) const;
    TitledRows figures() const;
    TitledRows decayFigures() const;
    std::string runsText() const;
    std::string chanceText() const;
    TitledRows correlations() const;
    std::string correlationText(std::size_t row, std::size_t column) const;
    TitledRows residuals() const;
    std::string inExpectedErrors(std::size_t i) const;

    const FitDetails& m_details;
    const FitLabels& m_labels;
    const NumberText m_number;
    const leastsquares::FreeSlots m_free;
};

std::string Writer::heading() const
{
    const char* analysis = hasErrors() ? "Stern-Volmer " : "Decay Curve ";
    return analysis + std::string(m_details.fitted ? "Analysis" : "Calculation") + ", Model " +
           std::to_string(m_labels.model);
}

std::vector<std::string> Writer::names(const leastsquares::FreeSlots& slots) const
{
    std::vector<std::string> names;
    for (const std::size_t slot : slots)
        names.push_back(models::parameter(m_labels.model, slot).name());
    return names;
}

std::string Writer::remarks() const
{
    std::string text;
    const auto add = [&text](std::string_view sentence) { text.append(text.empty() ? "" : " ").append(sentence); };
    if (!hasErrors())
        add(kNoErrorsForDecays);
    const bool isDefined = !m_details.errors || m_details.errors->fit.isDefined();
    if (hasErrors() && !hasStandardErrors() && isDefined)
        add("There are too few samples for standard errors of so many constants.");
    const Verdict verdict = m_details.judgement.verdict;
    const bool stoppedBefore = verdict == Verdict::Stopped && m_details.judgement.advice != Advice::None;
    const bool notThere = verdict == Verdict::NotAMinimum || verdict == Verdict::StillMoving || stoppedBefore;
    if (hasErrors() && notThere)
        add("Standard errors are valid only at a minimum; the errors below are a rough guide.");
    constexpr double kRare = 0.05;
    if (hasErrors() && m_details.runs.hasEnough() && m_details.runs.probability < kRare)
        add("The residuals change sign too rarely: the curve has another shape than the data.");
    return text;
}

TitledRows Writer::constants() const
{
    TitledRows table{{"Constant", "Value"}};
    if (hasErrors())
        table[0].insert(table[0].end(), {"Standard error", "95 % from", "95 % to"});
    else
        table[0].push_back("Free or fixed");
    for (std::size_t slot = 1; slot <= static_cast<std::size_t>(m_details.options.parameterCount); ++slot) {
        table.push_back({models::parameter(m_labels.model, slot).caption(), m_number(m_details.values[slot])});
        const auto errors = errorCells(slot);
        table.back().insert(table.back().end(), errors.begin(), errors.end());
    }
    return table;
}

std::vector<std::string> Writer::errorCells(std::size_t slot) const
{
    const bool isFree = std::find(m_free.begin(), m_free.end(), slot) != m_free.end();
    if (!hasErrors())
        return {isFree ? "free" : "fixed"};
    if (!isFree)
        return {"fixed", "", ""};
    const leastsquares::Uncertainty& uncertainty = m_details.uncertainty;
    if (!hasStandardErrors())
        return {"-", "-", "-"};
    const noise::AnalysedConstants* analysed = m_details.errors ? &m_details.errors->fit.analysed : nullptr;
    const double value = m_details.values[slot];
    const double half = analysed ? analysed->halfWidth[slot] : uncertainty.halfWidth[slot];
    const double error = analysed ? analysed->standardError[slot] : uncertainty.standardError[slot];
    if (std::isinf(half))
        return {m_number(half), "", ""};
    return {m_number(error), m_number(value - half), m_number(value + half)};
}

TitledRows Writer::figures() const
{
    if (!hasErrors())
        return decayFigures();
    TitledRows table{{"Figure", "Value"},
                     {"Samples with the reference", std::to_string(m_details.pointCount)},
                     {"Sum of squares", m_number(m_details.sumOfSquares)}};
    const int dof = m_details.uncertainty.degreesOfFreedom;
    table.push_back({"Degrees of freedom (without the reference)", std::to_string(dof)});
    table.push_back({"Root mean square error", dof > 0 ? m_number(m_details.rootMeanSquareError) : std::string("-")});
    table.push_back({"R2 over the samples", m_number(m_details.R2)});
    if (!m_details.errors) // otherwise the figures of the assumption have it
        table.push_back({"AICc", m_details.AICc ? m_number(*m_details.AICc) : std::string("too few samples")});
    table.push_back({"Runs of residuals with the same sign", runsText()});
    table.push_back({"Probability of so few runs", chanceText()});
    return table;
}

TitledRows Writer::decayFigures() const
{
    const std::string last = std::to_string(m_labels.sampleCount);
    const std::string counted = m_labels.sampleCount > 2 ? "samples 2 to " + last : "sample " + last;
    return {{"Figure", "Value"},
            {"Sum of squares", m_number(m_details.sumOfSquares)},
            {"Counted in this sum", counted + ", without the reference"},
            {"Counted in Se", "the reference as well"},
            {"Points counted in this sum", std::to_string(m_details.pointCount)},
            {"Step of the time grid /τ0", m_number(m_labels.gridStep)}};
}

std::string Writer::runsText() const
{
    const leastsquares::RunsTest& runs = m_details.runs;
    if (!runs.hasEnough())
        return "too few samples to test";
    if (runs.above == 0 || runs.below == 0)
        return "no runs test, all have the same sign";
    return std::to_string(runs.runs) + " (" + std::to_string(runs.above) + " samples above, " +
           std::to_string(runs.below) + " below)";
}

std::string Writer::chanceText() const
{
    const leastsquares::RunsTest& runs = m_details.runs;
    return !runs.hasEnough() || runs.above == 0 || runs.below == 0 ? "-" : m_number(100 * runs.probability) + " %";
}

TitledRows Writer::correlations() const
{
    TitledRows table;
    if (m_free.size() < 2)
        return table;
    table.push_back(names(m_free));
    table[0].insert(table[0].begin(), "Correlation");
    for (const std::size_t row : m_free) {
        table.push_back({models::parameter(m_labels.model, row).name()});
        for (const std::size_t column : m_free)
            table.back().push_back(correlationText(row, column));
    }
    return table;
}

std::string Writer::correlationText(std::size_t row, std::size_t column) const
{
    const leastsquares::Uncertainty& uncertainty = m_details.uncertainty;
    const bool known =
        std::isfinite(uncertainty.standardError[row]) && std::isfinite(uncertainty.standardError[column]);
    const leastsquares::Matrix4& correlation =
        m_details.errors ? m_details.errors->fit.analysed.correlation : uncertainty.correlation;
    return known ? m_number(correlation[row][column]) : "-";
}

TitledRows Writer::residuals() const
{
    if (!hasErrors())
        return {};
    TitledRows table{{"Q /M", "Observed", "Model", "Residual"}};
    if (m_details.errors)
        table[0].push_back("In expected errors");
    for (std::size_t i = 0; i < std::min(m_labels.Q.size(), m_details.residuals.size()); ++i) {
        const double observed = m_labels.observed[i], residual = m_details.residuals[i];
        table.push_back(
            {m_number(m_labels.Q[i]), m_number(observed), m_number(observed - residual), m_number(residual)});
        if (m_details.errors)
            table.back().push_back(inExpectedErrors(i));
    }
    return table;
}

/// The reference is 1 by definition and has no expected error; a residual that is a rounding of it has none either.
std::string Writer::inExpectedErrors(std::size_t i) const
{
    const double expected = m_details.errors->fit.analysed.residualError[i];
    constexpr double kNone = 1e-9; // of the ratio
    return expected > kNone * std::abs(m_labels.observed[i]) ? m_number(m_details.residuals[i] / expected) : "-";
}

} // namespace

FitLabels labelsOf(const analysis::Request& request)
{
    FitLabels labels{.analysis = analysis::methodOf(request), .model = request.model};
    if (const auto* points = std::get_if<sternvolmer::RatioPoints>(&request.data)) {
        labels.sampleCount = points->count;
        labels.Q.assign(points->Q.begin() + 1, points->Q.begin() + 1 + points->count);
        labels.observed.assign(points->ratio.begin() + 1, points->ratio.begin() + 1 + points->count);
        return labels;
    }
    const auto& table = std::get<decay::SampleTable>(request.data);
    const decay::SampleRecord& reference = table.SampleData[1];
    labels.sampleCount = table.SampleCount;
    labels.gridStep = (reference.T[1] - reference.T[0]) / sternvolmer::meanLifetime(reference);
    return labels;
}

DetailsText detailsText(const FitDetails& details, const FitLabels& labels, NumberText number)
{
    return Writer(details, labels, number).text();
}

std::vector<const TitledRows*> tablesOf(const DetailsText& text)
{
    const ErrorText& errors = text.errors;
    std::vector<const TitledRows*> tables{&text.constants,   &text.figures,   &text.correlations, &text.residuals,
                                          &errors.constants, &errors.figures, &errors.leftOut,    &errors.ready};
    std::erase_if(tables, [](const TitledRows* table) { return table->empty(); });
    return tables;
}

std::string plainText(const DetailsText& text)
{
    std::string all = text.heading + "\r\n" + text.verdict + "\r\n";
    if (!text.remarks.empty())
        all += text.remarks + "\r\n";
    const ErrorText& errors = text.errors;
    if (!errors.assumption.empty())
        all += errors.assumption + "\r\n";
    for (const TitledRows* table : tablesOf(text))
        all += "\r\n" + tabbedText(*table);
    if (!errors.sentence.empty())
        all += "\r\n" + errors.sentence + "\r\n";
    return all;
}

} // namespace trust
