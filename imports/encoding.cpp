#include "imports/encoding.h"

#include <algorithm>
#include <array>
#include <iconv.h>

namespace imports
{
namespace
{

struct Mark {
    std::string_view bytes;
    const char* encoding;
};

using namespace std::string_view_literals;
constexpr std::array kMarks{Mark{"\xEF\xBB\xBF"sv, "UTF-8"}, Mark{"\xFF\xFE"sv, "UTF-16LE"},
                            Mark{"\xFE\xFF"sv, "UTF-16BE"}};

/// nullopt if the bytes are not valid in the encoding.
std::optional<std::string> converted(std::string_view bytes, const char* encoding)
{
    constexpr std::size_t kMostGrowth = 2; // from Latin-1 or UTF-16 to UTF-8
    iconv_t converter = iconv_open("UTF-8", encoding);
    if (converter == reinterpret_cast<iconv_t>(-1)) // NOLINT(performance-no-int-to-ptr): as POSIX defines it
        return std::nullopt;
    std::string text(kMostGrowth * bytes.size(), '\0');
    std::string source(bytes);
    char *from = source.data(), *to = text.data();
    std::size_t left = source.size(), room = text.size();
    const std::size_t result = iconv(converter, &from, &left, &to, &room);
    iconv_close(converter);
    if (result == static_cast<std::size_t>(-1))
        return std::nullopt;
    text.resize(text.size() - room);
    return text;
}

/// UTF-16 without a mark: every second byte of its ASCII characters is zero.
const char* wideEncoding(std::string_view bytes)
{
    std::array<std::size_t, 2> zeros{};
    for (std::size_t i = 0; i < bytes.size(); ++i)
        zeros[i % 2] += bytes[i] == '\0' ? 1 : 0;
    if (std::max(zeros[0], zeros[1]) <= bytes.size() / 4)
        return nullptr;
    return zeros[1] > zeros[0] ? "UTF-16LE" : "UTF-16BE";
}

std::optional<std::string> inUtf8(std::string_view bytes)
{
    for (const Mark& mark : kMarks)
        if (bytes.starts_with(mark.bytes))
            return converted(bytes.substr(mark.bytes.size()), mark.encoding);
    if (const char* wide = wideEncoding(bytes))
        return converted(bytes, wide);
    const auto text = converted(bytes, "UTF-8");
    return text ? text : converted(bytes, "ISO-8859-1");
}

bool isControl(char c) { return c >= '\0' && c < ' ' && "\t\n\v\f\r"sv.find(c) == std::string_view::npos; }

} // namespace

std::optional<std::string> decodedText(std::string_view bytes)
{
    std::optional<std::string> text = inUtf8(bytes);
    if (!text || std::ranges::any_of(*text, isControl))
        return std::nullopt;
    return text;
}

std::string withPlainLineEnds(std::string_view text)
{
    std::string lines;
    lines.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != '\r')
            lines += text[i];
        else if (!text.substr(i + 1).starts_with('\n'))
            lines += '\n';
    return lines;
}

std::string complaintAboutSize(std::string_view text)
{
    if (text.size() > kMostBytes)
        return "The text has more than " + std::to_string(kMostBytes / 1024) + " KiB. A table of samples is smaller.";
    if (static_cast<std::size_t>(std::ranges::count(text, '\n')) > kMostLines)
        return "The text has more than " + std::to_string(kMostLines) + " lines. A table of samples has fewer.";
    return {};
}

} // namespace imports
