#pragma once

#include <span>
#include <vector>

#include "engine/SvdDecompose.h"
#include "equation/Catalogue.h"

namespace quorvex {

// A linear solution, with what its covariance needs.
struct LinearSolution {
  std::vector<double> a;  // coefficients of the model's linear form
  ColumnMatrix v;         // right singular vectors, as columns
  std::vector<double> w;  // singular values
};

// Least squares of the model's basis functions to yT: the minimum of the sum of sig * (yT - fit)^2. X has one column
// per independent variable; sig are weights, so that each row of the design is scaled by the root of its own. Throws
// NumericFault where a basis function has no value at a point, and as SvdDecompose does.
//
// A design that is exactly singular, since two basis functions are in proportion or there are fewer distinct points
// than functions, has an exact zero in w, and its a is no solution. A nearly singular one has large coefficients.
LinearSolution DesignSolve(const CatalogueModel& model, std::span<const std::vector<double>> X,
                           std::span<const double> yT, std::span<const double> sig);

}  // namespace quorvex
