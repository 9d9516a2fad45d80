#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "sheet/FindCell.h"
#include "sheet/SheetEdit.h"

namespace quorvex {

// What Replace puts in the place of what was looked for. A number is replaced in the text that an editor of its cell
// begins with, in the user's locale with all digits, and without regard to how its column shows it; matching an entire
// cell, it may be what is shown, too. A number stays one: where the new text is none, its cell is left as it is. A text
// becomes a number where the new one is.
struct ReplaceCells {
  FindCell Find;
  std::string ReplaceWith;

  // Replaces in the active cell, where that matches, and returns the next cell that does. Nothing, and a word to the
  // user where nothing was replaced either, where there is none.
  std::optional<CellPlace> ReplaceNext(const SheetEdit& edit, CellPlace active) const;

  // Replaces in all cells, or those of the selection, in one step for undo, and says in how many. Whether there were
  // any.
  bool ReplaceAll(const SheetEdit& edit, bool inSelection) const;

 private:
  // The new text of a cell; nothing where it doesn't match or is empty.
  std::optional<std::string> NewText(const SheetEdit& edit, CellPlace place) const;
};

}  // namespace quorvex
