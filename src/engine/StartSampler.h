#pragma once

#include <cstddef>
#include <vector>

#include "engine/DataFeatures.h"
#include "engine/ModelShape.h"
#include "engine/SeededRandom.h"
#include "linear/MinimizeInBox.h"

namespace quorvex {

// Draws starts for the free coefficients of a model, as a Latin hypercube (M. D. McKay, R. J. Beckman & W. J. Conover,
// Technometrics 21, 1979): each coefficient takes one value from each of `count` equally likely parts of its range, in
// an order of its own. Linear coefficients are 1, to be solved for. The range of a coefficient:
//
//   in a unit of X or Y   logarithmic, from half the spacing of the points to three times their range, sometimes to 30
//                         times their magnitude, to the power of the unit; of Y a tenth to ten times its range; at
//                         times a width or a frequency that the points show
//   a place               one that the points show, or anywhere in their range
//   follows a shift of X  as a pure number, carried to somewhere in the range of X
//   a pure number         logarithmic from 0.1 to 10, sometimes from 0.001 to 1000, or linear from -5 to 5
//   unit not known        any of these
//
// One in five of what may have either sign is negative.
std::vector<std::vector<double>> StartsByData(const std::vector<CoefficientRole>& roles, const DataFeatures& features,
                                              std::size_t count, SeededRandom& random);

// The same around a start that somebody chose: each coefficient times a power of ten from -3 to 3, one in four with the
// other sign; a coefficient of 0 as if it were 1.
std::vector<std::vector<double>> StartsAround(const std::vector<double>& a, std::size_t count, SeededRandom& random);

// Draws what lies outside its bounds anew: between them where there are two, by the logarithm where these have one sign
// and differ a hundredfold; behind a single one as far as it was before it.
void BringInside(std::vector<std::vector<double>>& starts, const Box& box, SeededRandom& random);

}  // namespace quorvex
