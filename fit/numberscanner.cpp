#include "fit/numberscanner.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <system_error>

namespace fit
{
namespace
{

bool isBlank(char c) { return kBlanks.find(c) != std::string_view::npos; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Collects the digits of a number in a fixed amount of memory, however many there are.
class DigitCollector
{
public:
    void addInteger(char digit)
    {
        if (!isLeadingZero(digit) && !keep(digit))
            ++m_exponent;
    }

    void addDecimal(char digit)
    {
        if (isLeadingZero(digit) || keep(digit))
            --m_exponent;
    }

    /// The double nearest to the digits times 10^exponent.
    double value(long long exponent) const
    {
        if (m_count == 0)
            return 0;
        const long long scale = std::clamp(m_exponent + exponent, -kFarExponent, kFarExponent);
        std::array<char, kMostDigits + kExponentRoom> text{};
        char* const letter = std::copy_n(m_digits.data(), m_count, text.data());
        *letter = 'e';
        const char* const end = std::to_chars(letter + 1, text.data() + text.size(), scale).ptr;
        double result = 0;
        if (std::from_chars(text.data(), end, result).ec != std::errc::result_out_of_range)
            return result;
        return scale + static_cast<long long>(m_count) > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    }

private:
    static constexpr std::size_t kMostDigits = 800;      // the midpoint of two doubles has at most 767
    static constexpr long long kFarExponent = 1'000'000; // beyond any double, with any of the kept digits
    static constexpr std::size_t kExponentRoom = 16;

    bool isLeadingZero(char digit) const { return m_count == 0 && digit == '0'; }

    bool keep(char digit)
    {
        if (m_count < kMostDigits) {
            m_digits[m_count++] = digit;
            return true;
        }
        if (digit != '0' && m_digits.back() == '0')
            m_digits.back() = '1'; // the number is larger than the kept digits, which may be exactly a midpoint
        return false;
    }

    std::array<char, kMostDigits> m_digits{};
    std::size_t m_count = 0;
    long long m_exponent = 0;
};

} // namespace

std::optional<double> NumberScanner::scan()
{
    const bool negative = takeSign();
    DigitCollector digits;
    const bool hasIntegers = takeDigits([&](char digit) { digits.addInteger(digit); });
    const bool hasDecimals = take('.') && takeDigits([&](char digit) { digits.addDecimal(digit); });
    if (!hasIntegers && !hasDecimals)
        return std::nullopt;
    const double magnitude = digits.value(takeExponent());
    return negative ? -magnitude : magnitude;
}

char NumberScanner::peek()
{
    while (m_blanks == Blanks::Ignored && m_next < m_text.size() && isBlank(m_text[m_next]))
        ++m_next;
    return m_next < m_text.size() ? m_text[m_next] : '\0';
}

bool NumberScanner::take(char wanted)
{
    const bool found = peek() == wanted;
    if (found)
        ++m_next;
    return found;
}

bool NumberScanner::takeSign()
{
    const bool negative = take('-');
    if (!negative)
        take('+');
    return negative;
}

template <typename Sink>
bool NumberScanner::takeDigits(Sink sink)
{
    bool any = false;
    for (char c = peek(); isDigit(c); c = peek()) {
        sink(c);
        ++m_next;
        any = true;
    }
    return any;
}

long long NumberScanner::takeExponent()
{
    constexpr long long kSaturation = 1'000'000'000'000; // more than the zeros of any text can compensate
    const std::size_t start = m_next;
    if (take('e') || take('E')) {
        const bool negative = takeSign();
        long long exponent = 0;
        if (takeDigits([&](char c) { exponent = std::min(exponent * 10 + (c - '0'), kSaturation); }))
            return negative ? -exponent : exponent;
    }
    m_next = start;
    return 0;
}

} // namespace fit
