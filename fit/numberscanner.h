#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace fit
{

inline constexpr std::string_view kBlanks = " \t\r\n"; // no other character, not even a no-break space

/// Reads one number from the start of a text: sign, digits with at most one point, exponent. Sign, point and exponent
/// are optional. Accepts any text of any length.
class NumberScanner
{
public:
    enum class Blanks {
        Ignored, // wherever they stand, also between digits
        EndTheNumber,
    };

    NumberScanner(std::string_view text, Blanks blanks) : m_text(text), m_blanks(blanks) {}

    /// The nearest double, infinite if the number is too large; nullopt if the text does not start with a number.
    std::optional<double> scan();

    /// After scan(): the index of the first character that is not a part of the number.
    std::size_t next() const { return m_next; }

private:
    char peek();
    bool take(char wanted);
    bool takeSign(); // true if it is a minus
    template <typename Sink>
    bool takeDigits(Sink sink); // true if there is a digit
    long long takeExponent();   // 0 if it has no digits; then takes nothing

    std::string_view m_text;
    Blanks m_blanks;
    std::size_t m_next = 0;
};

} // namespace fit
