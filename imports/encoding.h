#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace imports
{

/// A table of samples is smaller, and what a user imports by mistake must not keep the program busy.
inline constexpr std::size_t kMostBytes = 256 * 1024; // UTF-16 has twice as many as ASCII
inline constexpr std::size_t kMostLines = 2000;

/// The text of a file in UTF-8, with or without a byte-order mark: UTF-16 if a mark or the zeros of its ASCII
/// characters say so, UTF-8 if it is valid, else Latin-1. nullopt: not a text, for instance a workbook.
std::optional<std::string> decodedText(std::string_view bytes);

/// The text with LF at the end of each line instead of CR LF or CR.
std::string withPlainLineEnds(std::string_view text);

/// Why a text is too large for a table of samples; empty if it is not.
std::string complaintAboutSize(std::string_view text);

} // namespace imports
