#include "plot/steps.h"

#include <cmath>

namespace plot
{

std::vector<double> steps(double first, double last, double step)
{
    std::vector<double> values;
    if (step == 0 || !std::isfinite(step))
        return values;
    double value = first;
    while (values.size() < kMaxSteps && (step > 0 ? value <= last : value >= last)) {
        values.push_back(value);
        value += step;
    }
    return values;
}

} // namespace plot
