#include "solve/GatherData.h"

#include <algorithm>
#include <utility>

#include "sheet/ComputeWeights.h"
#include "sheet/IncomingCells.h"
#include "sheet/IncompleteRows.h"
#include "sheet/LoadGridData.h"

namespace quorvex {
namespace {

// "Row 5, column 'Ozone'"
std::string FirstLeftOutText(const GatheredData& data, const DataSheet& sheet) {
  const auto [row, col] = data.FirstLeftOut;
  return "Row " + std::to_string(row) + ", column '" + sheet.Headers[col - 1] + "'";
}

}  // namespace

GatheredData GatherData(const DataSheet& sheet, PointOrder order) {
  const bool ofSheet = order == PointOrder::OfSheet;
  GridCells cells = sheet.Cells;
  cells.FirstLine = 1;  // rows are those of the sheet, whatever lines of a file they once were
  LoadedGrid loaded = *LoadGridData(std::move(cells), {.IndependentVariables = sheet.IndependentVariables,
                                                       .Weighted = sheet.HasStandardDeviation,
                                                       .KeepUnsorted = ofSheet,
                                                       .SkipTexts = true});
  GatheredData data;
  data.Points = std::move(ofSheet ? loaded.Unsorted : loaded.Points);
  TakeWeights(data.Points);
  const std::vector<bool> incomplete = IncompleteRows(sheet);
  const TextRows texts = FindTextRows(sheet);
  data.TextRows = texts.Count;
  data.TextCells = texts.Cells;
  data.IncompleteRows = static_cast<std::size_t>(std::count(incomplete.begin(), incomplete.end(), true)) + texts.Count;
  if (texts.Count > 0) {
    data.FirstLeftOut = texts.First;
  } else if (data.IncompleteRows > 0) {
    const auto first = std::find(incomplete.begin(), incomplete.end(), true) - incomplete.begin();
    data.FirstLeftOut = {static_cast<std::size_t>(first) + 1, 1};
    while (!GridCells::IsEmpty(sheet.Cells.Cell(data.FirstLeftOut.Row, data.FirstLeftOut.Col))) ++data.FirstLeftOut.Col;
  }
  return data;
}

std::string TextRowsText(const GatheredData& data, const DataSheet& sheet) {
  if (data.TextRows == 0) return "";
  const auto [row, col] = data.FirstLeftOut;
  return FirstLeftOutText(data, sheet) + ": " + QuotedCell(sheet.Cells.GridCellText(row, col)) + " is not a number. " +
         std::to_string(data.TextCells) + (data.TextCells == 1 ? " cell in " : " cells in ") +
         std::to_string(data.TextRows) + (data.TextRows == 1 ? " row" : " rows") + " of the data " +
         (data.TextCells == 1 ? "is no number." : "are no numbers.");
}

bool AsksToLeaveOut(const GatheredData& data, const Settings& settings) {
  return data.TextRows > 0 || (data.IncompleteRows > 0 && settings.Integer("missingdatawarning") == 1);
}

bool MayLeaveOut(const GatheredData& data, const DataSheet& sheet, const Settings& settings, Prompter& user) {
  if (!AsksToLeaveOut(data, settings)) return true;
  const std::size_t missing = data.IncompleteRows - data.TextRows;
  const std::string incomplete =
      std::to_string(missing) +
      (missing == 1 ? " row of the data is incomplete and is" : " rows of the data are incomplete and are") +
      " left out of the solution. ";
  if (data.TextRows == 0)
    return user.Ask(FirstLeftOutText(data, sheet) + " is empty. " + incomplete + "Do you want to continue?");
  return user.Ask(TextRowsText(data, sheet) + " " + (missing > 0 ? incomplete : "") + "Do you want to leave " +
                  (data.TextRows == 1 ? "this row" : "these rows") + " out?");
}

}  // namespace quorvex
