#include "sheet/IncomingCells.h"

#include <algorithm>
#include <string_view>

#include "core/NumberText.h"

namespace quorvex {
namespace {

// How programs write a cell without a value. To the letter: "Na" is a heading, for sodium.
constexpr std::string_view kMissing[] = {"NA", "N/A", "n/a", "NaN", "nan", "NULL", "null", "-", "--", ".", "?", "*"};

}  // namespace

bool FirstRowIsHeadings(const GridCells& cells) {
  const std::size_t rows = cells.GridLastRow(), cols = cells.GridLastCol();
  std::size_t words = 0;
  bool aboveNumber = false;
  for (std::size_t col = 1; col <= cols; ++col) {
    const double cell = cells.Cell(1, col);
    if (GridCells::IsEmpty(cell)) continue;
    if (!GridCells::IsText(cell) || std::ranges::count(kMissing, Trim(cells.TextBehind(cell))) > 0) return false;
    ++words;
    for (std::size_t row = 2; row <= rows && !aboveNumber; ++row) {
      const double below = cells.Cell(row, col);
      aboveNumber = !GridCells::IsEmpty(below) && !GridCells::IsText(below);
    }
  }
  // A single text above several columns is a title.
  return aboveNumber && (words > 1 || words == cols);
}

void IncomingCells::CountTexts(const DataSheet& sheet, const CellRange& range) {
  for (std::size_t row = range.FirstRow; row <= range.LastRow; ++row)
    for (std::size_t col = range.FirstCol; col <= range.LastCol; ++col)
      if (GridCells::IsText(sheet.Cells.Cell(row, col)) && (++Texts == 1 || row < FirstText.Row))
        FirstText = {row, col};
}

std::string IncomingCells::Summary(const DataSheet& sheet) const {
  std::string summary;
  const auto say = [&](const std::string& sentence) { summary += (summary.empty() ? "" : " ") + sentence; };
  if (Texts > 0) {
    const std::string first = QuotedCell(sheet.Cells.GridCellText(FirstText.Row, FirstText.Col)) + " in " +
                              sheet.Headers[FirstText.Col - 1] + ":" + std::to_string(FirstText.Row) + ".";
    say(Texts == 1 ? "1 cell is no number: " + first
                   : std::to_string(Texts) + " cells are no numbers, the first of them " + first);
  }
  const auto leftOut = [](std::size_t count, const std::string& what, const std::string& beyond) {
    return std::to_string(count) + " " + what + (count == 1 ? " " : "s ") + beyond +
           (count == 1 ? " was left out" : " were left out");
  };
  if (ColumnsBeyond > 0)
    say(leftOut(ColumnsBeyond, "column", "beyond the project's") + "; Columns in the Data menu makes room for more.");
  if (RowsBeyond > 0) say(leftOut(RowsBeyond, "row", "beyond the sheet's last, 65,536,") + ".");
  return summary;
}

std::string Shortened(std::string_view text) {
  constexpr std::size_t kMost = 20;
  text = Trim(text);
  const std::string shown = FirstCharacters(text, kMost);
  return shown.size() < text.size() ? shown + "..." : shown;
}

std::string QuotedCell(const std::string& text) { return "'" + Shortened(text) + "'"; }

}  // namespace quorvex
