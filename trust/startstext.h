#pragma once

#include "trust/enginestart.h"
#include "trust/startsearch.h"

#include <string>

namespace trust
{

/// A solution with the start values to type for it.
struct FoundStart {
    Solution solution;
    EngineStart start;
};

/// "K = 1.24126 M-1, kq2 = 4.7976e+9 M-1 s-1": the constants of a model, in fitting order.
std::string valuesText(int model, const fit::Parameters& values);

/// What a search found, in words. starts: best first; chosen: the one whose values are in the boxes.
std::string foundText(int model, double typedSum, const std::vector<FoundStart>& starts, std::size_t chosen);

} // namespace trust
