#include "sheet/CellEntry.h"

#include <algorithm>
#include <charconv>
#include <chrono>

#include "core/NumberText.h"

namespace quorvex {
namespace {

std::string WithSeparator(std::string number, const LocaleText& locale) {
  std::replace(number.begin(), number.end(), '.', locale.DecimalSeparator);
  return number;
}

// The unsigned number of `least` to `most` digits at the start of `text`, which is taken off; -1 where there is none.
int TakeDigits(std::string_view& text, std::size_t least, std::size_t most) {
  int value = -1;
  const char* end = text.data() + std::min(most, text.size());
  const auto [behind, error] = std::from_chars(text.data(), end, value);
  const auto count = static_cast<std::size_t>(behind - text.data());
  if (error != std::errc() || count < least || value < 0) return -1;
  text.remove_prefix(count);
  return value;
}

std::optional<double> DateText(std::string_view text, char dateSeparator) {
  using namespace std::chrono;
  // The year comes first: any other order would be a guess, and a wrong guess is a wrong number.
  const int y = TakeDigits(text, 4, 4);
  if (y < 1900 || text.empty() || (text[0] != '-' && text[0] != dateSeparator)) return std::nullopt;
  const char separator = text[0];
  text.remove_prefix(1);
  const int m = TakeDigits(text, 1, 2);
  if (m < 1 || !text.starts_with(separator)) return std::nullopt;
  text.remove_prefix(1);
  const int d = TakeDigits(text, 1, 2);
  if (d < 1 || !text.empty()) return std::nullopt;
  const year_month_day date{year(y), month(static_cast<unsigned>(m)), day(static_cast<unsigned>(d))};
  if (!date.ok()) return std::nullopt;
  return (sys_days(date) - sys_days(year(1899) / 12 / 30)).count();
}

}  // namespace

std::string ShownText(const DataSheet& sheet, std::size_t row, std::size_t col, const LocaleText& locale) {
  const double cell = sheet.Cells.Cell(row, col);
  if (GridCells::IsEmpty(cell)) return "";
  if (GridCells::IsText(cell)) return sheet.Cells.TextBehind(cell);
  const bool formatted = col <= sheet.Formats.size();
  return ShownNumber(cell, formatted ? sheet.Formats[col - 1].NumberFormat : "General", locale);
}

std::string ShownNumber(double value, const std::string& NumberFormat, const LocaleText& locale) {
  return WithSeparator(FormatNumber(value, NumberFormat), locale);
}

std::string EntryText(const GridCells& cells, std::size_t row, std::size_t col, const LocaleText& locale) {
  const double cell = cells.Cell(row, col);
  if (GridCells::IsEmpty(cell)) return "";
  return GridCells::IsText(cell) ? cells.TextBehind(cell) : WithSeparator(ShortestNumber(cell), locale);
}

std::optional<CellEntry> ReadCellEntry(std::string_view text, const LocaleText& locale) {
  text = Trim(text);
  if (text.empty()) return CellEntry();
  std::optional<double> value = NumericText(text, locale.DecimalSeparator);
  if (!value) value = DateText(text, locale.DateSeparator);
  if (!value) return std::nullopt;
  return CellEntry{value};
}

}  // namespace quorvex
