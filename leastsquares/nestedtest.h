#pragma once

namespace leastsquares
{

/// Probability that one further constant lowers the sum of squares by chance as much as it did, if its true value is 0
/// and it cannot be negative: half the tail of F = (sumWithout - sum) / (sum / degreesOfFreedom) with 1 and
/// degreesOfFreedom, which must be positive as sum must; 1 if the sum is not lower. The half stands for data that would
/// put the constant at 0. Method: S. G. Self, K.-Y. Liang, J. Am. Stat. Assoc. 82 (1987) 605, case 5.
double nestedProbability(double sumWithout, double sum, int degreesOfFreedom);

/// The same for residuals in units of their known errors: half the tail of chi-square = sumWithout - sum with one
/// degree of freedom.
double nestedProbabilityOfKnown(double sumWithout, double sum);

} // namespace leastsquares
