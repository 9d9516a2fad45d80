#include "sheet/DecimalCommas.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

#include "core/NumberText.h"

namespace quorvex {
namespace {

// A comma that ends a text, as in "1,", is no decimal one.
std::optional<double> DecimalCommaNumber(const std::string& text) {
  const std::size_t comma = text.find(',');
  if (comma == std::string::npos || comma + 1 == text.size() || text[comma + 1] < '0' || text[comma + 1] > '9')
    return std::nullopt;
  return NumericText(text, ',');
}

// What the cells of one column are.
struct Column {
  std::string Example;
  bool Points = false, Others = false;

  Column(const GridCells& cells, std::size_t col, std::size_t firstRow, std::size_t lastRow) {
    for (std::size_t row = firstRow; row <= lastRow; ++row) {
      const double cell = cells.Cell(row, col);
      if (GridCells::IsEmpty(cell)) continue;
      if (!GridCells::IsText(cell)) {
        Points = Points || cell != std::nearbyint(cell);
      } else if (const std::string& text = cells.TextBehind(cell); DecimalCommaNumber(text)) {
        if (Example.empty()) Example = Trim(text);
      } else {
        Others = Others || !IsMissingWord(text);
      }
    }
  }
};

}  // namespace

bool IsMissingWord(std::string_view text) {
  constexpr std::string_view kWords[] = {"na",      "n/a", "nan",  "n.a.", "null", "none",         "nil",
                                         "missing", "inf", "-inf", "+inf", "-",    "--",           "---",
                                         ".",       "..",  "...",  "*",    "?",    "\xE2\x80\x93", "\xE2\x80\x94"};
  const std::string word = ToLower(Trim(text));
  // The errors of spreadsheets: #N/A, #DIV/0!, #VALUE!
  if (word.starts_with("#n/a") || (word.starts_with('#') && word.ends_with('!'))) return true;
  return std::ranges::find(kWords, word) != std::end(kWords);
}

DecimalCommas FindDecimalCommas(const GridCells& cells, std::size_t firstRow, std::size_t lastRow,
                                OtherNumbers others) {
  DecimalCommas found;
  lastRow = std::min(lastRow, cells.GridLastRow());
  for (std::size_t col = 1; col <= cells.GridLastCol(); ++col) {
    Column column(cells, col, firstRow, lastRow);
    if (column.Points && others == OtherNumbers::Written) return {};
    if (column.Example.empty() || column.Others) continue;
    found.Columns.push_back(col);
    if (found.Example.empty()) found.Example = std::move(column.Example);
  }
  return found;
}

std::string DecimalCommaNotice(const std::string& example) {
  return "The numbers have decimal commas: " + example + '.';
}

void ReadDecimalCommas(GridCells& cells, const std::vector<std::size_t>& columns, std::size_t firstRow,
                       std::size_t lastRow) {
  lastRow = std::min(lastRow, cells.GridLastRow());
  for (const std::size_t col : columns) {
    for (std::size_t row = firstRow; row <= lastRow; ++row) {
      const double cell = cells.Cell(row, col);
      if (!GridCells::IsText(cell)) continue;
      if (const auto value = DecimalCommaNumber(cells.TextBehind(cell))) cells.SetGridCellNumber(row, col, *value);
    }
  }
}

}  // namespace quorvex
