#include "linear/TriangularFactor.h"

#include <algorithm>

#include "linear/Householder.h"

namespace quorvex {

// Reflection j works on row j of R, which stands in row 0 for its while, and on the new rows.
void TriangularFactor::Append(ColumnMatrix& rows, std::size_t n) {
  p_.resize(n + 1);
  z_.resize(n + 1);
  for (std::size_t j = 0; j < r_.Columns(); ++j) {
    for (std::size_t k = j; k < r_.Columns(); ++k) rows(0, k) = r_(j, k);
    std::copy_n(rows.Column(j), n + 1, p_.data());
    const Reflection reflection = Reflect(p_.data(), n + 1, z_.data());
    r_(j, j) = reflection.image;
    for (std::size_t k = j + 1; k < r_.Columns(); ++k) {
      reflection.Apply(rows.Column(k));
      r_(j, k) = rows(0, k);
    }
  }
}

// With A^T A = R^T R its inverse is R^-1 R^-T, so that each element of the diagonal is the square of a row of R^-1.
std::vector<double> TriangularFactor::InverseDiagonal(std::size_t columns) const {
  const ColumnMatrix inverse = InverseTriangle(r_, columns);
  std::vector<double> diagonal(columns);
  for (std::size_t k = 0; k < columns; ++k)
    for (std::size_t i = 0; i <= k; ++i) diagonal[i] += inverse(i, k) * inverse(i, k);
  return diagonal;
}

ColumnMatrix InverseTriangle(const ColumnMatrix& r, std::size_t columns) {
  ColumnMatrix inverse(columns, columns);
  for (std::size_t k = 0; k < columns; ++k) {  // column k from the bottom up
    double* const column = inverse.Column(k);
    column[k] = 1;
    for (std::size_t i = k + 1; i-- > 0;) {
      // A singular R divides by 0 here. The infinities go on into the result, where the caller looks for them.
      column[i] /= r(i, i);
      AddMultiple(-column[i], r.Column(i), i, column);
    }
  }
  return inverse;
}

}  // namespace quorvex
