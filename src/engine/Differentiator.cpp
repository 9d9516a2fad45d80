// Derivatives at one point.

#include "engine/Differentiator.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "core/FaultFlags.h"
#include "core/Limits.h"
#include "core/NumericFault.h"
#include "engine/CompiledModel.h"
#include "engine/ModelClass.h"
#include "engine/PointColumns.h"
#include "engine/Ridders.h"
#include "engine/TypedDerivatives.h"
#include "equation/ClosedForms.h"

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

// The same from values on one side of a.
template <class Function>
std::optional<double> OneSidedQuotient(double a, double h, Function f) {
  double sum = 0, absolute = 0;
  for (std::size_t k = 0; k < kOneSided.size(); ++k) {
    double value = 0;
    if (!f(a + static_cast<double>(k) * h, value)) return std::nullopt;
    sum += kOneSided[k] * value;
    absolute += std::abs(kOneSided[k] * value);
  }
  if (IsRounding(sum, absolute)) return 0;
  const double quotient = sum / h;
  return std::isfinite(quotient) ? std::optional(quotient) : std::nullopt;
}

// df/da at a, where f(value, result) says whether f has a value and h is the first step.
template <class Function>
std::optional<double> Extrapolate(double a, double h, Function f) {
  std::array<std::array<double, kRidderRounds + 1>, kRidderRounds + 1> tableau;  // [order][round], from 1
  const std::optional<double> first = CentredQuotient(a, h, f);
  if (!first) return std::nullopt;
  tableau[1][1] = *first;
  double answer = *first, estimate = 1e30;
  for (std::size_t k = 2; k <= kRidderRounds; ++k) {
    h /= kRidderShrink;
    const std::optional<double> quotient = CentredQuotient(a, h, f);
    if (!quotient) return std::nullopt;
    tableau[1][k] = *quotient;
    // The error of a centred quotient has even powers of the step only; each order is free of one more of them.
    double factor = kRidderFactor;
    for (std::size_t j = 2; j <= k; ++j) {
      const double cell = (tableau[j - 1][k] * factor - tableau[j - 1][k - 1]) / (factor - 1.0);
      if (!std::isfinite(cell)) return std::nullopt;
      tableau[j][k] = cell;
      factor *= kRidderFactor;
      const double error = std::max(std::abs(cell - tableau[j - 1][k]), std::abs(cell - tableau[j - 1][k - 1]));
      // On a tie the later one wins, which has the smaller step or the higher order.
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

bool Differentiator::Derivative(std::span<const double> x, std::span<double> dyda, std::string& ErrString) {
  if (model_.UserType) return DerivativesBy(x, dyda, ErrString, true);
  if (ClosedForm(x, dyda)) return true;
  ErrString = kFailure;
  return false;
}

bool Differentiator::NumericalDerivatives(std::span<const double> x, std::span<double> dyda, std::string& ErrString) {
  return DerivativesBy(x, dyda, ErrString, false);
}

bool Differentiator::ExactDerivatives(std::span<const double> x, std::span<double> dyda, std::string& ErrString) {
  // At an edge of its domain a function has a value and no derivative, where that of the model may well exist.
  return (!model_.typed_ && SweptAt(x, dyda)) || DerivativesBy(x, dyda, ErrString, true);
}

bool Differentiator::SweptAt(std::span<const double> x, std::span<double> dyda) {
  BlockProgram& program = model_.compiled_->OverBlocks();
  const PointColumns columns = ColumnsOf(x);
  double y = 0;
  if (!program.Evaluate(columns, 1, model_.CoefficientValues, model_.Statistics, &y, BlockProgram::Next::Gradient))
    return false;
  std::array<double*, kMostCoefficients> cells;
  for (std::size_t i = 0; i < dyda.size(); ++i) cells[i] = &dyda[i];
  std::array<const double*, kMostCoefficients> slopes;
  if (!SweptBlock(1, cells.data(), slopes.data())) return false;
  for (std::size_t i = 0; i < dyda.size(); ++i) dyda[i] = *slopes[i];
  return true;
}

void Differentiator::UseTyped(bool use) {
  model_.typed_ = use ? TypedDerivatives::Compile(model_) : nullptr;
  if (model_.typed_) model_.typed_->TakeStatistics(model_);
}

bool Differentiator::ClosedForm(std::span<const double> x, std::span<double> dyda) const {
  const CatalogueModel* const builtIn = model_.BuiltIn();
  if (builtIn == nullptr) return true;
  const PointColumns columns = ColumnsOf(x);
  std::array<double*, kMostCoefficients> cells;
  for (std::size_t i = 0; i < model_.CoefficientValues.size(); ++i) cells[i] = &dyda[i];
  ClearFaultFlags();
  quorvex::Derivatives(*builtIn, columns.data(), 1, model_.CoefficientValues.data(), cells.data());
  return !FaultFlagsRaised();
}

bool Differentiator::DerivativesBy(std::span<const double> x, std::span<double> dyda, std::string& ErrString,
                                   bool extrapolate) {
  if (model_.typed_ ? model_.typed_->AtPoint(model_, x, dyda) : Numerically(x, dyda, extrapolate)) return true;
  ErrString = kFailure;
  return false;
}

bool Differentiator::Numerically(std::span<const double> x, std::span<double> dyda, bool extrapolate) {
  std::vector<double>& values = model_.CoefficientValues;
  for (std::size_t i = 0; i < values.size(); ++i) {
    dyda[i] = 0;
    if (model_.Coefficients[i].IsHeld()) continue;
    const double a = values[i];
    const auto f = [&](double value, double& y) {
      // The coefficient is varied in the model itself, so that one evaluation serves all kinds of models.
      values[i] = value;
      return model_.Evaluate(x, y);
    };
    const DifferenceStep step = StepInside(model_.Coefficients[i], a);
    const std::optional<double> answer = step.Inward != 0 ? OneSidedQuotient(a, step.Inward, f)
                                         : extrapolate    ? Extrapolate(a, step.Central, f)
                                                          : CentredQuotient(a, step.Central, f);
    if (!answer) return false;
    values[i] = a;
    dyda[i] = model_.Coefficients[i].Constant * *answer;
  }
  return true;
}

double Differentiator::DDX(std::span<const double> x, int varindex) {
  const auto v = static_cast<std::size_t>(varindex - 1);
  std::vector<double> point(x.begin(), x.end());
  const std::optional<double> answer = Extrapolate(x[v], InitialStep(x[v]), [&](double value, double& y) {
    point[v] = value;
    return model_.Evaluate(point, y);
  });
  if (!answer) throw NumericFault();
  return *answer;
}

}  // namespace quorvex
