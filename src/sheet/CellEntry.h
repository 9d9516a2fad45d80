#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "core/LocaleText.h"
#include "sheet/DataSheet.h"

namespace quorvex {

// A cell and the texts that the user sees and types. Rows and columns are counted from 1.

// What the sheet shows: a number by the pattern of its column, with the locale's decimal separator; a text as it is.
std::string ShownText(const DataSheet& sheet, std::size_t row, std::size_t col, const LocaleText& locale);

// What a column of that number pattern shows of a number.
std::string ShownNumber(double value, const std::string& NumberFormat, const LocaleText& locale);

// What an editor of the cell begins with: of a number the shortest text that reads back to the same value.
std::string EntryText(const GridCells& cells, std::size_t row, std::size_t col, const LocaleText& locale);

// What was typed into a cell.
struct CellEntry {
  std::optional<double> Value;  // nothing empties the cell
};

// Reads a number in the locale's form, a date, or blanks. A date is year, month and day in this order, separated by "-"
// or the locale's date separator, from 1900-01-01 to 9999-12-31; its value is the number of days since 30 December
// 1899, as spreadsheets count them. Nothing where the text is neither.
std::optional<CellEntry> ReadCellEntry(std::string_view text, const LocaleText& locale);

}  // namespace quorvex
