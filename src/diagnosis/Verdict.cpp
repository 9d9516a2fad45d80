#include "diagnosis/Verdict.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>

#include "core/DerivativeKind.h"
#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "diagnosis/ChiSquare.h"
#include "diagnosis/ModelBreaks.h"
#include "diagnosis/WhyFailed.h"
#include "functions/ProbabilityBeyond.h"
#include "functions/betai.h"

namespace quorvex {
namespace {

// What the docstring of Judge tells.
constexpr double kUndetermined = 1e-10, kWeak = 1e-6, kHopeless = 1000, kPart = 0.1;
constexpr double kOffMinimum = 0.05;
constexpr int kFewDegrees = 3;
constexpr double kCorrelated = 0.99, kUncertain = 0.2;
constexpr double kByChance = 0.001, kAlone = 0.9, kShared = 0.5;
constexpr std::size_t kEnoughX = 7;
constexpr double kManyX = 12;
constexpr double kRounding = 1e-10;
constexpr double kLopsided = 0.25, kUneven = 0.1, kFailedSamples = 0.05;
constexpr std::size_t kUsualLevel = 2;  // 95 %

// A solved model under the eyes of the checks below.
struct Case {
  ModelClass& Model;
  const SolveData& Data;
  const FitGeometry* Geometry;  // null where it has none
  const LocaleText& Locale;
  SolveForm& Form;
  DerivativeKind DerivativeMethod;
  int Threads;
  std::vector<int> Open = {};  // coefficients that the data don't determine, by their numbers

  std::string Number(double value) const { return LocalizeExpression(GeneralNumber(value, 4), Locale); }
  std::string Place(double x) const { return LocalizeExpression(GeneralNumber(x, 7), Locale); }
  std::string Quoted(int i) const { return "'" + Model.Variables(i) + "'"; }
  std::size_t Row(std::size_t point) const { return Data.Row.empty() ? point + 1 : Data.Row[point]; }
  bool IsOpen(int i) const { return std::ranges::find(Open, i) != Open.end(); }
  // The residuals are no more than rounding.
  bool IsExact() const {
    double most = 0;
    for (const double y : Data.Y) most = std::max(most, std::abs(y));
    return std::sqrt(Model.RSS / static_cast<double>(Data.N())) <= kRounding * most;
  }
};

using Sentences = std::vector<std::string>;

void NotConverged(Case& c, Sentences& reasons) {
  if (c.Model.SolveType != 0) return;
  if (c.Model.Ended == SearchEnd::IterationLimit || c.Model.Ended == SearchEnd::Paused)
    reasons.emplace_back("The search had not converged: more iterations may lead to another answer.");
}

void OnABound(Case& c, Sentences& reasons) {
  for (int i = 1; i <= c.Model.NumDependentVar(); ++i) {
    if (!c.Model.IsAtBound(i)) continue;
    const bool least = c.Model.IsAtMinimum(i);
    reasons.push_back(c.Quoted(i) + " lies on its " + (least ? "minimum " : "maximum ") + c.Number(c.Model.Values(i)) +
                      ": the data would have it " + (least ? "lower" : "higher") +
                      ", and the errors of the others hold for that value alone.");
  }
}

void NoDerivatives(Case& c, Sentences& reasons) {
  if (c.Geometry == nullptr && !c.Form.Aborted)
    reasons.emplace_back("The model has no derivatives at some point, so that its errors are not known.");
}

void NotDetermined(Case& c, Sentences& reasons) {
  if (c.Geometry == nullptr || c.Geometry->ReciprocalCondition() >= kWeak) return;
  const std::vector<double>& weakest = c.Geometry->WeakestDirection();
  double most = 0;
  for (const double part : weakest) most = std::max(most, std::abs(part));
  std::vector<std::string> names;
  bool hopeless = true;
  for (std::size_t j = 0; j < weakest.size(); ++j) {
    if (std::abs(weakest[j]) < kPart * most) continue;
    const int i = c.Geometry->Free()[j];
    c.Open.push_back(i);
    names.push_back(c.Model.Variables(i));
    hopeless = hopeless && c.Model.StandardError(i) > kHopeless * std::abs(c.Model.Values(i));
  }
  if (c.Geometry->ReciprocalCondition() >= kUndetermined && !hopeless) return c.Open.clear();
  reasons.push_back("The data do not determine " + Listed(names) +
                    (names.size() == 1 ? ": the curve does not depend on it at any point."
                                       : ": they can change together and leave the curve as it is. Hold one of them "
                                         "constant."));
}

void NotAtAMinimum(Case& c, Sentences& reasons) {
  if (c.Geometry == nullptr || c.Model.SolveType != 0 || c.Model.Loss != LossKind::Squares || c.IsExact()) return;
  // Along what the data leave open, rounding decides.
  if (!c.Open.empty() || !(c.Geometry->RelativeOffset() > kOffMinimum)) return;
  bool moved = c.Model.ICRanges.size() != c.Model.CoefficientValues.size() || c.Model.SweepCount > 1;
  for (std::size_t i = 0; i < c.Model.ICRanges.size() && !moved; ++i)
    moved = c.Model.ICRanges[i].Min != c.Model.CoefficientValues[i];
  reasons.emplace_back(moved ? "The sum of squares still falls where the search ended: this is no minimum, and other "
                               "initial estimates may lead to one."
                             : "The search never left its initial estimates, where the sum of squares still falls: "
                               "others may lead to a minimum.");
}

void NoBetterThanAConstant(Case& c, Sentences& reasons) {
  // Outliers, which a robust fit leaves where they are, may be off the best curve by more than from the mean.
  if (c.Model.Loss != LossKind::Squares) return;
  if (c.Geometry == nullptr || !(c.Model.RST > 0) || c.IsExact()) return;
  const double aboutMean = c.Model.RST / static_cast<double>(c.Data.N() - 1);
  if (c.Model.RssNorm / c.Model.DOFError >= aboutMean)
    reasons.emplace_back(
        "The model is no better than a constant: the points scatter as much about it as about the "
        "mean of Y.");
}

void Broken(Case& c, Sentences& reasons) {
  const std::vector<ModelBreak> breaks = FindBreaks(c.Model, c.Data, c.Form);
  if (breaks.empty()) return;
  const ModelBreak& first = breaks.front();
  const std::string what = first.Kind == BreakKind::NoValue ? "The model has no value"
                           : first.Kind == BreakKind::Pole  ? "The model has a pole"
                                                            : "The model jumps";
  const std::size_t more = breaks.size() - 1;
  reasons.push_back(what + " at X = " + c.Place(first.At) + ", between the points at X = " + c.Place(first.Before) +
                    " and X = " + c.Place(first.After) +
                    (more == 0 ? "." : ", and is broken between " + std::to_string(more) + " more pairs of points."));
}

void TooFewPoints(Case& c, Sentences& reasons) {
  if (c.Geometry == nullptr || c.Model.DOFError >= kFewDegrees) return;
  const std::size_t free = c.Geometry->Free().size();
  reasons.push_back(CountOfPoints(c.Data.N()) + " for " + std::to_string(free) +
                    (free == 1 ? " free coefficient leave " : " free coefficients leave ") +
                    std::to_string(c.Model.DOFError) + (c.Model.DOFError == 1 ? " degree" : " degrees") +
                    " of freedom: how much the points scatter is hardly known.");
}

void Correlated(Case& c, Sentences& reasons) {
  if (c.Geometry == nullptr) return;
  const Matrix correlation = c.Geometry->Correlation();
  const std::vector<int>& free = c.Geometry->Free();
  const auto uncertain = [&c](int i) { return c.Model.StandardError(i) > kUncertain * std::abs(c.Model.Values(i)); };
  double most = kCorrelated;
  std::size_t row = 0, column = 0;
  for (std::size_t i = 1; i < free.size(); ++i)
    for (std::size_t j = 0; j < i; ++j) {
      if (!(std::abs(correlation(i, j)) > most) || (c.IsOpen(free[i]) && c.IsOpen(free[j]))) continue;
      if (!uncertain(free[i]) && !uncertain(free[j])) continue;
      most = std::abs(correlation(i, j));
      row = i;
      column = j;
    }
  if (row == column) return;
  reasons.push_back(c.Quoted(free[column]) + " and " + c.Quoted(free[row]) + " have a correlation of " +
                    LocalizeExpression(GeneralNumber(correlation(row, column), 6), c.Locale) +
                    ": the data hardly tell one from the other.");
}

void MayBeZero(Case& c, Sentences& notes) {
  if (c.Geometry == nullptr || c.IsExact()) return;
  std::vector<std::string> names;
  int last = 0;
  for (const int i : c.Geometry->Free())
    if (!c.IsOpen(i) && c.Model.StandardError(i) > std::abs(c.Model.Values(i)))
      names.push_back(c.Model.Variables(last = i));
  if (names.size() == 1)
    notes.push_back("'" + names[0] + "' may be 0: its standard error " + c.Number(c.Model.StandardError(last)) +
                    " is larger than its value " + c.Number(c.Model.Values(last)) + ".");
  if (names.size() > 1)
    notes.push_back(Listed(names) + " may be 0: their standard errors are larger than their values.");
}

// As ProbabilityBeyond; 1 where it can't be computed.
double Beyond(double f, double dfRegression, double dfError) {
  try {
    return ProbabilityBeyond(f, dfRegression, dfError);
  } catch (const NumericFault&) {
    return 1;
  }
}

// What the reduced chi-square says, if anything. Points that a loss has played down are meant to be far off.
std::string AgainstDeviations(Case& c, double unitDeviation) {
  if (c.Model.Loss != LossKind::Squares) return "";
  const ChiSquare chiSquare = ChiSquareOf(c.Model, unitDeviation);
  const std::string scatter = "The points scatter " + c.Number(std::sqrt(chiSquare.Reduced)) +
                              " times as much as their standard deviations say (reduced chi-square " +
                              c.Number(chiSquare.Reduced) + "): ";
  if (chiSquare.Probability < kByChance)
    return scatter + "the model misses something, or the deviations are too small.";
  // An exact fit tells nothing of deviations.
  if (chiSquare.Probability > 1 - kByChance && !c.IsExact()) return scatter + "the deviations are too large.";
  return "";
}

void BeyondDeviations(Case& c, Sentences& reasons) {
  if (std::string text = AgainstDeviations(c, c.Model.GivenDeviation); !text.empty())
    reasons.push_back(std::move(text));
}

// Where the standard deviations are only ratios, the scatter itself says how large they are, and no error is wrong.
void BeyondRatios(Case& c, Sentences& notes) {
  if (c.Model.GivenDeviation > 0) return;
  if (std::string text = AgainstDeviations(c, c.Data.UnitDeviation); !text.empty()) notes.push_back(std::move(text));
}

// "Row 3", "Rows 3, 7 and 9"; of many the first.
std::string RowsText(const std::vector<std::size_t>& rows) {
  constexpr std::size_t kMost = 10;
  std::string text = rows.size() == 1 ? "Row " : "Rows ";
  const std::size_t listed = std::min(rows.size(), kMost);
  for (std::size_t i = 0; i < listed; ++i)
    text += (i == 0 ? "" : i + 1 == rows.size() ? " and " : ", ") + std::to_string(rows[i]);
  return listed < rows.size() ? text + " and " + std::to_string(rows.size() - listed) + " more" : text;
}

// Each point alone: what it decides, and how far it is off for its place.
void SinglePoints(Case& c, Sentences& reasons) {
  if (c.Geometry == nullptr || !c.Open.empty() || c.Geometry->Free().empty()) return;
  const auto leverages = Leverages(c.Model, c.Data, *c.Geometry, c.DerivativeMethod, c.Form, c.Threads);
  if (!leverages) return;
  std::vector<std::size_t> alone, off;
  const auto residuals = c.Model.GenerateResiduals(c.Data, c.Form, c.Threads);
  const double n = static_cast<double>(c.Data.N()), degrees = c.Model.DOFError - 1;
  const bool squares = c.Model.Loss == LossKind::Squares && residuals && degrees >= 1 && !c.IsExact();
  const double variance = c.Model.RssNorm / c.Model.DOFError;
  double farthest = 0;
  for (std::size_t i = 0; i < c.Data.N(); ++i) {
    const double rest = 1 - (*leverages)[i];
    if (rest < 1 - kAlone) {
      alone.push_back(c.Row(i));
      continue;
    }
    if (!squares || rest < 1 - kShared) continue;
    // From the internally studentized residual to the one whose variance is without the point.
    const double e = (*residuals)[i], inner = c.Data.sig[i] * e * e / (variance * rest);
    const double outer = inner * degrees / std::max(degrees + 1 - inner, 0.0);
    if (!(n * Beyond(outer, 1, degrees) < kByChance)) continue;
    off.push_back(c.Row(i));
    farthest = std::max(farthest, outer);
  }
  // With hardly more points than coefficients most do.
  if (!alone.empty() && alone.size() < c.Geometry->Free().size())
    reasons.push_back(RowsText(alone) +
                      (alone.size() == 1 ? " alone decides a coefficient: the curve goes"
                                         : " alone decide a coefficient each: the curve goes") +
                      " where that point is, right or wrong.");
  if (!off.empty())
    reasons.push_back(RowsText(off) + (off.size() == 1 ? " is" : " are") +
                      " farther off the curve than chance allows (studentized residual " +
                      (off.size() == 1 ? "" : "up to ") + c.Number(std::sqrt(farthest)) +
                      "): look for a slip, or take a loss such as Huber's, with which such a point counts less.");
}

// Mean residuals, weighted, of points of equal X, in the order of X. Nothing where the model has no value.
std::optional<std::vector<double>> ResidualsAlongX(Case& c) {
  const auto residuals = c.Model.GenerateResiduals(c.Data, c.Form, c.Threads);
  if (!residuals) return std::nullopt;
  const std::vector<double>& x = c.Data.X[0];
  std::vector<std::size_t> order(x.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, {}, [&x](std::size_t i) { return x[i]; });
  std::vector<double> means;
  for (std::size_t first = 0, i = 0; first < order.size(); first = i) {
    double sum = 0, weights = 0;
    for (; i < order.size() && x[order[i]] == x[order[first]]; ++i) {
      sum += c.Data.sig[order[i]] * (*residuals)[order[i]];
      weights += c.Data.sig[order[i]];
    }
    means.push_back(weights > 0 ? sum / std::sqrt(weights) : 0);
  }
  return means;
}

// The probability that a normal deviate is below z, for a z below 0; else 1.
double LowerTail(double z) { return z < 0 ? Beyond(z * z, 1, HUGE_VAL) / 2 : 1; }

// That von Neumann's ratio, between 0 and 4, of n independent residuals is below this one: of many by the normal
// distribution, the more cautious; of few, where that would see nothing, a quarter of the ratio has a beta distribution
// of the same mean and variance.
double LowerTailOfRatio(double ratio, double n) {
  const double reciprocal = (n * n - 1) / (n - 2);  // 4 over the variance
  if (n >= kManyX) return LowerTail((ratio - 2) * std::sqrt(reciprocal / 4));
  const double q = (reciprocal - 1) / 2;
  try {
    return ratio < 2 ? betai(q, q, ratio / 4) : 1;
  } catch (const NumericFault&) {
    return 1;
  }
}

// Where points are repeated, their scatter about their own mean says what the curve's may be.
void LackOfFit(Case& c, Sentences& reasons) {
  if (c.Geometry == nullptr || c.Model.Loss != LossKind::Squares || c.IsExact()) return;
  const auto residuals = c.Model.GenerateResiduals(c.Data, c.Form, c.Threads);
  if (!residuals) return;
  const auto& x = c.Data.X;
  const auto compare = [&x](std::size_t i, std::size_t j) {
    for (const auto& column : x)
      if (column[i] != column[j]) return column[i] < column[j] ? -1 : 1;
    return 0;
  };
  std::vector<std::size_t> order(c.Data.N());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, [&compare](std::size_t i, std::size_t j) { return compare(i, j) < 0; });
  double places = 0, all = 0, repeats = 0;
  for (std::size_t first = 0, i = 0; first < order.size(); first = i, ++places) {
    double weights = 0, sum = 0;
    for (i = first; i < order.size() && compare(order[i], order[first]) == 0; ++i) {
      weights += c.Data.sig[order[i]];
      sum += c.Data.sig[order[i]] * (*residuals)[order[i]];
    }
    const double mean = weights > 0 ? sum / weights : 0;
    for (std::size_t k = first; k < i; ++k) {
      const double e = (*residuals)[order[k]], w = c.Data.sig[order[k]];
      all += w * e * e;
      repeats += w * (e - mean) * (e - mean);
    }
  }
  const double pure = static_cast<double>(c.Data.N()) - places;
  const double lack = places - static_cast<double>(c.Geometry->Free().size());
  // Repeats without any scatter are copies, or rounded.
  if (pure < 1 || lack < 1 || !(repeats > kRounding * all)) return;
  const double f = (all - repeats) / lack / (repeats / pure);
  if (!(Beyond(std::max(f, 0.0), lack, pure) < kByChance)) return;
  reasons.push_back("Points at the same X scatter less about their mean than their means about the curve (F = " +
                    c.Number(f) + "): the model misses something.");
}

void NotRandom(Case& c, Sentences& reasons) {
  if (c.Data.X.size() != 1 || c.IsExact()) return;
  const auto residuals = ResidualsAlongX(c);
  if (!residuals || residuals->size() < kEnoughX) return;
  const double n = static_cast<double>(residuals->size());
  double mean = 0, squares = 0, steps = 0, above = 0, runs = 0;
  for (const double e : *residuals) mean += e / n;
  for (std::size_t i = 0; i < residuals->size(); ++i) {
    const double e = (*residuals)[i], before = i > 0 ? (*residuals)[i - 1] : 0;
    squares += (e - mean) * (e - mean);
    if (e > 0) ++above;
    if (i > 0) steps += (e - before) * (e - before);
    if (i == 0 || (e > 0) != (before > 0)) ++runs;
  }
  const double below = n - above, expected = 1 + 2 * above * below / n;
  const double runsVariance = (expected - 1) * (expected - 2) / (n - 1);
  const double ratio = steps / squares;
  const double byRuns = runsVariance > 0 ? LowerTail((runs + 0.5 - expected) / std::sqrt(runsVariance)) : 1;
  const double byRatio = LowerTailOfRatio(ratio, n);
  if (!(std::min(byRuns, byRatio) < kByChance)) return;
  reasons.push_back("The residuals follow each other along X (Durbin-Watson " + c.Number(ratio) +
                    (runs < expected - 1
                         ? ", runs of one sign: " + c.Number(runs) + " instead of " + c.Number(std::round(expected))
                         : "") +
                    "): the model misses something.");
}

using Check = void (*)(Case&, Sentences&);

// The gravest first.
constexpr Check kChecks[] = {
    NotConverged, OnABound,         NoDerivatives, NotDetermined, NotAtAMinimum, NoBetterThanAConstant,
    Broken,       BeyondDeviations, TooFewPoints,  SinglePoints,  Correlated,    NotRandom,
    LackOfFit};
constexpr Check kRemarks[] = {MayBeZero, BeyondRatios};

// What is held, to stand behind how the search ended.
std::string HeldText(const ModelClass& model) {
  std::vector<std::string> names;
  for (int i = 1; i <= model.NumDependentVar(); ++i)
    if (model.IsHeld(i)) names.push_back(model.Variables(i));
  return names.empty() ? "" : ", with " + Listed(names) + " held constant";
}

std::string HowEnded(const ModelClass& model, const Settings& settings) {
  const std::string count =
      std::to_string(model.NumIterations) + (model.NumIterations == 1 ? " iteration" : " iterations");
  std::string text;
  if (model.SolveType == 1) {
    text = "The linear solver solved it directly";
  } else {
    switch (model.Ended) {
      case SearchEnd::Converged:
        text = "The search converged after " + count;
        break;
      case SearchEnd::Unchanged:
        text = "The search ended after " + count + ", since the last " + std::to_string(settings.DivIterations) +
               " brought nothing better";
        break;
      case SearchEnd::IterationLimit:
        text = "The search stopped at the limit of " + count;
        break;
      case SearchEnd::Paused:
        text = "The search was stopped by the user after " + count;
        break;
    }
  }
  text += HeldText(model) + ".";
  return model.FoundBy.empty() ? text : text + " Found by " + model.FoundBy + ".";
}

Verdict FailedVerdict(const ModelClass& model, const SolveData& data, const LocaleText& locale) {
  Verdict verdict;
  verdict.Kind = VerdictKind::Failed;
  if (model.Failure.empty()) {
    verdict.Ended = "The fit was broken off and has no answer.";
    return verdict;
  }
  verdict.Ended = "The fit failed: " + model.Failure;
  if (!verdict.Ended.ends_with('.')) verdict.Ended += '.';
  const std::unique_ptr<ModelClass> start = model.CopyTo();
  start->SetIC(data);  // takes the input, of which a model may name statistics
  // The ranges keep what the search began with.
  start->ICRanges = model.ICRanges;
  for (std::size_t i = 0; i < model.ICRanges.size(); ++i) start->CoefficientValues[i] = model.ICRanges[i].Min;
  if (std::string why = WhyFailed(model, *start, data, locale); !why.empty()) verdict.Reasons.push_back(std::move(why));
  return verdict;
}

}  // namespace

Verdict Judge(ModelClass& model, const SolveData& data, const std::optional<FitGeometry>& geometry,
              const Settings& settings, SolveForm& form, const LocaleText& locale) {
  if (!model.Solved) return FailedVerdict(model, data, locale);
  Verdict verdict;
  verdict.Ended = HowEnded(model, settings);
  Case c{model, data, geometry ? &*geometry : nullptr, locale, form, settings.DerivativeMethod, settings.Threads};
  for (const auto check : kChecks) check(c, verdict.Reasons);
  for (const auto remark : kRemarks) remark(c, verdict.Notes);
  if (!verdict.Reasons.empty()) verdict.Kind = VerdictKind::Doubtful;
  return verdict;
}

void JudgeByProfiles(const ModelClass& model, const ProfiledModel& profiled,
                     const std::vector<LimitsByLevel>& symmetric, Verdict& verdict) {
  if (profiled.FoundBetter) verdict.Reasons.insert(verdict.Reasons.begin(), profiled.Refusal);
  std::vector<std::string> open, lopsided, uneven;
  for (const CoefficientProfile& profile : profiled.Coefficients) {
    if (model.IsAtBound(profile.Coefficient)) continue;
    const Interval& by = profile.Limits[kUsualLevel];
    const Interval& straight = symmetric[static_cast<std::size_t>(profile.Coefficient - 1)][kUsualLevel];
    const double off = std::max(std::abs(by.Lower - straight.Lower), std::abs(by.Upper - straight.Upper)) /
                       (straight.Upper - straight.Lower);
    if (std::isinf(by.Lower) || std::isinf(by.Upper))
      open.push_back(profile.Name);
    else if (off > kLopsided)
      lopsided.push_back(profile.Name);
    else if (off > kUneven)
      uneven.push_back(profile.Name);
  }
  if (!open.empty())
    verdict.Reasons.push_back("The data leave " + Listed(open) +
                              " open: at 95 % the profile has no limit on one side at least.");
  const auto another = [](const std::vector<std::string>& names) {
    return "The limits of " + Listed(names) + " by " +
           (names.size() == 1 ? "its standard error" : "their standard errors") +
           " are not those of the profile: take the profile's.";
  };
  if (!lopsided.empty()) verdict.Reasons.push_back(another(lopsided));
  if (!uneven.empty()) verdict.Notes.push_back(another(uneven));
  if (!verdict.Reasons.empty()) verdict.Kind = VerdictKind::Doubtful;
}

void JudgeBySamples(int samples, int failures, Verdict& verdict) {
  if (failures <= kFailedSamples * samples) return;
  verdict.Reasons.push_back(std::to_string(failures) + " of " + std::to_string(samples) +
                            " samples of the bootstrap have no answer: those that are left are no fair picture.");
  verdict.Kind = VerdictKind::Doubtful;
}

void TakeOver(const Verdict& further, Verdict& verdict) {
  const auto add = [](const std::vector<std::string>& from, std::vector<std::string>& to) {
    for (std::size_t i = 0; i < from.size(); ++i)
      if (std::ranges::find(to, from[i]) == to.end())
        to.insert(to.begin() + static_cast<std::ptrdiff_t>(std::min(i, to.size())), from[i]);
  };
  add(further.Reasons, verdict.Reasons);
  add(further.Notes, verdict.Notes);
  verdict.Kind = std::max(verdict.Kind, further.Kind);
}

}  // namespace quorvex
