#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/Result.h"
#include "sheet/SheetEdit.h"

namespace quorvex {

// The commands on columns, their headers and formats. They return whether they changed the sheet.

// Two columns over the same rows, as Exchange and the plots of two columns take them.
struct ColumnPair {
  std::size_t FirstCol = 1, SecondCol = 2;  // the left one first
  std::size_t FirstRow = 1, LastRow = 1;

  bool operator==(const ColumnPair&) const = default;
};

// The two columns of a selection: one range of two columns, or two ranges in different columns over the same rows.
// Fails with what the user has selected instead.
Result<ColumnPair> SelectedColumnPair(const std::vector<CellRange>& selection);

// Exchanges the values of two selected columns, and their headers where the user wants that too.
bool mnuEditExchange(const SheetEdit& edit);

// Asks for a new header of column `col`, counted from 1.
bool EditHeader(const SheetEdit& edit, std::size_t col);
// Gives all columns their default headers.
bool FormatDefault(const SheetEdit& edit);

// The patterns that a dialog offers for numbers; any other may be typed.
inline constexpr const char* kNumberPatterns[] = {"General", "0",      "0.0",      "0.00",        "0.000",
                                                  "0.0000",  "0.0###", "0.00E+00", "0.000000E+00"};

// Those that it offers for dates and times, behind the others.
inline constexpr const char* kDatePatterns[] = {"yyyy-mm-dd", "dd.mm.yyyy", "mm/dd/yyyy",   "yyyy-mm-dd hh:mm",
                                                "hh:mm",      "hh:mm:ss",   "hh:mm:ss.000", "[h]:mm"};

// Changes the number format of the selected columns to the one that `choose`, the dialog, makes of the format of the
// first; nothing cancels.
bool FormatCells(const SheetEdit& edit,
                 const std::function<std::optional<std::string>(const std::string& NumberFormat)>& choose);

}  // namespace quorvex
