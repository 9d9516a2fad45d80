#include "sheet/EditCommands.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "core/Files.h"
#include "core/NumberText.h"
#include "sheet/CellEntry.h"

namespace quorvex {
namespace {

// The grid keeps its last row free when rows are inserted.
constexpr std::size_t kMostRowsAfterInsert = kMostSheetRows - 1;

// Cells to be put somewhere: as many rows and columns as their text has, though the last may be empty.
struct Block {
  GridCells Cells;
  std::size_t Rows = 0, Cols = 0;
};

// The most cells that a line of the text has.
std::size_t WidestLine(std::string_view text, char delimiter) {
  std::size_t widest = 0;
  while (!text.empty()) {
    const std::string_view line = TakeLine(text);
    widest = std::max(widest, static_cast<std::size_t>(std::count(line.begin(), line.end(), delimiter)) + 1);
  }
  return widest;
}

// The parser knows numbers; in a sheet a date is one too.
void ReadDates(Block& block, const LocaleText& locale) {
  for (std::size_t col = 1; col <= block.Cols; ++col) {
    for (std::size_t row = 1; row <= block.Rows; ++row) {
      const double cell = block.Cells.Cell(row, col);
      if (!GridCells::IsText(cell)) continue;
      if (const auto entry = ReadCellEntry(block.Cells.TextBehind(cell), locale); entry && entry->Value)
        block.Cells.SetGridCellNumber(row, col, *entry->Value);
    }
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
Block ReadBlock(std::string_view text, DelimitedFormat format, const LocaleText& locale, bool rotated, std::size_t rows,
                std::size_t cols) {
  format.OverrideDecimal = false;  // the clipboard speaks the user's locale
  format.DecimalSeparator = locale.DecimalSeparator;
  format.LineLimit = rotated ? cols : rows;
  format.ColumnLimit = rotated ? rows : cols;
  DelimitedLines parsed = ParseDelimitedLines(text, format);
  Block block{std::move(parsed.Cells), parsed.Rows, 0};
  const std::size_t width =
      format.Delimiters == kTabDelimiter && !format.IgnoreConsecutive ? WidestLine(text, '\t') : 0;
  block.Cols = std::min(format.ColumnLimit, std::max(width, block.Cells.GridLastCol()));
  ReadDates(block, locale);
  if (!rotated) return block;
  return {Rotated(block.Cells, block.Rows, block.Cols), block.Cols, block.Rows};
}

bool PasteAt(const SheetEdit& edit, const CellRange& selected, const Clipboard& clipboard,
             const DelimitedFormat& format, bool rotated, const char* label) {
  const std::size_t row = selected.FirstRow, col = selected.FirstCol;
  if (row > kMostSheetRows || col > edit.Sheet.ColumnCount()) return false;
  const Block block = ReadBlock(clipboard.Text(), format, edit.Locale, rotated, kMostSheetRows - row + 1,
                                edit.Sheet.ColumnCount() - col + 1);
  if (block.Rows == 0 || block.Cols == 0) return false;
  const CellRange target{row, col, row + block.Rows - 1, col + block.Cols - 1};
  edit.PushUndo(label, target);
  edit.Sheet.Cells.PutRange(target, block.Cells);
  return true;
}

bool CopyTo(const SheetEdit& edit, Clipboard& clipboard, std::string_view command, bool rotated) {
  const auto range = edit.OneRange(command);
  if (range) clipboard.SetText(RangeText(edit.Sheet.Cells, *range, edit.Locale, rotated));
  return range.has_value();
}

// Flags for rows that have some, but not all, of their X and Y.
std::vector<bool> IncompleteRows(const DataSheet& sheet) {
  std::vector<bool> incomplete(sheet.Cells.GridLastRow());
  const std::size_t needed = sheet.IndependentVariables + 1;
  for (std::size_t row = 1; row <= incomplete.size(); ++row) {
    std::size_t filled = 0;
    for (std::size_t col = 1; col <= needed; ++col) filled += GridCells::IsEmpty(sheet.Cells.Cell(row, col)) ? 0 : 1;
    incomplete[row - 1] = filled > 0 && filled < needed;
  }
  return incomplete;
}

}  // namespace

std::string RangeText(const GridCells& cells, const CellRange& range, const LocaleText& locale, bool rotated) {
  const std::size_t used = std::max(cells.GridLastRow(), range.FirstRow);
  const std::size_t lastRow = range.LastRow >= kMostSheetRows ? std::min(range.LastRow, used) : range.LastRow;
  std::string text;
  const auto append = [&](std::size_t row, std::size_t col, bool endsLine) {
    std::string cell = EntryText(cells, row, col, locale);
    // What would split the cell in two becomes a blank.
    std::replace_if(
        cell.begin(), cell.end(), [](char c) { return c == '\t' || c == '\r' || c == '\n'; }, ' ');
    text += cell;
    text += endsLine ? NL : "\t";
  };
  if (rotated) {
    for (std::size_t col = range.FirstCol; col <= range.LastCol; ++col)
      for (std::size_t row = range.FirstRow; row <= lastRow; ++row) append(row, col, row == lastRow);
  } else {
    for (std::size_t row = range.FirstRow; row <= lastRow; ++row)
      for (std::size_t col = range.FirstCol; col <= range.LastCol; ++col) append(row, col, col == range.LastCol);
  }
  return text;
}

bool EditCut(const SheetEdit& edit, Clipboard& clipboard) {
  if (!CopyTo(edit, clipboard, "Cut", false)) return false;
  edit.PushUndo("&Undo Cut", edit.Selection.front());
  edit.Sheet.Cells.GridClearRange(edit.Selection.front());
  return true;
}

bool EditCopy(const SheetEdit& edit, Clipboard& clipboard) { return CopyTo(edit, clipboard, "Copy", false); }

bool CopyGrid(const SheetEdit& edit, Clipboard& clipboard) {
  const CellRange sheet = edit.WholeSheet();
  if (sheet.LastRow == 0) return false;
  clipboard.SetText(RangeText(edit.Sheet.Cells, sheet, edit.Locale));
  return true;
}

bool EditPaste(const SheetEdit& edit, const Clipboard& clipboard) {
  const auto range = edit.OneRange("Paste");
  return range && PasteAt(edit, *range, clipboard, DelimitedFormat(), false, "&Undo Paste");
}

bool MayPasteSpecial(const SheetEdit& edit) { return edit.OneRange("Paste Special").has_value(); }

bool MayCopySpecial(const SheetEdit& edit) { return edit.OneRange("Copy Special").has_value(); }

bool PasteSpecial(const SheetEdit& edit, const Clipboard& clipboard, DelimitedFormat format, bool rotated) {
  const auto range = edit.OneRange("Paste Special");
  const char* const label = rotated ? "&Undo Paste Rotated" : "&Undo Paste Special";
  return range && PasteAt(edit, *range, clipboard, format, rotated, label);
}

bool CopySpecial(const SheetEdit& edit, Clipboard& clipboard, bool rotated) {
  return CopyTo(edit, clipboard, "Copy Special", rotated);
}

bool ClearSelection(const SheetEdit& edit) {
  const auto range = edit.OneRange("Clear");
  if (!range) return false;
  edit.PushUndo("&Undo Clear Selection", *range);
  edit.Sheet.Cells.GridClearRange(*range);
  return true;
}

bool ClearGrid(const SheetEdit& edit) {
  const std::string question = "This operation will clear all existing data. " + std::string(NL);
  if (!edit.User.Ask(question + "Do you want to continue?")) return false;
  edit.PushUndo("&Undo Clear Sheet", edit.WholeSheet());
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
  edit.PushUndo("&Undo Insert Row(s)", *range);
  edit.Sheet.Cells.GridInsertRows(range->FirstRow, range->Rows());
  return true;
}

bool DeleteSelection(const SheetEdit& edit) {
  auto range = edit.OneRange("Delete");
  if (!range) return false;
  range->LastRow = std::min(range->LastRow, edit.Sheet.Cells.GridLastRow());
  if (range->LastRow < range->FirstRow) return false;
  edit.PushUndo("&Undo Delete Selection", *range);
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
  edit.PushUndo("&Undo Delete Incomplete Rows", edit.WholeSheet());
  edit.Sheet.Cells.DeleteMarkedRows(incomplete);
  edit.User.Inform(std::to_string(count) + " incomplete rows were deleted.");
  return true;
}

}  // namespace quorvex
