#pragma once

#include <string>
#include <vector>

namespace trust
{

/// Rows of cells; the first row holds the titles.
using TextTable = std::vector<std::vector<std::string>>;

/// For the clipboard: cells parted by tabs, rows ended by CR LF.
std::string tabbedText(const TextTable& table);

/// A number with five digits; "not determined" when it is infinite, "-" when it is not a number.
std::string figure(double value);

} // namespace trust
