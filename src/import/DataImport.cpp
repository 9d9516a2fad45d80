#include "import/DataImport.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <new>

#include "core/Files.h"
#include "core/NumberText.h"
#include "core/TextEncoding.h"
#include "import/ImportFailure.h"
#include "import/UnitNames.h"
#include "sheet/CellEntry.h"
#include "sheet/DecimalCommas.h"
#include "sheet/IncomingCells.h"
#include "sheet/ParseDelimitedLines.h"

namespace quorvex {

void TellFailure(const std::string& failure, Prompter& user) {
  if (!failure.empty()) user.Refuse(failure);
}

void TakeImported(DataSheet imported, const SheetEdit& edit) {
  edit.PushUndo(UndoOperation::Import, edit.WholeSheet());
  edit.Sheet.Headers = std::move(imported.Headers);
  edit.Sheet.Formats = std::move(imported.Formats);
  edit.Sheet.Cells = std::move(imported.Cells);
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
  preview.DatePatterns = cells_.DatePatterns;
  for (const CommentLine& comment : Comments)
    if (ckComments && comment.Line <= kPreviewLines)
      preview.SetGridCellText(comment.Line, 1, CutCellText(DecodeText(comment.Text)));
  Columns.SetColumns(std::max(DataColumns(), preview.ColumnNames.size()), preview.ColumnNames);
  return preview;
}

std::size_t DataImport::DataColumns() const {
  const std::size_t first = FirstDataRow(cells_, LocaleText());
  const std::size_t last = first <= kPreviewLines ? kPreviewLines : first + kPreviewLines;
  std::size_t columns = cells_.GridLastCol();
  const auto empty = [&](std::size_t col) {
    std::size_t row = last;
    while (row >= first && GridCells::IsEmpty(cells_.Cell(row, col))) --row;
    return row < first;
  };
  while (columns > 0 && empty(columns)) --columns;
  return columns;
}

std::string DataImport::Marker() const { return ckMissingData ? std::string(Trim(txtMissingData)) : ""; }

ColumnDates DataImport::Dates(const GridCells& cells, const LocaleText& locale) const {
  if (!ckDayFirst) return {cells, locale};
  return {cells, locale, *ckDayFirst ? DateOrder::DayFirst : DateOrder::MonthFirst};
}

DateOrderQuestion DataImport::AskDateOrder(const LocaleText& locale) const {
  const ColumnDates dates = Dates(locale);
  for (const auto& [col, date] : dates.Ambiguous())
    if (Columns.MayBeImported(col))
      return {"Nothing in column '" + Columns.lstColumns()[col - 1] + "' tells day from month in " + date + '.',
              dates.LocaleOf(col).OrderOfDate == DateOrder::DayFirst};
  return {};
}

TextCells DataImport::TextsToImport(const LocaleText& locale) const {
  return FindTextCells(cells_, StartRow(locale), Marker(), Columns, Dates(locale));
}

std::optional<DataImport::OtherReading> DataImport::DecimalCommaOffer(const std::string& example) {
  if (example.empty()) return std::nullopt;
  return OtherReading{DecimalCommaNotice(example), "Read them as &numbers"};
}

const CommentLine* DataImport::CommentAt(std::size_t line) const {
  const auto found = std::ranges::lower_bound(Comments, line, {}, &CommentLine::Line);
  return found != Comments.end() && found->Line == line ? &*found : nullptr;
}

std::string DataImport::CommentSentence() const {
  assert(!Comments.empty());
  return std::to_string(Comments.size()) + (Comments.size() == 1 ? " line is a comment: " : " lines are comments: ") +
         EndOfSentence(Trim(DecodeText(Comments.front().Text)));
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
    const std::size_t left = ckComments ? Comments.size() : 0;
    // One row more than the sheet takes tells whether there are too many.
    auto waited = Await(&edit.User, ReadingText(), ReadRows(first, kMostSheetRows + 1 + left, Marker()));
    if (!waited) return ImportOutcome::Stay;
    Result<GridCells>& rows = *waited;
    if (!rows) {
      edit.User.Refuse(rows.error());
      return ImportOutcome::Failed;
    }
    LeaveCommentsOut(*rows, first);
    std::size_t rowCount = rows->GridLastRow();
    if (!lines && startRow > 1 && rowCount == 0) return beyondTheEnd();
    if (rowCount > kMostSheetRows) {
      edit.User.Inform("The file contains too many data points. Only 65,536 data points will be imported.");
      rowCount = kMostSheetRows;
    }
    const ColumnPatterns patterns = ReadTexts(*rows, rowCount, edit.Locale);
    // Here and not before: an import that was refused leaves no step to undo.
    edit.PushUndo(UndoOperation::Import, edit.WholeSheet());
    Columns.MoveInto(*rows, rowCount, edit.Sheet);
    SetPatterns(edit.Sheet, patterns);
    if (ckHeadings) {
      ReadHeadings(edit.Locale);
      NameVariables(edit.Sheet);
    }
    if (const std::string texts = TextSummary(edit.Sheet, rowCount); !texts.empty()) edit.User.Inform(texts);
    return ImportOutcome::Imported;
  } catch (const std::bad_alloc&) {
    edit.User.Refuse(ImportFailure(Source, "").Message);
    return ImportOutcome::Failed;
  }
}

void DataImport::LeaveCommentsOut(GridCells& rows, std::size_t first) const {
  if (!ckComments || Comments.empty()) return;
  std::vector<bool> comments(rows.GridLastRow());
  for (std::size_t row = 0; row < comments.size(); ++row) comments[row] = CommentAt(first + row) != nullptr;
  rows.DeleteMarkedRows(comments);
}

std::optional<Result<GridCells>> DataImport::ReadNumbers(Prompter& user, const LocaleText& locale) const {
  const auto first = static_cast<std::size_t>(std::min(StartRow(locale), 1e15));
  auto rows = Await(&user, ReadingText(), ReadRows(first, std::numeric_limits<std::size_t>::max() - first, Marker()));
  if (!rows || !*rows) return rows;
  GridCells& cells = **rows;
  LeaveCommentsOut(cells, first);
  cells.FirstLine = first;
  if (!cells.HasTexts()) return rows;
  const ColumnDates dates = Dates(cells, locale);
  for (std::size_t col = 1; col <= cells.GridLastCol(); ++col) {
    for (std::size_t row = 1; row <= cells.GridLastRow(); ++row) {
      const double cell = cells.Cell(row, col);
      if (!GridCells::IsText(cell)) continue;
      if (const auto value = TypedValue(cells, cell, dates.LocaleOf(col)))
        cells.SetGridCellNumber(row, col, *value);
      else if (ckTextMissing)
        cells.ClearCell(row, col);
    }
  }
  return rows;
}

ColumnPatterns DataImport::ReadTexts(GridCells& rows, std::size_t count, const LocaleText& locale) const {
  const ColumnDates dates = Dates(rows, locale);
  std::vector<DateForm> forms(rows.GridLastCol());
  std::vector<bool> otherNumbers(rows.GridLastCol());
  for (std::size_t row = 1; row <= count; ++row) {
    for (std::size_t col = 1; col <= rows.GridLastCol(); ++col) {
      const double cell = rows.Cell(row, col);
      if (!std::isnan(cell)) otherNumbers[col - 1] = true;
      if (!GridCells::IsText(cell) || Columns.VariableOf(col).empty()) continue;
      const std::optional<CellEntry> entry = ReadCellEntry(rows.TextBehind(cell), dates.LocaleOf(col));
      if (entry && entry->Value) {
        rows.SetGridCellNumber(row, col, *entry->Value);
        if (entry->Date) {
          forms[col - 1].Join(*entry->Date);
        } else {
          otherNumbers[col - 1] = true;
        }
      } else if (ckTextMissing) {
        rows.ClearCell(row, col);
      }
    }
  }
  ColumnPatterns patterns;
  for (std::size_t v = 1; v <= Columns.lstHeaders().size(); ++v) {
    const std::size_t col = Columns.ColumnOf(v);
    if (col == 0 || col > forms.size()) continue;
    const std::string pattern = otherNumbers[col - 1] ? rows.DatePattern(col) : forms[col - 1].Pattern();
    if (!pattern.empty()) patterns.emplace_back(v, pattern);
  }
  return patterns;
}

std::string DataImport::TextSummary(const DataSheet& sheet, std::size_t rows) const {
  IncomingCells incoming;
  for (std::size_t v = 1; v <= sheet.ColumnCount(); ++v)
    if (Columns.ColumnOf(v) != 0) incoming.CountTexts(sheet, {1, v, rows, v});
  return incoming.Summary(sheet);
}

bool DataImport::IsBlank(std::size_t line) const {
  for (std::size_t col = 1; col <= cells_.GridLastCol(); ++col)
    if (!GridCells::IsEmpty(cells_.Cell(line, col))) return false;
  return true;
}

std::vector<std::string> DataImport::HeadingsIn(std::size_t line, const LocaleText& locale,
                                                const ColumnDates& dates) const {
  const std::size_t columns = Columns.lstColumns().size();
  std::vector<std::string> headings(columns);
  std::size_t words = 0;
  if (const CommentLine* comment = ckComments ? CommentAt(line) : nullptr) {
    headings = CommentCells(*comment);
    words = headings.size() == columns ? columns : 0;
    for (const std::string& word : headings)
      if (const auto entry = ReadCellEntry(word, locale); entry) words = 0;  // blank, or a number
    return words > 0 ? headings : std::vector<std::string>();
  }
  for (std::size_t col = 1; col <= columns; ++col) {
    const double cell = cells_.Cell(line, col);
    if (GridCells::IsEmpty(cell)) continue;
    if (!StaysText(cells_, cell, dates.LocaleOf(col))) return {};
    headings[col - 1] = cells_.TextBehind(cell);
    ++words;
  }
  // A single text above several columns is a title. Row numbers have no heading.
  return words > 1 || words == columns ? headings : std::vector<std::string>();
}

std::vector<std::string> DataImport::Headings(const LocaleText& locale) const {
  if (!cells_.ColumnNames.empty()) return cells_.ColumnNames;
  const double above = StartRow(locale) - 1;
  if (above > static_cast<double>(cells_.GridLastRow())) return {};
  std::vector<std::string> units;
  const ColumnDates dates = Dates(locale);
  for (auto line = static_cast<std::size_t>(above); line >= 1; --line) {
    std::vector<std::string> headings = HeadingsIn(line, locale, dates);
    const bool passed = IsComment(line) || IsBlank(line);
    if (headings.empty() && passed) continue;
    if (headings.empty()) break;
    if (units.empty() && AreUnits(headings)) {
      units = std::move(headings);
      continue;
    }
    for (std::size_t col = 0; col < units.size(); ++col) headings[col] = WithUnit(headings[col], units[col]);
    return headings;
  }
  return units;  // "T, V" are names where there are no others
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
