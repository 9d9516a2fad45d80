#pragma once

#include <cstddef>
#include <span>

#include "linear/Matrix.h"

namespace quorvex {

// Gauss-Jordan elimination with full pivoting: turns the leading n by n block of `a` into its inverse and `b` (n
// values) into the solution of a * x = b.
//
// False for a singular matrix: a pivot that is exactly 0, or a row chosen twice. No tolerance is used, so a matrix that
// is nearly singular passes. Throws NumericFault where the arithmetic overflows.
// Method: see any text on linear algebra, e.g. Golub & Van Loan, Matrix Computations, on complete pivoting.
bool gaussj(Matrix& a, std::size_t n, std::span<double> b);

// Spreads the packed covariance of the `mfit` free coefficients over all coefficients: held ones (`ia` is 0) get zero
// rows and columns.
void covsrt(Matrix& covar, std::span<const int> ia, std::size_t mfit);

}  // namespace quorvex
