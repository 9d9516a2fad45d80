#pragma once

#include <vector>

namespace quorvex {

// Asks for a table at the input points instead of at points between limits.
inline constexpr int kInputPoints = -1;

// Where the table of a curve has its points, along one independent variable.
struct TableRange {
  double Min = 0, Max = 0;
  int NumPoints = kInputPoints;
  bool UseLogSpacing = false;  // constant ratio between neighbours instead of constant difference
};

// The points of a range, from its start to its end. The limits stand as they are given where `Extrapolate` is set, else
// they are cut to the range of the input; where nothing is left between them they are those of the input. Throws
// NumericFault for fewer than two points and where the spacing has no value, as a ratio from 0 has none.
std::vector<double> TablePoints(const TableRange& range, double InputMin, double InputMax, bool Extrapolate);

}  // namespace quorvex
