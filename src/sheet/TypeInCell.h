#pragma once

#include <cstddef>
#include <string>

#include "sheet/SheetEdit.h"

namespace quorvex {

// Typing in a cell of the sheet, rows and columns counted from 1: a number or a date is stored, blanks empty the cell,
// and anything else is refused and changes nothing. A column that nobody gave a number pattern and that holds no other
// number shows a date as it was typed from then on. A text that is the cell's own changes nothing either. False where
// the entry was refused and stays open.
bool TypeInCell(const SheetEdit& edit, std::size_t row, std::size_t col, const std::string& text);

}  // namespace quorvex
