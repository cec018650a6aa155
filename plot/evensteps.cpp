#include "plot/evensteps.h"

#include <cmath>

namespace plot
{
namespace
{

constexpr double kRounding = 1e-9; // of a step; the accumulated rounding of the additions is far less

} // namespace

std::vector<double> evenSteps(double first, double last, double step)
{
    std::vector<double> values;
    if (step == 0 || !std::isfinite(step))
        return values;
    const double end = last + kRounding * step;
    double value = first;
    while (values.size() < kMaxSteps && (step > 0 ? value <= end : value >= end)) {
        values.push_back(value);
        value += step;
    }
    return values;
}

} // namespace plot
