#pragma once

#include "imports/cells.h"

namespace imports
{

/// Whether the text is a number with a point or with a comma as decimal sign.
bool isNumber(std::string_view cell);

/// The cells of a row with a text, and how many of these are numbers.
struct RowCount {
    int texts = 0;
    int numbers = 0;
};
RowCount countCells(const std::vector<std::string>& row);

/// The separator that leaves the most rows of numbers; a tab if none does.
Separator foundSeparator(std::string_view text, std::string_view comment);

} // namespace imports
