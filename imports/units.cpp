#include "imports/units.h"

#include "imports/asciitext.h"

#include <algorithm>
#include <array>
#include <string>

namespace imports
{
namespace
{

struct Prefix {
    std::string_view letter;
    int power;
};

constexpr std::array kPrefixes{Prefix{"", 0}, Prefix{"m", -3}, Prefix{"u", -6}, Prefix{"n", -9}, Prefix{"p", -12}};

// Without blanks, signs of multiplication and "^".
constexpr std::array<std::string_view, 7> kMolar{"M", "mol/L", "mol/l", "molL-1", "moll-1", "mol/dm3", "moldm-3"};
constexpr std::string_view kSecond = "s";

std::string withoutJoints(std::string_view text)
{
    std::string joined(text);
    std::erase_if(joined, [](char c) { return c == ' ' || c == 'x' || c == '^'; });
    return joined;
}

} // namespace

std::optional<Unit> unitOf(std::string_view text)
{
    const std::string name = withoutJoints(text);
    for (const Prefix& prefix : kPrefixes) {
        if (!name.starts_with(prefix.letter))
            continue;
        const std::string_view base = std::string_view(name).substr(prefix.letter.size());
        if (std::ranges::find(kMolar, base) != kMolar.end())
            return Unit{UnitKind::Concentration, prefix.power};
        if (base == kSecond)
            return Unit{UnitKind::Time, prefix.power};
    }
    return std::nullopt;
}

std::optional<Unit> unitOfTitle(std::string_view title)
{
    constexpr std::string_view kBefore = " /([,;_", kAfter = " )]";
    title = title.substr(0, title.find_last_not_of(kAfter) + 1);
    for (std::size_t at = 0; at < title.size(); ++at)
        if (at == 0 || kBefore.find(title[at - 1]) != std::string_view::npos)
            if (const auto unit = unitOf(trimmed(title.substr(at))))
                return unit;
    return std::nullopt;
}

} // namespace imports
