#pragma once

#include <cstddef>
#include <vector>

#include "sheet/DataSheet.h"

namespace quorvex {

// Flags for the rows, from the first, that have some, but not all, of their X and Y.
std::vector<bool> IncompleteRows(const DataSheet& sheet);

// The rows that have all of their X and Y, but a text among those or as their standard deviation.
struct TextRows {
  std::vector<bool> Rows;  // flags, from the first row
  std::size_t Count = 0;   // of the rows
  std::size_t Cells = 0;   // how many texts they hold
  CellPlace First;         // the first text, row by row
};
TextRows FindTextRows(const DataSheet& sheet);

}  // namespace quorvex
