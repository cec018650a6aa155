#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Numbers to text and back. The decimal point is '.' in every locale.
namespace fit
{

/// value in a classic number pattern: '#' optional digit, '0' required digit, "e+" exponent with its sign.
/// Rounds ties away from zero on the 15-digit decimal value. (2.5e7, "0.000e+00") -> "2.500e+07".
std::string formatNumber(double value, std::string_view pattern);

/// Plain decimal text with a sign position: '-' or a blank before the digits; 3 -> " 3", 0.5 -> " .5".
std::string signedText(double value);

/// Plain decimal text without the sign position and with a zero before the point: 3 -> "3", 0.5 -> "0.5".
std::string plainText(double value);

/// The shortest text that reads back as the same number, of up to 17 digits: 0.1 -> "0.1", 4.7e9 -> "4.7e+09".
std::string exactText(double value);

/// The leading number of a text, blanks ignored; 0 when there is none. "12 M" -> 12; "" and "abc" -> 0.
double numberFrom(std::string_view text);

/// The whole text as one number, with blanks only around it; nullopt for any other text.
std::optional<double> strictNumber(std::string_view text);

/// Nearest whole number, ties to the even neighbour; nullopt when the result does not fit the type.
std::optional<std::int16_t> roundedInt16(double value);
std::optional<std::int32_t> roundedInt32(double value);

/// As roundedInt32, but a value beyond the type is clamped to its limits (a NaN gives 0).
std::int32_t heldInt32(double value);

} // namespace fit
