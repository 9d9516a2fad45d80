#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/LocaleText.h"
#include "engine/ModelClass.h"

namespace quorvex {

// An Assign statement of a macro, taken apart.
struct AssignStatement {
  std::string Variable, Value, Rule, Flag, Derivative;
  std::vector<std::string> Minimum, Maximum;  // as often as they are given
  bool HasBoundElsewhere = false;             // in the place of another field, or behind another separator
};

// Splits the blank-free text behind "Assign" at the locale's list separator: Variable=Value, Operator=Rule, Fit=Flag
// and Derivative=..., the last of which may be missing ("Numerical"); behind these Minimum=... and Maximum=..., in any
// order. Nothing where fewer than three fields are given.
std::optional<AssignStatement> ParseAssign(std::string_view text, char listSeparator);

// Gives the named coefficient of `model` its rule, constant, free flag, bounds and, in a user model, its derivative. A
// bound that is not given, or is empty, is none. A name that the model does not have, a text that is no Assign
// statement, or bounds that are none change nothing; then the answer says why.
std::string ApplyAssign(ModelClass& model, std::string_view text, const LocaleText& locale);

// The quantity of a Report statement from the text behind its first "=": a name, "=" and an expression, in which blanks
// and further signs of equality stand as they are.
DerivedQuantity ParseReport(std::string_view text);

}  // namespace quorvex
