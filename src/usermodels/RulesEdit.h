#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "core/Prompter.h"
#include "engine/UserModel.h"
#include "usermodels/Leaving.h"

namespace quorvex {

// The operations that a rule for an initial estimate may have, as the user reads them, for a model with that many
// independent variables. The first one is "Value", the constant itself.
std::vector<std::string> RuleOperations(int independentVariables);

// The rule of a coefficient that nobody gave another one.
inline constexpr const char* kDefaultRule = "Value";
inline constexpr const char* kDefaultRuleConstant = "1";

// Whether two texts mean the same rule: blanks and case don't count.
bool SameRule(std::string_view a, std::string_view b);

// The rules of a model while a dialog changes them, coefficients counted from 1. The model has them once they are
// stored. What the dialog shows of the selected coefficient, an operation and a value, is committed here or dropped.
class RulesEdit {
 public:
  RulesEdit(const ModelClass& model, const LocaleText& locale, Prompter& user);

  // The list of operations; a rule that is not among those of RuleOperations comes last.
  const std::vector<std::string>& Operations() const { return operations_; }
  int Count() const { return static_cast<int>(names_.size()); }
  std::string Line(int i) const;       // of the list of coefficients
  std::size_t Operation(int i) const;  // its place in Operations
  const std::string& Value(int i) const { return rules_[Index(i)].RuleConstant; }

  // Commits. False, after a word to the user, where the value is no number.
  bool Assign(int i, std::size_t operation, const std::string& value);

  // The user turns to another coefficient, or closes the dialog: asks about what is not committed. False where the
  // dialog has to stay with the coefficient.
  bool Leave(int i, std::size_t operation, const std::string& value, Leaving what);

  // Puts back all rules or, when the user says No, that of coefficient i.
  void Defaults(int i);

  // Returns whether that changes the model.
  bool StoreIn(ModelClass& model) const;

 private:
  static std::size_t Index(int i) { return static_cast<std::size_t>(i - 1); }

  std::vector<std::string> names_, operations_;
  std::vector<UserModelDefinition::Coefficient> rules_;
  const LocaleText locale_;
  Prompter& user_;
};

}  // namespace quorvex
