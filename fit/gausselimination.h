#pragma once

#include <array>

namespace fit
{

using Vector7 = std::array<double, 7>;  // slots 1..6 are used, slot 0 is not
using Matrix7 = std::array<Vector7, 7>; // [row][column], same rule

/// Solves A x = B for the first n unknowns (1 <= n <= 6) in place, with partial pivoting.
/// info = 0: B holds x and A its upper triangle. Otherwise info is the 1-based step whose pivot was exactly 0,
/// and both arrays are left partly reduced.
void GaussianElimination(Matrix7& A, Vector7& B, int n, int& info);

} // namespace fit
