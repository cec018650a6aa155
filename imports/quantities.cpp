#include "imports/quantities.h"

#include "imports/asciitext.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

namespace imports
{
namespace
{

using Words = std::vector<std::string>;

// In lower case.
constexpr std::array<std::string_view, 5> kConcentration{"c", "q", "qtotal", "quencher", "molarity"};
constexpr std::array<std::string_view, 2> kConcentrationStarts{"conc", "konz"};
constexpr std::array<std::string_view, 7> kIntensity{"i", "f", "int", "phi", "counts", "cps", "pl"};
constexpr std::array<std::string_view, 5> kIntensityStarts{"intens", "fluo", "emission", "lumin", "signal"};
constexpr std::array<std::string_view, 4> kAmplitude{"a", "alpha", "amplitude", "amp"};
constexpr std::array<std::string_view, 4> kLifetime{"tau", "lifetime", "lifetimes", "t"};
// Calculated columns, errors, and what is measured besides.
constexpr std::array<std::string_view, 14> kNeverWanted{"ratio", "f0",  "i0",  "phi0", "tau0",  "error", "err",
                                                        "sd",    "std", "sem", "dev",  "blank", "probe", "absorbance"};
// Unless the title begins with a quantity, as in "F (wavelength 450 nm)".
constexpr std::array<std::string_view, 9> kOther{"sample", "no",         "nr",     "number",     "index",
                                                 "time",   "wavelength", "lambda", "temperature"};
constexpr std::array<std::string_view, 6> kVolume{"volume", "volumen", "vol", "v", "ul", "ml"};
// Volumes since the first sample, not since the sample before.
constexpr std::array<std::string_view, 4> kInAll{"total", "sum", "cumulative", "gesamt"};

template <std::size_t N>
bool isOneOf(const std::array<std::string_view, N>& list, std::string_view word)
{
    return std::ranges::find(list, word) != list.end();
}

template <std::size_t N>
bool anyOf(const std::array<std::string_view, N>& list, const Words& words)
{
    return std::ranges::any_of(words, [&list](const std::string& word) { return isOneOf(list, word); });
}

template <std::size_t N>
bool startsWithOneOf(const std::array<std::string_view, N>& list, std::string_view word)
{
    return std::ranges::any_of(list, [word](std::string_view start) { return word.starts_with(start); });
}

bool namesConcentration(const std::string& word)
{
    return isOneOf(kConcentration, word) || startsWithOneOf(kConcentrationStarts, word);
}

bool namesIntensity(const std::string& word)
{
    return isOneOf(kIntensity, word) || startsWithOneOf(kIntensityStarts, word);
}

Words wordsOf(std::string_view title)
{
    Words words(1);
    for (const char c : title)
        if (std::isalnum(static_cast<unsigned char>(c)))
            words.back() += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        else if (!words.back().empty())
            words.emplace_back();
    return words;
}

/// The number of a component behind one of the names: 2 for "tau2" and "lifetime 2".
template <std::size_t N>
std::optional<int> componentOf(const std::array<std::string_view, N>& names, const Words& words)
{
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string joined = words[i] + (i + 1 < words.size() ? words[i + 1] : std::string());
        for (const std::string& text : {words[i], joined}) {
            const int digit = text.empty() ? 0 : text.back() - '0';
            if (digit >= 1 && digit <= decay::kMaxComponents && isOneOf(names, text.substr(0, text.size() - 1)))
                return digit;
        }
    }
    return std::nullopt;
}

Quantity ofComponent(Quantity first, int component)
{
    return static_cast<Quantity>(indexOf(first) + 2 * static_cast<std::size_t>(component - 1));
}

bool namesLifetime(const Words& words)
{
    return std::ranges::any_of(words, [](const std::string& word) { return word != "t" && isOneOf(kLifetime, word); });
}

} // namespace

Guess guessFromTitle(std::string_view title)
{
    const std::string ascii = asciiText(title);
    const Words words = wordsOf(ascii);
    const Unit unit = unitOfTitle(ascii).value_or(Unit{});
    const bool beginsWithQuantity = namesConcentration(words.front()) || namesIntensity(words.front());
    if (anyOf(kNeverWanted, words))
        return {std::nullopt, true};
    if (unit.kind == UnitKind::Concentration) // also of "[NO] / mM"
        return {Quantity::Concentration};
    if (anyOf(kOther, words) && !beginsWithQuantity)
        return {std::nullopt, true};
    if (anyOf(kVolume, words) && !beginsWithQuantity)
        return anyOf(kInAll, words) ? Guess{std::nullopt, true} : Guess{Quantity::Added};
    if (const auto component = componentOf(kAmplitude, words))
        return {ofComponent(Quantity::A1, *component)};
    if (const auto component = componentOf(kLifetime, words))
        return {ofComponent(Quantity::Tau1, *component)};
    if (unit.kind == UnitKind::Time || namesLifetime(words))
        return {Quantity::Tau1};
    if (std::ranges::any_of(words, namesConcentration))
        return {Quantity::Concentration};
    if (std::ranges::any_of(words, namesIntensity))
        return {Quantity::Intensity};
    return {};
}

} // namespace imports
