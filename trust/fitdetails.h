#pragma once

#include "leastsquares/runstest.h"
#include "leastsquares/uncertainty.h"
#include "trust/errordetails.h"
#include "trust/judgement.h"
#include "trust/requestedfit.h"

#include <optional>
#include <vector>

namespace trust
{

/// Verdict, errors and figures of one fit of Stern-Volmer ratios. A fit of decay curves has only the verdict, the
/// constants and their correlations, because its data have no noise.
struct FitDetails {
    fit::Options options{};   // of the request
    fit::Parameters values{}; // where the fit ended, in their real units
    bool fitted = true;       // false: a calculation with given values
    int pointCount = 0;       // all points, including the reference
    leastsquares::Uncertainty uncertainty{};
    double sumOfSquares = 0;
    double rootMeanSquareError = 0; // sqrt(sum of squares / degrees of freedom); infinity without a degree of freedom
    double R2 = 0;                  // over all points; NaN if all are equal
    /// Of ratios, with the variance as one more constant; none with too few samples. An exact fit counts with the sum
    /// of squares that no instrument tells from 0, so that roundings do not decide between models.
    std::optional<double> AICc{};
    std::vector<double> residuals{}; // observed minus model, in the order of the points
    leastsquares::RunsTest runs{};   // of the residuals
    Judgement judgement{};
    std::optional<ErrorDetails> errors{}; // of ratios, under the chosen assumption
};

/// result: what came out of the request. judgement: of this result, as far as it is known.
FitDetails fitDetails(const analysis::Request& request, const analysis::Result& result, const Judgement& judgement);

} // namespace trust
