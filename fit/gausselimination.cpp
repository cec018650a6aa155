#include "fit/gausselimination.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

namespace fit
{
namespace
{

/// The row with the largest entry of column k from row k down; the earlier row on a tie.
int pivotRow(const Matrix7& A, int k, int n)
{
    int row = k;
    for (int m = k + 1; m <= n; ++m)
        if (std::abs(A[m][k]) > std::abs(A[row][k]))
            row = m;
    return row;
}

void eliminateBelow(Matrix7& A, Vector7& B, int k, int n)
{
    const double pivot = A[k][k];
    for (int i = k + 1; i <= n; ++i) {
        const double factor = A[i][k] / pivot;
        B[i] -= factor * B[k];
        for (int m = k; m <= n; ++m)
            A[i][m] -= factor * A[k][m];
    }
}

void substituteBack(const Matrix7& A, Vector7& B, int n)
{
    B[n] /= A[n][n];
    for (int i = n - 1; i >= 1; --i) {
        double sum = 0;
        for (int m = i + 1; m <= n; ++m)
            sum += A[i][m] * B[m];
        B[i] = (B[i] - sum) / A[i][i];
    }
}

} // namespace

void GaussianElimination(Matrix7& A, Vector7& B, int n, int& info)
{
    assert(n >= 1 && n < static_cast<int>(B.size()));
    for (int k = 1; k < n; ++k) {
        const int p = pivotRow(A, k, n);
        if (A[p][k] == 0) {
            info = k;
            return;
        }
        if (p != k)
            std::swap_ranges(&A[k][k], &A[k][n] + 1, &A[p][k]);
        std::swap(B[k], B[p]);
        eliminateBelow(A, B, k, n);
    }
    if (A[n][n] == 0) {
        info = n;
        return;
    }
    substituteBack(A, B, n);
    info = 0;
}

} // namespace fit
