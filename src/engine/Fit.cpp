// The one entry through which a model is solved, with its stopping rules and its account in the log.

#include <algorithm>

#include "core/Files.h"
#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "engine/ModelClass.h"
#include "engine/mrqmin.h"

namespace quorvex {
namespace {

void Line(std::string& LogString, std::string_view text) { LogString.append(text).append(NL); }
void LineAndBlank(std::string& LogString, std::string_view text) {
  Line(LogString, text);
  LogString += NL;
}

}  // namespace

bool ModelClass::Fit(const SolveData& data, const Settings& settings, std::string& LogString, SolveForm& form) {
  if (SolveType == 1) return FitLinear(data, LogString);
  if (SolveType == 0) return FitNonlinear(data, settings, LogString, form);
  return false;
}

bool ModelClass::FitLinear(const SolveData& data, std::string& LogString) {
  Line(LogString, "Beginning LS solution for model " + id);
  if (static_cast<std::size_t>(NumDependentVar()) >= data.N()) {
    LineAndBlank(LogString, "Solution failed: not enough data points");
    return false;
  }
  Solved = false;
  Ended = SearchEnd::Converged;
  if (UserType) {
    Line(LogString, "User defined models require nonlinear solver");
    LineAndBlank(LogString, "Solution failed");
    return false;
  }
  Line(LogString, "Beginning singular value decomposition.");
  if (!SetIC(data)) {
    LineAndBlank(LogString, "Solution failed: Numerical Error");
    return false;
  }
  ErrorInfo = true;
  Line(LogString, "Solution successful");
  SolveForm unattended;  // there are no iterations to break off
  return Solved = Judge(data, NumDependentVar(), LogString, unattended);
}

// The end that both roads share: statistics, or the rejection of a model without a value at some point.
bool ModelClass::Judge(const SolveData& data, int numcoef, std::string& LogString, SolveForm& form) {
  if (!GetGoodnessOfFit(data, numcoef, form)) {
    if (!form.Aborted) LineAndBlank(LogString, "Solution rejected based on poor goodness of fit statics.");
    return false;
  }
  Line(LogString, "Residual Sum of Squares = " + GeneralNumber(RSS));
  LineAndBlank(LogString, "Solution Complete");
  return true;
}

bool ModelClass::FitNonlinear(const SolveData& data, const Settings& settings, std::string& LogString,
                              SolveForm& form) {
  form.ShowConverging(true);
  ErrorMessage.clear();
  Line(LogString, "Beginning non-linear solution for model " + (cfgID.empty() ? id : cfgID));
  if (static_cast<std::size_t>(NumDependentVar()) >= data.N()) {
    LineAndBlank(LogString, "Solution failed: not enough data points");
    return false;
  }
  try {
    if (UserType) {
      Line(LogString, "Determining derivative method for user defined model");
      Line(LogString, CompileDerivatives() ? "Using analytical derivatives" : "Using numerical derivatives");
    }
    if (SpecifyICComplete) {
      Line(LogString, "Using current initial estimates");
      TakeInput(data);
    } else {
      Line(LogString, "Obtaining initial estimates");
      Line(LogString, SetIC(data) ? "Initial estimates successful" : "Initial estimates failed, using defaults");
    }
    for (const DerivativeModel& derivative : DerivativeModels_) CopyStatsTo(*derivative.Model);

    const std::vector<std::vector<double>> sets = BuildICSets(ranges_);
    Line(LogString, "Solving with " + std::to_string(sets.size()) + " initial condition(s)");
    Solved = sets.size() > 1 ? FitSweep(data, settings, LogString, form, sets)
                             : FitOneStart(data, settings, LogString, form);
  } catch (const NumericFault&) {
    Solved = false;
    if (!form.Aborted) {  // of which the caller tells
      if (!ErrorMessage.empty()) Line(LogString, ErrorMessage);
      Line(LogString, "Solution failed: Numerical Error");
      ReportParameters(LogString);
    }
  }
  DerivativeModels_.clear();
  if (!form.Aborted) form.ShowConverging(false);
  return Solved;
}

bool ModelClass::FitOneStart(const SolveData& data, const Settings& settings, std::string& LogString, SolveForm& form) {
  SweepCount = 0;
  std::vector<double> a = values_;
  const std::vector<int> ia = FreeFlags();
  ShowParameters(a, form);
  Line(LogString, "Beginning non-linear iterations");
  const std::optional<Search> search = FitOneSet(data, settings, a, ia, form);
  if (!search || form.Aborted) return false;

  const std::string tolerance = GeneralNumber(settings.ResidualTolerance);
  switch (Ended = search->ended) {
    case SearchEnd::Converged:
      Line(LogString, "Solution converged to residual change less than " + tolerance + "%");
      break;
    case SearchEnd::Paused:
      Line(LogString, "Iterations stopped by user.");
      break;
    case SearchEnd::Unchanged:
      Line(LogString, "Merit Function unchanged during last " + std::to_string(settings.DivIterations) + " of " +
                          std::to_string(search->iter) + " iterations");
      Line(LogString, "Solution converged to residual change of 0.0%");
      break;
    case SearchEnd::IterationLimit:
      Line(LogString, "Reached iteration limit of " + std::to_string(settings.MaxIterations));
      Line(LogString, "Solution failed to converge to residual change of " + tolerance + "%");
      break;
  }
  Line(LogString, "Final Merit Function = " + GeneralNumber(search->chisq));
  Line(LogString, "Total number of non-linear iterations = " + std::to_string(search->iter));
  Store(a, search->covar);
  const auto nfree = std::count_if(ia.begin(), ia.end(), [](int free) { return free != 0; });
  return Judge(data, static_cast<int>(nfree), LogString, form);
}

// Iterates from `a` until a stopping rule holds; `a` is then the best that was found, and `covar` its covariance.
// Nothing where the user aborted. Throws NumericFault.
std::optional<ModelClass::Search> ModelClass::FitOneSet(const SolveData& data, const Settings& settings,
                                                        std::vector<double>& a, const std::vector<int>& ia,
                                                        SolveForm& form) {
  Search search;
  search.covar = Matrix(a.size());
  Matrix alpha(a.size());
  LevenbergMarquardt kernel(*this, data, settings.DerivativeMethod, form);
  double alamda = -1;
  const auto step = [&] { return kernel.mrqmin(a, ia, search.covar, alpha, search.chisq, alamda); };
  ErrorMessage.clear();
  if (!step()) return std::nullopt;

  int unchanged = 0;
  double ochisq = search.chisq;
  const auto showChange = [&] { form.SetDeltaLabel("Percent Change: " + FormatNumber(search.change, "0.000000E+00")); };
  showChange();
  for (; search.iter <= settings.MaxIterations && unchanged <= settings.DivIterations; ++search.iter) {
    form.Yield();
    if (form.Aborted) return std::nullopt;
    if (form.Paused) {
      search.ended = SearchEnd::Paused;
      form.Paused = false;
      break;
    }
    if (!step()) return std::nullopt;
    NumIterations = search.iter;
    form.SetIterationLabel("Iteration: " + std::to_string(search.iter));
    form.SetResidualLabel("Merit Function: " + GeneralNumber(search.chisq));
    if (search.chisq == 0) {
      search.ended = SearchEnd::Converged;
      break;
    }
    if (search.chisq == ochisq) {
      ++unchanged;
      continue;
    }
    ShowParameters(a, form);
    unchanged = 0;
    search.change = (ochisq - search.chisq) / search.chisq * 100;
    showChange();
    if (search.change < settings.ResidualTolerance) {
      search.ended = SearchEnd::Converged;
      break;
    }
    ochisq = search.chisq;
  }
  if (search.ended == SearchEnd::IterationLimit && search.iter < settings.MaxIterations)
    search.ended = SearchEnd::Unchanged;
  alamda = 0;
  if (!step()) return std::nullopt;
  ErrorInfo = true;
  return search;
}

// Searches from each start in turn and keeps the solution with the smallest RSS, the first of equal ones. The degrees
// of freedom, ResSum, ResAvg, Durbin and RST stay those of the last solution computed.
bool ModelClass::FitSweep(const SolveData& data, const Settings& settings, std::string& LogString, SolveForm& form,
                          const std::vector<std::vector<double>>& sets) {
  sweep_.clear();
  struct Solution {
    std::vector<double> Covariance;
    SearchEnd Ended;
  };
  std::vector<Solution> solutions;
  const std::vector<int> ia = FreeFlags();
  const auto nfree = static_cast<int>(std::count_if(ia.begin(), ia.end(), [](int free) { return free != 0; }));
  Line(LogString, "Beginning non-linear iterations");
  for (std::size_t k = 0; k < sets.size();) {
    std::vector<double> a = sets[k];
    ShowParameters(a, form);
    std::optional<Search> search;
    try {
      search = FitOneSet(data, settings, a, ia, form);
    } catch (const NumericFault&) {
      if (form.Aborted) return false;
      ++k;
      continue;
    }
    if (!search || form.Aborted) return false;
    Line(LogString, "IC Set " + std::to_string(k + 1) + ": Final residual change = " + GeneralNumber(search->change));
    Store(a, search->covar);
    if (!GetGoodnessOfFit(data, nfree, form)) {
      if (form.Aborted) return false;
      // The set is tried again: only an abort ends a set that keeps failing.
      LineAndBlank(LogString, "Solution rejected based on poor goodness of fit statics.");
      continue;
    }
    Line(LogString, "Residual Sum of Squares = " + GeneralNumber(RSS));
    sweep_.push_back({sets[k], a, RSS, R2Adjust, R2, StdErr, RssNorm});
    solutions.push_back({covariance_, search->ended});
    ++k;
  }
  const std::size_t good = sweep_.size();
  Line(LogString,
       std::to_string(good) + " of " + std::to_string(sets.size()) + " IC's successful, determining best fit.");
  SweepCount = static_cast<int>(good);
  if (good == 0) return false;

  const auto best = std::ranges::min_element(sweep_, {}, &SweepRow::RSS);
  const Solution& solution = solutions[static_cast<std::size_t>(best - sweep_.begin())];
  values_ = best->Final;
  covariance_ = solution.Covariance;
  Ended = solution.Ended;
  RSS = best->RSS;
  R2Adjust = best->R2Adjust;
  R2 = best->R2;
  StdErr = best->StdErr;
  RssNorm = best->RssNorm;
  LineAndBlank(LogString, "Solution Complete");
  return true;
}

std::vector<int> ModelClass::FreeFlags() const {
  std::vector<int> ia;
  for (const Coefficient& coefficient : coefficients_) ia.push_back(coefficient.Constant);
  return ia;
}

void ModelClass::Store(const std::vector<double>& a, const Matrix& covar) {
  values_ = a;
  for (std::size_t i = 0; i < a.size(); ++i) covariance_[i] = covar(i, i);
}

void ModelClass::ShowParameters(const std::vector<double>& a, SolveForm& form) const {
  if (!form.ShowDetail) return;
  for (int i = 1; i <= std::min(NumDependentVar(), kParameterLabels); ++i)
    form.SetParameterLabel(i, Variables(i) + ": " + GeneralNumber(a[Index(i)]));
}

void ModelClass::ReportParameters(std::string& LogString) const {
  Line(LogString, "Current parameter values:");
  for (int i = 1; i <= NumDependentVar(); ++i) Line(LogString, Variables(i) + " = " + GeneralNumber(Values(i)));
  LogString += NL;
}

}  // namespace quorvex
