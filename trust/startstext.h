#pragma once

#include "trust/enginestart.h"
#include "trust/startsearch.h"

#include <string>

namespace trust
{

/// A solution and the start values for the boxes.
struct FoundStart {
    leastsquares::Solution solution;
    EngineStart start;
};

/// The result of a search.
struct FoundStarts {
    int model = 0;
    int logMode = 0;                // of the engine
    double typedSum = 0;            // infinity: not defined
    std::vector<FoundStart> starts; // best first
};

/// "K = 1.24126 M-1, kq2 = 4.7976e+9 M-1s-1": the constants of a model, in fitting order.
std::string valuesText(int model, const fit::Parameters& values);

/// Describes the result in words. chosen: the start whose values are in the boxes.
std::string foundText(const FoundStarts& found, std::size_t chosen);

} // namespace trust
