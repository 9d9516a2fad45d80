#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "core/LocaleText.h"

namespace quorvex {

// The points in a text of numbers: its lines as an import reads them, and of these the first columns that hold numbers,
// one for each variable and one for Y, which is the last. The rows with a number in all of them are the points. For a
// single variable one column will do, whose X are the numbers of the rows from its first number on. Nothing where the
// numbers do not suffice.
std::vector<std::vector<double>> ReadPoints(std::string_view bytes, std::size_t variables, const LocaleText& locale);

}  // namespace quorvex
