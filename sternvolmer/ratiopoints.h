#pragma once

#include <array>

namespace sternvolmer
{

inline constexpr int kMostPoints = 100;

/// Slot arrays: point i stands at index i, 1..100; slot 0 is not a point.
using RatioSlots = std::array<double, kMostPoints + 1>;

/// Ratios F0/F against the quencher concentration. Slots beyond the count may hold what earlier data left there:
/// the total sum of squares runs over them.
struct RatioPoints {
    int count = 0;
    RatioSlots Q{};     // total quencher, M
    RatioSlots ratio{}; // F0/F
    double tau0 = 0;    // lifetime without quencher, s
};

} // namespace sternvolmer
