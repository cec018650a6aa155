#pragma once

#include "trust/modelcomparison.h"
#include "trust/texttable.h"

#include <string>

namespace trust
{

/// A cell of the comparison: text, and the number to sort by where the text is one.
struct ComparisonCell {
    std::string text;
    double key = 0;
};

/// Titles of the columns.
const std::vector<std::string>& comparisonTitles();

/// One model's row, a cell for each title.
std::vector<ComparisonCell> comparisonRow(const ComparedModel& compared);

} // namespace trust
