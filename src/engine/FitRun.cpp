#include "engine/FitRun.h"

#include <algorithm>

#include "core/Files.h"
#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "engine/InformationCriteria.h"
#include "engine/ModelClass.h"
#include "engine/TypedDerivatives.h"
#include "engine/mrqmin.h"

namespace quorvex {

bool FitRun::EnoughPoints() {
  // Less and not equal: with as many points as coefficients no degree of freedom is left for the error.
  if (static_cast<std::size_t>(model_.NumDependentVar()) < data_.N()) return true;
  Fail("Solution failed: not enough data points");
  return false;
}

bool FitRun::BoundsStand() {
  for (const Coefficient& coefficient : model_.Coefficients) {
    const std::string fault = BoundsFault(coefficient);
    if (fault.empty()) continue;
    Line(fault);
    Fail("Solution failed");
    model_.Failure = fault;
    return model_.Solved = false;
  }
  return true;
}

bool FitRun::Linear() {
  Line("Beginning LS solution for model " + model_.id);
  if (!EnoughPoints()) return false;
  model_.Solved = false;
  // A direct solution has no search that could end in another way.
  model_.Ended = SearchEnd::Converged;
  if (model_.UserType) {
    Line("User defined models require nonlinear solver");
    Fail("Solution failed");
    return false;
  }
  if (!BoundsStand()) return false;
  Line("Beginning singular value decomposition.");
  if (!model_.SetIC(data_)) {
    Fail("Solution failed: Numerical Error");
    return false;
  }
  if (!model_.Bounds().Holds(model_.CoefficientValues)) {
    Line("The solution lies outside the bounds: solving within them.");
    if (const std::string fault = model_.SolveLinearFormInside(data_); !fault.empty()) {
      Line(fault);
      Fail("Solution failed");
      model_.Failure = fault;
      return false;
    }
  }
  model_.ErrorInfo = true;
  Line("Solution successful");
  SolveForm unattended;  // there are no iterations to break off
  const auto leftOne = std::ranges::count_if(
      model_.Coefficients, [](const Coefficient& coefficient) { return coefficient.Minimum == coefficient.Maximum; });
  return model_.Solved = Judge(model_.NumDependentVar() - static_cast<int>(leftOne), unattended);
}

// The end that both roads share: statistics, or the rejection of a model without a value at some point.
bool FitRun::Judge(int numcoef, SolveForm& form) {
  if (!model_.GetGoodnessOfFit(data_, numcoef, form, Team())) {
    if (!form.Aborted) Fail("Solution rejected based on poor goodness of fit statics.");
    return false;
  }
  Line("Residual Sum of Squares = " + GeneralNumber(model_.RSS));
  ReportBounds();
  LineAndBlank("Solution Complete");
  return true;
}

BlockTeam& FitRun::Team() {
  // A direct solution has few passes.
  if (!team_) team_ = std::make_unique<BlockTeam>(model_, data_.N(), model_.SolveType == 1 ? 1 : settings_.Threads);
  return *team_;
}

bool FitRun::Nonlinear() {
  form_.ShowConverging(true);
  model_.ErrorMessage.clear();
  Line("Beginning non-linear solution for model " + (model_.cfgID.empty() ? model_.id : model_.cfgID));
  if (!EnoughPoints() || !BoundsStand()) return false;
  try {
    TakeStart();
    const std::vector<std::vector<double>> sets = BuildICSets(model_.ICRanges);
    Line("Solving with " + std::to_string(sets.size()) + " initial condition(s)");
    model_.Solved = sets.size() > 1 ? FitSweep(sets) : FitOneStart();
  } catch (const NumericFault&) {
    model_.Solved = false;
    if (!form_.Aborted) {  // of which the caller tells
      if (!model_.ErrorMessage.empty()) Line(model_.ErrorMessage);
      Line("Solution failed: Numerical Error");
      model_.Failure = model_.ErrorMessage.empty() ? "Solution failed: Numerical Error" : model_.ErrorMessage;
      ReportParameters();
    }
  }
  // Only a fit differentiates by the typed expressions; whoever asks for a slope later gets the numerical one.
  model_.typed_.reset();
  if (!form_.Aborted) form_.ShowConverging(false);
  return model_.Solved;
}

// The derivatives that the user typed, the input and the initial estimates.
void FitRun::TakeStart() {
  if (model_.UserType) {
    Line("Determining derivative method for user defined model");
    model_.typed_ = TypedDerivatives::Compile(model_);
    const bool exact = settings_.DerivativeMethod == DerivativeKind::Exact && !model_.typed_;
    const bool hasExact = exact && model_.HasExactDerivatives();
    Line(model_.typed_ ? "Using analytical derivatives"
         : hasExact    ? "Using exact derivatives"
                       : "Using numerical derivatives");
    if (exact && !hasExact) Line("The model has no exact derivatives: Richardson's extrapolation takes their place.");
  }
  if (model_.SpecifyICComplete) {
    Line("Using current initial estimates");
    model_.TakeInput(data_);
  } else {
    Line("Obtaining initial estimates");
    Line(model_.SetIC(data_) ? "Initial estimates successful" : "Initial estimates failed, using defaults");
  }
  // After the input, since a typed derivative may name statistics of the data.
  if (model_.typed_) model_.typed_->TakeStatistics(model_);
}

bool FitRun::FitOneStart() {
  model_.SweepCount = 0;
  std::vector<double> a = model_.CoefficientValues;
  BringInside(a);
  ShowParameters(a);
  Line("Beginning non-linear iterations");
  const std::optional<Search> search = FitOneSet(a);
  if (!search || form_.Aborted) return false;
  model_.Ended = search->ended;
  ReportEnd(*search);
  Store(a, search->covar);
  return Judge(FittedCount(model_), form_);
}

void FitRun::ReportEnd(const Search& search) {
  const std::string tolerance = GeneralNumber(settings_.ResidualTolerance);
  switch (search.ended) {
    case SearchEnd::Converged:
      Line("Solution converged to residual change less than " + tolerance + "%");
      break;
    case SearchEnd::Paused:
      Line("Iterations stopped by user.");
      break;
    case SearchEnd::Unchanged:
      Line("Merit Function unchanged during last " + std::to_string(settings_.DivIterations) + " of " +
           std::to_string(search.iter) + " iterations");
      Line("Solution converged to residual change of 0.0%");
      break;
    case SearchEnd::IterationLimit:
      Line("Reached iteration limit of " + std::to_string(settings_.MaxIterations));
      Line("Solution failed to converge to residual change of " + tolerance + "%");
      break;
  }
  Line("Final Merit Function = " + GeneralNumber(search.chisq));
  Line("Total number of non-linear iterations = " + std::to_string(search.iter));
}

// Iterates from `a` until a stopping rule holds; `a` is then the best that was found, and `covar` its covariance.
// Nothing where the user aborted. Throws NumericFault.
std::optional<FitRun::Search> FitRun::FitOneSet(std::vector<double>& a) {
  Search search;
  search.covar = Matrix(a.size());
  Matrix alpha(a.size());
  const std::vector<int> ia = FreeFlags();
  LevenbergMarquardt kernel(Team(), data_, settings_.DerivativeMethod, form_);
  double alamda = -1;
  const auto step = [&] { return kernel.mrqmin(a, ia, search.covar, alpha, search.chisq, alamda); };
  model_.ErrorMessage.clear();
  if (!step()) return std::nullopt;

  int unchanged = 0;
  double ochisq = search.chisq;
  const auto showChange = [&] {
    form_.SetDeltaLabel("Percent Change: " + FormatNumber(search.change, "0.000000E+00"));
  };
  showChange();
  for (; search.iter <= settings_.MaxIterations && unchanged <= settings_.DivIterations; ++search.iter) {
    // Between two steps, so that a pause or an abort meets a complete set of coefficients.
    form_.Yield();
    if (form_.Aborted) return std::nullopt;
    // A pause keeps the best coefficients so far, and its covariance is computed below like that of any other end.
    if (form_.Paused) {
      search.ended = SearchEnd::Paused;
      form_.Paused = false;
      break;
    }
    if (!step()) return std::nullopt;
    model_.NumIterations = search.iter;
    form_.SetIterationLabel("Iteration: " + std::to_string(search.iter));
    form_.SetResidualLabel("Merit Function: " + GeneralNumber(search.chisq));
    // A perfect fit leaves no merit function to express a change in percent of.
    if (search.chisq == 0) {
      search.ended = SearchEnd::Converged;
      break;
    }
    // An unchanged value is how mrqmin tells of a rejected trial.
    if (search.chisq == ochisq) {
      ++unchanged;
      continue;
    }
    ShowParameters(a);
    unchanged = 0;
    search.change = (ochisq - search.chisq) / search.chisq * 100;
    showChange();
    if (search.change < settings_.ResidualTolerance) {
      search.ended = SearchEnd::Converged;
      break;
    }
    ochisq = search.chisq;
  }
  // The loop has run out by itself. If iterations are left, it was the count of rejections that ended it.
  if (search.ended == SearchEnd::IterationLimit && search.iter < settings_.MaxIterations)
    search.ended = SearchEnd::Unchanged;
  // One more call, without damping and without a step, computes the covariance.
  alamda = 0;
  if (!step()) return std::nullopt;
  model_.ErrorInfo = true;
  return search;
}

// Searches from each start in turn and keeps the solution with the smallest RSS, the first of equal ones. The degrees
// of freedom, ResSum, ResAvg, Durbin and RST stay those of the last solution computed.
bool FitRun::FitSweep(const std::vector<std::vector<double>>& sets) {
  model_.SweepRows.clear();
  struct Solution {
    std::vector<double> Variances;
    SearchEnd Ended;
  };
  std::vector<Solution> solutions;
  Line("Beginning non-linear iterations");
  for (std::size_t k = 0; k < sets.size();) {
    std::vector<double> a = sets[k];
    BringInside(a);
    const std::vector<double> start = a;
    ShowParameters(a);
    std::optional<Search> search;
    try {
      // A start that breaks down costs its own row of the sweep and not the sweep.
      search = FitOneSet(a);
    } catch (const NumericFault&) {
      if (form_.Aborted) return false;
      ++k;
      continue;
    }
    if (!search || form_.Aborted) return false;
    Line("IC Set " + std::to_string(k + 1) + ": Final residual change = " + GeneralNumber(search->change));
    Store(a, search->covar);
    if (!model_.GetGoodnessOfFit(data_, FittedCount(model_), form_)) {
      if (form_.Aborted) return false;
      // The set is tried again: only an abort ends a set that keeps failing.
      LineAndBlank("Solution rejected based on poor goodness of fit statics.");
      continue;
    }
    Line("Residual Sum of Squares = " + GeneralNumber(model_.RSS));
    model_.SweepRows.push_back({start, a, model_.RSS, model_.R2Adjust, model_.R2, model_.StdErr, model_.RssNorm});
    solutions.push_back({model_.Variances, search->ended});
    ++k;
  }
  const std::vector<SweepRow>& rows = model_.SweepRows;
  Line(std::to_string(rows.size()) + " of " + std::to_string(sets.size()) + " IC's successful, determining best fit.");
  model_.SweepCount = static_cast<int>(rows.size());
  if (rows.empty()) {
    model_.Failure = "None of the initial conditions led to a solution.";
    return false;
  }

  const auto best = std::ranges::min_element(rows, {}, &SweepRow::RSS);
  const Solution& solution = solutions[static_cast<std::size_t>(best - rows.begin())];
  Take(*best);
  model_.Variances = solution.Variances;
  model_.Ended = solution.Ended;
  ReportBounds();
  LineAndBlank("Solution Complete");
  return true;
}

void FitRun::Take(const SweepRow& row) {
  model_.CoefficientValues = row.Final;
  model_.RSS = row.RSS;
  model_.R2Adjust = row.R2Adjust;
  model_.R2 = row.R2;
  model_.StdErr = row.StdErr;
  model_.RssNorm = row.RssNorm;
}

// A start outside the bounds begins on the nearer one. What the user holds stays where he holds it.
void FitRun::BringInside(std::vector<double>& a) {
  const std::vector<double> given = a;
  model_.BringFreeInside(a);
  for (std::size_t i = 0; i < a.size(); ++i) {
    const bool isBelow = given[i] < a[i];
    if (!isBelow && !(given[i] > a[i])) continue;
    Line("Coefficient " + model_.Coefficients[i].Name + " starts on its " + (isBelow ? "minimum" : "maximum") + " of " +
         GeneralNumber(a[i]) + ", since " + GeneralNumber(given[i]) + " lies " + (isBelow ? "below." : "above."));
  }
}

void FitRun::ReportBounds() {
  for (int i = 1; i <= model_.NumDependentVar(); ++i)
    if (model_.IsAtBound(i))
      Line("Coefficient " + model_.Variables(i) + " lies on its " + (model_.IsAtMinimum(i) ? "minimum" : "maximum") +
           " of " + GeneralNumber(model_.Values(i)) + ".");
}

std::vector<int> FitRun::FreeFlags() const {
  std::vector<int> ia;
  for (const Coefficient& coefficient : model_.Coefficients)
    ia.push_back(coefficient.IsHeld() ? 0 : coefficient.Constant);
  return ia;
}

void FitRun::Store(const std::vector<double>& a, const Matrix& covar) {
  model_.CoefficientValues = a;
  for (std::size_t i = 0; i < a.size(); ++i) model_.Variances[i] = covar(i, i);
}

void FitRun::ShowParameters(const std::vector<double>& a) {
  if (!form_.ShowDetail) return;
  for (int i = 1; i <= std::min(model_.NumDependentVar(), kParameterLabels); ++i)
    form_.SetParameterLabel(i, model_.Variables(i) + ": " + GeneralNumber(a[static_cast<std::size_t>(i - 1)]));
}

void FitRun::ReportParameters() {
  Line("Current parameter values:");
  for (int i = 1; i <= model_.NumDependentVar(); ++i)
    Line(model_.Variables(i) + " = " + GeneralNumber(model_.Values(i)));
  log_ += NL;
}

void FitRun::Line(std::string_view text) { log_.append(text).append(NL); }

void FitRun::Fail(std::string_view why) {
  LineAndBlank(why);
  model_.Failure = why;
}

void FitRun::LineAndBlank(std::string_view text) { log_.append(text).append(NL).append(NL); }

}  // namespace quorvex
