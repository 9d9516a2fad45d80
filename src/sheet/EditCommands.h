#pragma once

#include "core/Clipboard.h"
#include "sheet/SheetEdit.h"

namespace quorvex {

// The commands of the Edit menu on rows and ranges. All of them return whether they changed the sheet; those that copy,
// whether they copied. They work on the one selected range and refuse several.

bool EditCut(const SheetEdit& edit, Clipboard& clipboard);
bool EditCopy(const SheetEdit& edit, Clipboard& clipboard);
// The whole sheet, whatever is selected.
bool CopyGrid(const SheetEdit& edit, Clipboard& clipboard);

// Overwrites cells with the clipboard's text, from the top left corner of the selection on; an empty cell of the text
// empties a cell of the sheet. See PasteText.
bool EditPaste(const SheetEdit& edit, const Clipboard& clipboard);

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
