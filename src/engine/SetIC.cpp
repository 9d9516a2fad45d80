// Where a nonlinear search starts: linearisation of a built-in model, the rules of the coefficients, ranges.

#include <algorithm>
#include <cmath>

#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "engine/DesignSolve.h"
#include "engine/ModelClass.h"
#include "equation/Linearization.h"

namespace quorvex {
namespace {

// The coefficients by the linear form of a built-in model, solved exactly: the solution itself on the linear road, a
// start on the nonlinear one. `variances` become those of the linear form. A singular value that is exactly 0 raises a
// fault.
std::vector<double> Linearize(const CatalogueModel& builtIn, const SolveData& data, std::vector<double>& variances,
                              const Box* inside = nullptr) {
  const std::vector<double> yT = LinearizeData(builtIn, data.X, data.Y);
  LinearSolution solution =
      inside ? DesignSolveInside(builtIn, data.X, yT, data.sig, *inside) : DesignSolve(builtIn, data.X, yT, data.sig);
  const std::size_t n = solution.w.size();
  // The diagonal of V diag(1/w^2) V^T, in units of the residuals' variance.
  for (std::size_t i = 0; i < variances.size(); ++i) {
    double sum = 0;
    for (std::size_t j = 0; j < n; ++j) {
      const double quotient = solution.v(i, j) / solution.w[j];
      sum += quotient * quotient;
    }
    if (!std::isfinite(sum)) throw NumericFault();
    variances[i] = sum;
  }
  RestoreParameters(builtIn, solution.a);
  return std::move(solution.a);
}

void TakeEstimates(const std::vector<double>& a, ModelClass& model) {
  for (std::size_t i = 0; i < model.CoefficientValues.size(); ++i) {
    model.CoefficientValues[i] = a[i];
    model.ICRanges[i] = {a[i], a[i], 1};
  }
}

void TakeDefaults(ModelClass& model) {
  model.SpecifyICComplete = false;
  model.CoefficientValues.assign(model.CoefficientValues.size(), 1.0);
  model.ICRanges.assign(model.ICRanges.size(), {});
}

}  // namespace

std::shared_ptr<const FitInput> ModelClass::InputOf(const SolveData& data, ThreadTeam* threads, SolveForm& form) const {
  return TakeFitInput(
      data, [&](const LookAround& look) { return InputTable(data, look); }, threads, form);
}

// The input that tables, plots and the words of a model go by. It belongs to every fit, whoever gave its start, and
// nothing of earlier data is left. False where the form is aborted.
bool ModelClass::TakeInput(const SolveData& data, ThreadTeam* threads, SolveForm& form) {
  // First, so that the memory of those serves again.
  CopyInputDataFrom(std::make_shared<const InputPoints>());
  const std::shared_ptr<const FitInput> input = shared_ ? shared_ : InputOf(data, threads, form);
  if (!input) return false;
  CopyInputDataFrom(input->Points);
  Statistics = input->Statistics;
  if (!input->IsWhole) throw NumericFault();
  return true;
}

bool ModelClass::SetIC(const SolveData& data) {
  SolveForm unattended;
  return SetIC(data, nullptr, unattended);
}

bool ModelClass::SetIC(const SolveData& data, ThreadTeam* threads, SolveForm& form) {
  SpecifyICComplete = true;
  try {
    std::vector<double> a;
    if (!TakeInput(data, threads, form)) {
      // Aborted, and the model starts from the defaults when it is fitted again.
    } else if (!UserType && !ForceRuleEstimate) {
      if (BuiltIn() != nullptr) {
        TakeEstimates(Linearize(*BuiltIn(), data, Variances), *this);
        return true;
      }
    } else if (RuleEstimate(data, a)) {
      if (!UserType) SpecifyICComplete = false;
      TakeEstimates(a, *this);
      return true;
    }
  } catch (const NumericFault&) {
  }
  // The caller knows what a failed estimate means: a linear fit has failed, a nonlinear one starts from the defaults.
  TakeDefaults(*this);
  return false;
}

std::string ModelClass::SolveLinearFormInside(const SolveData& data) {
  const Box box = Bounds();
  const std::optional<Box> linear = LinearFormBox(*BuiltIn(), box);
  if (!linear) return "The linear solver cannot keep the bounds of this model; the nonlinear solver can.";
  for (std::size_t i = 0; i < CoefficientValues.size(); ++i)
    if (linear->Lower[i] > linear->Upper[i])
      return "Coefficient " + Coefficients[i].Name + " is positive in the linear solver, and its maximum of " +
             GeneralNumber(box.Upper[i]) + " is not.";
  try {
    std::vector<double> a = Linearize(*BuiltIn(), data, Variances, &*linear);
    // What lies on a bound of the linear form lies on the model's own, which the way back may miss by a rounding.
    for (std::size_t i = 0; i < CoefficientValues.size(); ++i)
      if (Variances[i] == 0)
        a[i] = std::abs(a[i] - box.Lower[i]) <= std::abs(a[i] - box.Upper[i]) ? box.Lower[i] : box.Upper[i];
    box.BringInside(std::span(a).first(CoefficientValues.size()));
    TakeEstimates(a, *this);
  } catch (const NumericFault&) {
    return "The linear problem within the bounds has no solution.";
  }
  return {};
}

bool ModelClass::RuleEstimate(const SolveData& data, std::vector<double>& a) const {
  a.assign(CoefficientValues.size(), 0.0);
  for (std::size_t i = 0; i < CoefficientValues.size(); ++i) {
    const Coefficient& coefficient = Coefficients[i];
    std::string rule = ToLower(coefficient.Rule);
    std::erase(rule, ' ');
    const std::optional<double> constant = NumericText(coefficient.RuleConstant, locale_.DecimalSeparator);
    if (rule.empty() || !constant) return false;
    if (rule == "value") {
      a[i] = *constant;
      continue;
    }
    const bool divides = rule[0] == '/';
    if (!divides && rule[0] != '*') return false;
    const std::optional<double> quantity = RuleQuantity(rule, data);
    if (!quantity) return false;
    // A quantity of 0 cannot divide; 1 is the start of a coefficient of which nothing is known.
    if (!divides)
      a[i] = *constant * *quantity;
    else
      a[i] = *quantity == 0 ? 1.0 : *constant / *quantity;
    if (!std::isfinite(a[i])) throw NumericFault();
  }
  return true;
}

std::vector<std::vector<double>> BuildICSets(const std::vector<ICRange>& ranges) {
  std::size_t count = 1;
  for (const ICRange& range : ranges) count *= static_cast<std::size_t>(std::max(range.Steps, 1));
  std::vector<std::vector<double>> sets(count, std::vector<double>(ranges.size()));
  // The first coefficient runs fastest.
  std::size_t period = 1;  // rows between two steps of the coefficient
  for (std::size_t i = 0; i < ranges.size(); ++i) {
    const auto steps = static_cast<std::size_t>(std::max(ranges[i].Steps, 1));
    const double increment = steps < 2 ? 0.0 : (ranges[i].Max - ranges[i].Min) / static_cast<double>(steps - 1);
    for (std::size_t row = 0; row < count; ++row)
      sets[row][i] = ranges[i].Min + static_cast<double>(row / period % steps) * increment;
    period *= steps;
  }
  return sets;
}

}  // namespace quorvex
