#include "usermodels/PartialsEdit.h"

#include <algorithm>

#include "core/NumberText.h"
#include "equation/Expression.h"

namespace quorvex {
namespace {

constexpr const char* kNumerical = "Numerical";

bool HasVariable(const Expression& compiled, std::int16_t code) {
  return std::ranges::any_of(compiled.ExprTokens, [code](const ExprToken& token) {
    return token.Type == TokenKind::IndependentVariable && token.Code == code;
  });
}

}  // namespace

PartialsEdit::PartialsEdit(const ModelClass& model, Prompter& user) : model_(model), user_(user) {
  for (int i = 1; i <= model.NumDependentVar(); ++i) texts_.push_back(model.Derivatives(i));
}

// What speaks against a text, or nothing. An expression need not have coefficients or x: a constant is a derivative.
std::string PartialsEdit::Objection(int i, const std::string& text) const {
  std::vector<std::string> lines = {text};
  for (int n = 1; n < model_.FunctionCount(); ++n) lines.push_back(model_.FunctionList(n));
  const std::unique_ptr<ModelClass> derivative = model_.NewModel();
  derivative->SetID("", std::move(lines));
  const Expression& compiled = derivative->Compiled();
  if (compiled.ParseError)
    return "The derivative equation you entered for variable '" + Name(i) +
           "' is not valid. Please check the equation syntax.";

  const std::string entered = "The derivative entered for variable '" + Name(i);
  for (const ExprToken& token : compiled.ExprTokens)
    if (token.Type == TokenKind::IndependentVariable && !HasVariable(model_.Compiled(), token.Code))
      return entered + "' contains independent variables (x) that the original equation does not contain. ";

  std::vector<std::string> strangers = compiled.CoefficientNames;
  std::erase_if(strangers, [&](const std::string& name) {
    return std::ranges::any_of(model_.Compiled().CoefficientNames,
                               [&](const std::string& own) { return EqualNoCase(own, name); });
  });
  if (strangers.size() == 1)
    return entered + "' contains the variable '" + strangers[0] + "' which does not appear in the original equation. ";
  if (!strangers.empty()) return entered + "' contains variables which do not appear in the original equation. ";
  return "";
}

bool PartialsEdit::Commit(int i, const std::string& text) {
  const std::string trimmed(Trim(text));
  const bool numerical = EqualNoCase(trimmed, kNumerical);
  if (!numerical) {
    if (const std::string objection = Objection(i, trimmed); !objection.empty()) {
      user_.Refuse(objection);
      return false;
    }
  }
  texts_[static_cast<std::size_t>(i - 1)] = numerical ? kNumerical : trimmed;
  return true;
}

bool PartialsEdit::Leave(int i, const std::string& text, Leaving what) {
  if (text == Text(i)) return true;
  const std::string question = "Commit changes to variable '" + Name(i);
  return !user_.Ask(question + (what == Leaving::Dialog ? "' before closing?" : "'?")) || Commit(i, text);
}

bool PartialsEdit::Default() {
  if (!user_.Ask("Reset ALL partial derivatives to defaults?")) return false;
  std::ranges::fill(texts_, kNumerical);
  return true;
}

void PartialsEdit::StoreIn(ModelClass& model) const {
  for (int i = 1; i <= Count(); ++i) model.SetDerivative(i, Text(i));
}

}  // namespace quorvex
