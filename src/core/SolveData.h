#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "core/Limits.h"

namespace quorvex {

// The points of the solve in progress, column by column, so that every loop over points runs over one array.
struct SolveData {
  std::vector<std::vector<double>> X;  // one column per independent variable, in the sheet's units
  std::vector<double> Y, SD;           // SD in the unit of Y, 1 where none was given
  std::vector<double> sig;             // weights with mean 1, not deviations: they multiply (y - f)^2
  bool HasSD = false;                  // some of them were given
  double UnitDeviation = 0;            // standard deviation of a point of weight 1; 0 where none were given
  // Where each point stands, as its user counts the rows of the sheet or the lines of the file; empty: 1, 2, ...
  std::vector<std::size_t> Row = {};
  std::size_t N() const { return Y.size(); }

  // X of point i (from 0), one value per variable, gathered in `x`.
  std::span<const double> Point(std::size_t i, std::array<double, kMostIndependentVariables>& x) const {
    for (std::size_t v = 0; v < X.size(); ++v) x[v] = X[v][i];
    return std::span(x).first(X.size());
  }
};

}  // namespace quorvex
