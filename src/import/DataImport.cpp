#include "import/DataImport.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "core/Files.h"
#include "core/NumberText.h"
#include "import/ImportFailure.h"

namespace quorvex {
void TellFailure(const std::string& failure, Prompter& user) {
  if (!failure.empty()) user.Refuse(failure);
}

bool ConfirmOverwrite(const SheetEdit& edit) {
  return edit.Sheet.Cells.GridLastRow() == 0 ||
         edit.User.Ask("This operation may overwrite existing data. " + std::string(NL) + "Do you want to continue?");
}

std::string DataImport::Title() const {
  return "Preview of '" + Source + "'" + (LineCount().value_or(0) > kPreviewLines ? " (first 200 lines)" : "");
}

Result<GridCells> DataImport::Preview(Prompter* user) {
  const std::size_t lines = LineCount() ? kMostSheetRows : kPreviewLines;
  Result<GridCells> rows = Await(user, ReadingText(), ReadRows(1, lines, "")).value_or(Failure{});
  cells_ = rows ? std::move(*rows) : GridCells();
  if (!rows) {
    Columns.SetColumns(0);
    return rows;
  }
  const std::size_t shown = std::min(cells_.GridLastRow(), kPreviewLines);
  GridCells preview = shown > 0 ? cells_.CopyRange({1, 1, shown, cells_.GridLastCol()}) : GridCells();
  preview.ColumnNames = cells_.ColumnNames;
  Columns.SetColumns(std::max(preview.GridLastCol(), preview.ColumnNames.size()), preview.ColumnNames);
  return preview;
}

std::string DataImport::Marker() const { return ckMissingData ? std::string(Trim(txtMissingData)) : ""; }

TextCells DataImport::TextsToImport(const LocaleText& locale) {
  TextCells texts = FindTextCells(cells_, StartRow(locale), Marker(), Columns, locale);
  toldTexts_ = texts.Count;
  return texts;
}

std::size_t DataImport::FirstDataLine(const GridCells& preview, const LocaleText& locale) {
  for (std::size_t row = 1; row <= preview.GridLastRow(); ++row) {
    for (std::size_t col = 1; col <= preview.GridLastCol(); ++col) {
      const double cell = preview.Cell(row, col);
      if (GridCells::IsText(cell) ? TypedValue(preview, cell, locale).has_value() : !GridCells::IsEmpty(cell))
        return row;
    }
  }
  return 1;
}

double DataImport::StartRow(const LocaleText& locale) const {
  return std::max(1.0, std::nearbyint(NumericText(ImportText, locale.DecimalSeparator).value_or(1)));
}

ImportOutcome DataImport::Finish(const SheetEdit& edit) {
  if (!Columns.Confirm(IncompleteQuestion(), edit.User)) return ImportOutcome::Stay;
  const double startRow = StartRow(edit.Locale);
  const auto beyondTheEnd = [&] {
    edit.User.Refuse("The start row you specified is larger than the number of lines in the file.");
    return ImportOutcome::CorrectStartRow;
  };
  const std::optional<std::size_t> lines = LineCount();
  if (lines && startRow > static_cast<double>(*lines)) return beyondTheEnd();
  try {
    const auto first = static_cast<std::size_t>(std::min(startRow, 1e15));
    // One row more than the sheet takes tells whether there are too many.
    auto waited = Await(&edit.User, ReadingText(), ReadRows(first, kMostSheetRows + 1, Marker()));
    if (!waited) return ImportOutcome::Stay;
    Result<GridCells>& rows = *waited;
    if (!rows) {
      edit.User.Refuse(rows.error());
      return ImportOutcome::Failed;
    }
    std::size_t rowCount = rows->GridLastRow();
    if (!lines && startRow > 1 && rowCount == 0) return beyondTheEnd();
    if (rowCount > kMostSheetRows) {
      edit.User.Inform("The file contains too many data points. Only 65,536 data points will be imported.");
      rowCount = kMostSheetRows;
    }
    const TextCells texts = ReadTexts(*rows, rowCount, edit.Locale);
    // Here and not before: an import that was refused leaves no step to undo.
    edit.PushUndo(UndoOperation::Import, edit.WholeSheet());
    Columns.MoveInto(*rows, rowCount, edit.Sheet);
    if (ckHeadings) {
      ReadHeadings(edit.Locale);
      NameVariables(edit.Sheet);
    }
    if (texts.Count > toldTexts_) edit.User.Inform(texts.Sentence());
    return ImportOutcome::Imported;
  } catch (const std::bad_alloc&) {
    edit.User.Refuse(ImportFailure(Source, "").Message);
    return ImportOutcome::Failed;
  }
}

TextCells DataImport::ReadTexts(GridCells& rows, std::size_t count, const LocaleText& locale) const {
  TextCells texts;
  for (std::size_t row = 1; row <= count; ++row) {
    for (std::size_t col = 1; col <= rows.GridLastCol(); ++col) {
      const double cell = rows.Cell(row, col);
      if (!GridCells::IsText(cell) || Columns.VariableOf(col).empty()) continue;
      if (const auto value = TypedValue(rows, cell, locale)) {
        rows.SetGridCellNumber(row, col, *value);
      } else if (ckTextMissing) {
        rows.ClearCell(row, col);
      } else {
        texts.Add(rows.TextBehind(cell));
      }
    }
  }
  return texts;
}

std::vector<std::string> DataImport::Headings(const LocaleText& locale) const {
  if (!cells_.ColumnNames.empty()) return cells_.ColumnNames;
  const double line = StartRow(locale) - 1;
  const std::size_t columns = Columns.lstColumns().size();
  if (line < 1 || line > static_cast<double>(cells_.GridLastRow())) return {};
  std::vector<std::string> headings(columns);
  std::size_t words = 0;
  for (std::size_t col = 1; col <= columns; ++col) {
    const double cell = cells_.Cell(static_cast<std::size_t>(line), col);
    if (GridCells::IsEmpty(cell)) continue;
    if (!StaysText(cells_, cell, locale)) return {};
    headings[col - 1] = cells_.TextBehind(cell);
    ++words;
  }
  // A single text above several columns is a title. Row numbers have no heading.
  return words > 1 || words == columns ? headings : std::vector<std::string>();
}

void DataImport::ReadHeadings(const LocaleText& locale) { Columns.NameColumns(Headings(locale)); }

void DataImport::NameVariables(DataSheet& sheet) const {
  for (std::size_t v = 1; v <= sheet.Headers.size(); ++v)
    if (std::string name = Columns.NameOf(Columns.ColumnOf(v)); !name.empty()) sheet.Headers[v - 1] = std::move(name);
}

std::string DataImport::IncompleteQuestion() const {
  return "You did not assign data columns to all variables, so there will be no data imported to them. Do you want to "
         "continue?";
}

}  // namespace quorvex
