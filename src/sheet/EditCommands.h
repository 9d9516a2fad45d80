#pragma once

#include <string>

#include "core/Clipboard.h"
#include "sheet/ParseDelimitedLines.h"
#include "sheet/SheetEdit.h"

namespace quorvex {

// The commands of the Edit menu on rows and ranges. All of them return whether they changed the sheet; those that copy,
// whether they copied. They work on the one selected range and refuse several.

// The cells of a range as a line per row with a tab between two cells. Numbers are written so that they read back to
// the same value, in the locale's form. Of a selected column only the rows in use are taken; `rotated` makes lines of
// columns.
std::string RangeText(const GridCells& cells, const CellRange& range, const LocaleText& locale, bool rotated = false);

bool EditCut(const SheetEdit& edit, Clipboard& clipboard);
bool EditCopy(const SheetEdit& edit, Clipboard& clipboard);
// The whole sheet, whatever is selected.
bool CopyGrid(const SheetEdit& edit, Clipboard& clipboard);

// Overwrites cells with the clipboard's text, from the top left corner of the selection on; an empty cell of the text
// empties a cell of the sheet. Numbers are read in the locale's form, dates as days, and anything else stays a text.
// What lies outside the sheet is dropped.
bool EditPaste(const SheetEdit& edit, const Clipboard& clipboard);

// The dialogs of the special commands open where these hold.
bool MayPasteSpecial(const SheetEdit& edit);
bool MayCopySpecial(const SheetEdit& edit);
// What they then do. A rotated paste makes columns of lines; the text is split as `format` says.
bool PasteSpecial(const SheetEdit& edit, const Clipboard& clipboard, DelimitedFormat format, bool rotated);
bool CopySpecial(const SheetEdit& edit, Clipboard& clipboard, bool rotated);

// Empties the selected cells.
bool ClearSelection(const SheetEdit& edit);
// Empties all cells, once the user has agreed.
bool ClearGrid(const SheetEdit& edit);

// Inserts as many rows as are selected above the selection, over all columns.
bool InsertRows(const SheetEdit& edit);
// Deletes the selected rows over all columns; the rows below move up.
bool DeleteSelection(const SheetEdit& edit);
// Deletes the rows with some, but not all, of their X and Y.
bool DeleteIncompleteRows(const SheetEdit& edit);

}  // namespace quorvex
