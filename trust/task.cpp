#include "trust/task.h"

#include "leastsquares/spread.h"
#include "models/catalogue.h"

namespace trust
{

leastsquares::Ranges sensibleRanges(int model)
{
    leastsquares::Ranges ranges = leastsquares::kAnySizes;
    std::size_t slot = 0;
    for (const models::Parameter& parameter : models::row(model).fitted())
        ranges[++slot] = {parameter.usual.low, parameter.usual.high};
    return ranges;
}

fit::Parameters positiveStart(const Task& task)
{
    const leastsquares::Ranges sensible = sensibleRanges(task.model);
    fit::Parameters values = task.typed.values;
    for (const std::size_t slot : task.free())
        if (!(values[slot] > 0))
            values[slot] = leastsquares::between(sensible[slot], 0.5);
    return values;
}

} // namespace trust
