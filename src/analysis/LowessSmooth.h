#pragma once

#include <optional>
#include <span>
#include <vector>

#include "core/LongWork.h"

namespace quorvex {

// What a locally weighted regression makes of points, one value each.
struct Smoothed {
  std::vector<double> ys;   // the smoothed Y, in the unit of Y
  std::vector<double> rw;   // the robustness weights of the residuals below, from 0 to 1
  std::vector<double> res;  // y - ys
};

// Locally weighted regression of y on x, robust against outliers: at each x a straight line through its neighbourhood,
// the n*f points (without a fraction, at least 2, at most n) that are nearest to it and those that tie with the last.
// With h the distance of the furthest and r that of a point, the point's weight is
//   (1 - (r/h)^3)^3,  1 below h/1000,  0 above 0.999 h
// After a first round there are nsteps others, in which that is multiplied by the point's robustness weight
//   (1 - (|res|/cmad)^2)^2,  cmad = 6 * median |res|,  1 up to cmad/1000,  0 from 0.999 cmad
// and 1 where the residual is no more than rounding. Where no weight is left the point's own y stands. Points within
// `delta` of one that was fitted are interpolated on a straight line between fits, which costs nothing in accuracy
// where the curve is straight over such a length.
//
// x is in ascending order; equal values get equal results. f is above 0. With 0 < delta the time goes with the range
// of x over delta, else with n^2 f. Nothing where a number overflows, and where `work`, which is told of the points
// that are done in all rounds, was cancelled. An x or y that is no number, too, fails.
// Method: W. S. Cleveland, J. Amer. Statist. Assoc. 74, 829 (1979); Amer. Statist. 35, 54 (1981).
std::optional<Smoothed> LowessSmooth(std::span<const double> x, std::span<const double> y, double f, int nsteps,
                                     double delta, const LongWork& work = {});

// Rounds of robustness weights, and the delta for points in ascending order of x, as the program smooths: with more
// than 5000 points a fiftieth of their range.
inline constexpr int kLowessSteps = 2;
double LowessDelta(std::span<const double> x);

}  // namespace quorvex
