#pragma once

#include "fit/gaussnewton.h"

#include <array>
#include <memory>
#include <vector>

/// Minima and uncertainties of any problem. Parameters are in their real units here, never logarithms; slots as in
/// fit::Parameters.
namespace leastsquares
{

/// Slots of the parameters that a fit may change, ascending.
using FreeSlots = std::vector<std::size_t>;
FreeSlots freeSlots(int parameterCount, const fit::Flags& fix);

/// Sum of squared residuals; infinity if a residual is NaN.
double sumOfSquares(fit::Problem& problem, const fit::Parameters& values);

/// The range in which the size of a parameter may vary.
struct Range {
    double low = 0;
    double high = 0;
};
using Ranges = std::array<Range, fit::kMaxParameters + 1>;
inline constexpr Range kAnySize{1e-100, 1e100};
inline constexpr Ranges kAnySizes{kAnySize, kAnySize, kAnySize, kAnySize};

struct Minimum {
    fit::Parameters values{};
    double sumOfSquares = 0;
};

/// The least-squares minimum downhill of `start` by the Levenberg-Marquardt method. It works in the natural logarithms
/// of the free parameters' sizes, so that constants of any magnitude take similar steps and keep their signs. A free
/// parameter that starts at 0 stays 0.
/// Method: J. J. More, Lecture Notes in Mathematics 630 (1978) 105, as in MINPACK; Eigen's translation.
Minimum descend(fit::Problem& problem, const fit::Parameters& start, const FreeSlots& free,
                const Ranges& ranges = kAnySizes);

/// The same in single steps, for a caller that does other things between them. The problem must outlive it.
class Descent
{
public:
    Descent(fit::Problem& problem, const fit::Parameters& start, const FreeSlots& free,
            const Ranges& ranges = kAnySizes);
    Descent(Descent&&) noexcept;
    Descent& operator=(Descent&&) noexcept;
    ~Descent();

    /// False: no further step lowers the sum of squares.
    bool step();
    Minimum reached() const; // so far

private:
    struct Method;
    std::unique_ptr<Method> m_method;
};

/// Central differences of the residuals for relative changes of the free parameters: element [column][point - 1] is the
/// derivative with respect to the logarithm of the size of parameter free[column].
std::vector<std::vector<double>> relativeDerivatives(fit::Problem& problem, const fit::Parameters& values,
                                                     const FreeSlots& free);

/// The sum of squares below which a fit counts as exact: no instrument detects a deviation of a millionth.
double sumOfExactFit(int pointCount);

/// Two sums of squares are equally good if they agree within this fraction, or if both are sums of an exact fit.
inline constexpr double kEquallyGood = 1e-3;
bool equallyGood(double sum, double best, int pointCount);

} // namespace leastsquares
