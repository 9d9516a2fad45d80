#include "diagnosis/WhyFailed.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "engine/DesignSolve.h"
#include "equation/Linearization.h"
#include "linear/TriangularFactor.h"

namespace quorvex {
namespace {

using Reason = std::optional<std::string>;

constexpr std::size_t kMostSlopes = 20000;  // points at which derivatives are looked at

// A failed fit under the eyes of the checks below.
struct Patient {
  const ModelClass& Left;  // as the fit left it
  ModelClass& Start;       // as it began
  const SolveData& Data;
  const LocaleText& Locale;

  std::vector<double> X(std::size_t point) const {
    std::vector<double> x;
    for (const auto& column : Data.X) x.push_back(column[point]);
    return x;
  }
  std::string Number(double value) const { return LocalizeExpression(GeneralNumber(value), Locale); }
  // "X = 3", "X1 = 3, X2 = 4"
  std::string Place(std::size_t point) const {
    std::string text;
    for (std::size_t v = 0; v < Data.X.size(); ++v)
      text +=
          (v == 0 ? "X" : ", X") + (Data.X.size() == 1 ? "" : std::to_string(v + 1)) + " = " + Number(Data.X[v][point]);
    return text;
  }
};

Reason TooFewPoints(const Patient& p) {
  const int coefficients = p.Start.NumDependentVar();
  if (static_cast<std::size_t>(coefficients) < p.Data.N()) return std::nullopt;
  return "The model has " + std::to_string(coefficients) +
         " coefficients and needs more points than that; the data have " + CountOfPoints(p.Data.N()) + ".";
}

Reason OwnModelByLinearSolver(const Patient& p) {
  if (!p.Start.UserType) return std::nullopt;
  return "The linear solver knows the models of the catalogue alone. Choose NonLinear in the setup for a model of your "
         "own.";
}

// The first point at which the model has no value.
std::optional<std::size_t> PointWithoutValue(ModelClass& model, const Patient& p) {
  for (std::size_t i = 0; i < p.Data.N(); ++i) {
    double y = 0;
    if (!model.Evaluate(p.X(i), y) || !std::isfinite(y)) return i;
  }
  return std::nullopt;
}

Reason NoLinearForm(const Patient& p) {
  const CatalogueModel* const row = LookupBuiltInModel(p.Start.id, p.Start.NumIndependentVar());
  if (row == nullptr) return std::nullopt;
  for (std::size_t i = 0; i < p.Data.N(); ++i) {
    std::vector<std::vector<double>> x;
    for (const auto& column : p.Data.X) x.push_back({column[i]});
    const std::vector<double> y = {p.Data.Y[i]}, one = {1};
    try {
      LinearizeData(*row, x, y);
    } catch (const NumericFault&) {
      return "The linear solver needs a function of Y that has no value at " + p.Place(i) +
             ", Y = " + p.Number(p.Data.Y[i]) + ". Choose NonLinear in the setup to fit the model to Y itself.";
    }
    try {
      DesignSolve(*row, x, y, one);
    } catch (const NumericFault&) {
      return "A term of the model has no value at " + p.Place(i) + ".";
    }
  }
  return std::nullopt;
}

Reason TermsAlike(const Patient& p) {
  const CatalogueModel* const row = LookupBuiltInModel(p.Start.id, p.Start.NumIndependentVar());
  if (row == nullptr) return std::nullopt;
  try {
    const LinearSolution solution = DesignSolve(*row, p.Data.X, LinearizeData(*row, p.Data.X, p.Data.Y), p.Data.sig);
    if (std::ranges::find(solution.w, 0.0) == solution.w.end()) return std::nullopt;
    return "The data can't tell the terms of the model apart: there are too few different X for them, or two terms are "
           "in proportion.";
  } catch (const NumericFault&) {
    return std::nullopt;
  }
}

Reason NoCoefficients(const Patient&) {
  return "The straight solution of the model's linear form leads to no coefficients of the model. The nonlinear solver "
         "may find some.";
}

Reason NoValueAtStart(const Patient& p) {
  const auto point = PointWithoutValue(p.Start, p);
  if (!point) return std::nullopt;
  return "With the estimates it began with, the model has no value at " + p.Place(*point) + ".";
}

Reason TooFarOff(const Patient& p) {
  double sum = 0;
  for (std::size_t i = 0; i < p.Data.N(); ++i) {
    double y = 0;
    if (!p.Start.Evaluate(p.X(i), y)) return std::nullopt;
    sum += p.Data.sig[i] * (p.Data.Y[i] - y) * (p.Data.Y[i] - y);
  }
  if (std::isfinite(sum)) return std::nullopt;
  return "With the estimates it began with, the model is so far from the data that the sum of squares is beyond the "
         "range of numbers.";
}

// What the model's derivatives at the start say. They are computed once for all that is said of them.
Reason NoWayToGo(const Patient& p) {
  ModelClass& model = p.Start;
  std::vector<std::string> names;
  std::vector<std::size_t> free;
  for (int i = 1; i <= model.NumDependentVar(); ++i)
    if (model.Constants(i) != 0) {
      free.push_back(static_cast<std::size_t>(i - 1));
      names.push_back(model.Variables(i));
    }
  const std::size_t n = free.size(), stride = p.Data.N() / kMostSlopes + 1;
  if (n == 0) return std::nullopt;
  std::vector<double> dyda(static_cast<std::size_t>(model.NumDependentVar())), length(n), greatest(n);
  std::vector<std::vector<double>> slopes;
  for (std::size_t i = 0; i < p.Data.N(); i += stride) {
    std::string why;
    if (!model.Derivative(p.X(i), dyda, why) || !std::ranges::all_of(dyda, [](double d) { return std::isfinite(d); }))
      return "With the estimates it began with, the derivatives of the model can't be computed at " + p.Place(i) + ".";
    std::vector<double>& row = slopes.emplace_back();
    for (std::size_t k = 0; k < n; ++k) {
      row.push_back(dyda[free[k]]);
      greatest[k] = std::max(greatest[k], std::abs(row[k]));
    }
  }
  std::vector<std::string> idle;
  for (std::size_t k = 0; k < n; ++k) {
    // In units of the greatest, so that no square leaves the range of numbers.
    for (const auto& row : slopes) length[k] += greatest[k] == 0 ? 0 : std::pow(row[k] / greatest[k], 2);
    if (greatest[k] == 0) idle.push_back(names[k]);
  }
  if (!idle.empty())
    return "At the estimates it began with, the curve doesn't depend on " + Listed(idle) +
           " at any point, so that the search had no direction to go.";
  if (std::ranges::any_of(greatest, [](double d) { return d > 1e150; }))
    return "At the estimates it began with, the derivatives of the model are beyond the range of numbers.";

  TriangularFactor factor(n);
  ColumnMatrix rows(2, n);
  for (const auto& row : slopes) {
    for (std::size_t k = 0; k < n; ++k) rows(1, k) = row[k] / greatest[k] / std::sqrt(length[k]);
    factor.Append(rows, 1);
  }
  // A column of unit length that leaves next to nothing on the diagonal is made of those before it: numerical
  // derivatives are right to some ten digits.
  constexpr double kNothing = 1e-9;
  const ColumnMatrix& r = factor.R();
  for (std::size_t k = 1; k < n; ++k) {
    if (std::abs(r(k, k)) > kNothing) continue;
    std::vector<double> share(k);
    std::vector<std::string> alike;
    for (std::size_t i = k; i-- > 0;) {
      share[i] = r(i, k);
      for (std::size_t j = i + 1; j < k; ++j) share[i] -= r(i, j) * share[j];
      share[i] /= r(i, i);
    }
    constexpr double kCounts = 1e-6;
    for (std::size_t i = 0; i < k; ++i)
      if (std::abs(share[i]) > kCounts) alike.push_back(names[i]);
    alike.push_back(names[k]);
    return "Changes of " + Listed(alike) +
           " move the curve in ways that make up for each other, so that the data can't tell them apart. Hold one of "
           "them constant.";
  }
  return std::nullopt;
}

// Where derivatives fail, the coefficients stay where the attempt left them and are no end of anything.
Reason NoValueAtEnd(const Patient& p) {
  if (p.Left.SolveType == 0 && !p.Left.ErrorMessage.empty()) return std::nullopt;
  const std::unique_ptr<ModelClass> end = p.Left.CopyTo();
  const auto point = PointWithoutValue(*end, p);
  if (!point) return std::nullopt;
  return "With the coefficients at which the fit ended, the model has no value at " + p.Place(*point) + ".";
}

Reason OnItsWay(const Patient& p) {
  const std::string text = "The search came to coefficients at which it could not go on: ";
  const std::string& what = p.Left.ErrorMessage;
  if (!what.empty() && !what.starts_with("Singular matrix")) return text + what + (what.ends_with('.') ? "" : ".");
  return text + "one of them no longer moves the curve there, two do the same, or a number is beyond the range.";
}

using Check = Reason (*)(const Patient&);
// In the order in which a fit meets them.
constexpr Check kLinearChecks[] = {TooFewPoints, OwnModelByLinearSolver, NoLinearForm,
                                   TermsAlike,   NoValueAtEnd,           NoCoefficients};
constexpr Check kNonlinearChecks[] = {TooFewPoints, NoValueAtStart, TooFarOff, NoWayToGo, NoValueAtEnd, OnItsWay};

std::string FirstReason(std::span<const Check> checks, const Patient& patient) {
  for (const Check check : checks)
    if (Reason reason = check(patient)) return *reason;
  return "";
}

}  // namespace

std::string WhyFailed(const ModelClass& left, ModelClass& start, const SolveData& data, const LocaleText& locale) {
  if (left.Loss != LossKind::Squares)
    return "By least squares the model has a solution; with another loss, or a larger scale, it may have one, too.";
  const Patient patient{left, start, data, locale};
  if (start.SolveType == 1) return FirstReason(kLinearChecks, patient);
  const std::vector<std::vector<double>> sets = BuildICSets(start.ICRanges);
  if (sets.size() < 2) return FirstReason(kNonlinearChecks, patient);
  start.CoefficientValues = sets[0];
  return "None of " + std::to_string(sets.size()) +
         " starts led to a solution. The first one: " + FirstReason(kNonlinearChecks, patient);
}

std::string Listed(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t i = 0; i < names.size(); ++i)
    text += (i == 0 ? "" : i + 1 == names.size() ? " and " : ", ") + ("'" + names[i] + "'");
  return text;
}

std::string CountOfPoints(std::size_t count) { return std::to_string(count) + (count == 1 ? " point" : " points"); }

}  // namespace quorvex
