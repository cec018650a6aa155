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

/// Titles of the columns.
const std::vector<std::string>& comparisonTitles();

/// The row of a model, with one cell for each title.
std::vector<ComparisonCell> comparisonRow(const ComparedModel& compared);

} // namespace trust
