#pragma once

#include "app/modeltables.h"

#include <string>

namespace trust
{

/// Names and kinds of a model's constants, by slot 1..3.

/// "K", "kq1", ...
std::string constantName(int model, std::size_t slot);

/// "M-1 s-1"; empty for a plain number.
std::string constantUnit(int model, std::size_t slot);

/// The name with its unit: "kq2 /M-1 s-1".
std::string constantCaption(int model, std::size_t slot);

/// True for rate constants of collisions, M^-1 s^-1; those through a complex are s^-1.
bool isCollisional(int model, std::size_t slot);

} // namespace trust
