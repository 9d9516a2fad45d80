#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/ModelClass.h"

namespace quorvex {

// An Assign statement of a macro, taken apart.
struct AssignStatement {
  std::string Variable, Value, Rule, Flag, Derivative;
};

// Splits the blank-free text behind "Assign" at the locale's list separator: Variable=Value, Operator=Rule, Fit=Flag
// and Derivative=..., the last of which may be missing ("Numerical"). Nothing where fewer than three fields are given.
std::optional<AssignStatement> ParseAssign(std::string_view text, char listSeparator);

// Gives the named coefficient of `model` its rule, constant, free flag and, in a user model, its derivative. A name
// that the model does not have, or a text that is no Assign statement, changes nothing; then the answer says why.
std::string ApplyAssign(ModelClass& model, std::string_view text, char listSeparator);

}  // namespace quorvex
