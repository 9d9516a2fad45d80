#include "engine/TypedDerivatives.h"

#include <algorithm>
#include <utility>

#include "core/NumberText.h"
#include "engine/Differentiator.h"
#include "equation/Expression.h"

namespace quorvex {

std::unique_ptr<TypedDerivatives> TypedDerivatives::Compile(const ModelClass& parent) {
  auto typed = std::make_unique<TypedDerivatives>();
  std::vector<std::string> lines;
  for (int n = 0; n < parent.FunctionCount(); ++n) lines.push_back(parent.FunctionList(n));
  for (const Coefficient& coefficient : parent.Coefficients) {
    if (EqualNoCase(coefficient.Derivative, "numerical")) return nullptr;
    // With the model's supporting functions behind it, to which a derivative may refer as well.
    lines[0] = coefficient.Derivative;
    TypedDerivative derivative{parent.NewModel(), {}};
    derivative.Model->SetID(coefficient.Derivative, lines);
    if (derivative.Model->Compiled().ParseError) return nullptr;
    for (int c = 1; c <= derivative.Model->NumDependentVar(); ++c) {
      int number = 0;
      for (int p = 1; p <= parent.NumDependentVar(); ++p)
        if (EqualNoCase(derivative.Model->Variables(c), parent.Variables(p))) number = p;
      derivative.Parent.push_back(number);
    }
    typed->derivatives_.push_back(std::move(derivative));
  }
  return typed;
}

void TypedDerivatives::TakeStatistics(const ModelClass& parent) {
  for (const TypedDerivative& derivative : derivatives_) parent.CopyStatsTo(*derivative.Model);
}

bool TypedDerivatives::RunOverBlocks() const {
  return std::ranges::all_of(derivatives_, [](const TypedDerivative& d) { return d.Model->RunsOverBlocks(); });
}

void TypedDerivatives::TypedDerivative::TakeValues(const ModelClass& parent) {
  for (std::size_t c = 0; c < Parent.size(); ++c)
    if (Parent[c] != 0) Model->CoefficientValues[c] = parent.Values(Parent[c]);
}

bool TypedDerivatives::AtPoint(const ModelClass& parent, std::span<const double> x, std::span<double> dyda) {
  for (std::size_t i = 0; i < derivatives_.size(); ++i) {
    derivatives_[i].TakeValues(parent);
    double value = 0;
    if (!derivatives_[i].Model->Evaluate(x, value)) return false;
    dyda[i] = parent.Coefficients[i].Constant * value;
  }
  return true;
}

bool TypedDerivatives::OverBlock(const ModelClass& parent, const SolveData& data, std::size_t first, std::size_t n,
                                 double* const* dyda) {
  for (std::size_t c = 0; c < derivatives_.size(); ++c) {
    derivatives_[c].TakeValues(parent);
    if (!derivatives_[c].Model->EvaluateBlock(data.X, first, n, dyda[c])) return false;
    if (const double mask = parent.Coefficients[c].Constant; mask != 1)
      for (std::size_t i = 0; i < n; ++i) dyda[c][i] *= mask;
  }
  return true;
}

TypedDerivativesInUse::TypedDerivativesInUse(ModelClass& model) : model_(model) {
  if (model.UserType) Differentiator(model).UseTyped(true);
}

TypedDerivativesInUse::~TypedDerivativesInUse() { Differentiator(model_).UseTyped(false); }

}  // namespace quorvex
