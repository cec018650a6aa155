#include "exports/csvtext.h"

#include <algorithm>

namespace exports
{
namespace
{

std::string field(const std::string& text, char separator)
{
    if (text.find_first_of(std::string("\"\r\n") + separator) == std::string::npos)
        return text;
    std::string quoted = "\"";
    for (const char c : text)
        quoted += c == '"' ? "\"\"" : std::string(1, c);
    return quoted + '"';
}

} // namespace

std::string csvText(const Rows& rows, char separator)
{
    std::size_t fields = 0;
    for (const auto& row : rows)
        fields = std::max(fields, row.size());
    std::string text;
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < fields; ++i)
            text += (i > 0 ? std::string(1, separator) : "") + (i < row.size() ? field(row[i], separator) : "");
        text += "\r\n";
    }
    return text;
}

} // namespace exports
