#include "fit/numbertext.h"

#include "fit/numberscanner.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace fit
{
namespace
{

constexpr int kSignificantDigits = 15;

/// The magnitude 0.d1d2d3... x 10^point, without trailing zeros. Zero has no digits and its point at 0.
struct Decimal {
    std::string digits;
    int point = 0;
};

void dropTrailingZeros(Decimal& number)
{
    number.digits.resize(number.digits.find_last_not_of('0') + 1);
    if (number.digits.empty())
        number.point = 0;
}

Decimal decimalFrom(double value)
{
    constexpr int kDecimals = kSignificantDigits - 1;
    std::array<char, 32> text{}; // d.dddddddddddddde+xx
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), std::abs(value), std::chars_format::scientific, kDecimals)
            .ptr;
    const char* const exponentSign = text.data() + 2 + kDecimals + 1;
    int exponent = 0;
    std::from_chars(exponentSign + 1, end, exponent);

    Decimal number{std::string(1, text[0]).append(text.data() + 2, kDecimals),
                   1 + (*exponentSign == '-' ? -exponent : exponent)};
    dropTrailingZeros(number);
    return number;
}

/// Adds one unit in the last digit.
void increment(Decimal& number)
{
    std::string& digits = number.digits;
    digits.resize(digits.find_last_not_of('9') + 1);
    if (digits.empty()) {
        digits = "1";
        ++number.point;
    } else {
        ++digits.back();
    }
}

/// Keeps the first `count` digits (a negative count leaves zero), ties away from zero.
void roundTo(Decimal& number, int count)
{
    if (count >= static_cast<int>(number.digits.size()))
        return;
    const auto kept = static_cast<std::size_t>(std::max(count, 0));
    const bool up = count >= 0 && number.digits[kept] >= '5';
    number.digits.resize(kept);
    if (up)
        increment(number);
    dropTrailingZeros(number);
}

std::string fixedText(const Decimal& number, int minimumIntegers, int minimumDecimals, bool withPoint)
{
    const int integers = std::max(number.point, minimumIntegers);
    std::string text(static_cast<std::size_t>(integers - number.point), '0');
    text += number.digits;
    text.resize(std::max(text.size(), static_cast<std::size_t>(integers + minimumDecimals)), '0');
    if (withPoint)
        text.insert(static_cast<std::size_t>(integers), 1, '.');
    return text;
}

std::string exponentText(char letter, int exponent, int minimumDigits)
{
    const std::string digits = std::to_string(std::abs(exponent));
    const int missing = minimumDigits - static_cast<int>(digits.size());
    return std::string{letter, exponent < 0 ? '-' : '+'}
        .append(static_cast<std::size_t>(std::max(missing, 0)), '0')
        .append(digits);
}

struct Pattern {
    int integers = 0;
    int minimumIntegers = 0; // placeholders from the first '0' on
    int decimals = 0;
    int minimumDecimals = 0; // placeholders up to the last '0'
    int minimumExponentDigits = 0;
    bool hasPoint = false;
    char exponentLetter = '\0'; // none: a fixed pattern
};

Pattern patternFrom(std::string_view text)
{
    Pattern pattern;
    const std::string_view mantissa = text.substr(0, text.find_first_of("eE"));
    if (mantissa.size() < text.size()) {
        pattern.exponentLetter = text[mantissa.size()];
        pattern.minimumExponentDigits = static_cast<int>(std::ranges::count(text.substr(mantissa.size()), '0'));
    }
    const std::string_view integers = mantissa.substr(0, mantissa.find('.'));
    pattern.integers = static_cast<int>(integers.size());
    pattern.minimumIntegers = static_cast<int>(integers.size() - std::min(integers.find('0'), integers.size()));
    pattern.hasPoint = integers.size() < mantissa.size();
    if (pattern.hasPoint) {
        const std::string_view decimals = mantissa.substr(integers.size() + 1);
        pattern.decimals = static_cast<int>(decimals.size());
        pattern.minimumDecimals = static_cast<int>(decimals.find_last_of('0') + 1);
    }
    return pattern;
}

std::string fixedPatternText(Decimal& number, const Pattern& pattern)
{
    roundTo(number, number.point + pattern.decimals);
    return fixedText(number, pattern.minimumIntegers, pattern.minimumDecimals, pattern.hasPoint);
}

std::string scientificPatternText(Decimal& number, const Pattern& pattern)
{
    roundTo(number, pattern.integers + pattern.decimals);
    const int exponent = number.digits.empty() ? 0 : number.point - pattern.integers;
    const Decimal mantissa{number.digits, number.point - exponent};
    return fixedText(mantissa, pattern.integers, pattern.minimumDecimals, pattern.hasPoint) +
           exponentText(pattern.exponentLetter, exponent, pattern.minimumExponentDigits);
}

std::string notFiniteText(double value)
{
    if (std::isnan(value))
        return "-1.#IND";
    return value < 0 ? "-1.#INF" : "1.#INF";
}

/// Plain decimal text of the magnitude, with minimumIntegers digits at least before the point.
std::string magnitudeText(const Decimal& number, int minimumIntegers)
{
    if (number.digits.empty())
        return "0";
    const int digitCount = static_cast<int>(number.digits.size());
    const bool fits = number.point <= kSignificantDigits && digitCount - number.point <= kSignificantDigits;
    if (fits)
        return fixedText(number, minimumIntegers, 0, digitCount > number.point);
    return fixedText({number.digits, 1}, 1, 0, digitCount > 1) + exponentText('E', number.point - 1, 2);
}

std::string conversionText(double value, std::string_view positiveSign, int minimumIntegers)
{
    if (!std::isfinite(value))
        return notFiniteText(value);
    const Decimal number = decimalFrom(value);
    const bool negative = value < 0;
    return std::string(negative ? "-" : positiveSign) + magnitudeText(number, minimumIntegers);
}

template <typename Integer>
std::optional<Integer> rounded(double value)
{
    const double nearest = std::nearbyint(value); // the default rounding mode takes ties to even
    if (nearest >= std::numeric_limits<Integer>::min() && nearest <= std::numeric_limits<Integer>::max())
        return static_cast<Integer>(nearest);
    return std::nullopt;
}

} // namespace

std::string formatNumber(double value, std::string_view pattern)
{
    if (!std::isfinite(value))
        return notFiniteText(value);
    const Pattern parts = patternFrom(pattern);
    Decimal number = decimalFrom(value);
    const std::string text =
        parts.exponentLetter == '\0' ? fixedPatternText(number, parts) : scientificPatternText(number, parts);
    return value < 0 && !number.digits.empty() ? "-" + text : text;
}

std::string signedText(double value) { return conversionText(value, " ", 0); }

std::string plainText(double value) { return conversionText(value, "", 1); }

std::string exactText(double value)
{
    if (!std::isfinite(value))
        return notFiniteText(value);
    std::array<char, 32> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

double numberFrom(std::string_view text)
{
    return NumberScanner(text, NumberScanner::Blanks::Ignored).scan().value_or(0);
}

std::optional<double> strictNumber(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    text = text.substr(0, text.find_last_not_of(kBlanks) + 1);
    NumberScanner scanner(text, NumberScanner::Blanks::EndTheNumber);
    const std::optional<double> number = scanner.scan();
    return scanner.next() == text.size() ? number : std::nullopt;
}

std::optional<std::int16_t> roundedInt16(double value) { return rounded<std::int16_t>(value); }

std::optional<std::int32_t> roundedInt32(double value) { return rounded<std::int32_t>(value); }

std::int32_t heldInt32(double value)
{
    using Limits = std::numeric_limits<std::int32_t>;
    if (const std::optional<std::int32_t> fitting = roundedInt32(value))
        return *fitting;
    if (std::isnan(value))
        return 0;
    return value < 0 ? Limits::min() : Limits::max();
}

} // namespace fit
