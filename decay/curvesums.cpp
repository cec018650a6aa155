#include "decay/curvesums.h"

#include "fit/vectorregisters.h"

#include <cstring>

namespace decay
{
namespace
{

/// Two neighbouring points, which fit into the vector registers of every processor.
typedef double Pair __attribute__((vector_size(2 * sizeof(double))));

Pair pairAt(const double* points)
{
    Pair pair;
    std::memcpy(&pair, points, sizeof pair);
    return pair;
}

void store(Pair pair, double* points) { std::memcpy(points, &pair, sizeof pair); }

} // namespace

VORLO_ALSO_WIDE void setWeighted(std::span<double> result, double weight, const double* term)
{
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = weight * term[i];
}

VORLO_ALSO_WIDE void addWeighted(std::span<double> sum, double weight, const double* term)
{
    for (std::size_t i = 0; i < sum.size(); ++i)
        sum[i] += weight * term[i];
}

VORLO_ALSO_WIDE void multiply(std::span<double> product, const double* factor)
{
    for (std::size_t i = 0; i < product.size(); ++i)
        product[i] *= factor[i];
}

VORLO_ALSO_WIDE void subtract(std::span<double> difference, const double* left, const double* right)
{
    for (std::size_t i = 0; i < difference.size(); ++i)
        difference[i] = left[i] - right[i];
}

/// Each step of a series waits for the previous step; four pairs of points fill this time.
void addSeries(Grid& sum, std::size_t count, const Series& series)
{
    const auto& [first, factor, weights] = series;
    constexpr std::size_t kPairs = 4, kPoints = 2 * kPairs;
    static_assert(kGridSize % kPoints == 0);
    for (std::size_t i = 0; i < count; i += kPoints) {
        Pair values[kPairs] = {};
        for (std::size_t j = weights.size(); j-- > 0;)
            for (std::size_t p = 0; p < kPairs; ++p)
                values[p] = values[p] * pairAt(&factor[i + 2 * p]) + weights[j];
        for (std::size_t p = 0, k = i; p < kPairs; ++p, k += 2)
            store(pairAt(&sum[k]) + pairAt(&first[k]) * values[p], &sum[k]);
    }
}

} // namespace decay
