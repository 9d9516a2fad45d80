#include "engine/NormalEquations.h"

#include "core/Limits.h"
#include "equation/BlockOperations.h"
#include "equation/Expression.h"
#include "linear/BlockDot.h"

namespace quorvex {

NormalEquations::NormalEquations(const std::vector<int>& ia) {
  for (std::size_t l = 0; l < ia.size(); ++l)
    if (ia[l] != 0) free_.push_back(l);
  columns_.resize(free_.size() + 1);
  weighted_.resize(columns_.size());
  blocks_.resize(columns_.size());
}

const double* NormalEquations::Weighted(std::size_t column, const double* values, const double* sig, std::size_t n) {
  if (sig == nullptr) return values;
  std::vector<double>& block = blocks_[column];
  block.resize(kBlock);
  BinaryOverBlock(kMultiply, {values, 0}, {sig, 0}, n, block.data());
  return block.data();
}

double NormalEquations::SumSquares(const double* dy, const double* sig, std::size_t n) {
  return BlockDot(dy, Weighted(0, dy, sig, n), n);
}

void NormalEquations::SumBlock(const double* dy, const double* sig, const double* const* dyda, std::size_t n,
                               double* sums) {
  for (std::size_t j = 0; j < columns_.size(); ++j) {
    columns_[j] = j == 0 ? dy : dyda[free_[j - 1]];
    weighted_[j] = Weighted(j, columns_[j], sig, n);
  }
  TriangleOfDots(weighted_.data(), columns_.data(), columns_.size(), n, sums);
}

void NormalEquations::Take(std::span<const double> sums, Matrix& alpha, std::vector<double>& beta) const {
  const double* at = sums.data() + 1;
  for (std::size_t j = 0; j < free_.size(); ++j) {
    beta[j] = *at++;
    for (std::size_t k = 0; k <= j; ++k) alpha(j, k) = alpha(k, j) = *at++;
  }
}

}  // namespace quorvex
