#include "preparation/preparationtext.h"

#include "fit/numbertext.h"

#include <algorithm>

namespace preparation
{
namespace
{

double rounded(double value, std::string_view pattern) { return fit::numberFrom(fit::formatNumber(value, pattern)); }

constexpr std::string_view kSixDigits = "0.00000e+00";
constexpr std::string_view kThreeDigits = "0.00e+00";

std::string text(double value, std::string_view pattern) { return fit::plainText(rounded(value, pattern)); }

std::string percent(double fraction) { return text(100 * fraction, kThreeDigits) + " %"; }

std::string noteOnInnerFilter(const Prepared& prepared)
{
    std::string samples;
    int count = 0;
    double largest = 1;
    for (std::size_t i = 0; i < prepared.samples.size(); ++i) {
        const PreparedSample& sample = prepared.samples[i];
        if (sample.absorbance <= kLargestSureAbsorbance)
            continue;
        samples += (++count == 1 ? "" : ", ") + std::to_string(i + 1);
        largest = std::max(largest, sample.innerFactor);
    }
    const std::string geometry = "The inner filter factor holds for light gathered from the middle of a 1 cm cell; "
                                 "another geometry has another.";
    return samples.empty() ? geometry
                           : "Warning: Aex + Aem is above " + fit::plainText(kLargestSureAbsorbance) + " in sample" +
                                 (count == 1 ? " " : "s ") + samples + ", where the inner filter factor, up to " +
                                 text(largest, kThreeDigits) + ", is only approximate. " + geometry;
}

std::string noteOnDilution(const Prepared& prepared)
{
    return "The probe is diluted alike, to " + percent(1 / prepared.samples.back().dilution) +
           " of its concentration in the last sample; the analyses take Probe /M for all samples.";
}

std::string noteOnErrors(const Prepared& prepared)
{
    if (!prepared.scatter)
        return "No sample has several readings that differ, so errors are not known.";
    return "A reading scatters by " + percent(prepared.scatter->deviation) + " (pooled, " +
           std::to_string(prepared.scatter->freedom) + " degrees of freedom).";
}

} // namespace

SheetSamples sheetTexts(const Prepared& prepared, const SheetSamples& before)
{
    SheetSamples texts;
    for (std::size_t i = 0; i < prepared.samples.size(); ++i) {
        const PreparedSample& sample = prepared.samples[i];
        const std::string kept = i < before.Q.size() ? before.Q[i] : "";
        texts.Q.push_back(prepared.steps.dilution ? text(sample.Q, kSixDigits) : kept);
        texts.Phi.push_back(text(sample.Phi, kSixDigits));
    }
    return texts;
}

std::vector<double> relativeErrors(const Prepared& prepared)
{
    std::vector<double> errors;
    if (prepared.scatter)
        for (const PreparedSample& sample : prepared.samples)
            errors.push_back(rounded(sample.relativeError, kThreeDigits));
    return errors;
}

std::array<std::string, kFigures.size()> figuresOf(const Prepared& prepared, const SheetSamples& before,
                                                   std::size_t sample)
{
    std::array<std::string, kFigures.size()> figures;
    const auto at = [&figures](Figure figure) -> std::string& { return figures[static_cast<std::size_t>(figure)]; };
    if (sample < before.Phi.size()) {
        at(Figure::QBefore) = before.Q[sample];
        at(Figure::PhiBefore) = before.Phi[sample];
    }
    if (sample >= prepared.samples.size())
        return figures;
    const SheetSamples after = sheetTexts(prepared, before);
    const Replicates& reading = prepared.samples[sample].reading;
    at(Figure::Mean) = text(reading.mean, kSixDigits);
    at(Figure::Deviation) = reading.count > 1 ? text(reading.deviation, kThreeDigits) : "";
    at(Figure::Count) = std::to_string(reading.count);
    at(Figure::QAfter) = after.Q[sample];
    at(Figure::PhiAfter) = after.Phi[sample];
    at(Figure::Error) = prepared.scatter ? text(100 * prepared.samples[sample].relativeError, kThreeDigits) : "";
    return figures;
}

std::string notes(const Prepared& prepared)
{
    std::string all;
    const auto add = [&all](const std::string& note) { all += (all.empty() ? "" : "\n") + note; };
    if (prepared.steps.innerFilter)
        add(noteOnInnerFilter(prepared));
    if (prepared.steps.dilution)
        add(noteOnDilution(prepared));
    if (prepared.steps.replicates)
        add(noteOnErrors(prepared));
    return all;
}

} // namespace preparation
