#pragma once

#include <cmath>

#include "engine/ModelClass.h"

namespace quorvex {

// How the scatter of the points compares with their standard deviations: the sum of ((y - f) / SD)^2 over the degrees
// of freedom, about 1 where both the model and the deviations are right, and the probability that it comes out so large
// or larger by chance, Q(df/2, df reduced/2) (P. R. Bevington, Data Reduction and Error Analysis, 1969, 10-1). Small:
// the model misses something, or the deviations are too small; near 1: they are too large.
struct ChiSquare {
  double Reduced = NAN, Probability = NAN;
};

// Of a solved model of points with that deviation of a point of weight 1; NaN where that is 0: none were given.
ChiSquare ChiSquareOf(const ModelClass& model, double unitDeviation);

}  // namespace quorvex
