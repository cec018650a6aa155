#pragma once

#include "noise/readyconstants.h"

#include <string>
#include <string_view>

namespace noise
{

/// A unit of the catalogue as papers print it: "M-1s-1" -> "M⁻¹ s⁻¹".
std::string printedUnit(std::string_view unit);

/// Value and error, both rounded to two digits of the error: (1.2413, 0.107, "M⁻¹") -> "(1.24 ± 0.11) M⁻¹",
/// (4.7976e9, 3.8e8, "") -> "(4.80 ± 0.38)·10⁹". Without a positive finite error, or
/// with one that is a rounding of the value, the value has five digits.
std::string withError(double value, double error, const std::string& unit);

/// "K = (1.24 ± 0.11) M⁻¹"; a fixed constant is said to be fixed, an infinite error to be not determined.
std::string constantText(const ReadyConstant& constant);

} // namespace noise
