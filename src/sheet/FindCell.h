#pragma once

#include <optional>
#include <string>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "sheet/CellRange.h"
#include "sheet/DataSheet.h"

namespace quorvex {

inline constexpr const char* kNothingFound = "Quorvex could not find the specified data.";

enum class SearchOrder { ByRows, ByColumns };

// The Find dialog.
struct FindCell {
  std::string FindWhat;     // in the user's locale
  bool MatchCells = false;  // the entire text of a cell, not a part of it
  SearchOrder SearchBy = SearchOrder::ByRows;

  // The next cell behind `active` whose text matches, without regard to case; from the last cell the search goes on at
  // the first, and `active` comes last. A number is found by what its column shows of it and by what it is.
  std::optional<CellPlace> FindNext(const DataSheet& sheet, CellPlace active, const LocaleText& locale,
                                    Prompter& user) const;
  // The same without a word where there is none.
  std::optional<CellPlace> Search(const DataSheet& sheet, CellPlace active, const LocaleText& locale) const;
  // Whether a cell matches.
  bool Finds(const DataSheet& sheet, CellPlace place, const LocaleText& locale) const;

 private:
  bool Matches(const std::string& text) const;
};

// The cell that a reference means: header and row as in "Y:12", without regard to case, or a column's letter and the
// row as in "B12" or "$B$12". Anything else, and a cell that the sheet does not have, is refused.
std::optional<CellPlace> GoToCell(const DataSheet& sheet, const std::string& Reference, Prompter& user);

}  // namespace quorvex
