#include "macro/Assign.h"

#include "core/NumberText.h"
#include "macro/MacroText.h"

namespace quorvex {
namespace {

constexpr std::string_view kMinimum = "minimum=", kMaximum = "maximum=";

// Why bounds that a statement gives are none, as the end of a sentence; else they stand in `coefficient`.
std::string TakeBound(const std::vector<std::string>& given, const std::string& what, const LocaleText& locale,
                      double& bound) {
  if (given.size() > 1) return "it gives the " + what + " twice";
  if (given.empty() || given[0].empty()) return {};
  const std::optional<double> value = NumericText(given[0], locale.DecimalSeparator);
  if (!value) return "its " + what + ", '" + given[0] + "', is no number";
  bound = *value;
  return {};
}

}  // namespace

std::optional<AssignStatement> ParseAssign(std::string_view text, char listSeparator) {
  const auto first = text.find(listSeparator);
  if (first == std::string_view::npos) return std::nullopt;
  const auto second = text.find(listSeparator, first + 1);
  if (second == std::string_view::npos || second + 1 == text.size()) return std::nullopt;
  AssignStatement statement;
  // From the end, since a derivative may hold separators.
  for (auto last = text.rfind(listSeparator); last > second; last = text.rfind(listSeparator)) {
    const std::string field = ToLower(text.substr(last + 1));
    if (!field.starts_with(kMinimum) && !field.starts_with(kMaximum)) break;
    (field.starts_with(kMinimum) ? statement.Minimum : statement.Maximum).push_back(GetLineValue(field));
    text = text.substr(0, last);
  }
  const std::string fields = ToLower(text.substr(first));
  statement.HasBoundElsewhere =
      fields.find(kMinimum) != std::string::npos || fields.find(kMaximum) != std::string::npos;
  const auto third = text.find(listSeparator, second + 1);

  std::string head(text.substr(0, first));
  statement.Variable = GetLineKey(head);
  statement.Value = GetLineValue(head);
  statement.Rule = GetLineValue(text.substr(first + 1, second - first - 1));
  if (EqualNoCase(statement.Rule, "value")) statement.Rule = "Value";
  statement.Flag = GetLineValue(text.substr(second + 1, third == std::string_view::npos ? third : third - second - 1));
  statement.Derivative = third == std::string_view::npos ? "Numerical" : GetLineValue(text.substr(third + 1));
  if (EqualNoCase(statement.Derivative, "numerical")) statement.Derivative = "Numerical";
  return statement;
}

std::string ApplyAssign(ModelClass& model, std::string_view text, const LocaleText& locale) {
  const char listSeparator = locale.ListSeparator;
  const std::optional<AssignStatement> statement = ParseAssign(text, listSeparator);
  if (!statement) {
    if (HasForeignSeparator(text, listSeparator))
      return "lists are separated by '" + std::string(1, listSeparator) + "' here";
    return "it is no Assign statement";
  }
  if (statement->HasBoundElsewhere)
    return "its Minimum and Maximum do not come last, behind '" + std::string(1, listSeparator) + "'";
  for (int i = 1; i <= model.NumDependentVar(); ++i) {
    if (!EqualNoCase(model.Variables(i), statement->Variable)) continue;
    Coefficient bounded;
    bounded.Name = model.Variables(i);
    std::string fault = TakeBound(statement->Minimum, "Minimum", locale, bounded.Minimum);
    if (fault.empty()) fault = TakeBound(statement->Maximum, "Maximum", locale, bounded.Maximum);
    if (fault.empty() && !BoundsFault(bounded).empty())
      fault = "its Minimum, " + statement->Minimum[0] + ", is above its Maximum, " + statement->Maximum[0];
    if (!fault.empty()) return fault;
    model.SetBounds(i, bounded.Minimum, bounded.Maximum);
    model.SetRule(i, statement->Rule);
    model.SetRuleConstant(i, statement->Value);
    model.SetConstant(i, EqualNoCase(statement->Flag, "true") ? 1 : 0);
    if (model.UserType) model.SetDerivative(i, statement->Derivative);
    return {};
  }
  return "the model has no coefficient '" + statement->Variable + "'";
}

DerivedQuantity ParseReport(std::string_view text) {
  std::string line(text);
  DerivedQuantity quantity;
  quantity.Name = GetLineKey(line);
  quantity.Expression = GetLineValue(line);
  return quantity;
}

}  // namespace quorvex
