#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/LocaleText.h"
#include "import/ColumnAssignment.h"
#include "sheet/ColumnDates.h"
#include "sheet/GridCells.h"

namespace quorvex {

// A text as the end of a sentence: one that is long is cut.
std::string EndOfSentence(std::string_view text);

// What a text of imported data would be if it were typed into a cell: a date is a number, too.
std::optional<double> TypedValue(const GridCells& cells, double cell, const LocaleText& locale);

// Whether a cell would come into the sheet as a text.
bool StaysText(const GridCells& cells, double cell, const LocaleText& locale);

// The cells of a source that are no numbers, to be shown before any of them is in the sheet.
struct TextCells {
  static constexpr std::size_t kMostWords = 3;

  std::size_t Count = 0;
  std::vector<std::string> Words;  // the different ones in their order, up to one more than are named

  // Another such cell.
  void Add(const std::string& text);
  // "37 cells are text: NA.", "" where there are none.
  std::string Sentence() const;
};

// Those from a row on in the columns that are assigned, or in all where none is. Cells with the marker don't count.
TextCells FindTextCells(const GridCells& cells, double startRow, const std::string& marker,
                        const ColumnAssignment& columns, const ColumnDates& dates);

}  // namespace quorvex
