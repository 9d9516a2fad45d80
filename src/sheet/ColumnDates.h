#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/SerialDate.h"
#include "sheet/DataSheet.h"

namespace quorvex {

// How the columns of a source write their dates. All cells of a column decide that together.
class ColumnDates {
 public:
  ColumnDates() = default;
  // `ambiguous` is the order of those that may be read either way; where nothing is given, the one that the user of the
  // locale expects.
  ColumnDates(const GridCells& cells, const LocaleText& locale, std::optional<DateOrder> ambiguous = std::nullopt);

  // What reads the texts of a column, counted from 1.
  const LocaleText& LocaleOf(std::size_t col) const { return col <= columns_.size() ? columns_[col - 1] : locale_; }
  // The columns with dates that may be read either way, and a date of each.
  const std::vector<std::pair<std::size_t, std::string>>& Ambiguous() const { return ambiguous_; }

 private:
  LocaleText locale_;
  std::vector<LocaleText> columns_;
  std::vector<std::pair<std::size_t, std::string>> ambiguous_;
};

// Makes numbers of the texts that are dates or times for certain: those with the year first, and the others of a column
// that tells their order.
void NumberDates(GridCells& cells, const LocaleText& locale);

// The number patterns that columns of the sheet get from dates that come into them: columns counted from 1.
using ColumnPatterns = std::vector<std::pair<std::size_t, std::string>>;

// Whether a column takes the pattern of dates that come into these rows, or in place of texts: nobody gave it another
// one, and no number outside those rows would be shown as a date.
bool TakesDatePattern(const DataSheet& sheet, std::size_t col, std::size_t firstRow = 0, std::size_t lastRow = 0);

// Gives columns these patterns, and the width for them; those that somebody gave a pattern for numbers keep it.
void SetPatterns(DataSheet& sheet, const ColumnPatterns& patterns);

}  // namespace quorvex
