#include "import/TextCells.h"

#include <algorithm>
#include <string_view>

#include "core/NumberText.h"
#include "sheet/CellEntry.h"
#include "sheet/IncomingCells.h"

namespace quorvex {
std::string EndOfSentence(std::string_view text) {
  const std::string shortened = Shortened(text);
  return shortened.ends_with('.') ? shortened : shortened + '.';
}

std::optional<double> TypedValue(const GridCells& cells, double cell, const LocaleText& locale) {
  const std::optional<CellEntry> entry = ReadCellEntry(cells.TextBehind(cell), locale);
  return entry ? entry->Value : std::nullopt;
}

bool StaysText(const GridCells& cells, double cell, const LocaleText& locale) {
  return GridCells::IsText(cell) && !TypedValue(cells, cell, locale);
}

void TextCells::Add(const std::string& text) {
  ++Count;
  if (Words.size() <= kMostWords && std::ranges::find(Words, text) == Words.end()) Words.push_back(text);
}

std::string TextCells::Sentence() const {
  if (Count == 0) return "";
  std::string sentence = std::to_string(Count) + (Count == 1 ? " cell is text: " : " cells are text: ");
  for (std::size_t i = 0; i < Words.size() && i < kMostWords; ++i)
    sentence += (i > 0 ? ", " : "") + Shortened(Words[i]);
  if (Words.size() > kMostWords) sentence += " and others";
  return sentence.ends_with('.') ? sentence : sentence + '.';
}

TextCells FindTextCells(const GridCells& cells, double startRow, const std::string& marker,
                        const ColumnAssignment& columns, const ColumnDates& dates) {
  TextCells found;
  const std::size_t rows = cells.GridLastRow();
  if (startRow > static_cast<double>(rows)) return found;
  for (std::size_t row = static_cast<std::size_t>(startRow); row <= rows; ++row) {
    for (std::size_t col = 1; col <= cells.GridLastCol(); ++col) {
      const double cell = cells.Cell(row, col);
      if (!GridCells::IsText(cell) || !columns.MayBeImported(col)) continue;
      const std::string& text = cells.TextBehind(cell);
      if ((marker.empty() || Trim(text) != marker) && StaysText(cells, cell, dates.LocaleOf(col))) found.Add(text);
    }
  }
  return found;
}

}  // namespace quorvex
