#include "engine/NormalEquations.h"

#include "core/Limits.h"
#include "equation/BlockOperations.h"
#include "equation/Expression.h"
#include "linear/BlockDot.h"

namespace quorvex {

NormalEquations::NormalEquations(const std::vector<int>& ia) : weighted_(kBlock) {
  for (std::size_t l = 0; l < ia.size(); ++l)
    if (ia[l] != 0) free_.push_back(l);
  columns_.resize(free_.size() + 1);
}

const double* NormalEquations::Weighted(const double* values, const double* sig, std::size_t n) {
  if (sig == nullptr) return values;
  BinaryOverBlock(kMultiply, {values, 0}, {sig, 0}, n, weighted_.data());
  return weighted_.data();
}

double NormalEquations::SumSquares(const double* dy, const double* sig, std::size_t n) {
  return BlockDot(Weighted(dy, sig, n), dy, n);
}

void NormalEquations::SumBlock(const double* dy, const double* sig, const double* const* dyda, std::size_t n,
                               double* sums) {
  sums[0] = SumSquares(dy, sig, n);
  for (std::size_t j = 0; j < free_.size(); ++j) columns_[j] = dyda[free_[j]];
  // The last row first: what it needs beyond the row before makes room for the residuals.
  for (std::size_t j = free_.size(); j-- > 0;) {
    columns_[j + 1] = dy;
    BlockDots(Weighted(columns_[j], sig, n), columns_.data(), j + 2, n, sums + 1 + j * (j + 3) / 2);
  }
}

void NormalEquations::Take(std::span<const double> sums, Matrix& alpha, std::vector<double>& beta) const {
  const double* at = sums.data() + 1;
  for (std::size_t j = 0; j < free_.size(); ++j) {
    for (std::size_t k = 0; k <= j; ++k) alpha(j, k) = alpha(k, j) = *at++;
    beta[j] = *at++;
  }
}

}  // namespace quorvex
