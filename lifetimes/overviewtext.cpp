#include "lifetimes/overviewtext.h"

#include "fit/numbertext.h"
#include "lifetimes/fittext.h"
#include "models/catalogue.h"

#include <cmath>

namespace lifetimes
{
namespace
{

using trust::figure;

std::string known(double value) { return value > 0 ? figure(value) : "-"; }

std::string nanoseconds(double lifetime) { return lifetime > 0 ? fit::formatNumber(lifetime * 1e9, "0.0###") : "-"; }

trust::TitledRows sampleRows(const Measurements& measurements)
{
    trust::TitledRows table{{"Sample", "Q /M", "Φ0/Φ", "τ0/τ", "τ /ns", "weighted by intensity"}};
    for (std::size_t i = 0; i < measurements.samples.size(); ++i) {
        const Sample& sample = measurements.samples[i];
        table.push_back({std::to_string(i + 1), figure(sample.Q), known(measurements.ratio(Kind::Intensity, i)),
                         known(measurements.ratio(Kind::Lifetime, i)), nanoseconds(sample.lifetime),
                         nanoseconds(sample.lifetimeByIntensity)});
    }
    return table;
}

trust::TitledRows staticRows(const StaticFactor& factor)
{
    if (factor.rows.empty())
        return {};
    trust::TitledRows table{{"Q /M", "s", "±", "(s − 1)/Q /M-1", "±", "ln s/Q /M-1", "±"}};
    const auto error = [&](double value) { return factor.hasErrors ? figure(value) : "-"; };
    for (const StaticRow& row : factor.rows)
        table.push_back({figure(row.Q), figure(row.s), error(row.s * row.relativeError), figure(row.perQ()),
                         error(row.perQError()), figure(row.logPerQ()), error(row.logPerQError())});
    return table;
}

/// "K = 1.2348 M-1, kq2 = 4.9145e+9 M-1s-1"
std::string constantsText(const CombinedFit& fit)
{
    std::string text;
    for (std::size_t slot = 1; slot <= models::row(fit.model).fitted().size(); ++slot) {
        const models::Parameter& parameter = models::parameter(fit.model, slot);
        text += (slot > 1 ? ", " : "") + parameter.name() + " = " + figure(fit.minimum.values[slot]) +
                (parameter.unit.empty() ? "" : " ") + std::string(parameter.unit);
    }
    return text;
}

trust::TitledRows rankingRows(const Overview& overview)
{
    trust::TitledRows table{{"Model", "AICc", "above the first", "Constants", "Verdict"}};
    for (const Place& place : overview.places) {
        const std::string model = std::to_string(place.model) + ": " + std::string(models::row(place.model).name);
        if (!place.fit)
            table.push_back({model, "-", "-", "-", place.whyNotFitted});
        else
            table.push_back({model, place.fit->AICc ? figure(*place.fit->AICc) : "too few samples",
                             place.differenceToFirst ? fit::formatNumber(*place.differenceToFirst, "0.00") : "-",
                             constantsText(*place.fit), verdict(*place.fit)});
    }
    return table;
}

} // namespace

const std::string_view kDecayWarning = "Do not compare kq2 with decay-curve analyses by Models 6, 7 and 10: their laws "
                                       "take exp(−K·Q)·Q as the quencher that "
                                       "collides.";

OverviewText overviewText(const Overview& overview)
{
    OverviewText text{.finding = overview.finding.sentence,
                      .remarks = {},
                      .errors = sentence(overview.ratio, overview.measurements),
                      .samples = sampleRows(overview.measurements),
                      .staticFactor = staticRows(overview.factor),
                      .ranking = rankingRows(overview)};
    for (const std::string& remark : overview.remarks)
        text.remarks += (text.remarks.empty() ? "" : " ") + remark;
    return text;
}

std::string plainText(const OverviewText& text)
{
    std::string plain;
    for (const std::string& sentence : {text.finding, text.remarks, text.errors})
        plain += sentence.empty() ? "" : sentence + "\r\n";
    for (const trust::TitledRows& table : {text.samples, text.staticFactor, text.ranking})
        plain += table.empty() ? "" : "\r\n" + trust::tabbedText(table);
    return plain;
}

} // namespace lifetimes
