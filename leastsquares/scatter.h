#pragma once

namespace leastsquares
{

/// How far observations scatter about a fit, and how far a 95 percent interval reaches.
struct Scatter {
    int degreesOfFreedom = 0;
    double variance = 0; // of a residual
    double quantile = 0; // standard errors in half a 95 percent interval; 0: there are no errors
};

/// The variance s2 = sum of squares / degrees of freedom, with Student's t. No errors without a degree of freedom.
Scatter estimatedScatter(double sumOfSquares, int degreesOfFreedom);

/// For residuals in units of their known errors: the variance 1, with the quantile of the normal distribution.
Scatter knownScatter(int degreesOfFreedom);

/// For residuals in units of errors that were estimated with so many degrees of freedom, which need not be whole: the
/// variance 1, with Student's t.
Scatter weightedScatter(double degreesOfFreedom);

/// The probability of a sum of squares of so much or more, for residuals in units of their known errors. There must be
/// a degree of freedom.
double chiSquareProbability(double sumOfSquares, int degreesOfFreedom);

} // namespace leastsquares
