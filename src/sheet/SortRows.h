#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>

#include "sheet/SheetEdit.h"

namespace quorvex {

// One of the three keys of the Sort dialog.
struct SortKey {
  std::size_t Col = 0;  // a column of the range, 0 where the key is not used
  bool Ascend = true;
};

using SortKeys = std::array<SortKey, 3>;

// Sorts the rows of a range, moving no cell outside it. Rows equal in all keys keep their order. Up the keys go
// numbers, then texts by character code; a row without a cell in a key comes behind those that have one, up and down.
void SortRows(GridCells& cells, const CellRange& range, std::span<const SortKey> keys);

// What the Sort command is about to sort: the data rows of the selection, in all columns where the user wants data
// beside the selection sorted with it.
std::optional<CellRange> SortRange(const SheetEdit& edit);

// Sorts that range by the dialog's keys.
bool Sort(const SheetEdit& edit, const CellRange& range, const SortKeys& keys);

}  // namespace quorvex
