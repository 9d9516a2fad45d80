#pragma once

#include <span>
#include <vector>

#include "equation/Catalogue.h"
#include "linear/MinimizeInBox.h"
#include "linear/SvdDecompose.h"

namespace quorvex {

// A linear solution, with what its covariance needs.
struct LinearSolution {
  std::vector<double> a;  // coefficients of the model's linear form
  ColumnMatrix v;  // w.size() right singular vectors, as columns; the row of a coefficient is in units of its own
  std::vector<double> w;  // singular values
};

// Least squares of the model's basis functions to yT: the minimum of the sum of sig * (yT - fit)^2. X has one column
// per independent variable; sig are weights, so that each row of the design is scaled by the root of its own. Throws
// NumericFault where a basis function has no value at a point, and as SvdDecompose does.
//
// The variance of coefficient i is the sum over j of (v(i, j) / w(j))^2, in units of the residuals' variance.
//
// A design that is exactly singular, since two basis functions are in proportion or there are fewer distinct points
// than functions, has an exact zero in w, and its a is no solution. A nearly singular one has large coefficients.
//
// Method: singular value decomposition of the columns scaled to like lengths, by powers of 2, and ordered by length
// (scaling to equal lengths is within a factor of the root of n of the best: A. van der Sluis, Numer. Math. 14, 1969);
// one step of refinement in the same precision (G. H. Golub, Numer. Math. 7, 1965). The digits kept are those that the
// condition of the scaled columns leaves, whatever the units of X.
LinearSolution DesignSolve(const CatalogueModel& model, std::span<const std::vector<double>> X,
                           std::span<const double> yT, std::span<const double> sig);

// The same within a box of the linear form's coefficients. Those on a bound have rows of zeros in v, and w and v are of
// the design without them.
LinearSolution DesignSolveInside(const CatalogueModel& model, std::span<const std::vector<double>> X,
                                 std::span<const double> yT, std::span<const double> sig, const Box& box);

}  // namespace quorvex
