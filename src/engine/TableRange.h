#pragma once

#include <vector>

namespace quorvex {

// Asks for a table at the input instead of at points between limits: a single range for one at the input points, one
// of several ranges for the mesh that InputMeshPoints tells of.
inline constexpr int kInputPoints = -1;

// The most points that a mesh has along one variable.
inline constexpr int kMostMeshDivisions = 99;

// Where the table of a curve or surface has its points, along one independent variable.
struct TableRange {
  double Min = 0, Max = 0;
  int NumPoints = kInputPoints;
  bool UseLogSpacing = false;  // constant ratio between neighbours instead of constant difference
};

// The points of a range, from its start to its end. The limits stand as they are given where `Extrapolate` is set, else
// they are cut to the range of the input; where nothing is left between them they are those of the input. Throws
// NumericFault for fewer than two points and where the spacing has no value, as a ratio from 0 has none.
std::vector<double> TablePoints(const TableRange& range, double InputMin, double InputMax, bool Extrapolate);

// The points of a mesh along a variable that has these values in the input: each value once, ascending. Of more than
// kMostMeshDivisions so many are taken, evenly by rank, with the least and the greatest. Throws NumericFault where all
// are equal, since a mesh needs two.
std::vector<double> InputMeshPoints(std::vector<double> values);

}  // namespace quorvex
