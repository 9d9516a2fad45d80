#include "results/PlotPoints.h"

#include <algorithm>
#include <numeric>

#include "core/SerialDate.h"
#include "results/ResultPlots.h"
#include "sheet/ColumnLayout.h"
#include "sheet/LoadGridData.h"
#include "sheet/PointsNeeded.h"

namespace quorvex {
namespace {

Result<PlotPoints> Titled(Result<SolveData> points, std::vector<std::string> titles, std::vector<std::size_t> columns) {
  if (!points) return Failure{points.error()};
  return PlotPoints{std::move(*points), std::move(titles), std::move(columns)};
}

}  // namespace

void ShowDates(PlotPage& plot, const DataSheet& sheet, const std::vector<std::size_t>& columns) {
  const std::vector<PlotAxis*> axes = plot.Axes();
  for (std::size_t i = 0; i < std::min(axes.size(), columns.size()); ++i) {
    if (columns[i] == kRowNumbers) continue;
    const std::string& pattern = sheet.Formats[columns[i] - 1].NumberFormat;
    if (IsDatePattern(pattern)) axes[i]->LabelString = pattern;
  }
}

std::string ColumnTitle(const DataSheet& sheet, std::size_t col, const std::string& unnamed) {
  const std::string& header = sheet.Headers[col - 1];
  return header.empty() ? unnamed : header;
}

std::vector<std::string> AxisTitles(const DataSheet& sheet) {
  std::vector<std::string> titles = DefaultHeaders(sheet.IndependentVariables, false);
  for (std::size_t i = 0; i < titles.size(); ++i) titles[i] = ColumnTitle(sheet, i + 1, titles[i]);
  return titles;
}

std::vector<std::size_t> SheetColumns(const DataSheet& sheet) {
  std::vector<std::size_t> columns(sheet.IndependentVariables + 1);
  std::iota(columns.begin(), columns.end(), std::size_t{1});
  return columns;
}

bool IsWeighted(const SolveData& data) {
  return std::any_of(data.SD.begin(), data.SD.end(), [](double sd) { return sd != 1; });
}

Result<SolveData> ColumnPoints(const DataSheet& sheet, std::vector<std::size_t> columns, std::size_t firstRow,
                               std::size_t lastRow) {
  lastRow = std::min(lastRow, sheet.Cells.GridLastRow());
  const std::size_t variables = columns.size() - 1;
  const std::size_t dependent = sheet.IndependentVariables + 1, deviation = dependent + 1;
  const bool weighted = sheet.HasStandardDeviation && columns.back() == dependent;
  if (weighted) columns.push_back(deviation);
  GridCells cells;
  if (lastRow >= firstRow)
    for (std::size_t as = 1; const std::size_t col : columns) {
      if (col == kRowNumbers)
        for (std::size_t row = firstRow; row <= lastRow; ++row)
          cells.SetGridCellNumber(row - firstRow + 1, as, static_cast<double>(row));
      else
        cells.PutRange({1, as, lastRow - firstRow + 1, as}, sheet.Cells.CopyRange({firstRow, col, lastRow, col}));
      ++as;
    }
  LoadedGrid loaded =
      *LoadGridData(std::move(cells),
                    {.IndependentVariables = variables, .Weighted = weighted, .KeepUnsorted = true, .SkipTexts = true});
  if (loaded.Unsorted.N() < kFewestPointsToPlot) return Failure{kTooFewPointsToPlot};
  return std::move(loaded.Unsorted);
}

Result<PlotPoints> SheetPoints(const DataSheet& sheet) {
  const std::vector<std::size_t> columns = SheetColumns(sheet);
  return Titled(ColumnPoints(sheet, columns), AxisTitles(sheet), columns);
}

bool IsOneCell(const std::vector<CellRange>& selection) {
  return selection.size() == 1 && selection[0].Rows() == 1 && selection[0].Cols() == 1;
}

Result<PlotPoints> SelectedPoints(const DataSheet& sheet, const std::vector<CellRange>& selection) {
  if (IsOneCell(selection)) return SheetPoints(sheet);
  const Result<ColumnPair> pair = SelectedColumnPair(selection);
  if (!pair) return Failure{"Invalid range selection. " + pair.error()};
  return Titled(ColumnPoints(sheet, {pair->FirstCol, pair->SecondCol}, pair->FirstRow, pair->LastRow),
                {ColumnTitle(sheet, pair->FirstCol, "X"), ColumnTitle(sheet, pair->SecondCol, "Y")},
                {pair->FirstCol, pair->SecondCol});
}

Result<PlotPoints> SolutionPoints(const std::vector<SolvedItem>& solutions, const DataSheet& sheet) {
  if (solutions.empty()) return Failure{kNothingToPlot};
  return SheetPoints(sheet);
}

}  // namespace quorvex
