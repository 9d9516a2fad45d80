#include "diagnosis/DerivedQuantity.h"

#include <algorithm>
#include <cmath>

#include "core/Limits.h"
#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "equation/Expression.h"

namespace quorvex {
namespace {

std::optional<std::size_t> CoefficientOf(const ModelClass& model, const std::string& name) {
  for (std::size_t i = 0; i < model.Coefficients.size(); ++i)
    if (EqualNoCase(model.Coefficients[i].Name, name)) return i;
  return std::nullopt;
}

}  // namespace

QuantityProgram::QuantityProgram(const DerivedQuantity& quantity, const ModelClass& model)
    : x_(kMostIndependentVariables, 1.0) {
  const std::string subject = "The quantity '" + quantity.Name + "'";
  if (Trim(quantity.Expression).empty()) {
    fault_ = subject + " has no expression.";
    return;
  }
  // Compiled like a model's text, whose coefficients are then the names in it.
  expression_ = model.NewModel();
  expression_->SetID(quantity.Expression, {quantity.Expression});
  const Expression& compiled = expression_->Compiled();
  if (compiled.ParseError)
    fault_ = subject + " can't be read: " + compiled.ParseErrorMessage;
  else if (compiled.FuncMissing || compiled.CyclicError)
    fault_ = subject + " can't be read: it refers to a function of the model.";
  else if (compiled.HasIndependentVar)
    fault_ = subject + " depends on X; it is to be made of coefficients.";
  for (const std::string& name : compiled.CoefficientNames) {
    const std::optional<std::size_t> number = CoefficientOf(model, name);
    if (number)
      coefficients_.push_back(*number);
    else if (fault_.empty())
      fault_ = subject + " names '" + name + "', which is no coefficient of the model.";
  }
  if (!fault_.empty()) return;
  model.CopyStatsTo(*expression_);
}

void QuantityProgram::Put(std::span<const double> coefficients) {
  for (std::size_t i = 0; i < coefficients_.size(); ++i)
    expression_->CoefficientValues[i] = coefficients[coefficients_[i]];
}

std::optional<double> QuantityProgram::Value(std::span<const double> coefficients) {
  if (!fault_.empty()) return std::nullopt;
  Put(coefficients);
  double value = 0;
  try {
    if (expression_->Evaluate(x_, value) && std::isfinite(value)) return value;
  } catch (const NumericFault&) {
  }
  return std::nullopt;
}

std::optional<std::vector<double>> QuantityProgram::Gradient(std::span<const double> coefficients,
                                                             const std::vector<int>& numbers) {
  if (!fault_.empty()) return std::nullopt;
  Put(coefficients);
  std::vector<double> derivatives(coefficients_.size()), gradient;
  std::string why;
  try {
    if (!expression_->Derivative(x_, derivatives, why)) return std::nullopt;
  } catch (const NumericFault&) {
    return std::nullopt;
  }
  for (const int number : numbers) {
    const auto place = std::ranges::find(coefficients_, static_cast<std::size_t>(number - 1));
    gradient.push_back(
        place == coefficients_.end() ? 0 : derivatives[static_cast<std::size_t>(place - coefficients_.begin())]);
  }
  return gradient;
}

std::vector<std::string> ReportFaults(const ModelClass& model) {
  std::vector<std::string> faults;
  for (std::size_t i = 0; i < model.Reports.size(); ++i) {
    const DerivedQuantity& report = model.Reports[i];
    const auto before = model.Reports.begin() + static_cast<std::ptrdiff_t>(i);
    if (report.Name.empty())
      faults.emplace_back("A quantity to be reported has no name.");
    else if (CoefficientOf(model, report.Name))
      faults.push_back("The name '" + report.Name + "' of a quantity is that of a coefficient.");
    else if (std::any_of(model.Reports.begin(), before,
                         [&](const DerivedQuantity& other) { return EqualNoCase(other.Name, report.Name); }))
      faults.push_back("There are two quantities with the name '" + report.Name + "'.");
    else
      faults.push_back(QuantityProgram(report, model).Fault());
  }
  return faults;
}

std::optional<double> Evaluate(const DerivedQuantity& quantity, const ModelClass& model,
                               std::span<const double> coefficients) {
  return QuantityProgram(quantity, model).Value(coefficients);
}

}  // namespace quorvex
