#include "import/BlankMissingMarker.h"

#include "core/NumberText.h"

namespace quorvex {
namespace {

// "nan", "inf", "+inf" or "-inf" for whatever spelling of it, "" for any other text.
std::string NotFinite(std::string_view text) {
  std::string word = ToLower(Trim(text)), sign;
  if (word.starts_with('-') || word.starts_with('+')) {
    sign = word.substr(0, 1);
    word.erase(0, 1);
  }
  if (word == "nan") return word;
  return word == "inf" || word == "infinity" ? sign + "inf" : "";
}

}  // namespace

void BlankMissingMarker(GridCells& cells, std::string_view marker) {
  const std::size_t rows = cells.GridLastRow(), cols = cells.GridLastCol();
  for (std::size_t col = 1; col <= cols; ++col)
    for (std::size_t row = 1; row <= rows; ++row)
      if (Trim(cells.GridCellText(row, col)) == marker) cells.ClearCell(row, col);
}

void BlankMissingResults(GridCells& cells, std::string_view marker) {
  BlankMissingMarker(cells, marker);
  const std::string missing = NotFinite(marker);
  if (missing.empty()) return;
  for (std::size_t col = 1; col <= cells.GridLastCol(); ++col) {
    for (std::size_t row = cells.GridLastRow(); row > 0; --row) {
      if (const double cell = cells.Cell(row, col); GridCells::IsText(cell)) {
        const std::string value = NotFinite(cells.TextBehind(cell));
        if (value == missing || (missing == "inf" && value.ends_with("inf")) || (missing == "+inf" && value == "inf"))
          cells.ClearCell(row, col);
      }
    }
  }
}

}  // namespace quorvex
