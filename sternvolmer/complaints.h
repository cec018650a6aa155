#pragma once

#include "sternvolmer/ratiodata.h"

#include <string>
#include <vector>

namespace sternvolmer
{

/// Messages about unusable data or an unusable probe concentration (M), in the order in which they are shown. Empty if
/// the data are usable.
std::vector<std::string> complaints(const RatioData& data, double Cp);

} // namespace sternvolmer
