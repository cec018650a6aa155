#include "leastsquares/nestedtest.h"

#include "leastsquares/scatter.h"

#include <boost/math/distributions/fisher_f.hpp>

namespace leastsquares
{

double nestedProbability(double sumWithout, double sum, int degreesOfFreedom)
{
    if (sumWithout <= sum)
        return 1;
    const double F = (sumWithout - sum) / (sum / degreesOfFreedom);
    return boost::math::cdf(boost::math::complement(boost::math::fisher_f(1, degreesOfFreedom), F)) / 2;
}

double nestedProbabilityOfKnown(double sumWithout, double sum)
{
    return sumWithout <= sum ? 1 : chiSquareProbability(sumWithout - sum, 1) / 2;
}

} // namespace leastsquares
