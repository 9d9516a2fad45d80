#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include "core/Result.h"
#include "core/SolveData.h"
#include "plot/PlotPage.h"
#include "sheet/CellRange.h"
#include "sheet/DataSheet.h"
#include "solve/SolvedList.h"

namespace quorvex {

// Points of a sheet for a plot, in the sheet's order, and the axes' titles and columns, Y's last.
struct PlotPoints {
  SolveData Points;
  std::vector<std::string> Titles;
  std::vector<std::size_t> Columns;
};

// Gives each axis of a plot the date pattern of its column, from 1 and in the order of the axes, where that has one.
void ShowDates(PlotPage& plot, const DataSheet& sheet, const std::vector<std::size_t>& columns);

// What stands over the X and Y columns of a sheet, or what they would have as headers where nothing does.
std::vector<std::string> AxisTitles(const DataSheet& sheet);

// The X and Y columns of a sheet, counted from 1.
std::vector<std::size_t> SheetColumns(const DataSheet& sheet);

// What stands over a column, or `unnamed` where nothing does.
std::string ColumnTitle(const DataSheet& sheet, std::size_t col, const std::string& unnamed);

// Whether anybody has given standard deviations; else they are 1 throughout.
bool IsWeighted(const SolveData& data);

// In place of a column: the numbers of the rows.
inline constexpr std::size_t kRowNumbers = 0;

// A sheet may be longer than the user could make one: a project that was made of a file has all of its rows.
inline constexpr std::size_t kAllRows = std::numeric_limits<std::size_t>::max();

// The points over these columns, those of the X's first and that of Y last. Points are the rows with a number in all of
// them, and in the standard deviations, which come with the Y that they belong to and may be missing. Fails where there
// are fewer than two points.
Result<SolveData> ColumnPoints(const DataSheet& sheet, std::vector<std::size_t> columns, std::size_t firstRow = 1,
                               std::size_t lastRow = kAllRows);

// X and Y of a sheet with one or two independent variables. Fails as above.
Result<PlotPoints> SheetPoints(const DataSheet& sheet);

// Whether just a cell is selected, which is how the user stands somewhere.
bool IsOneCell(const std::vector<CellRange>& selection);

// The two columns that are selected, the left one as X; SheetPoints where just a cell is. Fails where the selection is
// no two columns over the same rows, and as above.
Result<PlotPoints> SelectedPoints(const DataSheet& sheet, const std::vector<CellRange>& selection);

// SheetPoints for the curves of solutions of one independent variable. Fails, too, where there are none.
Result<PlotPoints> SolutionPoints(const std::vector<SolvedItem>& solutions, const DataSheet& sheet);

}  // namespace quorvex
