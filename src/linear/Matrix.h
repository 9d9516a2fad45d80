#pragma once

#include <cstddef>
#include <vector>

namespace quorvex {

// A dense square matrix, row by row, counted from 0.
class Matrix {
 public:
  Matrix() = default;
  explicit Matrix(std::size_t order) : order_(order), cells_(order * order) {}

  std::size_t Order() const { return order_; }
  double& operator()(std::size_t row, std::size_t col) { return cells_[row * order_ + col]; }
  double operator()(std::size_t row, std::size_t col) const { return cells_[row * order_ + col]; }

 private:
  std::size_t order_ = 0;
  std::vector<double> cells_;
};

}  // namespace quorvex
