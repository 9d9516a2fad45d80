// Derivatives of a model: typed by the user, by Richardson's extrapolation, or by central differences. Nothing is
// differentiated symbolically.

#include <array>
#include <cmath>

#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "engine/ModelClass.h"
#include "engine/Ridders.h"

namespace quorvex {
namespace {

constexpr std::string_view kFailure = "Numerical error occurred while calculating the derivative.";

// (f(a + h) - f(a - h)) / 2h, or nothing where f has no value there or the quotient is none.
template <class Function>
std::optional<double> CentredQuotient(double a, double h, Function f) {
  double above = 0, below = 0;
  if (!f(a + h, above) || !f(a - h, below)) return std::nullopt;
  const double quotient = (above - below) / (2.0 * h);
  return std::isfinite(quotient) ? std::optional(quotient) : std::nullopt;
}

// df/da at a, where f(value, result) says whether f has a value.
template <class Function>
std::optional<double> Extrapolate(double a, Function f) {
  std::array<std::array<double, kRidderRounds + 1>, kRidderRounds + 1> tableau;  // [order][round], from 1
  double h = InitialStep(a);
  const std::optional<double> first = CentredQuotient(a, h, f);
  if (!first) return std::nullopt;
  tableau[1][1] = *first;
  double answer = *first, estimate = 1e30;
  for (std::size_t k = 2; k <= kRidderRounds; ++k) {
    h /= kRidderShrink;
    const std::optional<double> quotient = CentredQuotient(a, h, f);
    if (!quotient) return std::nullopt;
    tableau[1][k] = *quotient;
    double factor = kRidderFactor;
    for (std::size_t j = 2; j <= k; ++j) {
      const double cell = (tableau[j - 1][k] * factor - tableau[j - 1][k - 1]) / (factor - 1.0);
      if (!std::isfinite(cell)) return std::nullopt;
      tableau[j][k] = cell;
      factor *= kRidderFactor;
      const double error = std::max(std::abs(cell - tableau[j - 1][k]), std::abs(cell - tableau[j - 1][k - 1]));
      if (error <= estimate) {
        estimate = error;
        answer = cell;
      }
    }
    if (std::abs(tableau[k][k] - tableau[k - 1][k - 1]) >= kRidderSafe * estimate) break;
  }
  return answer;
}

}  // namespace

bool ModelClass::EvaluateAt(std::size_t coefficient, double value, std::span<const double> x, double& y) {
  values_[coefficient] = value;
  return Evaluate(x, y);
}

bool ModelClass::Derivative(std::span<const double> x, std::span<double> dyda, std::string& ErrString) {
  if (!UserType) {
    if (ClosedFormDerivatives(x, dyda)) return true;
    ErrString = kFailure;
    return false;
  }
  return DerivativesBy(x, dyda, ErrString, true);
}

bool ModelClass::NumericalDerivatives(std::span<const double> x, std::span<double> dyda, std::string& ErrString) {
  return DerivativesBy(x, dyda, ErrString, false);
}

bool ModelClass::DerivativesBy(std::span<const double> x, std::span<double> dyda, std::string& ErrString,
                               bool extrapolate) {
  if (!DerivativeModels_.empty()) return TypedDerivatives(x, dyda, ErrString);
  ErrString.clear();
  for (std::size_t i = 0; i < values_.size(); ++i) {
    dyda[i] = 0;
    if (coefficients_[i].Constant == 0) continue;
    const double a = values_[i];
    const auto f = [&](double value, double& y) { return EvaluateAt(i, value, x, y); };
    const std::optional<double> answer = extrapolate ? Extrapolate(a, f) : CentredQuotient(a, InitialStep(a), f);
    if (!answer) {
      ErrString = kFailure;
      return false;
    }
    values_[i] = a;
    dyda[i] = coefficients_[i].Constant * *answer;
  }
  return true;
}

void ModelClass::TakeParentsValues(DerivativeModel& derivative) const {
  for (std::size_t c = 0; c < derivative.Parent.size(); ++c)
    if (const int parent = derivative.Parent[c]; parent != 0) derivative.Model->values_[c] = values_[Index(parent)];
}

bool ModelClass::TypedDerivatives(std::span<const double> x, std::span<double> dyda, std::string& ErrString) {
  for (std::size_t i = 0; i < DerivativeModels_.size(); ++i) {
    TakeParentsValues(DerivativeModels_[i]);
    double value = 0;
    if (!DerivativeModels_[i].Model->Evaluate(x, value)) {
      ErrString = kFailure;
      return false;
    }
    dyda[i] = coefficients_[i].Constant * value;
  }
  return true;
}

// True when every coefficient has a derivative text that compiles; DerivativeModels then holds them.
bool ModelClass::CompileDerivatives() {
  DerivativeModels_.clear();
  for (const Coefficient& coefficient : coefficients_) {
    if (EqualNoCase(coefficient.Derivative, "numerical")) break;
    std::vector<std::string> lines = sFuncList_;
    lines[0] = coefficient.Derivative;
    DerivativeModel derivative{NewModel(), {}};
    derivative.Model->SetID(coefficient.Derivative, std::move(lines));
    if (derivative.Model->expression_.ParseError) break;
    derivative.Model->UserType = true;
    for (int c = 1; c <= derivative.Model->NumDependentVar(); ++c) {
      int parent = 0;
      for (int p = 1; p <= NumDependentVar(); ++p)
        if (EqualNoCase(derivative.Model->Variables(c), Variables(p))) parent = p;
      derivative.Parent.push_back(parent);
    }
    DerivativeModels_.push_back(std::move(derivative));
  }
  if (DerivativeModels_.size() == coefficients_.size()) return true;
  DerivativeModels_.clear();
  return false;
}

double ModelClass::DDX(std::span<const double> x, int varindex) {
  std::vector<double> point(x.begin(), x.end());
  const std::optional<double> answer = Extrapolate(x[Index(varindex)], [&](double value, double& y) {
    point[Index(varindex)] = value;
    return Evaluate(point, y);
  });
  if (!answer) throw NumericFault();
  return *answer;
}

}  // namespace quorvex
