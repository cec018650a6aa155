#pragma once

#include "decay/sampletable.h"

#include <span>

/// The inner loops over the points of a curve. They are also compiled for wide vector registers. Each operation is
/// rounded separately and in the same order in both versions, so the values are the same to the last bit.
namespace decay
{

/// result = weight * term
void setWeighted(std::span<double> result, double weight, const double* term);

/// sum += weight * term
void addWeighted(std::span<double> sum, double weight, const double* term);

/// product *= factor
void multiply(std::span<double> product, const double* factor);

/// difference = left - right
void subtract(std::span<double> difference, const double* left, const double* right);

/// first * (weights[0] + factor * (weights[1] + factor * (...))) at every point.
struct Series {
    const Grid& first;
    const Grid& factor;
    std::span<const double> weights;
};

/// sum += series at count points. Afterwards, slots up to the next multiple of 8 are undefined.
void addSeries(Grid& sum, std::size_t count, const Series& series);

} // namespace decay
