#pragma once

#include <span>
#include <string>

#include "core/LocaleText.h"
#include "equation/Expression.h"

namespace quorvex {

// A compiled model as the user wrote it, blanks left out where the tokens stay apart without: "Y = a*x+F1", then a line
// "F1 = ..." for each supporting function that occurs. Lines are separated by NL.
//
// ReplaceOption 0 puts the coefficients' values in their place, as they are now, solved or not; 1 leaves the names.
// With AppendParameters not 0, an empty line and the coefficients with their values follow. Values are GeneralNumber
// with the locale's decimal separator; one that would read as part of another equation stands in parentheses. So the
// text reads back to the same values under the locale that it was written in.
std::string GenerateTextInfix(const Expression& expression, std::span<const double> Values, const LocaleText& locale,
                              int ReplaceOption, int AppendParameters);

}  // namespace quorvex
