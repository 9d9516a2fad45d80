#include "sheet/CellEntry.h"

#include <algorithm>

#include "core/NumberText.h"

namespace quorvex {
namespace {

std::string WithSeparator(std::string number, const LocaleText& locale) {
  std::replace(number.begin(), number.end(), '.', locale.DecimalSeparator);
  return number;
}

std::string EntryText(const DataSheet& sheet, std::size_t row, std::size_t col, const LocaleText& locale,
                      const LocaleText& dates) {
  const double cell = sheet.Cells.Cell(row, col);
  if (GridCells::IsEmpty(cell)) return "";
  if (GridCells::IsText(cell)) return sheet.Cells.TextBehind(cell);
  const std::string date = DateEntry(cell, PatternOf(sheet, col), dates);
  return date.empty() ? WithSeparator(ShortestNumber(cell), locale) : date;
}

}  // namespace

const std::string& PatternOf(const DataSheet& sheet, std::size_t col) {
  static const std::string kGeneral = ColumnFormat().NumberFormat;
  return col <= sheet.Formats.size() ? sheet.Formats[col - 1].NumberFormat : kGeneral;
}

std::string ShownText(const DataSheet& sheet, std::size_t row, std::size_t col, const LocaleText& locale) {
  const double cell = sheet.Cells.Cell(row, col);
  if (GridCells::IsEmpty(cell)) return "";
  if (GridCells::IsText(cell)) return sheet.Cells.TextBehind(cell);
  return ShownNumber(cell, PatternOf(sheet, col), locale);
}

std::string ShownNumber(double value, const std::string& NumberFormat, const LocaleText& locale) {
  // The points of a date are no decimal ones.
  if (IsDatePattern(NumberFormat)) return FormatDate(value, NumberFormat, locale.DecimalSeparator);
  return WithSeparator(FormatNumber(value, NumberFormat), locale);
}

std::string EntryText(const DataSheet& sheet, std::size_t row, std::size_t col, const LocaleText& locale) {
  return EntryText(sheet, row, col, locale, locale);
}

std::string FullText(const DataSheet& sheet, std::size_t row, std::size_t col, const LocaleText& locale) {
  return EntryText(sheet, row, col, locale, kIsoDates);
}

std::optional<CellEntry> ReadCellEntry(std::string_view text, const LocaleText& locale) {
  text = Trim(text);
  if (text.empty()) return CellEntry();
  if (const auto value = NumericText(text, locale.DecimalSeparator)) return CellEntry{value, std::nullopt};
  if (const auto date = ReadDate(text, locale)) return CellEntry{date->Days, date->Form};
  return std::nullopt;
}

}  // namespace quorvex
