#include "engine/UserModel.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "core/NumberText.h"
#include "engine/EqClass.h"
#include "engine/MvClass.h"
#include "equation/Expression.h"

namespace quorvex {
namespace {

constexpr std::string_view kMacroModel = "UserModel";

bool IsKeyOfMacroModel(std::string_view id) {
  if (!id.ends_with(kMacroModel)) return false;
  id.remove_suffix(kMacroModel.size());
  return !id.empty() && id.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

std::string KeyOfMacroModel(int number) { return std::to_string(number).append(kMacroModel); }

std::string ShownName(const ModelClass& model) {
  if (!model.cfgID.empty()) return model.cfgID;
  return IsKeyOfMacroModel(model.id) ? model.FunctionList(0) : model.id;
}

UserModelDefinition DefinitionOf(const ModelClass& model) {
  UserModelDefinition definition{model.id, {}, model.Description, {}};
  for (int n = 0; n < model.FunctionCount(); ++n) definition.FunctionList.push_back(model.FunctionList(n));
  for (int i = 1; i <= model.NumDependentVar(); ++i)
    definition.Coefficients.push_back(
        {model.Rules(i), model.RuleConstant(i), model.Derivatives(i), model.Minimum(i), model.Maximum(i)});
  return definition;
}

std::unique_ptr<ModelClass> CompileModel(std::string id, std::vector<std::string> lines,
                                         std::size_t independentVariables, const LocaleText& locale) {
  std::unique_ptr<ModelClass> model = NewModelFor(independentVariables, locale);
  model->SetID(std::move(id), std::move(lines));
  // A text may name a variable that the data do not have.
  const auto beyond = [&](const ExprToken& token) {
    return token.Type == TokenKind::IndependentVariable && token.Code > static_cast<int>(independentVariables);
  };
  const Expression& compiled = model->Compiled();
  if (compiled.ParseError || !compiled.HasIndependentVar || std::ranges::any_of(compiled.ExprTokens, beyond))
    return nullptr;
  return model;
}

std::unique_ptr<ModelClass> MakeUserModel(const UserModelDefinition& definition, std::size_t independentVariables,
                                          const LocaleText& locale) {
  std::unique_ptr<ModelClass> model =
      CompileModel(definition.id, definition.FunctionList, independentVariables, locale);
  if (model == nullptr || !model->HasCoefficients() ||
      static_cast<std::size_t>(model->NumDependentVar()) != definition.Coefficients.size())
    return nullptr;
  model->UserType = true;
  model->Description = definition.Description;
  model->Group = "User Defined";
  for (int i = 1; i <= model->NumDependentVar(); ++i) {
    const UserModelDefinition::Coefficient& coefficient = definition.Coefficients[static_cast<std::size_t>(i - 1)];
    model->SetRule(i, coefficient.Rule);
    model->SetRuleConstant(i, coefficient.RuleConstant);
    model->SetDerivative(i, coefficient.Derivative);
    model->SetBounds(i, coefficient.Minimum, coefficient.Maximum);
  }
  return model;
}

bool SameDefinition(const ModelClass& a, const ModelClass& b) {
  if (a.FunctionCount() != b.FunctionCount()) return false;
  for (int n = 0; n < a.FunctionCount(); ++n)
    if (a.FunctionList(n) != b.FunctionList(n)) return false;
  return true;
}

std::string WhyNoModel(const Expression& compiled, const std::string& subject) {
  if (compiled.IsValidEquation) return {};
  if (compiled.CyclicError) return subject + ": a function refers back to itself.";
  if (compiled.FuncMissing) return subject + ": a function that is referred to is missing.";
  if (compiled.ParseError && compiled.PublicSubFunctionPointer == 0) return subject + ": " + compiled.ParseErrorMessage;
  if (compiled.ParseError)
    return subject + ", in F" + std::to_string(compiled.PublicSubFunctionPointer) + ": " + compiled.ParseErrorMessage;
  return subject + (compiled.HasCoefficients ? ": it has no independent variable." : ": it has no coefficients.");
}

// Behind a reference to a supporting function the compiler counts too little; there the token, which the message names,
// comes a little later.
int PlaceOfError(const Expression& compiled, const std::string& line) {
  const std::string_view message = compiled.ParseErrorMessage;
  const int start = compiled.PublicTokenPointerStart;
  constexpr std::string_view kNamed = "Unexpected token '";
  if (!message.starts_with(kNamed)) return start;
  const auto length = static_cast<std::size_t>(compiled.PublicTokenPointerLength);
  const std::string token = ToLower(message.substr(kNamed.size(), length));
  const std::size_t found = ToLower(line).find(token, static_cast<std::size_t>(start));
  return found == std::string::npos ? start : static_cast<int>(found);
}

std::unique_ptr<ModelClass> NewModelFor(std::size_t independentVariables, const LocaleText& locale) {
  if (independentVariables == 1) return std::make_unique<EqClass>(locale);
  return std::make_unique<MvClass>(locale);
}

}  // namespace quorvex
