#pragma once

#include <cstddef>

namespace quorvex {

// A rectangle of cells, rows and columns counted from 1, both ends included.
struct CellRange {
  std::size_t FirstRow = 1, FirstCol = 1, LastRow = 1, LastCol = 1;

  std::size_t Rows() const { return LastRow - FirstRow + 1; }
  std::size_t Cols() const { return LastCol - FirstCol + 1; }
  bool operator==(const CellRange&) const = default;
};

// A cell of the sheet, counted from 1.
struct CellPlace {
  std::size_t Row = 1, Col = 1;

  bool operator==(const CellPlace&) const = default;
};

inline constexpr std::size_t kMostSheetRows = 65'536;

// How cells are laid down that are taken from somewhere: as they are, or with rows and columns exchanged.
enum class CellOrder { Kept, Rotated };

}  // namespace quorvex
