#pragma once

#include <cstddef>
#include <vector>

#include "linear/SvdDecompose.h"

namespace quorvex {

// R of the QR decomposition of a matrix A that comes some rows at a time and is never stored: R^T R = A^T A without
// that product, whose rounding costs twice the digits.
//
// Method: Householder reflections of the rows in hand below the R so far (G. H. Golub, Numer. Math. 7, 1965; C. L.
// Lawson & R. J. Hanson, Solving Least Squares Problems, 1974, on sequential accumulation). R is as exact as if A's
// columns had been rounded, whatever their units.
class TriangularFactor {
 public:
  explicit TriangularFactor(std::size_t columns) : r_(columns, columns) {}

  // Takes in rows 1 to n of `rows`, which has a row more and as many columns as A, and spoils them.
  void Append(ColumnMatrix& rows, std::size_t n);

  // What is below the diagonal is 0.
  const ColumnMatrix& R() const { return r_; }

  // The diagonal of the inverse of A^T A: what the variances of coefficients are in proportion to. Not finite where A
  // is singular. With a number of columns, the same for the first ones of A alone.
  std::vector<double> InverseDiagonal() const { return InverseDiagonal(r_.Columns()); }
  std::vector<double> InverseDiagonal(std::size_t columns) const;

 private:
  ColumnMatrix r_;  // upper triangle
  std::vector<double> p_, z_;
};

// The inverse of an upper triangle, or of its first columns and rows alone. Not finite where it is singular.
ColumnMatrix InverseTriangle(const ColumnMatrix& r, std::size_t columns);
inline ColumnMatrix InverseTriangle(const ColumnMatrix& r) { return InverseTriangle(r, r.Columns()); }

}  // namespace quorvex
