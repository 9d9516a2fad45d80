#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace quorvex {

// A matrix stored column by column, since the loops of a least-squares solve run down its columns.
class ColumnMatrix {
 public:
  ColumnMatrix() = default;
  ColumnMatrix(std::size_t rows, std::size_t columns) : rows_(rows), columns_(columns), values_(rows * columns) {}

  std::size_t Rows() const { return rows_; }
  std::size_t Columns() const { return columns_; }
  double* Column(std::size_t j) { return values_.data() + j * rows_; }
  const double* Column(std::size_t j) const { return values_.data() + j * rows_; }
  double& operator()(std::size_t i, std::size_t j) { return values_[j * rows_ + i]; }
  double operator()(std::size_t i, std::size_t j) const { return values_[j * rows_ + i]; }

 private:
  std::size_t rows_ = 0, columns_ = 0;
  std::vector<double> values_;
};

// Singular value decomposition, u = U W V^T: u (m by n, m and n at least 1) is overwritten by U, whose columns are
// orthonormal where their singular value is not 0; w receives the n singular values, not negative and in no order; v
// the n right singular vectors, as columns.
//
// The columns are not scaled, and no singular value is edited: one that is 0 is so exactly. That is certain for a
// column of zeros, for two columns that are the same, and for fewer rows than columns; any other dependence leaves a
// value the size of rounding.
//
// Throws NumericFault where a singular value takes 30 sweeps without settling (entries that are not finite).
//
// Method: QR by Householder reflections, then Golub and Reinsch on the n by n factor: bidiagonal form, implicitly
// shifted QR sweeps (Golub & Reinsch, Numer. Math. 14, 1970; the reduction first, T. F. Chan, ACM TOMS 8, 1982). A
// superdiagonal element is dropped where it adds nothing to its two neighbours, so that small singular values of badly
// scaled columns keep their digits.
void SvdDecompose(ColumnMatrix& u, std::vector<double>& w, ColumnMatrix& v);

// The a of least squares |u a - b| from its decomposition: v times the terms (column j of u times b) / w[j], where the
// term of a singular value that is exactly 0 is 0. b has one value per row of u.
std::vector<double> SvdBackSubstitute(const ColumnMatrix& u, const std::vector<double>& w, const ColumnMatrix& v,
                                      std::span<const double> b);

}  // namespace quorvex
