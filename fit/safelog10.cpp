#include "fit/safelog10.h"

#include <cmath>

namespace fit
{

std::optional<double> SafeLog10(double x)
{
    if (x > 0)
        return std::log(x) / kLn10;
    return std::nullopt;
}

} // namespace fit
