#include "trust/titledrows.h"

#include "fit/numbertext.h"

#include <cmath>

namespace trust
{

std::string tabbedText(const TitledRows& table)
{
    std::string text;
    for (const auto& row : table) {
        for (std::size_t i = 0; i < row.size(); ++i)
            text += (i > 0 ? "\t" : "") + row[i];
        text += "\r\n";
    }
    return text;
}

std::string figure(double value)
{
    if (std::isnan(value))
        return "-";
    if (std::isinf(value))
        return "not determined";
    const double size = std::abs(value);
    const bool plain = size == 0 || (size >= 1e-3 && size < 1e5);
    if (!plain)
        return fit::formatNumber(value, "0.0000e+0");
    return fit::formatNumber(value, size >= 100 ? "0.00" : "0.00000");
}

} // namespace trust
