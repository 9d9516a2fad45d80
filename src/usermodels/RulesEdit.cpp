#include "usermodels/RulesEdit.h"

#include <algorithm>

#include "core/NumberText.h"

namespace quorvex {
namespace {

std::string Folded(std::string_view rule) {
  std::string folded = ToLower(rule);
  std::erase(folded, ' ');
  return folded;
}

// "#" stands for the number of the variable, which a model of one variable leaves out.
constexpr const char* kYForms[] = {"/ YMin", "/ YMax", "/ YAvg", "/ (YMax-YMin)",
                                   "* YMin", "* YMax", "* YAvg", "* (YMax-YMin)"};
constexpr const char* kXForms[] = {"/ X#Min", "/ X#Max", "/ X#Avg", "/ (X#Max-X#Min)",
                                   "* X#Min", "* X#Max", "* X#Avg", "* (X#Max-X#Min)"};

std::string WithVariable(std::string form, const std::string& number) {
  for (std::size_t at = form.find('#'); at != std::string::npos; at = form.find('#')) form.replace(at, 1, number);
  return form;
}

}  // namespace

std::vector<std::string> RuleOperations(int independentVariables) {
  std::vector<std::string> operations = {kDefaultRule};
  operations.insert(operations.end(), std::begin(kYForms), std::end(kYForms));
  for (int variable = 1; variable <= independentVariables; ++variable)
    for (const char* form : kXForms)
      operations.push_back(WithVariable(form, independentVariables == 1 ? "" : std::to_string(variable)));
  operations.insert(operations.end(), {"/ N", "* N"});
  return operations;
}

bool SameRule(std::string_view a, std::string_view b) { return Folded(a) == Folded(b); }

RulesEdit::RulesEdit(const ModelClass& model, const LocaleText& locale, Prompter& user)
    : operations_(RuleOperations(model.NumIndependentVar())),
      rules_(DefinitionOf(model).Coefficients),
      locale_(locale),
      user_(user) {
  for (int i = 1; i <= model.NumDependentVar(); ++i) {
    names_.push_back(model.Variables(i));
    const auto is = [&](const std::string& operation) { return SameRule(operation, model.Rules(i)); };
    // A rule that is not in the list, as a file may have it, is kept as an entry of its own.
    if (std::ranges::none_of(operations_, is)) operations_.push_back(model.Rules(i));
  }
}

std::string RulesEdit::Line(int i) const {
  const UserModelDefinition::Coefficient& rule = rules_[Index(i)];
  const std::string operation = operations_[Operation(i)];
  return names_[Index(i)] + ": " + rule.RuleConstant + (operation == kDefaultRule ? " (Value)" : " " + operation);
}

std::size_t RulesEdit::Operation(int i) const {
  const auto is = [&](const std::string& operation) { return SameRule(operation, rules_[Index(i)].Rule); };
  return static_cast<std::size_t>(std::ranges::find_if(operations_, is) - operations_.begin());
}

bool RulesEdit::Assign(int i, std::size_t operation, const std::string& value) {
  const std::string constant(Trim(value));
  if (!NumericText(constant, locale_.DecimalSeparator)) {
    user_.Refuse("Please enter a valid rule value for variable '" + names_[Index(i)] + "'");
    return false;
  }
  rules_[Index(i)].Rule = operations_[operation];
  rules_[Index(i)].RuleConstant = constant;
  return true;
}

bool RulesEdit::Leave(int i, std::size_t operation, const std::string& value, Leaving what) {
  if (operation == Operation(i) && value == Value(i)) return true;
  const std::string question = "Commit changes to variable '" + names_[Index(i)];
  return !user_.Ask(question + (what == Leaving::Dialog ? "' before closing?" : "'?")) || Assign(i, operation, value);
}

void RulesEdit::Defaults(int i) {
  const bool all = user_.Ask("Reset ALL rules to defaults? (selecting 'No' will only reset the selected rule)");
  for (int j = all ? 1 : i; j <= (all ? Count() : i); ++j) {
    rules_[Index(j)].Rule = kDefaultRule;
    rules_[Index(j)].RuleConstant = kDefaultRuleConstant;
  }
}

bool RulesEdit::StoreIn(ModelClass& model) const {
  const UserModelDefinition before = DefinitionOf(model);
  for (int i = 1; i <= Count(); ++i) {
    model.SetRule(i, rules_[Index(i)].Rule);
    model.SetRuleConstant(i, rules_[Index(i)].RuleConstant);
  }
  return DefinitionOf(model) != before;
}

}  // namespace quorvex
