#pragma once

#include <string>
#include <vector>

namespace exports
{

/// Rows of cells in UTF-8, of any length.
using Rows = std::vector<std::vector<std::string>>;

/// The rows as a file of RFC 4180: every row has as many fields as the longest one and ends in CR LF; a field with the
/// separator, a quotation mark or the end of a line stands in quotation marks.
std::string csvText(const Rows& rows, char separator);

} // namespace exports
