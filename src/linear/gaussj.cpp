#include "linear/gaussj.h"

#include <cmath>
#include <utility>
#include <vector>

#include "core/FaultFlags.h"
#include "core/NumericFault.h"

namespace quorvex {
namespace {

void SwapRows(Matrix& a, std::size_t n, std::size_t r, std::size_t s) {
  for (std::size_t col = 0; col < n; ++col) std::swap(a(r, col), a(s, col));
}

void SwapColumns(Matrix& a, std::size_t n, std::size_t c, std::size_t d) {
  for (std::size_t row = 0; row < n; ++row) std::swap(a(row, c), a(row, d));
}

// Divides the pivot's row by the pivot and takes multiples of it off all other rows. The column of the pivot is where
// the inverse grows.
[[gnu::noinline]] void Reduce(Matrix& a, std::size_t n, std::span<double> b, std::size_t pivot) {
  const double inverse = 1.0 / a(pivot, pivot);
  a(pivot, pivot) = 1.0;
  for (std::size_t col = 0; col < n; ++col) a(pivot, col) *= inverse;
  b[pivot] *= inverse;
  for (std::size_t row = 0; row < n; ++row) {
    if (row == pivot) continue;
    const double factor = a(row, pivot);
    a(row, pivot) = 0.0;
    for (std::size_t col = 0; col < n; ++col) a(row, col) -= a(pivot, col) * factor;
    b[row] -= b[pivot] * factor;
  }
}

}  // namespace

bool gaussj(Matrix& a, std::size_t n, std::span<double> b) {
  std::vector<int> ipiv(n, 0);                  // how often a row has been the pivot
  std::vector<std::size_t> indxr(n), indxc(n);  // where each pivot came from, for undoing the swaps
  for (std::size_t step = 0; step < n; ++step) {
    double biggest = 0;
    std::size_t pivotRow = 0, pivotCol = 0;
    for (std::size_t row = 0; row < n; ++row) {
      if (ipiv[row] == 1) continue;
      for (std::size_t col = 0; col < n; ++col) {
        // Only where NaNs have let no candidate win is a column taken twice.
        if (ipiv[col] > 1) return false;
        // >= and not >: on a tie the last candidate wins. The pivot order decides the last digits of the inverse.
        if (ipiv[col] == 0 && std::abs(a(row, col)) >= biggest) {
          biggest = std::abs(a(row, col));
          pivotRow = row;
          pivotCol = col;
        }
      }
    }
    ++ipiv[pivotCol];
    if (pivotRow != pivotCol) {
      SwapRows(a, n, pivotRow, pivotCol);
      std::swap(b[pivotRow], b[pivotCol]);
    }
    indxr[step] = pivotRow;
    indxc[step] = pivotCol;
    if (a(pivotCol, pivotCol) == 0.0) return false;
    ClearFaultFlags();
    Reduce(a, n, b, pivotCol);
    if (FaultFlagsRaised()) throw NumericFault();
  }
  // A swap of rows of the matrix is one of columns of its inverse; the last one is undone first.
  for (std::size_t step = n; step-- > 0;)
    if (indxr[step] != indxc[step]) SwapColumns(a, n, indxr[step], indxc[step]);
  return true;
}

void covsrt(Matrix& covar, std::span<const int> ia, std::size_t mfit) {
  const std::size_t npc = ia.size();
  for (std::size_t row = mfit; row < npc; ++row)
    for (std::size_t col = 0; col <= row; ++col) covar(row, col) = covar(col, row) = 0.0;
  // From the last coefficient down, each free one takes the last packed place that is left.
  std::size_t packed = mfit;
  for (std::size_t j = npc; j-- > 0;) {
    if (ia[j] == 0) continue;
    --packed;
    if (packed == j) continue;
    SwapColumns(covar, npc, packed, j);
    SwapRows(covar, npc, packed, j);
  }
}

}  // namespace quorvex
