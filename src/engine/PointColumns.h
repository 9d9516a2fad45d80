#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "core/Limits.h"

namespace quorvex {

// Where X of each variable begins: points as closed forms and block programs take them.
using PointColumns = std::array<const double*, kMostIndependentVariables>;

// One point as columns of length one.
inline PointColumns ColumnsOf(std::span<const double> x) {
  PointColumns columns{};
  for (std::size_t v = 0; v < x.size(); ++v) columns[v] = &x[v];
  return columns;
}

// The points from number `first` on, from 0.
inline PointColumns ColumnsFrom(const std::vector<std::vector<double>>& X, std::size_t first) {
  PointColumns columns{};
  for (std::size_t v = 0; v < X.size(); ++v) columns[v] = X[v].data() + first;
  return columns;
}

}  // namespace quorvex
