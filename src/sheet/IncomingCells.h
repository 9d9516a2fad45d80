#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "sheet/CellRange.h"
#include "sheet/DataSheet.h"

namespace quorvex {

// Asked where cells are about to come into the sheet whose first row are headings.
inline constexpr const char* kHeadingsQuestion = "The first row holds headings. Use them as column names?";

// Whether the first row of cells are headings of those below: nothing but texts, one for each column or more than one,
// none of which is how programs write a missing value, above a number.
bool FirstRowIsHeadings(const GridCells& cells);

// What came into a sheet, from a clipboard or a file, otherwise than the source has it.
struct IncomingCells {
  std::size_t Texts = 0;                          // cells that are no numbers
  CellPlace FirstText;                            // the first of them, by rows
  std::size_t ColumnsBeyond = 0, RowsBeyond = 0;  // left out, behind the sheet's last column and row

  // Counts the texts in the range, where the cells have just come to, which may be one of several.
  void CountTexts(const DataSheet& sheet, const CellRange& range);

  // All that in one text for the user: "3 cells are no numbers, the first of them 'NA' in Ozone:5. 2 columns beyond the
  // project's were left out ...". "" where everything came in as it was.
  std::string Summary(const DataSheet& sheet) const;
};

// A text as a part of a sentence: a long one cut.
std::string Shortened(std::string_view text);

// A text as a sentence quotes it: that between apostrophes.
std::string QuotedCell(const std::string& text);

}  // namespace quorvex
