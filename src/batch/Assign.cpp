#include "batch/Assign.h"

#include "batch/MacroText.h"
#include "core/NumberText.h"

namespace quorvex {

std::optional<AssignStatement> ParseAssign(std::string_view text, char listSeparator) {
  const auto first = text.find(listSeparator);
  if (first == std::string_view::npos) return std::nullopt;
  const auto second = text.find(listSeparator, first + 1);
  if (second == std::string_view::npos || second + 1 == text.size()) return std::nullopt;
  const auto third = text.find(listSeparator, second + 1);

  std::string head(text.substr(0, first));
  AssignStatement statement;
  statement.Variable = GetLineKey(head);
  statement.Value = GetLineValue(head);
  statement.Rule = GetLineValue(text.substr(first + 1, second - first - 1));
  if (EqualNoCase(statement.Rule, "value")) statement.Rule = "Value";
  statement.Flag = GetLineValue(text.substr(second + 1, third == std::string_view::npos ? third : third - second - 1));
  statement.Derivative = third == std::string_view::npos ? "Numerical" : GetLineValue(text.substr(third + 1));
  if (EqualNoCase(statement.Derivative, "numerical")) statement.Derivative = "Numerical";
  return statement;
}

std::string ApplyAssign(ModelClass& model, std::string_view text, char listSeparator) {
  const std::optional<AssignStatement> statement = ParseAssign(text, listSeparator);
  if (!statement) {
    if (HasForeignSeparator(text, listSeparator))
      return "lists are separated by '" + std::string(1, listSeparator) + "' here";
    return "it is no Assign statement";
  }
  for (int i = 1; i <= model.NumDependentVar(); ++i) {
    if (!EqualNoCase(model.Variables(i), statement->Variable)) continue;
    model.SetRule(i, statement->Rule);
    model.SetRuleConstant(i, statement->Value);
    model.SetConstant(i, EqualNoCase(statement->Flag, "true") ? 1 : 0);
    if (model.UserType) model.SetDerivative(i, statement->Derivative);
    return {};
  }
  return "the model has no coefficient '" + statement->Variable + "'";
}

}  // namespace quorvex
