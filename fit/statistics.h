#pragma once

#include <span>

namespace fit
{

/// How well fitted values follow observed ones.
struct Statistics {
    double R2 = 0;           // 1 - Se / SStot
    double sumOfSquares = 0; // Se: sum of squared deviations
};

/// 1 - sumOfSquares / totalSum, the coefficient of determination.
double determination(double sumOfSquares, double totalSum);

/// Statistics of a Stern-Volmer fit. observed and fitted are slot arrays: point i has index i, 1 <= i <= count. The
/// total sum of squares deliberately runs over slots 0..49 for every count; slots beyond the spans count as 0.
Statistics slotStatistics(std::span<const double> observed, std::span<const double> fitted, int count);

} // namespace fit
