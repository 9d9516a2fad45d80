#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "sheet/DataSheet.h"

namespace quorvex {

// What columns are called wherever the user meets them, by their headings in their order: by the heading without the
// blanks around it, or "Column 3" where that is empty. Headings that several columns share are told apart by their
// places: "rate (column 3)".
std::vector<std::string> ColumnNames(const std::vector<std::string>& headings);

// The same for one column of the sheet, counted from 1. A place behind the last has no name.
std::string ColumnName(const DataSheet& sheet, std::size_t col);

// How an equation names the independent variables, with what the sheet calls their columns: "X1 (wind)", or "X1" alone
// where that is the column's name, too.
std::vector<std::string> VariableNames(const DataSheet& sheet);

}  // namespace quorvex
