#include "noise/constanttext.h"

#include "fit/numbertext.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace noise
{
namespace
{

std::string superscript(int number)
{
    constexpr std::array kDigits{"⁰", "¹", "²", "³", "⁴", "⁵", "⁶", "⁷", "⁸", "⁹"};
    std::string text = number < 0 ? "⁻" : "";
    for (const char digit : std::to_string(std::abs(number)))
        text += kDigits[static_cast<std::size_t>(digit - '0')];
    return text;
}

int exponentOf(double value) { return static_cast<int>(std::floor(std::log10(std::abs(value)))); }

std::string withDecimals(double value, int decimals)
{
    const std::string pattern = decimals > 0 ? "0." + std::string(static_cast<std::size_t>(decimals), '0') : "0";
    return fit::formatNumber(value, pattern);
}

/// The exponent by which two numbers are divided for printing; 0 for numbers that are easy to read as they are.
int commonExponent(double value, double error)
{
    const int exponent = exponentOf(std::max(std::abs(value), error));
    return exponent >= -3 && exponent <= 3 && error < 100 ? 0 : exponent;
}

/// Decimals that show two digits of an error. 0.0996 becomes 0.10, because rounding adds a digit.
int decimalsFor(double error)
{
    const int decimals = 1 - exponentOf(error);
    const double rounded = std::round(error * std::pow(10, decimals)) / std::pow(10, decimals);
    return std::max(0, 1 - exponentOf(rounded * (1 + 1e-12)));
}

} // namespace

std::string printedUnit(std::string_view unit)
{
    std::string text;
    while (!unit.empty()) {
        const std::size_t end = unit.find("-1");
        text += (text.empty() ? "" : " ") + std::string(unit.substr(0, end));
        text += end == std::string_view::npos ? "" : "⁻¹";
        unit.remove_prefix(end == std::string_view::npos ? unit.size() : end + 2);
    }
    return text;
}

std::string withError(double value, double error, const std::string& unit)
{
    constexpr double kRounding = 1e-9;  // of the value
    constexpr double kHalfDigit = 5e-6; // of the value: rounding to five digits may add a digit
    const bool hasError = error > kRounding * std::abs(value) && std::isfinite(error) && std::isfinite(value);
    const bool isNumber = value != 0 && std::isfinite(value);
    const double rounded = value * (1 + kHalfDigit);
    const int exponent = hasError ? commonExponent(value, error) : isNumber ? commonExponent(rounded, 0) : 0;
    const double scale = std::pow(10.0, exponent);
    std::string text;
    if (hasError) {
        const int decimals = decimalsFor(error / scale);
        text = withDecimals(value / scale, decimals) + " ± " + withDecimals(error / scale, decimals);
    } else {
        constexpr int kDigits = 5;
        text = withDecimals(value / scale, isNumber ? kDigits - 1 - exponentOf(rounded / scale) : 0);
    }
    if (hasError && (exponent != 0 || !unit.empty()))
        text = "(" + text + ")";
    if (exponent != 0)
        text += "·10" + superscript(exponent);
    return text + (unit.empty() ? "" : " " + unit);
}

std::string constantText(const ReadyConstant& constant)
{
    const double error = constant.error.total();
    std::string text = constant.name + " = " + withError(constant.value, error, constant.unit);
    if (constant.fixed)
        text += " (fixed)";
    else if (std::isinf(error))
        text += " (not determined)";
    return text;
}

} // namespace noise
