#pragma once

#include <string>
#include <string_view>

namespace imports
{

/// A text with ASCII spellings for the characters that tables use for numbers, units and symbols: "5×10⁻²" ->
/// "5x10^-2", "µM" -> "uM", "τ₁" -> "tau1", thin and no-break blanks -> " ". Other characters stay as they are.
std::string asciiText(std::string_view utf8);

/// The text without the blanks around it.
std::string_view trimmed(std::string_view text);

} // namespace imports
