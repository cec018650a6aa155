#include "trust/titledrows.h"

#include "fit/numbertext.h"

#include <cmath>

namespace trust
{

std::string tabbedText(const TitledRows& table)
{
    std::string text;
    for (const auto& row : table) {
        for (std::size_t i = 0; i < row.size(); ++i)
            text += (i > 0 ? "\t" : "") + row[i];
        text += "\r\n";
    }
    return text;
}

namespace
{

std::string notFinite(double value) { return std::isnan(value) ? "-" : "not determined"; }

} // namespace

std::string exactFigure(double value) { return std::isfinite(value) ? fit::exactText(value) : notFinite(value); }

std::string figure(double value)
{
    if (!std::isfinite(value))
        return notFinite(value);
    if (value == 0)
        return "0";
    constexpr int kDigits = 5, kMostZeros = 3; // zeros before the first digit
    const std::string scientific = fit::formatNumber(value, "0.0000e+0");
    const int exponent = std::stoi(scientific.substr(scientific.find('e') + 1)); // after rounding
    if (exponent < -kMostZeros || exponent >= kDigits)
        return scientific;
    const auto decimals = static_cast<std::size_t>(kDigits - 1 - exponent);
    return fit::formatNumber(value, decimals == 0 ? "0" : "0." + std::string(decimals, '0'));
}

} // namespace trust
