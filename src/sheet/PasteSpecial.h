#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "sheet/SheetEdit.h"

namespace quorvex {

// The cells of a range as the clipboard has them: tabs between cells, NL behind each row, numbers with the locale's
// decimal separator and with all digits that they need to read back to the same value, dates in ISO form. Rotated, rows
// and columns are exchanged. A range to the end of the sheet is taken as far as the sheet is filled.
std::string ClipboardText(const DataSheet& sheet, const CellRange& range, const LocaleText& locale, CellOrder order);

// Writes a clipboard's text to the sheet, row 1 and column 1 of it at row `row` and column `col`, and takes the
// snapshot `label` of the cells that this overwrites; empty cells empty what they meet. Numbers may have a decimal
// point or the locale's separator, a date becomes its day, shown as one where TypeInCell would show it, and anything
// else a text. What would lie outside the sheet's columns or 65,536 rows is left out. False where nothing lies inside.
// Where the locale has a point, it asks whether to read numbers with decimal commas, which fill a column; then whether
// a first row of headings is to name the columns. It says once how many cells are texts and what was left out.
bool PasteText(const SheetEdit& edit, std::string_view text, std::size_t row, std::size_t col, CellOrder order,
               const UndoLabel& label);

// The commands behind the two dialogs, which ask for no more than the order. Refused for several selected ranges,
// which a window finds out before it opens the dialog: edit.OneRange with the command's words.
inline constexpr const char *kPasteSpecialCommand = "Paste Special", *kCopySpecialCommand = "Copy Special";
bool PasteSpecial(const SheetEdit& edit, std::string_view text, CellOrder order);
std::optional<std::string> CopySpecial(const SheetEdit& edit, CellOrder order);

}  // namespace quorvex
