#pragma once

#include "lifetimes/measurements.h"

#include <optional>
#include <string>
#include <vector>

namespace lifetimes
{

/// Why the measurements cannot be analysed at all; nullopt if they can.
std::optional<std::string> complaint(const Measurements& measurements);

/// What is said of usable measurements, in sentences: one kind only, missing values, lifetimes longer than the
/// reference's, several components.
std::vector<std::string> remarks(const Measurements& measurements);

} // namespace lifetimes
