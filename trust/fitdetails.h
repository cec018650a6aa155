#pragma once

#include "leastsquares/runstest.h"
#include "leastsquares/uncertainty.h"
#include "trust/verdict.h"

#include <optional>
#include <span>
#include <vector>

namespace trust
{

/// An honest look at one fit of Stern-Volmer ratios or, as far as it goes, of decay curves.
struct FitDetails {
    FinishedFit fit;
    int pointCount = 0; // all points, the reference included
    leastsquares::Uncertainty uncertainty;
    double sumOfSquares = 0;
    double rootMeanSquareError = 0; // per degree of freedom; infinity without any
    double R2 = 0;                  // over all points; not a number when these are all alike
    std::optional<double> AICc;     // none with too few points
    std::vector<double> residuals;  // observed minus model, in the order of the points
    leastsquares::RunsTest runs;    // of them
    Verdict verdict = Verdict::NotDefined;
};

/// observed: of points 1..N, without slots.
FitDetails fitDetails(const Task& task, const FinishedFit& finished, std::span<const double> observed);

/// Akaike's criterion for small samples from n points that could deviate and p fitted constants, the variance being one
/// more; none when n is too small. Source: C. M. Hurvich, C.-L. Tsai, Biometrika 76 (1989) 297.
std::optional<double> correctedAkaike(double sumOfSquares, int n, int p);

} // namespace trust
