#include "leastsquares/scatter.h"

#include <boost/math/distributions/chi_squared.hpp>
#include <boost/math/distributions/normal.hpp>
#include <boost/math/distributions/students_t.hpp>

#include <cmath>

namespace leastsquares
{
namespace
{

constexpr double kUpperEnd = 0.975; // of a two-sided interval of 95 percent

} // namespace

Scatter estimatedScatter(double sumOfSquares, int degreesOfFreedom)
{
    Scatter scatter{.degreesOfFreedom = degreesOfFreedom};
    if (degreesOfFreedom > 0) {
        scatter.variance = sumOfSquares / degreesOfFreedom;
        scatter.quantile = boost::math::quantile(boost::math::students_t(degreesOfFreedom), kUpperEnd);
    }
    return scatter;
}

Scatter knownScatter(int degreesOfFreedom)
{
    return {degreesOfFreedom, 1, boost::math::quantile(boost::math::normal(), kUpperEnd)};
}

Scatter weightedScatter(double degreesOfFreedom)
{
    Scatter scatter{.degreesOfFreedom = static_cast<int>(degreesOfFreedom)};
    if (degreesOfFreedom > 0) {
        scatter.variance = 1;
        scatter.quantile = boost::math::quantile(boost::math::students_t(degreesOfFreedom), kUpperEnd);
    }
    return scatter;
}

double chiSquareProbability(double sumOfSquares, int degreesOfFreedom)
{
    if (!std::isfinite(sumOfSquares))
        return 0;
    return boost::math::cdf(boost::math::complement(boost::math::chi_squared(degreesOfFreedom), sumOfSquares));
}

} // namespace leastsquares
