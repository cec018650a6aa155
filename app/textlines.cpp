#include "app/textlines.h"

#include <algorithm>

namespace app
{
namespace
{

bool continuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

} // namespace

std::optional<std::string_view> takeLine(std::string_view& rest)
{
    if (rest.empty())
        return std::nullopt;
    const std::size_t end = std::min(rest.find_first_of(kLineEnd), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end);
    if (rest.starts_with(kLineEnd))
        rest.remove_prefix(kLineEnd.size());
    else if (!rest.empty())
        rest.remove_prefix(1);
    return line;
}

std::vector<std::string> fieldsOf(std::string_view line, int most)
{
    std::vector<std::string> fields;
    for (int count = 0; count < most; ++count) {
        const std::size_t end = line.find('\t');
        fields.push_back(heldField(line.substr(0, end)));
        if (end == std::string_view::npos)
            break;
        line.remove_prefix(end + 1);
    }
    return fields;
}

std::string heldField(std::string_view text)
{
    if (text.size() <= kMaxFieldBytes)
        return std::string(text);
    std::size_t end = kMaxFieldBytes;
    while (end > 0 && continuesCharacter(text[end]))
        --end;
    return std::string(text.substr(0, end));
}

std::string oneField(std::string_view text, std::string_view separators)
{
    std::string field(text);
    std::ranges::replace_if(
        field, [separators](char c) { return separators.find(c) != std::string_view::npos; }, ' ');
    return field;
}

} // namespace app
