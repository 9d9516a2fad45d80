#include "sheet/EditCommands.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "core/Files.h"
#include "sheet/IncompleteRows.h"
#include "sheet/PasteSpecial.h"

namespace quorvex {
namespace {

// The grid keeps its last row free when rows are inserted.
constexpr std::size_t kMostRowsAfterInsert = kMostSheetRows - 1;

bool CopyTo(const SheetEdit& edit, Clipboard& clipboard, std::string_view command) {
  const auto range = edit.OneRange(command);
  if (range) clipboard.SetCells(ClipboardText(edit.Sheet, *range, edit.Locale, CellOrder::Kept));
  return range.has_value();
}

}  // namespace

bool EditCut(const SheetEdit& edit, Clipboard& clipboard) {
  if (!CopyTo(edit, clipboard, "Cut")) return false;
  edit.PushUndo(UndoOperation::Cut, edit.Selection.front());
  edit.Sheet.Cells.GridClearRange(edit.Selection.front());
  return true;
}

bool EditCopy(const SheetEdit& edit, Clipboard& clipboard) { return CopyTo(edit, clipboard, "Copy"); }

bool CopyGrid(const SheetEdit& edit, Clipboard& clipboard) {
  const CellRange sheet = edit.WholeSheet();
  if (sheet.LastRow == 0) return false;
  clipboard.SetCells(ClipboardText(edit.Sheet, sheet, edit.Locale, CellOrder::Kept));
  return true;
}

bool EditPaste(const SheetEdit& edit, const Clipboard& clipboard) {
  const auto range = edit.OneRange("Paste");
  return range &&
         PasteText(edit, clipboard.Text(), range->FirstRow, range->FirstCol, CellOrder::Kept, UndoOperation::Paste);
}

bool ClearSelection(const SheetEdit& edit) {
  const auto range = edit.OneRange("Clear");
  if (!range) return false;
  edit.PushUndo(UndoOperation::ClearSelection, *range);
  edit.Sheet.Cells.GridClearRange(*range);
  return true;
}

bool ClearGrid(const SheetEdit& edit) {
  const std::string question = "This operation will clear all existing data. " + std::string(NL);
  if (!edit.User.Ask(question + "Do you want to continue?")) return false;
  edit.PushUndo(UndoOperation::ClearSheet, edit.WholeSheet());
  edit.Sheet.Cells = GridCells();
  return true;
}

bool InsertRows(const SheetEdit& edit) {
  const auto range = edit.OneRange("Insert");
  if (!range) return false;
  if (range->Rows() + edit.Sheet.Cells.GridLastRow() > kMostRowsAfterInsert) {
    edit.User.Refuse(
        "The maximum number of rows that the spreadsheet can contain is 65,536. The number of selected rows cannot be "
        "inserted.");
    return false;
  }
  edit.PushUndo(UndoOperation::InsertRows, *range);
  edit.Sheet.Cells.GridInsertRows(range->FirstRow, range->Rows());
  return true;
}

bool DeleteSelection(const SheetEdit& edit) {
  auto range = edit.OneRange("Delete");
  if (!range) return false;
  // A selection of whole columns goes on below the data.
  range->LastRow = std::min(range->LastRow, edit.Sheet.Cells.GridLastRow());
  if (range->LastRow < range->FirstRow) return false;
  edit.PushUndo(UndoOperation::DeleteSelection, *range);
  edit.Sheet.Cells.GridDeleteRows(range->FirstRow, range->Rows());
  return true;
}

bool DeleteIncompleteRows(const SheetEdit& edit) {
  const std::vector<bool> incomplete = IncompleteRows(edit.Sheet);
  const auto count = std::count(incomplete.begin(), incomplete.end(), true);
  if (count == 0) {
    edit.User.Inform("There were no incomplete rows to delete.");
    return false;
  }
  edit.PushUndo(UndoOperation::DeleteIncompleteRows, edit.WholeSheet());
  edit.Sheet.Cells.DeleteMarkedRows(incomplete);
  edit.User.Inform(std::to_string(count) + " incomplete rows were deleted.");
  return true;
}

}  // namespace quorvex
