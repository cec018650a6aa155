#pragma once

#include "decay/normalization.h"

#include <optional>
#include <string>
#include <vector>

namespace decay
{

/// Messages about data that cannot be normalised, in the order in which they are shown. Empty if the data are usable.
std::vector<std::string> complaints(const DecayData& data);

/// The reason why decay curves cannot be analysed with a model; nullopt if they can.
std::optional<std::string> analysisComplaint(bool normalized, int model);

} // namespace decay
