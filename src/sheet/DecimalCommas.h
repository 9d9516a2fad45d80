#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/GridCells.h"

namespace quorvex {

// Numbers with decimal commas that came into cells as texts, since the locale has a point. They are known by whole
// columns: a single "1,5" may be a list of two.

// Whether a text stands for a value that is missing: "NA", "nan", "-", "#N/A" and their like.
bool IsMissingWord(std::string_view text);

struct DecimalCommas {
  std::vector<std::size_t> Columns;  // counted from 1
  std::string Example;               // a number of them as it is written, "" where there is none
};

// Whether the other cells were numbers already, as in a spreadsheet, or were read from a text.
enum class OtherNumbers { Stored, Written };

// The columns that hold such numbers from `firstRow` to `lastRow`: each of their cells is one, a whole number, missing
// or empty. None at all where a number is written with a point, for there a comma means something else.
DecimalCommas FindDecimalCommas(const GridCells& cells, std::size_t firstRow, std::size_t lastRow,
                                OtherNumbers others = OtherNumbers::Written);

// "The numbers have decimal commas: 0,5."
std::string DecimalCommaNotice(const std::string& example);

// Makes numbers of the texts in these columns that are such.
void ReadDecimalCommas(GridCells& cells, const std::vector<std::size_t>& columns, std::size_t firstRow,
                       std::size_t lastRow);

}  // namespace quorvex
