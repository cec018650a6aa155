#include "lifetimes/remarks.h"

#include <algorithm>
#include <cmath>

namespace lifetimes
{
namespace
{

/// "Sample 3", "Samples 2, 3 and 5", counted from 1, the reference.
std::string samplesText(const std::vector<std::size_t>& places)
{
    std::string text = places.size() == 1 ? "Sample " : "Samples ";
    for (std::size_t i = 0; i < places.size(); ++i)
        text += (i == 0 ? "" : i + 1 == places.size() ? " and " : ", ") + std::to_string(places[i] + 1);
    return text;
}

template <typename Condition>
std::vector<std::size_t> samplesWith(const Measurements& measurements, const Condition& condition)
{
    std::vector<std::size_t> places;
    for (std::size_t i = 1; i < measurements.samples.size(); ++i)
        if (condition(measurements.samples[i]))
            places.push_back(i);
    return places;
}

/// One kind is missing altogether.
std::string remarkOnMissingKind(const Measurements& measurements)
{
    if (!measurements.has(Kind::Lifetime))
        return "No sample but the reference has a lifetime: only the intensities are fitted, as in \"Stern-Volmer "
               "Analysis\" with equal relative errors.";
    if (!measurements.has(Kind::Intensity))
        return measurements.samples.front().intensity > 0
                   ? "No sample but the reference has an intensity: only the lifetimes are fitted."
                   : "The reference has no intensity: only the lifetimes are fitted.";
    return {};
}

} // namespace

std::optional<std::string> complaint(const Measurements& measurements)
{
    const auto& samples = measurements.samples;
    if (samples.empty() || samples.front().Q != 0)
        return "Please type the reference into the first column, with a concentration of 0 M.";
    const auto isAmount = [](const Sample& sample) { return sample.Q >= 0 && std::isfinite(sample.Q); };
    const auto odd = std::find_if_not(samples.begin(), samples.end(), isAmount);
    if (odd != samples.end())
        return "The concentration of sample " + std::to_string(odd - samples.begin() + 1) + " is not an amount.";
    if (measurements.tau0() == 0)
        return "Please type components, amplitudes and lifetimes of the reference: every ratio of lifetimes needs "
               "them.";
    if (!measurements.has(Kind::Intensity) && !measurements.has(Kind::Lifetime))
        return "Please type intensities or lifetimes of samples with quencher.";
    if (!(measurements.Cp > 0) || !std::isfinite(measurements.Cp))
        return "Please type the concentration Cp of the probe, above zero.";
    return std::nullopt;
}

std::vector<std::string> remarks(const Measurements& measurements)
{
    std::vector<std::string> sentences;
    const auto add = [&](const std::vector<std::size_t>& places, const std::string& one, const std::string& many) {
        if (!places.empty())
            sentences.push_back(samplesText(places) + (places.size() == 1 ? one : many));
    };
    const bool hasBoth = measurements.has(Kind::Intensity) && measurements.has(Kind::Lifetime);
    if (!hasBoth)
        sentences.push_back(remarkOnMissingKind(measurements));
    if (hasBoth) {
        add(samplesWith(measurements, [](const Sample& s) { return s.lifetime == 0 && s.intensity > 0; }),
            " has no lifetime and shows its intensity only.", " have no lifetime and show their intensity only.");
        add(samplesWith(measurements, [](const Sample& s) { return s.intensity == 0 && s.lifetime > 0; }),
            " has no intensity and shows its lifetime only.", " have no intensity and show their lifetime only.");
    }
    add(samplesWith(measurements, [](const Sample& s) { return s.intensity == 0 && s.lifetime == 0; }),
        " has neither intensity nor lifetime and does not count.",
        " have neither intensity nor lifetime and do not count.");
    add(samplesWith(measurements, [&](const Sample& s) { return s.lifetime > measurements.tau0(); }),
        " has a longer lifetime than the reference: no quenching does that, so it is scatter or a mistake.",
        " have longer lifetimes than the reference: no quenching does that, so they are scatter or mistakes.");
    if (measurements.components.size() > 1)
        sentences.emplace_back("The reference has several components. Where they collide, each does so with its own "
                               "lifetime; only the two-site models take their mean, which biases the constants.");
    return sentences;
}

} // namespace lifetimes
