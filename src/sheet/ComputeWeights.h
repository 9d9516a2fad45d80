#pragma once

#include <span>
#include <string>
#include <vector>

#include "core/SolveData.h"

namespace quorvex {

// The weights of points with these standard deviations: 1/SD^2, and 1 where |SD| is below 1e-150 or above 1e150, all
// divided by their mean, so that the mean weight is 1. The sum for the mean is taken in the order of the points.
std::vector<double> ComputeWeights(std::span<const double> SD);

// Fills in the weights of the points and, where standard deviations were given, what that of a point of weight 1 is:
// the root of the inverse of the mean of 1/SD^2.
void TakeWeights(SolveData& data);

// What is to be said of given deviations that can't be taken at their word, a sentence each with the first such row:
// one counts as 1 (ComputeWeights), a negative one as its magnitude.
std::vector<std::string> DeviationWarnings(const SolveData& data);

}  // namespace quorvex
