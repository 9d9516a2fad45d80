#include "results/PlotPoints.h"

#include <algorithm>
#include <numeric>

#include "results/ResultPlots.h"
#include "sheet/ColumnLayout.h"
#include "sheet/LoadGridData.h"
#include "sheet/PointsNeeded.h"

namespace quorvex {
namespace {

// The columns of X's, and behind them that of Y, whose standard deviations come with it.
std::optional<PlotPoints> PointsOf(const DataSheet& sheet, std::vector<std::size_t> columns, std::size_t firstRow,
                                   std::size_t lastRow, std::vector<std::string> titles, Prompter& user) {
  lastRow = std::min(lastRow, sheet.Cells.GridLastRow());
  const std::size_t variables = columns.size() - 1;
  const std::size_t dependent = sheet.IndependentVariables + 1, deviation = dependent + 1;
  const bool weighted = sheet.HasStandardDeviation && columns.back() == dependent;
  if (weighted) columns.push_back(deviation);
  GridCells cells;
  // A refusal names the row of the sheet and not that of the selection.
  cells.FirstLine = firstRow;
  if (lastRow >= firstRow)
    for (std::size_t as = 1; const std::size_t col : columns) {
      cells.PutRange({1, as, lastRow - firstRow + 1, as}, sheet.Cells.CopyRange({firstRow, col, lastRow, col}));
      ++as;
    }
  Result<LoadedGrid> loaded =
      LoadGridData(std::move(cells), {.IndependentVariables = variables, .Weighted = weighted, .KeepUnsorted = true});
  if (!loaded) {
    user.Refuse(loaded.error());
    return std::nullopt;
  }
  if (!EnoughPointsToPlot(loaded->Unsorted.N(), user)) return std::nullopt;
  return PlotPoints{std::move(loaded->Unsorted), std::move(titles)};
}

std::string Title(const DataSheet& sheet, std::size_t col, const std::string& unnamed) {
  const std::string& header = sheet.Headers[col - 1];
  return header.empty() ? unnamed : header;
}

}  // namespace

std::vector<std::string> AxisTitles(const DataSheet& sheet) {
  std::vector<std::string> titles = DefaultHeaders(sheet.IndependentVariables, false);
  for (std::size_t i = 0; i < titles.size(); ++i) titles[i] = Title(sheet, i + 1, titles[i]);
  return titles;
}

std::optional<PlotPoints> SheetPoints(const DataSheet& sheet, Prompter& user) {
  if (sheet.IndependentVariables > kMostPlottedVariables) {
    user.Refuse("Data of more than two independent variables have no plot. Please select two columns.");
    return std::nullopt;
  }
  std::vector<std::size_t> columns(sheet.IndependentVariables + 1);
  std::iota(columns.begin(), columns.end(), std::size_t{1});
  return PointsOf(sheet, std::move(columns), 1, kMostSheetRows, AxisTitles(sheet), user);
}

std::optional<PlotPoints> SelectedPoints(const DataSheet& sheet, const std::vector<CellRange>& selection,
                                         Prompter& user) {
  if (selection.size() == 1 && selection[0].Rows() == 1 && selection[0].Cols() == 1) return SheetPoints(sheet, user);
  const std::optional<ColumnPair> columns = SelectedColumnPair(selection, user);
  if (!columns) return std::nullopt;
  return PointsOf(sheet, {columns->FirstCol, columns->SecondCol}, columns->FirstRow, columns->LastRow,
                  {Title(sheet, columns->FirstCol, "X"), Title(sheet, columns->SecondCol, "Y")}, user);
}

std::optional<PlotPoints> SolutionPoints(const std::vector<SolvedItem>& solutions, const DataSheet& sheet,
                                         Prompter& user) {
  if (!solutions.empty()) return SheetPoints(sheet, user);
  user.Refuse(kNothingToPlot);
  return std::nullopt;
}

}  // namespace quorvex
