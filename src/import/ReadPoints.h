#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/LocaleText.h"

namespace quorvex {

// Points, column by column: one for each variable and one for Y, which is the last.
struct TextPoints {
  std::vector<std::vector<double>> Columns;  // none where there are no points
  std::vector<std::string> Patterns;         // the date pattern of each column, "" for one of other numbers
};

// The points in a text of numbers: its lines as an import reads them, dates included, a date and its time being one
// number also where blanks separate the columns; and of these the first columns that hold numbers. The rows with a
// number in all of them are the points. For a single variable one column will do, whose X are the numbers of the rows
// from its first number on. No points where the numbers do not suffice.
TextPoints ReadPoints(std::string_view bytes, std::size_t variables, const LocaleText& locale);

}  // namespace quorvex
