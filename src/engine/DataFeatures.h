#pragma once

#include <cstddef>
#include <vector>

#include "core/SolveData.h"

namespace quorvex {

// What points suggest about the coefficients of a model.
struct VariableFeatures {
  double Least = 0, Greatest = 0;
  double Range = 1;      // between them; where that is 0, the size of the value
  double Spacing = 1;    // the smallest distance between two different values, but the range / 10000 at least
  double Magnitude = 1;  // the greatest absolute value
  // Of one variable only, the most prominent first:
  std::vector<double> Places;       // of peaks, or of dips where the most prominent of all is one
  std::vector<double> OtherPlaces;  // of dips, or of peaks
  std::vector<double> Widths;       // of all these, by half their height
  std::vector<double> Frequencies;  // of oscillations, as angular ones
};

struct DataFeatures {
  std::vector<VariableFeatures> X;
  double YRange = 1, YMagnitude = 1;
};

// Peaks and dips: extremes of y smoothed over some neighbours, by how far y rises or falls on either side. Frequencies:
// the greatest values of the periodogram, by least squares of a sine after a straight line is taken off (N. R. Lomb,
// Astrophys. Space Sci. 39, 1976).
DataFeatures FindFeatures(const SolveData& data);

// At most `most` of the points, evenly by their order in X of the first variable, and so that the extremes of Y stay.
SolveData Thinned(const SolveData& data, std::size_t most);

}  // namespace quorvex
