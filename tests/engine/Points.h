#pragma once

#include <utility>
#include <vector>

#include "core/SolveData.h"

namespace quorvex {

// Points for a solve, by columns; standard deviations of 1, and weights of 1 where none are given.
inline SolveData Points(std::vector<std::vector<double>> X, std::vector<double> Y, std::vector<double> sig = {}) {
  const std::vector<double> ones(Y.size(), 1.0);
  return {std::move(X), std::move(Y), ones, sig.empty() ? ones : std::move(sig)};
}

}  // namespace quorvex
