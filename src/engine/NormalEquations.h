#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "linear/Matrix.h"

namespace quorvex {

// The sums of the normal equations over blocks of points, each by BlockDot: what a block adds to the merit function, to
// the gradient and to the curvature of the free coefficients. They are the lower triangle of all products of the
// residuals and the derivatives with each other, in one array, so that blocks can be computed in any order and added up
// in that of the data.
class NormalEquations {
 public:
  // `ia` is non-zero for the free coefficients.
  explicit NormalEquations(const std::vector<int>& ia);

  // How many numbers the sums of a block are. The first is that of the merit function.
  std::size_t Size() const { return (free_.size() + 1) * (free_.size() + 2) / 2; }

  // The sums over one block from its residuals `dy`, its weights `sig`, null where all are 1, and its derivatives by
  // all coefficients.
  void SumBlock(const double* dy, const double* sig, const double* const* dyda, std::size_t n, double* sums);
  // The first of them alone, to the bit.
  double SumSquares(const double* dy, const double* sig, std::size_t n);

  // Curvature and gradient of the free coefficients from the sums of all blocks.
  void Take(std::span<const double> sums, Matrix& alpha, std::vector<double>& beta) const;

 private:
  const double* Weighted(std::size_t column, const double* values, const double* sig, std::size_t n);

  std::vector<std::size_t> free_;  // numbers of the coefficients, from 0
  // The residuals, and behind them the derivatives by these: as they are, and times the weights.
  std::vector<const double*> columns_, weighted_;
  std::vector<std::vector<double>> blocks_;
};

}  // namespace quorvex
