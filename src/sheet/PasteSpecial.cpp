#include "sheet/PasteSpecial.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "core/Files.h"
#include "core/NumberText.h"
#include "sheet/CellEntry.h"
#include "sheet/ColumnDates.h"
#include "sheet/DecimalCommas.h"
#include "sheet/IncomingCells.h"
#include "sheet/ParseDelimitedLines.h"

namespace quorvex {
namespace {

// Cells to be put somewhere: as many rows and columns as their text has, though the last may be empty.
struct Block {
  GridCells Cells;
  std::size_t Rows = 0, Cols = 0;
  ColumnPatterns Dates;  // the patterns of the columns that hold dates and no other numbers
};

// How many lines a text has, and how many cells its widest line.
struct TextSize {
  std::size_t Lines = 0, Cells = 0;
};

// Of the first `limit` lines, with all cells that tabs make; or of those lines and cells that hold anything.
TextSize SizeOf(std::string_view text, std::size_t limit) {
  TextSize size;
  for (; size.Lines < limit && !text.empty(); ++size.Lines) {
    const std::string_view line = TakeLine(text);
    size.Cells = std::max(size.Cells, static_cast<std::size_t>(std::count(line.begin(), line.end(), '\t')) + 1);
  }
  return size;
}

TextSize FilledSizeOf(std::string_view text) {
  TextSize size;
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::string_view line = TakeLine(text);
    const std::size_t end = line.find_last_not_of("\t ");
    if (end == std::string_view::npos) continue;
    const auto tabs = std::count(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(end), '\t');
    size = {number, std::max(size.Cells, static_cast<std::size_t>(tabs) + 1)};
  }
  return size;
}

// The parser knows the locale's numbers. In a sheet a date is a number too, whose column tells its order, and so is a
// number with a point from a program that speaks no locale.
void ReadOtherNumbers(Block& block, const LocaleText& locale) {
  const ColumnDates dates(block.Cells, locale);
  for (std::size_t col = 1; col <= block.Cols; ++col) {
    DateForm form;
    bool otherNumbers = false;
    for (std::size_t row = 1; row <= block.Rows; ++row) {
      const double cell = block.Cells.Cell(row, col);
      otherNumbers |= !std::isnan(cell);
      if (!GridCells::IsText(cell)) continue;
      const std::string& text = block.Cells.TextBehind(cell);
      const auto entry = ReadCellEntry(text, dates.LocaleOf(col));
      const auto value = entry ? entry->Value : NumericText(text);
      if (!value) continue;
      block.Cells.SetGridCellNumber(row, col, *value);
      if (entry && entry->Date) {
        form.Join(*entry->Date);
      } else {
        otherNumbers = true;
      }
    }
    if (const std::string pattern = form.Pattern(); !otherNumbers && !pattern.empty())
      block.Dates.emplace_back(col, pattern);
  }
}

GridCells Rotated(const GridCells& cells, std::size_t rows, std::size_t cols) {
  GridCells rotated;
  for (std::size_t row = 1; row <= rows; ++row) {
    for (std::size_t col = 1; col <= cols; ++col) {
      const double cell = cells.Cell(row, col);
      if (GridCells::IsText(cell)) {
        rotated.SetGridCellText(col, row, cells.TextBehind(cell));
      } else if (!GridCells::IsEmpty(cell)) {
        rotated.SetGridCellNumber(col, row, cell);
      }
    }
  }
  return rotated;
}

// Reads the text as it will stand in a sheet that has room for `rows` rows and `cols` columns.
Block ReadBlock(std::string_view text, const LocaleText& locale, CellOrder order, std::size_t rows, std::size_t cols) {
  DelimitedFormat format;
  format.OverrideDecimal = false;
  format.DecimalSeparator = locale.DecimalSeparator;
  format.LineLimit = order == CellOrder::Rotated ? cols : rows;
  format.ColumnLimit = order == CellOrder::Rotated ? rows : cols;
  DelimitedLines parsed = ParseDelimitedLines(text, format);
  // The parser stores no empty cells at line ends, but they are to empty those of the sheet.
  Block block{
      std::move(parsed.Cells), parsed.Rows, std::min(format.ColumnLimit, SizeOf(text, format.LineLimit).Cells), {}};
  if (order == CellOrder::Rotated) block = {Rotated(block.Cells, block.Rows, block.Cols), block.Cols, block.Rows, {}};
  return block;
}

// Numbers with decimal commas would come into the sheet as texts. The first row may be headings. To be offered before
// dates are read: a time of day is a number with decimals, which tells nothing of commas.
void OfferDecimalCommas(Block& block, const SheetEdit& edit) {
  if (edit.Locale.DecimalSeparator != '.') return;
  for (const std::size_t first : {1U, 2U}) {
    const DecimalCommas commas = FindDecimalCommas(block.Cells, first, block.Rows);
    if (commas.Columns.empty()) continue;
    if (edit.User.Ask(DecimalCommaNotice(commas.Example) + " Read them as numbers?"))
      ReadDecimalCommas(block.Cells, commas.Columns, first, block.Rows);
    return;
  }
}

// Takes the first row off a block; "" for an empty cell.
std::vector<std::string> TakeFirstRow(Block& block) {
  std::vector<std::string> texts;
  for (std::size_t col = 1; col <= block.Cols; ++col) texts.emplace_back(Trim(block.Cells.GridCellText(1, col)));
  block.Cells.GridDeleteRows(1, 1);
  --block.Rows;
  return texts;
}

}  // namespace

std::string ClipboardText(const DataSheet& sheet, const CellRange& range, const LocaleText& locale, CellOrder order) {
  const std::size_t used = std::max(sheet.Cells.GridLastRow(), range.FirstRow);
  const std::size_t lastRow = range.LastRow >= kMostSheetRows ? std::min(range.LastRow, used) : range.LastRow;
  std::string text;
  const auto append = [&](std::size_t row, std::size_t col, bool endsLine) {
    std::string cell = FullText(sheet, row, col, locale);
    // What would split the cell in two becomes a blank.
    std::replace_if(
        cell.begin(), cell.end(), [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
    text += cell;
    text += endsLine ? NL : "\t";
  };
  if (order == CellOrder::Rotated) {
    for (std::size_t col = range.FirstCol; col <= range.LastCol; ++col)
      for (std::size_t row = range.FirstRow; row <= lastRow; ++row) append(row, col, row == lastRow);
  } else {
    for (std::size_t row = range.FirstRow; row <= lastRow; ++row)
      for (std::size_t col = range.FirstCol; col <= range.LastCol; ++col) append(row, col, col == range.LastCol);
  }
  return text;
}

bool PasteText(const SheetEdit& edit, std::string_view text, std::size_t row, std::size_t col, CellOrder order,
               const UndoLabel& label) {
  if (row > kMostSheetRows || col > edit.Sheet.ColumnCount()) return false;
  DataSheet& sheet = edit.Sheet;
  const std::size_t rows = kMostSheetRows - row + 1, cols = sheet.ColumnCount() - col + 1;
  // One row more than there is room for: the first may be headings.
  Block block = ReadBlock(text, edit.Locale, order, rows + 1, cols);
  if (block.Rows == 0 || block.Cols == 0) return false;
  OfferDecimalCommas(block, edit);
  ReadOtherNumbers(block, edit.Locale);
  const bool named = FirstRowIsHeadings(block.Cells) && edit.User.Ask(kHeadingsQuestion);
  const std::vector<std::string> names = named ? TakeFirstRow(block) : std::vector<std::string>();
  block.Rows = std::min(block.Rows, rows);
  const CellRange target{row, col, row + block.Rows - 1, col + block.Cols - 1};
  ColumnPatterns patterns;
  for (auto& [blockCol, pattern] : block.Dates)
    if (const std::size_t to = col + blockCol - 1; TakesDatePattern(sheet, to, target.FirstRow, target.LastRow))
      patterns.emplace_back(to, pattern);
  edit.PushUndo(UndoLabel(label).WithPatterns(!patterns.empty()), target);
  SetPatterns(sheet, patterns);
  for (std::size_t i = 0; i < names.size(); ++i)
    if (!names[i].empty()) sheet.Headers[col - 1 + i] = names[i];
  sheet.Cells.PutRange(target, block.Cells);

  IncomingCells incoming;
  incoming.CountTexts(sheet, target);
  TextSize all = FilledSizeOf(text);
  if (order == CellOrder::Rotated) std::swap(all.Lines, all.Cells);
  const auto beyond = [](std::size_t count, std::size_t room) { return count > room ? count - room : 0; };
  incoming.RowsBeyond = beyond(all.Lines, rows + (named ? 1 : 0));
  incoming.ColumnsBeyond = beyond(all.Cells, cols);
  if (const std::string summary = incoming.Summary(sheet); !summary.empty()) edit.User.Inform(summary);
  return true;
}

bool PasteSpecial(const SheetEdit& edit, std::string_view text, CellOrder order) {
  const auto range = edit.OneRange(kPasteSpecialCommand);
  return range && PasteText(edit, text, range->FirstRow, range->FirstCol, order,
                            order == CellOrder::Rotated ? UndoOperation::PasteRotated : UndoOperation::PasteSpecial);
}

std::optional<std::string> CopySpecial(const SheetEdit& edit, CellOrder order) {
  const auto range = edit.OneRange(kCopySpecialCommand);
  if (!range) return std::nullopt;
  return ClipboardText(edit.Sheet, *range, edit.Locale, order);
}

}  // namespace quorvex
