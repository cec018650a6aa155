#pragma once

#include "imports/units.h"

#include <optional>
#include <string>
#include <string_view>

namespace imports
{

enum class DecimalSign { Point, Comma };

/// A number as digits: +-digits x 10^exponent, perhaps with a unit.
struct SpelledNumber {
    bool negative = false;
    std::string digits; // without leading and trailing zeros; empty: zero
    long long exponent = 0;
    std::optional<Unit> unit;
    bool operator==(const SpelledNumber&) const = default;
};

/// The whole text as one number: "5×10⁻²", "-0,5 mM" with a comma, "1 234.5" or "1,234.5" with a point. Groups of three
/// digits stand apart by blanks, apostrophes or the other sign. nullopt: something else.
std::optional<SpelledNumber> spelledNumber(std::string_view text, DecimalSign sign);

/// The number times 10^power as the sheet takes it, shortest text first: digits move, nothing is multiplied. 501 x
/// 10^-1 with -3 -> "0.0501". nullopt if no double is near it.
std::optional<std::string> plainNumber(const SpelledNumber& number, int power);

} // namespace imports
