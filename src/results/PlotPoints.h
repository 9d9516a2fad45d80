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

// Points of a sheet for a plot, in the sheet's order, and the axes' titles, Y's last.
struct PlotPoints {
  SolveData Points;
  std::vector<std::string> Titles;
};

// What stands over the X and Y columns of a sheet, or what they would have as headers where nothing does.
std::vector<std::string> AxisTitles(const DataSheet& sheet);

// X and Y of a sheet with one or two independent variables, with the standard deviations where it has them. Refused,
// and nothing, where there are more variables, fewer than two points, or a text among them.
std::optional<PlotPoints> SheetPoints(const DataSheet& sheet, Prompter& user);

// The two columns that are selected, the left one as X; where just a cell is, which is how the user stands somewhere,
// SheetPoints. Points are the rows with a number in both. Refused, and nothing, where the selection is no two columns
// over the same rows, and as above.
std::optional<PlotPoints> SelectedPoints(const DataSheet& sheet, const std::vector<CellRange>& selection,
                                         Prompter& user);

// SheetPoints for the curves of solutions of one independent variable. Refused, too, where there are none.
std::optional<PlotPoints> SolutionPoints(const std::vector<SolvedItem>& solutions, const DataSheet& sheet,
                                         Prompter& user);

}  // namespace quorvex
