#include "imports/spellednumber.h"

#include "fit/numbertext.h"
#include "imports/asciitext.h"

#include <algorithm>
#include <cmath>

namespace imports
{
namespace
{

constexpr std::size_t kLongestNumber = 200; // bytes; nobody measures so many digits
constexpr std::size_t kGroup = 3;
constexpr long long kFarExponent = 1'000'000; // beyond any double

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Takes the parts of a number from the front of a text.
class Reader
{
public:
    explicit Reader(std::string_view text) : m_rest(text) {}

    std::string_view rest() const { return m_rest; }
    void skipBlanks() { m_rest = trimmed(m_rest); }

    bool take(char wanted)
    {
        const bool found = m_rest.starts_with(wanted);
        m_rest.remove_prefix(found ? 1 : 0);
        return found;
    }
    bool take(std::string_view wanted)
    {
        const bool found = m_rest.starts_with(wanted);
        m_rest.remove_prefix(found ? wanted.size() : 0);
        return found;
    }
    std::string_view digits()
    {
        const auto end = std::ranges::find_if_not(m_rest, isDigit);
        const std::string_view taken = m_rest.substr(0, static_cast<std::size_t>(end - m_rest.begin()));
        m_rest.remove_prefix(taken.size());
        return taken;
    }
    /// Digits in groups behind `separator`, after `first`; takes nothing where they do not stand in threes.
    std::string groups(char separator)
    {
        std::string all;
        Reader ahead = *this;
        while (ahead.take(separator)) {
            const std::string_view group = ahead.digits();
            if (group.size() != kGroup)
                return {};
            all += group;
        }
        m_rest = ahead.m_rest;
        return all;
    }

private:
    std::string_view m_rest;
};

/// "1 234 567": a group of one to three digits that is no zero, and groups of three. Other digits have no groups.
std::string integerDigits(Reader& reader, DecimalSign sign)
{
    std::string all(reader.digits());
    if (all.empty() || all.size() > kGroup || all.front() == '0')
        return all;
    for (const char separator : {' ', '\'', sign == DecimalSign::Point ? ',' : '.'})
        if (const std::string groups = reader.groups(separator); !groups.empty())
            return all + groups;
    return all;
}

/// "123 456 7": groups of three after the decimal sign, the last of which may be shorter.
std::string decimalDigits(Reader& reader)
{
    std::string all(reader.digits());
    while (all.size() >= kGroup && all.size() % kGroup == 0) {
        Reader ahead = reader;
        const std::string_view group = ahead.take(' ') ? ahead.digits() : std::string_view();
        if (group.empty() || group.size() > kGroup)
            break;
        all += group;
        reader = ahead;
    }
    return all;
}

std::optional<long long> wholeNumber(Reader& reader)
{
    const bool negative = reader.take('-');
    if (!negative)
        reader.take('+');
    const std::string_view digits = reader.digits();
    if (digits.empty())
        return std::nullopt;
    long long value = 0;
    for (const char digit : digits)
        value = std::min(value * 10 + (digit - '0'), kFarExponent);
    return negative ? -value : value;
}

/// "e-2", "x10^-2", or "x10-2", whose raised digits were lost on a clipboard; 0 if there is no exponent.
std::optional<long long> exponent(Reader& reader)
{
    reader.skipBlanks();
    if (reader.take('e') || reader.take('E'))
        return wholeNumber(reader);
    if (!reader.take('x'))
        return 0;
    reader.skipBlanks();
    if (!reader.take("10"))
        return std::nullopt;
    const bool raised = reader.take('^');
    if (!raised && !reader.rest().starts_with('-'))
        return std::nullopt;
    return wholeNumber(reader);
}

void dropZeros(SpelledNumber& number)
{
    number.digits.erase(0, std::min(number.digits.find_first_not_of('0'), number.digits.size()));
    const std::size_t kept = number.digits.find_last_not_of('0') + 1;
    number.exponent += static_cast<long long>(number.digits.size() - kept);
    number.digits.resize(kept);
    if (number.digits.empty())
        number = {.negative = false, .digits = {}, .exponent = 0, .unit = number.unit};
}

/// "10^-2" without a factor.
bool takePowerOfTen(Reader& reader, SpelledNumber& number)
{
    Reader ahead = reader;
    if (!ahead.take("10^"))
        return false;
    const auto power = wholeNumber(ahead);
    if (!power)
        return false;
    number.digits = "1";
    number.exponent = *power;
    reader = ahead;
    return true;
}

bool takeDigits(Reader& reader, SpelledNumber& number, DecimalSign sign)
{
    number.digits = integerDigits(reader, sign);
    std::string decimals;
    const bool comma = sign == DecimalSign::Comma;
    if (reader.take(comma ? ',' : '.')) {
        decimals = decimalDigits(reader);
        if (decimals.empty() && comma) // a comma at the end separates cells
            return false;
    }
    number.digits += decimals;
    const auto power = number.digits.empty() ? std::nullopt : exponent(reader);
    number.exponent = power.value_or(0) - static_cast<long long>(decimals.size());
    return power.has_value();
}

} // namespace

std::optional<SpelledNumber> spelledNumber(std::string_view text, DecimalSign sign)
{
    if (text.size() > kLongestNumber)
        return std::nullopt;
    const std::string ascii = asciiText(text);
    Reader reader(trimmed(ascii));
    SpelledNumber number;
    number.negative = reader.take('-');
    if (!number.negative)
        reader.take('+');
    if (!takePowerOfTen(reader, number) && !takeDigits(reader, number, sign))
        return std::nullopt;
    reader.skipBlanks();
    if (!reader.rest().empty()) {
        number.unit = unitOf(reader.rest());
        if (!number.unit)
            return std::nullopt;
    }
    dropZeros(number);
    return number;
}

std::optional<std::string> plainNumber(const SpelledNumber& number, int power)
{
    if (number.digits.empty())
        return "0";
    constexpr long long kMostIntegers = 15, kMostZeros = 5; // after the point, before the first digit
    const auto count = static_cast<long long>(number.digits.size());
    const long long point = count + number.exponent + power; // 0.digits x 10^point
    std::string text = number.digits;
    if (point > kMostIntegers || point < -kMostZeros) {
        if (count > 1)
            text.insert(1, ".");
        text += "e" + std::to_string(point - 1);
    } else if (point <= 0) {
        text = "0." + std::string(static_cast<std::size_t>(-point), '0') + text;
    } else if (point >= count) {
        text.append(static_cast<std::size_t>(point - count), '0');
    } else {
        text.insert(static_cast<std::size_t>(point), ".");
    }
    const double value = fit::numberFrom(text);
    if (!std::isfinite(value) || value == 0)
        return std::nullopt;
    return number.negative ? "-" + text : text;
}

} // namespace imports
