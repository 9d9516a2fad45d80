#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "equation/CodeLibrary.h"
#include "equation/Expression.h"

namespace quorvex {

// The names in an exported function. Where two would clash, or the target language has a name for something else, one
// gets a number behind it: the export's own names give way to the coefficients.
struct CodeNames {
  std::string Function, X, Result;
  std::vector<std::string> Coefficients;                     // in the order of CoefficientNames
  std::vector<std::pair<std::string, std::string>> Changed;  // what gave way, and to what
};

// The names for a function that is to be called `function`.
CodeNames NamesFor(const Expression& expression, ExprType language, std::string_view function = "result_of_x");

}  // namespace quorvex
