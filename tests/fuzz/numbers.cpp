#include "fit/numbertext.h"
#include "tests/fuzz/fuzz.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

using fuzz::check;

namespace
{

struct Pattern {
    std::string_view text;
    double decimals;
    bool scientific;
};

// all patterns that the program uses
constexpr std::array<Pattern, 19> kPatterns{{
    {"#", 0, false},         {"##0", 0, false},      {"##0.0#", 2, false},    {"##.##", 2, false},
    {"#.###", 3, false},     {"#.#####", 5, false},  {"0.#####", 5, false},   {"0.00000#", 6, false},
    {"#0.###", 3, false},    {"####0.##", 2, false}, {"####0.###", 3, false}, {"####0.0##", 3, false},
    {"####0.00#", 3, false}, {"#.###e+##", 3, true}, {"#.###e+#", 3, true},   {"#.#e+#", 1, true},
    {"0.###e+#", 3, true},   {"0.000e+00", 3, true}, {"0.00e+00", 2, true},
}};

constexpr double kFifteenDigits = 1e-14; // numbers are rounded to 15 digits first

bool near(double read, double value, double distance)
{
    return std::abs(read - value) <= distance + kFifteenDigits * std::abs(value);
}

/// Each text must read back as the value, as closely as its digits allow, and then give the same text again.
void checkFormatter(double value)
{
    for (const Pattern& pattern : kPatterns) {
        const std::string text = fit::formatNumber(value, pattern.text);
        const double unit = std::pow(10.0, -pattern.decimals);
        const double distance = 0.5000001 * unit * (pattern.scientific ? std::abs(value) : 1.0);
        const double read = fit::numberFrom(text);
        if (!std::isfinite(read)) // rounded up beyond the largest double
            continue;
        check(near(read, value, distance + std::numeric_limits<double>::denorm_min()));
        if (read == 0 || std::isnormal(read)) // denormal numbers cannot hold the digits of every pattern
            check(fit::formatNumber(read, pattern.text) == text);
    }
    for (const std::string& text : {fit::signedText(value), fit::plainText(value)}) {
        const auto read = fit::strictNumber(text);
        check(read && (std::isinf(*read) || near(*read, value, std::numeric_limits<double>::denorm_min())));
    }
}

/// The strict reader must accept the same plain decimal texts as the C library and return the same double.
void checkReaders(std::string_view text)
{
    const double leading = fit::numberFrom(text);
    check(!std::isnan(leading));
    const auto strict = fit::strictNumber(text);
    if (!strict)
        return;
    const std::string copy(text);
    check(*strict == std::strtod(copy.c_str(), nullptr) && leading == *strict);
}

void checkRounding(double value)
{
    const auto whole = fit::roundedInt32(value);
    const std::int32_t held = fit::heldInt32(value);
    check(!whole || (*whole == held && std::abs(value - held) <= 0.5));
    check(whole || std::isnan(value) || std::abs(value) > 2147483647.0);
    const auto small = fit::roundedInt16(value);
    check(!small || *small == held);
}

} // namespace

/// Any text goes through the readers; any double goes through the formatter and back.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Input input(data, size);
    const std::string_view text = input.rest();
    checkReaders(text);
    for (const double value : {input.take<double>(), fit::numberFrom(text)}) {
        checkRounding(value);
        if (std::isfinite(value))
            checkFormatter(value);
    }
    return 0;
}
