#include "results/PlotPoints.h"

#include <algorithm>

#include "results/ResultPlots.h"
#include "sheet/ColumnLayout.h"
#include "sheet/LoadGridData.h"
#include "sheet/PointsNeeded.h"

namespace quorvex {
namespace {

// Y's standard deviations come with it.
std::optional<PlotPoints> PointsOf(const DataSheet& sheet, const ColumnPair& columns, Prompter& user) {
  const std::size_t lastRow = std::min(columns.LastRow, sheet.Cells.GridLastRow());
  const std::size_t dependent = sheet.IndependentVariables + 1, deviation = dependent + 1;
  const bool weighted = sheet.HasStandardDeviation && columns.SecondCol == dependent;
  GridCells cells;
  // A refusal names the row of the sheet and not that of the selection.
  cells.FirstLine = columns.FirstRow;
  const auto take = [&](std::size_t col, std::size_t as) {
    if (lastRow >= columns.FirstRow)
      cells.PutRange({1, as, lastRow - columns.FirstRow + 1, as},
                     sheet.Cells.CopyRange({columns.FirstRow, col, lastRow, col}));
  };
  take(columns.FirstCol, 1);
  take(columns.SecondCol, 2);
  if (weighted) take(deviation, 3);
  Result<LoadedGrid> loaded = LoadGridData(std::move(cells), {.Weighted = weighted, .KeepUnsorted = true});
  if (!loaded) {
    user.Refuse(loaded.error());
    return std::nullopt;
  }
  if (!EnoughPointsToPlot(loaded->Unsorted.N(), user)) return std::nullopt;
  const auto title = [&](std::size_t col, const char* unnamed) {
    const std::string& header = sheet.Headers[col - 1];
    return header.empty() ? unnamed : header;
  };
  return PlotPoints{std::move(loaded->Unsorted), title(columns.FirstCol, "X"), title(columns.SecondCol, "Y")};
}

}  // namespace

std::optional<PlotPoints> SheetPoints(const DataSheet& sheet, Prompter& user) {
  if (sheet.IndependentVariables > 1) {
    user.Refuse("Data of several independent variables have no plot in two dimensions. Please select two columns.");
    return std::nullopt;
  }
  return PointsOf(sheet, {1, 2, 1, kMostSheetRows}, user);
}

std::optional<PlotPoints> SelectedPoints(const DataSheet& sheet, const std::vector<CellRange>& selection,
                                         Prompter& user) {
  if (selection.size() == 1 && selection[0].Rows() == 1 && selection[0].Cols() == 1) return SheetPoints(sheet, user);
  const std::optional<ColumnPair> columns = SelectedColumnPair(selection, user);
  return columns ? PointsOf(sheet, *columns, user) : std::nullopt;
}

std::optional<PlotPoints> SolutionPoints(const std::vector<SolvedItem>& solutions, const DataSheet& sheet,
                                         Prompter& user) {
  if (!solutions.empty() && sheet.IndependentVariables == 1) return SheetPoints(sheet, user);
  user.Refuse(solutions.empty() ? "There are no regression models to plot." : kNoCurveOfSeveralVariables);
  return std::nullopt;
}

}  // namespace quorvex
