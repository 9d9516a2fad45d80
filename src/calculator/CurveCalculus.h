#pragma once

#include <cstddef>
#include <vector>

#include "engine/SeriesTable.h"

namespace quorvex {

// The points of a curve, of equal length.
struct CurvePoints {
  std::vector<double> X, Y;
};

// The points in ascending order of X, those with the same X as they were.
CurvePoints SortedByX(SeriesTable curve);

// The points with X from `min` to `max`, both included, as they were.
CurvePoints Section(SeriesTable curve, double min, double max);

// The running integral by trapezoids, 0 at the first point. Error of order h^2 for points that are h apart, even or
// uneven. This and the derivative take the points as they come, and throw CalculatorFault where a number overflows.
std::vector<double> Integral(SeriesTable curve);

enum class DerivativeMode { First, Second };

// The derivative of the parabola through three neighbouring points, at the middle one; at the first and the last point
// that of the end's parabola. With r = h1/h2, the ratio of the steps before and behind the middle, the weights of the
// first derivative there are -1/r, 1/r - r and r, over h1 + h2.
//
// Error of order h^2 for the first derivative, at the ends as well. The second one is constant along a parabola: order
// h^2 in the middle of equal steps, else h. Throws CalculatorFault for fewer than 4 points, and where two of three
// neighbours have the same X.
std::vector<double> Derivative(SeriesTable curve, DerivativeMode mode);

}  // namespace quorvex
