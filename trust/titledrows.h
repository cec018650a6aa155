#pragma once

#include <string>
#include <vector>

namespace trust
{

/// Rows of cells; the first row holds the titles.
using TitledRows = std::vector<std::vector<std::string>>;

/// The text for the clipboard: tabs between cells, CR LF after each row.
std::string tabbedText(const TitledRows& table);

/// A number with five significant digits: 0.0034800, 3.4800, 34800, 3.4800e-4, 3.4800e+5. "0" for zero, "not
/// determined" if it is infinite, "-" if it is NaN.
std::string figure(double value);
/// The same with all digits of the number.
std::string exactFigure(double value);

using NumberText = std::string (*)(double value);

} // namespace trust
