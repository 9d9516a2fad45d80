#include "sheet/DataImport.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "core/Files.h"
#include "core/NumberText.h"
#include "sheet/ImportFailure.h"

namespace quorvex {

bool ConfirmOverwrite(const SheetEdit& edit) {
  return edit.Sheet.Cells.GridLastRow() == 0 ||
         edit.User.Ask("This operation may overwrite existing data. " + std::string(NL) + "Do you want to continue?");
}

std::string DataImport::Title() const {
  return "Preview of '" + Source + "'" + (LineCount().value_or(0) > kPreviewLines ? " (first 200 lines)" : "");
}

Result<GridCells> DataImport::Preview() {
  Result<GridCells> rows = ReadRows(1, kPreviewLines, "");
  Columns.SetColumnCount(rows ? rows->GridLastCol() : 0);
  return rows;
}

ImportOutcome DataImport::Finish(const SheetEdit& edit) {
  if (!Columns.Confirm(IncompleteQuestion(), edit.User)) return ImportOutcome::Stay;
  const double startRow = std::nearbyint(NumericText(ImportText, edit.Locale.DecimalSeparator).value_or(1));
  if (const auto lines = LineCount(); lines && startRow > static_cast<double>(*lines)) {
    edit.User.Refuse("The start row you specified is larger than the number of lines in the file.");
    return ImportOutcome::CorrectStartRow;
  }
  try {
    const std::size_t first = startRow < 1 ? 1 : static_cast<std::size_t>(std::min(startRow, 1e15));
    Result<GridCells> rows =
        ReadRows(first, kMostSheetRows + 1, ckMissingData ? std::string(Trim(txtMissingData)) : "");
    if (!rows) {
      edit.User.Refuse(rows.error());
      return ImportOutcome::Failed;
    }
    std::size_t rowCount = rows->GridLastRow();
    if (rowCount > kMostSheetRows) {
      edit.User.Inform("The file contains too many data points. Only 65,536 data points will be imported.");
      rowCount = kMostSheetRows;
    }
    edit.PushUndo("&Undo Import", edit.WholeSheet());
    Columns.MoveInto(*rows, rowCount, edit.Sheet);
    return ImportOutcome::Imported;
  } catch (const std::bad_alloc&) {
    edit.User.Refuse(ImportFailure(Source, "").Message);
    return ImportOutcome::Failed;
  }
}

std::string DataImport::IncompleteQuestion() const {
  return "You did not assign data columns to all variables, so there will be no data imported to them. Do you want to "
         "continue?";
}

}  // namespace quorvex
