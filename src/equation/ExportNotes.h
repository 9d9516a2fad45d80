#pragma once

#include <string>
#include <vector>

#include "equation/CodeLibrary.h"
#include "equation/Expression.h"

namespace quorvex {

// Where the values of an exported model part from the program's, a sentence each; none for most models.
std::vector<std::string> CodeNotes(const Expression& expression, ExprType language);
std::vector<std::string> SpreadsheetNotes(const Expression& expression);

}  // namespace quorvex
