#pragma once

#include "fit/gaussnewton.h"

#include <cmath>

namespace fit
{

/// Parameters in their real units from those the engine holds: in log mode exp of every slot, fitted or not.
inline Parameters realParameters(int logMode, const Parameters& a)
{
    if (logMode != 1)
        return a;
    Parameters real{};
    for (std::size_t j = 1; j < real.size(); ++j)
        real[j] = std::exp(a[j]);
    return real;
}

} // namespace fit
