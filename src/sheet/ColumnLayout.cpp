#include "sheet/ColumnLayout.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace quorvex {
namespace {

constexpr const char* kNothingSelected = "You have not selected any cells in the spreadsheet.";

// Why the selection is not two columns; "" where it is.
std::string PairRefusal(const std::vector<CellRange>& selection) {
  if (selection.empty()) return kNothingSelected;
  if (selection.size() == 1) {
    const std::size_t columns = selection[0].Cols();
    if (columns == 1) return "The currently selected range only includes a single column.";
    return columns > 2 ? "The currently selected range contains more than two columns." : "";
  }
  if (selection.size() > 2)
    return "This operation can only work with at most two selected ranges.  You currently have " +
           std::to_string(selection.size()) +
           " ranges selected. Hint:  Make sure you do not have the control key pressed when selecting the FIRST range.";
  const CellRange &a = selection[0], &b = selection[1];
  if (a.Cols() > 1 || b.Cols() > 1) return "At least one of the two selected ranges contains multiple columns.";
  if (a.FirstCol == b.FirstCol) return "The currently selected ranges either overlap or occupy the same column.";
  if (a.FirstRow != b.FirstRow || a.LastRow != b.LastRow)
    return "The currently selected ranges do not contain the same rows.";
  return "";
}

}  // namespace

Result<ColumnPair> SelectedColumnPair(const std::vector<CellRange>& selection) {
  if (const std::string refusal = PairRefusal(selection); !refusal.empty()) return Failure{refusal};
  const CellRange &a = selection.front(), &b = selection.back();
  return ColumnPair{std::min(a.FirstCol, b.FirstCol), std::max(a.LastCol, b.LastCol), a.FirstRow, a.LastRow};
}

bool mnuEditExchange(const SheetEdit& edit) {
  const Result<ColumnPair> pair = SelectedColumnPair(edit.Selection);
  if (!pair) {
    edit.User.Refuse(pair.error());
    return false;
  }
  const bool withHeaders = edit.User.Ask("Do you also want to exchange the column headers you defined?");
  edit.PushUndo(withHeaders ? UndoOperation::ExchangeHeaders : UndoOperation::Exchange,
                {pair->FirstRow, pair->FirstCol, pair->LastRow, pair->SecondCol});
  edit.Sheet.Cells.ExchangeColumns(pair->FirstCol, pair->SecondCol, pair->FirstRow, pair->LastRow);
  if (withHeaders) std::swap(edit.Sheet.Headers[pair->FirstCol - 1], edit.Sheet.Headers[pair->SecondCol - 1]);
  return true;
}

bool EditHeader(const SheetEdit& edit, std::size_t col) {
  std::string& header = edit.Sheet.Headers[col - 1];
  const auto text = edit.User.AskText("Enter the column header:", header);
  if (!text || *text == header) return false;
  edit.PushUndo(UndoOperation::EditHeader, {1, col, 1, col});
  header = *text;
  return true;
}

bool FormatDefault(const SheetEdit& edit) {
  DataSheet& sheet = edit.Sheet;
  edit.PushUndo(UndoOperation::DefaultHeaders, {1, 1, 1, sheet.ColumnCount()});
  sheet.Headers = DefaultHeaders(sheet.IndependentVariables, sheet.HasStandardDeviation);
  return true;
}

bool FormatCells(const SheetEdit& edit,
                 const std::function<std::optional<std::string>(const std::string& NumberFormat)>& choose) {
  if (edit.Selection.empty()) {
    edit.User.Refuse(kNothingSelected);
    return false;
  }
  const bool entireColumns = std::all_of(edit.Selection.begin(), edit.Selection.end(), [](const CellRange& range) {
    return range.FirstRow == 1 && range.LastRow >= kMostSheetRows;
  });
  // "with" is how the question has always read.
  if (!entireColumns && !edit.User.Ask("Formatting must be applied to entire columns. Do you with to change the number "
                                       "format of the columns included in the current selection?"))
    return false;
  try {
    std::vector<ColumnFormat>& formats = edit.Sheet.Formats;
    const auto chosen = choose(formats.at(edit.Selection.front().FirstCol - 1).NumberFormat);
    if (!chosen) return false;
    edit.PushUndo(UndoOperation::FormatCells, edit.Selection.front());
    for (const CellRange& range : edit.Selection)
      for (std::size_t col = range.FirstCol; col <= std::min(range.LastCol, formats.size()); ++col)
        formats[col - 1].NumberFormat = *chosen;
    return true;
  } catch (const std::exception&) {
    edit.User.Refuse("An error ocurred while formatting the cells.");
    return false;
  }
}

}  // namespace quorvex
