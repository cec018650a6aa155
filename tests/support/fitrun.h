#pragma once

#include "fit/gaussnewton.h"
#include "fit/realparameters.h"
#include "tests/support/callableproblem.h"

#include <QByteArray>

#include <algorithm>
#include <cmath>
#include <vector>

namespace support
{

using Values = std::vector<double>; // parameters in real units, in fitting order

inline Values scaled(Values values, double factor)
{
    for (double& value : values)
        value *= factor;
    return values;
}

/// As the engine takes them: slot 0 is not used.
inline fit::Parameters engineParameters(const Values& values)
{
    fit::Parameters a{};
    std::copy(values.begin(), values.end(), a.begin() + 1);
    return a;
}

struct StopRule {
    double tolerance;
    double iterationLimit;
};
inline constexpr StopRule kPanelRule{1e-4, 100}; // initial values of the parameter panel
inline constexpr StopRule kPatientRule{1e-9, 50000};

struct FitRun {
    Values values;
    fit::Outcome outcome;
};

/// A fit with every parameter free and above zero.
inline FitRun runFit(fit::Problem& problem, int logMode, const Values& start, StopRule stop)
{
    fit::Options options;
    options.logMode = logMode;
    options.parameterCount = static_cast<int>(start.size());
    options.iterationLimit = stop.iterationLimit;
    options.tolerance = stop.tolerance;
    fit::Parameters a{};
    for (std::size_t j = 1; j <= start.size(); ++j) {
        a[j] = logMode == 1 ? std::log(start[j - 1]) : start[j - 1];
        options.aboveZero[j] = logMode == 1 ? 0 : 1;
    }
    PatientObserver observer;
    const fit::Outcome outcome = fit::gaussNewton(problem, options, a, observer);
    const fit::Parameters real = fit::realParameters(logMode, outcome.parameters);
    return {Values(real.begin() + 1, real.begin() + 1 + static_cast<std::ptrdiff_t>(start.size())), outcome};
}

/// True if every value lies within a relative distance of the expected value.
inline bool allNear(const Values& values, const Values& expected, double tolerance)
{
    for (std::size_t j = 0; j < expected.size(); ++j)
        if (!(std::abs(values[j] / expected[j] - 1) <= tolerance))
            return false;
    return values.size() == expected.size();
}

inline QByteArray text(const FitRun& run)
{
    QByteArray list;
    for (double value : run.values)
        list += QByteArray::number(value, 'g', 8) + ' ';
    return list + "after " + QByteArray::number(run.outcome.iterations) + " ending " +
           QByteArray::number(static_cast<int>(run.outcome.ending));
}

} // namespace support
