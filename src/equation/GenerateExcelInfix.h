#pragma once

#include <span>
#include <string>
#include <string_view>

#include "core/Result.h"
#include "equation/DataStatistics.h"
#include "equation/Expression.h"

namespace quorvex {

// What the user reads after the formula has gone to the clipboard, lines separated by NL.
extern const std::string_view kExcelHelp;

// The reference of the cell that holds x (with several variables, x1) from what the user typed: a column "A" to "IV" in
// either case and a row 1 to 65536. Fails with the text for the one that is wrong, the column first.
Result<std::string> ExcelCellReference(std::string_view column, std::string_view row);

// The model as a spreadsheet formula, "=" included, with "." in numbers and "," between arguments; `Values` and the
// statistics of the data stand in it as numbers, supporting functions as their bodies. X is read from `CellReferance`,
// further variables from the cells to the right of it (XInColumns) or below it.
//
// Fails with the user's text where the reference, or the last variable's, lies off the sheet, where the model has a
// word that spreadsheets do not know, and where the formula is longer than a cell can hold.
//
// Where the spreadsheet parts from the program: its comparisons are 1 and not -1, "and" and "or" stand between their
// operands as in the model, and RAND takes no seed.
Result<std::string> GenerateExcelInfix(const Expression& expression, std::span<const double> Values,
                                       const DataStatistics& statistics, std::string_view CellReferance,
                                       bool XInColumns);

}  // namespace quorvex
