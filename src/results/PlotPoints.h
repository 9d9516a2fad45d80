#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/Prompter.h"
#include "core/SolveData.h"
#include "sheet/CellRange.h"
#include "sheet/DataSheet.h"
#include "solve/SolvedList.h"

namespace quorvex {

// Points of a sheet for a plot of two axes, in the sheet's order, and the axes' titles.
struct PlotPoints {
  SolveData Points;
  std::string XTitle, YTitle;
};

// X and Y of a sheet with one independent variable, with the standard deviations where it has them. Refused, and
// nothing, where there are several variables, fewer than two points, or a text among them.
std::optional<PlotPoints> SheetPoints(const DataSheet& sheet, Prompter& user);

// The two columns that are selected, the left one as X; where just a cell is, which is how the user stands somewhere,
// SheetPoints. Points are the rows with a number in both. Refused, and nothing, where the selection is no two columns
// over the same rows, and as above.
std::optional<PlotPoints> SelectedPoints(const DataSheet& sheet, const std::vector<CellRange>& selection,
                                         Prompter& user);

// SheetPoints for the curves of solutions. Refused, too, where there are no solutions, or of several variables.
std::optional<PlotPoints> SolutionPoints(const std::vector<SolvedItem>& solutions, const DataSheet& sheet,
                                         Prompter& user);

}  // namespace quorvex
