#include "noise/assumption.h"

#include "fit/numbertext.h"

#include <algorithm>

namespace noise
{

double Errors::ofSample(int sample) const
{
    if (assumption != Assumption::AsTyped)
        return 1;
    return typed.size() == 1 ? typed.front() : typed[static_cast<std::size_t>(sample - 1)];
}

double Errors::smallest() const
{
    return assumption == Assumption::AsTyped ? *std::min_element(typed.begin(), typed.end()) : 1;
}

std::vector<double> errorsFromPercent(std::string_view text)
{
    constexpr std::string_view kBetween = " ;\t";
    std::vector<double> errors;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(kBetween), text.size());
        if (end > 0)
            errors.push_back(fit::strictNumber(text.substr(0, end)).value_or(0) / 100);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return errors;
}

std::string percentText(const std::vector<double>& errors)
{
    std::string text;
    for (const double error : errors)
        text += (text.empty() ? "" : " ") + fit::plainText(100 * error);
    return text;
}

std::optional<std::string> complaint(const Errors& errors, int samples)
{
    if (errors.assumption != Assumption::AsTyped)
        return std::nullopt;
    if (errors.typed.size() != 1 && errors.typed.size() != static_cast<std::size_t>(samples))
        return "Please type one relative error for all samples, or one for each of the " + std::to_string(samples) +
               " samples.";
    constexpr double kLeast = 1e-8, kLargest = 10; // far beyond all instruments; the weights 1 / e^2 stay finite
    if (!std::all_of(errors.typed.begin(), errors.typed.end(), [](double e) { return e >= kLeast && e <= kLargest; }))
        return "Every relative error must be a number from 1e-6 to 1000 %: no instrument is exact.";
    return std::nullopt;
}

std::string sentence(const Errors& errors)
{
    const std::string typed = percentText(errors.typed) + " %";
    switch (errors.assumption) {
    case Assumption::EqualOnRatios:
        return "All ratios are taken to scatter alike, and the reference to be exact; it is not counted.";
    case Assumption::Proportional:
        return "All intensities, the reference's included, are taken to have the same relative error.";
    case Assumption::AsTyped:
        return errors.known
                   ? "The intensities, the reference's included, are taken to have the typed relative errors (" +
                         typed + ")."
                   : "The intensities, the reference's included, are taken to err in proportion to the typed relative "
                     "errors (" +
                         typed + "); the scatter about the fit says how much.";
    }
    return {};
}

} // namespace noise
