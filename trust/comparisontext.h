#pragma once

#include "trust/modelcomparison.h"
#include "trust/titledrows.h"

#include <string>

namespace trust
{

/// A cell of the comparison: its text, and its number for sorting if it has one.
struct ComparisonCell {
    std::string text;
    double key = 0;
};

/// Titles of the columns. Decay curves have no AICc.
std::vector<std::string> comparisonTitles(models::Analysis analysis);

/// The row of a place, 0.., with one cell for each title. number: how cells print numbers.
std::vector<ComparisonCell> comparisonRow(const Comparison& comparison, std::size_t place, NumberText number = figure);

/// What holds for all models, in sentences: the order, F tests, the probe concentration.
std::string comparisonNotes(const Comparison& comparison);

} // namespace trust
