#include "leastsquares/akaike.h"

#include <cmath>

namespace leastsquares
{

std::optional<double> correctedAkaike(double sumOfSquares, int n, int k)
{
    if (n < observationsForAkaike(k) || !(sumOfSquares > 0) || !std::isfinite(sumOfSquares))
        return std::nullopt;
    return n * std::log(sumOfSquares / n) + 2.0 * k + 2.0 * k * (k + 1) / (n - k - 1);
}

} // namespace leastsquares
