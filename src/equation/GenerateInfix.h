#pragma once

#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "equation/CodeLibrary.h"
#include "equation/Expression.h"

namespace quorvex {

// The statements of exported code that compute a model: one for each supporting function ("F1 = ...") where it is first
// met, the last one "result = ...". Every operation stands in parentheses, so nothing rests on the target language's
// precedence.
//
// FnList gets the words of the functions that must come with the code (CodeLibrary.h), in order of first need.
//
// The names are those of NamesFor. Where the languages part: what CodeNotes tells; "xor" asks for comparisons as
// operands in C, and "eqv" and "imp" leave a marker text there that does not compile. Both branches of an "if" are
// computed.
void GenerateInfix(const Expression& expression, ExprType language, const LocaleText& locale,
                   std::vector<std::string>& InFixList, std::vector<std::string>& FnList);

}  // namespace quorvex
