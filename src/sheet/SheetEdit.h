#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "sheet/CellRange.h"
#include "sheet/DataSheet.h"
#include "sheet/UndoLabel.h"

namespace quorvex {

// What a command that changes cells works on and whom it talks to. The commands return whether they changed the sheet.
// They refuse before they change anything, and push the one snapshot that takes the change back in between.
struct SheetEdit {
  DataSheet& Sheet;
  const LocaleText& Locale;
  Prompter& User;
  std::vector<CellRange> Selection;

  // Remembers the cells of `extent` under `label`.
  std::function<void(const UndoLabel& label, const CellRange& extent)> PushUndo;

  // The one selected range. Several are refused, in a sentence about `command`.
  std::optional<CellRange> OneRange(std::string_view command) const;

  // Every cell that the sheet has or holds, down to the last row in use.
  CellRange WholeSheet() const;

  // The part of a range with data rows that a command on rows means. One row, as is selected when the user just stands
  // somewhere, means all of them. LastRow is below FirstRow where no data row is in the range.
  CellRange DataRows(CellRange range) const;
};

}  // namespace quorvex
