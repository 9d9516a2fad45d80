#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "core/LocaleText.h"
#include "core/SerialDate.h"
#include "sheet/DataSheet.h"

namespace quorvex {

// A cell and the texts that the user sees and types. Rows and columns are counted from 1.

// The number pattern of a column; what lies right of the last has none of its own.
const std::string& PatternOf(const DataSheet& sheet, std::size_t col);

// What the sheet shows: a number by the pattern of its column, with the locale's decimal separator; a text as it is.
std::string ShownText(const DataSheet& sheet, std::size_t row, std::size_t col, const LocaleText& locale);

// What a column of that number pattern shows of a number.
std::string ShownNumber(double value, const std::string& NumberFormat, const LocaleText& locale);

// What an editor of the cell begins with: of a number the shortest text that reads back to the same value, in a column
// of dates a date or time that does.
std::string EntryText(const DataSheet& sheet, std::size_t row, std::size_t col, const LocaleText& locale);

// The same for other programs: a date is in ISO form.
std::string FullText(const DataSheet& sheet, std::size_t row, std::size_t col, const LocaleText& locale);

// What was typed into a cell.
struct CellEntry {
  std::optional<double> Value;   // nothing empties the cell
  std::optional<DateForm> Date;  // how it was written, where it is a date or time
};

// Reads a number in the locale's form, a date or time as ReadDate does, or blanks. Nothing where the text is none of
// them.
std::optional<CellEntry> ReadCellEntry(std::string_view text, const LocaleText& locale);

}  // namespace quorvex
