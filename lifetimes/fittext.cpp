#include "lifetimes/fittext.h"

#include "fit/numbertext.h"
#include "fit/vectorregisters.h"
#include "models/catalogue.h"
#include "noise/constanttext.h"
#include "trust/errortext.h"

#include <algorithm>
#include <cmath>

namespace lifetimes
{
namespace
{

using trust::figure;

/// Builds one text.
class Writer
{
public:
    Writer(const Overview& overview, const CombinedFit& fit)
        : m_overview(overview), m_fit(fit), m_profiles(profilesOf(overview.measurements, fit)),
          m_constants(models::row(fit.model).fitted())
    {
    }

    trust::TitledRows constants() const;
    trust::TitledRows figures() const;
    trust::TitledRows correlations() const;
    trust::TitledRows residuals() const;
    std::string sentence() const;

private:
    std::string constantText(std::size_t slot) const;
    bool hasErrors() const { return m_fit.degreesOfFreedom > 0; }
    std::string percent(Kind kind) const;

    const Overview& m_overview;
    const CombinedFit& m_fit;
    const std::array<leastsquares::Profile, fit::kMaxParameters + 1> m_profiles;
    const std::span<const models::Parameter> m_constants;
};

trust::TitledRows Writer::constants() const
{
    trust::TitledRows table{
        {"Constant", "Value", "Standard error", "with τ0 measured", "95 % from", "95 % to", "95 % by profile"}};
    for (std::size_t slot = 1; slot <= m_constants.size(); ++slot) {
        const double value = m_fit.minimum.values[slot], half = m_fit.uncertainty.halfWidth[slot];
        table.push_back({m_constants[slot - 1].caption(), figure(value)});
        std::vector<std::string>& row = table.back();
        if (!hasErrors())
            row.insert(row.end(), {"-", "-", "-", "-"});
        else if (std::isinf(half))
            row.insert(row.end(), {figure(half), "", "", ""});
        else
            row.insert(row.end(), {figure(m_fit.uncertainty.standardError[slot]), figure(m_fit.errorWithTau0[slot]),
                                   figure(value - half), figure(value + half)});
        row.push_back(trust::intervalText(m_profiles[slot]));
    }
    return table;
}

std::string Writer::percent(Kind kind) const
{
    const bool known = hasErrors() && m_overview.measurements.has(kind);
    return known ? figure(100 * m_fit.errors.of(kind)) + " %" : "-";
}

trust::TitledRows Writer::figures() const
{
    const auto count = [&](Kind kind) { return std::to_string(m_overview.measurements.observed(kind).size()); };
    return {{"Figure", "Value"},
            {"Intensities with the reference", count(Kind::Intensity)},
            {"Lifetimes with the reference", count(Kind::Lifetime)},
            {"Degrees of freedom", std::to_string(m_fit.degreesOfFreedom)},
            {"Sum of squares", figure(m_fit.minimum.sumOfSquares)},
            {"Error of an intensity", percent(Kind::Intensity)},
            {"Error of a lifetime", percent(Kind::Lifetime)},
            {"AICc over intensities and lifetimes", m_fit.AICc ? figure(*m_fit.AICc) : "too few samples"}};
}

trust::TitledRows Writer::correlations() const
{
    if (m_constants.size() < 2)
        return {};
    trust::TitledRows table{{"Correlation"}};
    for (const models::Parameter& parameter : m_constants)
        table[0].push_back(parameter.name());
    for (std::size_t i = 1; i <= m_constants.size(); ++i) {
        table.push_back({m_constants[i - 1].name()});
        for (std::size_t j = 1; j <= m_constants.size(); ++j)
            table.back().push_back(fit::formatNumber(m_fit.uncertainty.correlation[i][j], "0.000"));
    }
    return table;
}

trust::TitledRows Writer::residuals() const
{
    const Measurements& measurements = m_overview.measurements;
    trust::TitledRows table{{"Sample", "Q /M", "ln Φ − fitted /%", "ln τ − fitted /%"}};
    for (std::size_t i = 0; i < measurements.samples.size(); ++i)
        table.push_back({std::to_string(i + 1), figure(measurements.samples[i].Q), "-", "-"});
    for (const Kind kind : {Kind::Intensity, Kind::Lifetime}) {
        const std::vector<std::size_t> samples = measurements.observed(kind);
        const std::vector<double> residuals = relativeResiduals(measurements, m_fit, kind);
        for (std::size_t i = 0; i < samples.size(); ++i)
            table[samples[i] + 1][kind == Kind::Intensity ? 2 : 3] = fit::formatNumber(100 * residuals[i], "0.00");
    }
    return table;
}

/// "K = (1.235 ± 0.065) M⁻¹"
std::string Writer::constantText(std::size_t slot) const
{
    const models::Parameter& parameter = m_constants[slot - 1];
    const auto& undetermined = m_fit.judgement.undetermined;
    const bool isDetermined = std::find(undetermined.begin(), undetermined.end(), slot) == undetermined.end();
    return noise::constantText({.name = parameter.name(),
                                .unit = noise::printedUnit(parameter.unit),
                                .value = m_fit.minimum.values[slot],
                                .error = {.scatter = !isDetermined ? INFINITY
                                                     : hasErrors() ? m_fit.errorWithTau0[slot]
                                                                   : 0}});
}

std::string Writer::sentence() const
{
    const Measurements& measurements = m_overview.measurements;
    std::string text = !measurements.has(Kind::Lifetime)    ? "Intensities alone"
                       : !measurements.has(Kind::Intensity) ? "Lifetimes alone"
                                                            : "Intensities and lifetimes together";
    text += ": Model " + std::to_string(m_fit.model) + " (" + std::string(models::row(m_fit.model).name) + ") gives ";
    for (std::size_t slot = 1; slot <= m_constants.size(); ++slot)
        text += (slot == 1 ? "" : slot == m_constants.size() ? " and " : ", ") + constantText(slot);
    return text + " (± standard error, τ0 being measured; " + std::to_string(m_fit.observations) + " observations, " +
           std::to_string(m_fit.degreesOfFreedom) +
           " degrees of freedom, τ0 = " + noise::withError(measurements.tau0() * 1e9, 0, "ns") +
           ", Cp = " + noise::withError(measurements.Cp, 0, "M") + "; Vorlo " VORLO_VERSION "). " +
           lifetimes::sentence(m_overview.ratio, measurements);
}

} // namespace

std::string verdict(const CombinedFit& fit)
{
    std::string text = trust::sentence(fit.judgement, fit.model);
    const std::size_t others = fit.solutions.empty() ? 0 : fit.solutions.size() - 1;
    if (others > 0)
        text += others == 1 ? ", but another solution fits as well"
                            : ", but " + std::to_string(others) + " other solutions fit as well";
    return text;
}

FitText fitText(const Overview& overview, const CombinedFit& fit)
{
    fit::clearUpperHalves();
    const Writer writer(overview, fit);
    return {.heading = "Model " + std::to_string(fit.model) + ": " + std::string(models::row(fit.model).name),
            .verdict = verdict(fit),
            .constants = writer.constants(),
            .figures = writer.figures(),
            .correlations = writer.correlations(),
            .residuals = writer.residuals(),
            .sentence = writer.sentence()};
}

std::string plainText(const FitText& text)
{
    std::string plain = text.heading + ": " + text.verdict + "\r\n";
    for (const trust::TitledRows& table : {text.constants, text.figures, text.correlations, text.residuals})
        plain += table.empty() ? "" : "\r\n" + trust::tabbedText(table);
    return plain + "\r\n" + text.sentence + "\r\n";
}

} // namespace lifetimes
