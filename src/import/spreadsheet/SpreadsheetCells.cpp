#include "import/spreadsheet/SpreadsheetCells.h"

#include <charconv>
#include <chrono>
#include <optional>
#include <string>

#include "core/NumberText.h"
#include "sheet/ParseDelimitedLines.h"

namespace quorvex {
namespace {

// Takes a number of digits alone off the front, and the character behind it, which must be `separator` unless that is
// 0. Nothing where there is none.
std::optional<int> TakeNumber(std::string_view& text, char separator) {
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || text[0] == '-') return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
  if (separator == 0) return number;
  if (text.empty() || text[0] != separator) return std::nullopt;
  text.remove_prefix(1);
  return number;
}

std::optional<double> SerialDay(std::string_view text) {
  using namespace std::chrono;
  if (text.ends_with('Z')) text.remove_suffix(1);
  const auto y = TakeNumber(text, '-'), m = TakeNumber(text, '-'), d = TakeNumber(text, 0);
  if (!y || !m || !d) return std::nullopt;
  const year_month_day date(year(*y), month(static_cast<unsigned>(*m)), day(static_cast<unsigned>(*d)));
  if (!date.ok()) return std::nullopt;
  // Spreadsheets take 1 January 1900 for day 1 and count a 29 February of that year, which never was.
  const auto days = static_cast<double>((sys_days(date) - sys_days(year(1899) / 12 / 30)).count());
  if (text.empty()) return days;
  if (text[0] != 'T') return std::nullopt;
  text.remove_prefix(1);
  const auto hours = TakeNumber(text, ':'), minutes = TakeNumber(text, ':');
  const auto seconds = NumericText(text);
  if (!hours || !minutes || !seconds) return std::nullopt;
  return days + (*hours * 3600 + *minutes * 60 + *seconds) / 86400;
}

}  // namespace

bool SpreadsheetCells::SetNumber(std::size_t row, std::size_t col, double value) {
  if (!Admit(row, col, 0)) return false;
  if (col <= kMostColumnsRead) Cells.SetGridCellNumber(row, col, value);
  return true;
}

bool SpreadsheetCells::SetText(std::size_t row, std::size_t col, std::string_view text) {
  if (const auto value = NumericText(text)) return SetNumber(row, col, *value);
  if (Trim(text).empty()) return true;
  const std::string cut = CutCellText(std::string(Trim(text)));
  if (!Admit(row, col, cut.size())) return false;
  if (col <= kMostColumnsRead) Cells.SetGridCellText(row, col, cut);
  return true;
}

bool SpreadsheetCells::SetDate(std::size_t row, std::size_t col, std::string_view text) {
  const auto day = SerialDay(text);
  return day ? SetNumber(row, col, *day) : SetText(row, col, text);
}

bool SpreadsheetCells::Admit(std::size_t row, std::size_t col, std::size_t textSize) {
  constexpr std::size_t kMostCells = 1 << 24;  // of 8 bytes
  if (row > kMostRows) return false;
  taken_ += 1 + (textSize > 0 ? (sizeof(std::string) + textSize) / sizeof(double) : 0);
  if (col <= kMostColumnsRead && row > heights_[col - 1]) {  // the empty cells above it are stored too
    taken_ += row - heights_[col - 1] - 1;
    heights_[col - 1] = row;
  }
  return taken_ <= kMostCells;
}

}  // namespace quorvex
