#include "engine/UserModel.h"

#include <algorithm>

#include "engine/EqClass.h"
#include "engine/MvClass.h"

namespace quorvex {

UserModelDefinition DefinitionOf(const ModelClass& model) {
  UserModelDefinition definition{model.id, {}, model.Description, {}};
  for (int n = 0; n < model.FunctionCount(); ++n) definition.FunctionList.push_back(model.FunctionList(n));
  for (int i = 1; i <= model.NumDependentVar(); ++i)
    definition.Coefficients.push_back({model.Rules(i), model.RuleConstant(i), model.Derivatives(i)});
  return definition;
}

std::unique_ptr<ModelClass> MakeUserModel(const UserModelDefinition& definition, std::size_t independentVariables,
                                          const LocaleText& locale) {
  std::unique_ptr<ModelClass> model = NewModelFor(independentVariables, locale);
  model->SetID(definition.id, definition.FunctionList);
  const auto beyond = [&](const ExprToken& token) {
    return token.Type == TokenKind::IndependentVariable && token.Code > static_cast<int>(independentVariables);
  };
  if (!model->IsValidEquation() || std::ranges::any_of(model->Compiled().ExprTokens, beyond) ||
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
  }
  return model;
}

bool SameDefinition(const ModelClass& a, const ModelClass& b) {
  if (a.FunctionCount() != b.FunctionCount()) return false;
  for (int n = 0; n < a.FunctionCount(); ++n)
    if (a.FunctionList(n) != b.FunctionList(n)) return false;
  return true;
}

std::unique_ptr<ModelClass> NewModelFor(std::size_t independentVariables, const LocaleText& locale) {
  if (independentVariables == 1) return std::make_unique<EqClass>(locale);
  return std::make_unique<MvClass>(locale);
}

}  // namespace quorvex
