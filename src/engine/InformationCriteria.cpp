#include "engine/InformationCriteria.h"

#include <algorithm>
#include <cmath>

#include "engine/ModelClass.h"
#include "functions/Elementary.h"

namespace quorvex {
namespace {

// Of the coefficients, and of the variance where it isn't given.
int ParameterCount(const ModelClass& model) { return FittedCount(model) + (model.GivenDeviation > 0 ? 0 : 1); }

// Twice the negative logarithm of the likelihood, less what all models share.
double Misfit(const ModelClass& model) {
  if (model.GivenDeviation > 0) return model.RssNorm / model.GivenDeviation / model.GivenDeviation;
  const double n = PointCount(model), variance = model.RssNorm / n;
  const double size = std::max(std::abs(model.Statistics.InputYMin), std::abs(model.Statistics.InputYMax));
  // What rounding leaves of a perfect fit, of which one model has more than the other by chance.
  constexpr double kRounding = 0x1p-50;
  if (std::sqrt(variance) <= kRounding * size) return -HUGE_VAL;
  return n * Ln(variance);
}

}  // namespace

// The linear solver knows no held coefficients.
int FittedCount(const ModelClass& model) {
  if (model.SolveType == 1) return model.NumDependentVar();
  return static_cast<int>(std::ranges::count(model.Coefficients, false, &Coefficient::IsHeld));
}

// A fit needs more points than coefficients, so that DOFError is their difference.
double PointCount(const ModelClass& model) { return static_cast<double>(model.DOFError) + FittedCount(model); }

double AICc(const ModelClass& model) {
  const double K = ParameterCount(model), left = PointCount(model) - K - 1;
  return left > 0 ? Misfit(model) + 2 * K + 2 * K * (K + 1) / left : NAN;
}

double BIC(const ModelClass& model) { return Misfit(model) + ParameterCount(model) * Ln(PointCount(model)); }

}  // namespace quorvex
