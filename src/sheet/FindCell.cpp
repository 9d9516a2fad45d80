#include "sheet/FindCell.h"

#include <algorithm>
#include <charconv>
#include <exception>
#include <string_view>
#include <utility>

#include "core/NumberText.h"
#include "sheet/CellEntry.h"
#include "sheet/ColumnNames.h"
#include "sheet/SheetEdit.h"

namespace quorvex {
namespace {

// The row that a text of digits alone means, 0 for none.
std::size_t RowNumber(std::string_view digits) {
  std::size_t row = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, row);
  return error == std::errc() && stop == end && row <= kMostSheetRows ? row : 0;
}

// The column of that name, or else the first with that header; 0 for none.
std::size_t ColumnOfHeader(const DataSheet& sheet, std::string_view header) {
  for (const std::vector<std::string>& names : {ColumnNames(sheet.Headers), sheet.Headers})
    for (std::size_t col = 1; col <= names.size(); ++col)
      if (!header.empty() && EqualNoCase(Trim(names[col - 1]), header)) return col;
  return 0;
}

}  // namespace

bool FindCell::Matches(const std::string& text) const {
  return MatchCells ? EqualNoCase(text, FindWhat) : ContainsNoCase(text, FindWhat);
}

std::optional<CellPlace> FindCell::FindNext(const DataSheet& sheet, CellPlace active, const LocaleText& locale,
                                            Prompter& user) const {
  try {
    const std::optional<CellPlace> found = Search(sheet, active, locale);
    if (!found) user.Refuse(kNothingFound);
    return found;
  } catch (const std::exception&) {  // no memory for a text
    user.Refuse("An error occured during the Find operation.");
    return std::nullopt;
  }
}

std::optional<CellPlace> FindCell::Search(const DataSheet& sheet, CellPlace active, const LocaleText& locale) const {
  const std::size_t rows = std::max(sheet.Cells.GridLastRow(), active.Row);
  const std::size_t cols = std::max(sheet.ColumnCount(), active.Col);
  const bool byRows = SearchBy == SearchOrder::ByRows;
  const std::size_t line = byRows ? cols : rows;  // cells before the search turns to the next row or column
  std::size_t at = byRows ? (active.Row - 1) * cols + active.Col - 1 : (active.Col - 1) * rows + active.Row - 1;
  for (std::size_t looked = 0; looked < rows * cols && !FindWhat.empty(); ++looked) {
    // Once round the sheet from behind the active cell, which is looked at last.
    at = (at + 1) % (rows * cols);
    CellPlace place{at / line + 1, at % line + 1};
    if (!byRows) std::swap(place.Row, place.Col);
    if (Finds(sheet, place, locale)) return place;
  }
  return std::nullopt;
}

bool FindCell::Finds(const DataSheet& sheet, CellPlace place, const LocaleText& locale) const {
  const double cell = sheet.Cells.Cell(place.Row, place.Col);
  if (GridCells::IsEmpty(cell)) return false;
  if (Matches(ShownText(sheet, place.Row, place.Col, locale))) return true;
  // A number is also found by its digits, whatever the format of its column leaves of them.
  if (!GridCells::IsText(cell) && Matches(ShownNumber(cell, "General", locale))) return true;
  // A date, by what is typed for it, too.
  return IsDatePattern(PatternOf(sheet, place.Col)) && (Matches(EntryText(sheet, place.Row, place.Col, locale)) ||
                                                        Matches(FullText(sheet, place.Row, place.Col, locale)));
}

std::optional<CellPlace> GoToCell(const DataSheet& sheet, const std::string& Reference, Prompter& user) {
  const std::string_view text = Trim(Reference);
  CellPlace place{0, 0};
  if (const std::size_t colon = text.rfind(':'); colon != std::string_view::npos) {
    place = {RowNumber(Trim(text.substr(colon + 1))), ColumnOfHeader(sheet, Trim(text.substr(0, colon)))};
  } else {
    std::string_view rest = text;
    const auto skipDollar = [&] {
      if (!rest.empty() && rest[0] == '$') rest.remove_prefix(1);
    };
    skipDollar();
    const std::string letter = ToLower(rest.substr(0, 1));  // 22 columns at most have one letter each
    if (letter >= "a" && letter <= "z") {
      rest.remove_prefix(1);
      skipDollar();
      const auto col = static_cast<std::size_t>(letter[0] - 'a') + 1;
      place = {RowNumber(rest), col <= sheet.ColumnCount() ? col : 0};
    }
  }
  if (place.Row > 0 && place.Col > 0) return place;
  user.Refuse("Invalid cell reference.");
  return std::nullopt;
}

}  // namespace quorvex
