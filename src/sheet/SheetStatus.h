#pragma once

#include <cstddef>
#include <string>

#include "sheet/DataSheet.h"

namespace quorvex {

// What the status bar says of a cell, counted from 1, and its sheet: "X, row 2   |   1 row of data".
std::string SheetStatus(const DataSheet& sheet, std::size_t row, std::size_t col);

// How to begin, for whoever is in front of an empty sheet; "" where there are data.
std::string EmptySheetHint(const DataSheet& sheet);

}  // namespace quorvex
