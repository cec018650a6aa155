#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The errors of a fluorimeter, and their effect on the constants of a fit of ratios.
namespace noise
{

enum class Assumption {
    EqualOnRatios, // all ratios err alike; the reference is exact and not counted
    Proportional,  // all intensities have the same relative error, the reference, too
    AsTyped,       // the intensities have the typed relative errors, the reference, too
};

struct Errors {
    Assumption assumption = Assumption::Proportional;
    std::vector<double> typed{}; // as typed: relative errors of the samples, the reference first, or one for all
    bool known = false;          // as typed: these are the errors; otherwise they are only in proportion to each other
    bool operator==(const Errors&) const = default;

    /// True if the typed errors are used as they stand.
    bool areKnown() const { return assumption == Assumption::AsTyped && known; }
    /// Relative error of the intensity of a sample (1, 2, ...); 1 for all unless typed.
    double ofSample(int sample) const;
    double smallest() const; // of all samples
};

/// Relative errors typed in percent, apart by blanks or semicolons: "1 0.5" -> {0.01, 0.005}. A text that is no
/// number becomes 0, which is refused.
std::vector<double> errorsFromPercent(std::string_view text);
std::string percentText(const std::vector<double>& errors);

/// What is wrong with typed errors for so many samples: their count, or an error out of the range of instruments.
std::optional<std::string> complaint(const Errors& errors, int samples);

/// One sentence that says what is assumed.
std::string sentence(const Errors& errors);

} // namespace noise
