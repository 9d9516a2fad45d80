#pragma once

#include <cstddef>
#include <functional>

#include "core/Result.h"
#include "core/SolveData.h"
#include "sheet/GridCells.h"

namespace quorvex {

struct LoadOptions {
  std::size_t IndependentVariables = 1;
  bool Weighted = false;      // reads the standard deviations
  bool KeepUnsorted = false;  // also delivers the points in the order of the grid
  bool SkipTexts = false;     // a row with a text is left out, silently
  // Asked some times a second where there is one; false ends the loading with a failure that says nothing.
  std::function<bool()> KeepGoing = {};
};

struct LoadedGrid {
  SolveData Points;            // sig is left to ComputeWeights
  SolveData Unsorted;          // X, Y and SD in the grid's order, where asked for
  bool HadPartialRow = false;  // a row without Y, or without all of X, was skipped
};

// Reads a grid with X in the first columns, then Y, then the standard deviation, into columns of points. A row with all
// X and Y is a point; one that lacks Y and some X is skipped silently, and one that lacks only one of the two is
// skipped and flagged. An empty standard deviation is 1. With one independent variable the points are sorted by
// ascending X; equal X keep their order. Each knows the row of the grid, counted from `FirstLine`, that it stands in.
//
// Fails where a cell of a would-be point holds a text, unless such rows are skipped: "Line N: 'text' is not a number.",
// N being the line of the file, for the first such cell row by row, X before Y before the standard deviation; "Row N,
// column 'name': ..." where the columns have names. No point at all is no failure.
//
// The columns of the grid become those of the points without a copy; a caller that needs the grid hands in a copy.
Result<LoadedGrid> LoadGridData(GridCells cells, const LoadOptions& options);

}  // namespace quorvex
