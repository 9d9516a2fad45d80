#include "import/spreadsheet/SpreadsheetCells.h"

#include <algorithm>
#include <optional>
#include <string>

#include "core/NumberText.h"
#include "core/SerialDate.h"
#include "sheet/ParseDelimitedLines.h"

namespace quorvex {
bool SpreadsheetCells::SetNumber(std::size_t row, std::size_t col, double value) {
  if (!Admit(row, col, 0)) return false;
  if (col > kMostSeriesColumns) return true;
  Cells.SetGridCellNumber(row, col, value);
  forms_[col - 1].OtherNumbers = true;
  return true;
}

bool SpreadsheetCells::SetDay(std::size_t row, std::size_t col, double value, const DateForm& form) {
  if (!Admit(row, col, 0)) return false;
  if (col > kMostSeriesColumns) return true;
  Cells.SetGridCellNumber(row, col, value);
  forms_[col - 1].Dates.Join(form);
  return true;
}

void SpreadsheetCells::FindDatePatterns() {
  for (std::size_t col = 1; col <= std::min(Cells.GridLastCol(), forms_.size()); ++col)
    Cells.DatePatterns.push_back(forms_[col - 1].OtherNumbers ? "" : forms_[col - 1].Dates.Pattern());
}

bool SpreadsheetCells::SetText(std::size_t row, std::size_t col, std::string_view text) {
  if (const auto value = NumericText(text)) return SetNumber(row, col, *value);
  if (Trim(text).empty()) return true;
  const std::string cut = CutCellText(std::string(Trim(text)));
  if (!Admit(row, col, cut.size())) return false;
  if (col <= kMostSeriesColumns) Cells.SetGridCellText(row, col, cut);
  return true;
}

bool SpreadsheetCells::SetDate(std::size_t row, std::size_t col, std::string_view text) {
  const auto date = ReadDate(text, kIsoDates);
  return date && date->Form.HasDate ? SetDay(row, col, date->Days, date->Form) : SetText(row, col, text);
}

bool SpreadsheetCells::Admit(std::size_t row, std::size_t col, std::size_t textSize) {
  constexpr std::size_t kMostCells = 1 << 24;  // of 8 bytes
  if (row > kMostRows) return false;
  taken_ += 1 + (textSize > 0 ? (sizeof(std::string) + textSize) / sizeof(double) : 0);
  if (col <= kMostSeriesColumns && row > heights_[col - 1]) {  // the empty cells above it are stored too
    taken_ += row - heights_[col - 1] - 1;
    heights_[col - 1] = row;
  }
  return taken_ <= kMostCells;
}

}  // namespace quorvex
