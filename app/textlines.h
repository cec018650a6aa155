#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Text in lines and tab-separated fields: session files and clipboard blocks.
namespace app
{

inline constexpr std::string_view kLineEnd = "\r\n";
inline constexpr std::string_view kSeparators = "\t\r\n"; // what a field cannot hold

/// The longest text of one field in bytes. A text box holds 32767 UTF-16 units of at most three UTF-8 bytes each,
/// so that no typed text is ever cut, while a damaged file cannot fill the windows with megabytes.
inline constexpr std::size_t kMaxFieldBytes = 3 * 32767;

/// Removes the first line from `rest` and returns it. CR LF, CR and LF each end a line; the last line may have no end.
/// nullopt: nothing is left.
std::optional<std::string_view> takeLine(std::string_view& rest);

/// The first `most` fields of a line, or fewer; an empty line has one empty field.
std::vector<std::string> fieldsOf(std::string_view line, int most);

/// The text, cut at the limit of a field; a UTF-8 character is never cut in two.
std::string heldField(std::string_view text);

/// The text with each of the `separators` replaced by a blank, so that it stays one field when it is read back.
/// Numbers are read alike from both.
std::string oneField(std::string_view text, std::string_view separators);

} // namespace app
