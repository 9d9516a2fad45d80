#include "engine/FitRun.h"

#include <algorithm>
#include <memory>
#include <stop_token>
#include <utility>

#include "core/Files.h"
#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "core/ParallelRuns.h"
#include "engine/InformationCriteria.h"
#include "engine/ModelClass.h"
#include "engine/SideForm.h"
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
  if (!model_.SetIC(data_, Threads(), form_)) {
    if (!form_.Aborted) Fail("Solution failed: Numerical Error");
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

ThreadTeam* FitRun::Threads() {
  // A direct solution has few passes.
  if (!threads_ && model_.SolveType != 1) threads_ = ThreadsFor(data_.N(), settings_.Threads);
  return threads_.get();
}

BlockTeam& FitRun::Team() {
  if (!team_) {
    Threads();
    team_ = std::make_unique<BlockTeam>(model_, data_.N(), threads_);
  }
  return *team_;
}

bool FitRun::Nonlinear() {
  form_.ShowConverging(true);
  model_.ErrorMessage.clear();
  Line("Beginning non-linear solution for model " + (model_.cfgID.empty() ? model_.id : model_.cfgID));
  if (!EnoughPoints() || !BoundsStand()) return false;
  try {
    TakeStart();
    model_.Solved = !form_.Aborted && FitStarts();
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
    model_.TakeInput(data_, Threads(), form_);
  } else {
    Line("Obtaining initial estimates");
    const bool found = model_.SetIC(data_, Threads(), form_);
    if (!form_.Aborted) Line(found ? "Initial estimates successful" : "Initial estimates failed, using defaults");
  }
  // After the input, since a typed derivative may name statistics of the data.
  if (model_.typed_) model_.typed_->TakeStatistics(model_);
}

bool FitRun::FitStarts() {
  const std::vector<std::vector<double>> sets = BuildICSets(model_.ICRanges);
  Line("Solving with " + std::to_string(sets.size()) + " initial condition(s)");
  return sets.size() > 1 ? FitSweep(sets) : FitOneStart();
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

// Searches from each start and keeps the solution with the smallest RSS, the first of equal ones. The degrees of
// freedom, ResSum, ResAvg, Durbin and RST stay those of the last solution computed.
bool FitRun::FitSweep(const std::vector<std::vector<double>>& sets) {
  model_.SweepRows.clear();
  struct Solution {
    std::vector<double> Variances;
    SearchEnd Ended;
  };
  std::vector<Solution> solutions;
  Line("Beginning non-linear iterations");
  // Of the set that the model was just fitted from.
  const auto keep = [&](const SetEnd& set) {
    if (set.Ended != SetEnd::How::Solved) return;
    model_.SweepRows.push_back(
        {set.Start, model_.CoefficientValues, model_.RSS, model_.R2Adjust, model_.R2, model_.StdErr, model_.RssNorm});
    solutions.push_back({model_.Variances, set.Search});
  };
  constexpr std::size_t kShort = 2000;  // points of all sets, for which threads would be begun in vain
  if (sets.size() * data_.N() >= kShort && ThreadCount(settings_.Threads) > 1 && model_.RunsOverBlocks()) {
    if (!SweepSideBySide(sets, keep)) return false;
  } else {
    for (std::size_t k = 0; k < sets.size(); ++k) {
      const SetEnd set = FitSet(k, sets[k]);
      if (set.Ended == SetEnd::How::Aborted) return false;
      keep(set);
    }
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

// A set that a twin of the model is fitted from.
struct FitRun::SetOfTwin {
  explicit SetOfTwin(const SideWishes& wishes) : Form(wishes) {}
  SideForm Form;
  SetEnd End;
  std::string Log, ErrorMessage;
  FitResult Left;
};

// Each set by a twin of its own. What a search leaves in the model is brought there in the order of the sets, with its
// lines of the log, so that all is as if they had been fitted in turn.
bool FitRun::SweepSideBySide(const std::vector<std::vector<double>>& sets,
                             const std::function<void(const SetEnd&)>& keep) {
  constexpr std::size_t kAhead = 1000;  // sets that are kept while an earlier one takes longer
  const std::unique_ptr<const ModelClass> start = model_.CopyTo();
  const bool byTypedDerivatives = model_.typed_ != nullptr;
  Settings each = settings_;
  each.Threads = ThreadsOfEach(settings_.Threads, std::min(sets.size(), kAhead));
  SideWishes wishes(form_);
  std::vector<std::unique_ptr<SetOfTwin>> twins(sets.size());
  std::size_t taken = 0;
  OrderedTasks tasks{.Count = sets.size(), .Ahead = std::min(sets.size(), kAhead)};
  tasks.Prepare = [&](std::size_t k) {
    twins[k] = std::make_unique<SetOfTwin>(wishes);
    return true;
  };
  tasks.Do = [&](std::size_t k, std::stop_token stop) {
    SetOfTwin& set = *twins[k];
    set.Form.Start(std::move(stop));
    const std::unique_ptr<ModelClass> twin = start->CopyTo();
    twin->NumIterations = 0;  // a search that breaks down at once leaves the count of the one before
    if (byTypedDerivatives) {
      twin->typed_ = TypedDerivatives::Compile(*twin);
      twin->typed_->TakeStatistics(*twin);
    }
    set.End = FitRun(*twin, data_, each, set.Log, set.Form).FitSet(k, sets[k]);
    set.ErrorMessage = std::move(twin->ErrorMessage);
    set.Left = std::move(static_cast<FitResult&>(*twin));
  };
  tasks.Finish = [&](std::size_t k) {
    twins[k]->Form.ShowOn(form_);
    TakeSet(*twins[k]);
    keep(twins[k]->End);
    twins[k].reset();
    ++taken;
    return true;
  };
  tasks.KeepGoing = [&] {
    if (twins[taken]) twins[taken]->Form.ShowOn(form_);
    return wishes.Hear(form_);
  };
  if (RunInOrder(tasks, settings_.Threads)) return true;
  if (twins[taken]) log_ += twins[taken]->Log;  // as far as it went when it was aborted
  return false;
}

void FitRun::TakeSet(SetOfTwin& set) {
  log_ += set.Log;
  FitResult& own = model_;
  const int iterations = set.Left.NumIterations > 0 ? set.Left.NumIterations : own.NumIterations;
  if (set.End.Ended == SetEnd::How::Solved) {
    set.Left.SweepRows = std::move(own.SweepRows);
    own = std::move(set.Left);
  } else {
    own.CoefficientValues = std::move(set.Left.CoefficientValues);
  }
  own.NumIterations = iterations;
  model_.ErrorMessage = std::move(set.ErrorMessage);
}

// Searches from set k. One whose solution has no statistics is searched from again: only an abort ends a set that keeps
// failing.
FitRun::SetEnd FitRun::FitSet(std::size_t k, const std::vector<double>& set) {
  SetEnd end;
  for (;;) {
    std::vector<double> a = set;
    BringInside(a);
    end.Start = a;
    ShowParameters(a);
    std::optional<Search> search;
    try {
      search = FitOneSet(a);
    } catch (const NumericFault&) {
      // A start that breaks down costs its own row of the sweep and not the sweep.
      if (!form_.Aborted) end.Ended = SetEnd::How::BrokeDown;
      return end;
    }
    if (!search || form_.Aborted) return end;
    Line("IC Set " + std::to_string(k + 1) + ": Final residual change = " + GeneralNumber(search->change));
    Store(a, search->covar);
    if (model_.GetGoodnessOfFit(data_, FittedCount(model_), form_, Team())) {
      Line("Residual Sum of Squares = " + GeneralNumber(model_.RSS));
      end.Search = search->ended;
      end.Ended = SetEnd::How::Solved;
      return end;
    }
    if (form_.Aborted) return end;
    LineAndBlank("Solution rejected based on poor goodness of fit statics.");
  }
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
