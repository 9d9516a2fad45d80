#pragma once

#include <cstddef>
#include <string>

#include "core/Prompter.h"
#include "project/Project.h"

namespace quorvex {

// Typing in a cell of the sheet, rows and columns counted from 1: a number or a date is stored, blanks empty the cell,
// and anything else is refused and changes nothing. A text that is the cell's own changes nothing either. False where
// the entry was refused and stays open.
bool TypeInCell(Project& project, std::size_t row, std::size_t col, const std::string& text, Prompter& user);

}  // namespace quorvex
