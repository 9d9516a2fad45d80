#pragma once

#include <cstddef>

#include "core/LocaleText.h"
#include "sheet/GridCells.h"

namespace quorvex {

// Where the measurements begin among the rows of a source, counted from 1: below a title, what an instrument tells of
// itself, headings and units. That is at the first row with numbers in all of the columns that hold numbers further
// down; rows above it belong to the data where something but the missing is a number in them. What stands above a line
// of words as wide as the data is no data, numbers or not. 1 where nothing is a number.
std::size_t FirstDataRow(const GridCells& cells, const LocaleText& locale);

}  // namespace quorvex
