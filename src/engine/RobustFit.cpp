#include "engine/RobustFit.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "core/Files.h"
#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "engine/BlockTeam.h"
#include "engine/FitRun.h"
#include "engine/ModelClass.h"
#include "engine/RobustLoss.h"
#include "engine/mrqmin.h"

namespace quorvex {
namespace {

constexpr int kMostRounds = 500;
constexpr double kSettled = 1e-10;  // of the scale: how far fitted values still move
// Of the scale, to start a loss that redescends: nearly least absolute values, since bad points that lie to one side, a
// third of all, take Huber's own answer and its scale with them.
constexpr double kStartScale = 0.3;
constexpr double kNearEnough = 1e-3;    // the same for a start from Huber's answer
constexpr double kRounding = 4e-15;     // of the size of y: what the values of a model are good for
constexpr double kLeastScale = 1e-13;   // of the middle size of y
constexpr double kNormalMad = 0.6745;   // median of |r| for normal r of deviation 1
constexpr std::size_t kRowsNamed = 20;  // of outliers in the log

// What a fit leaves of the points.
struct Misfit {
  std::vector<double> r;     // root(weight) * residual
  std::vector<double> Size;  // of what that is the difference of
};

std::optional<Misfit> MisfitOf(ModelClass& model, const SolveData& data, SolveForm& form, int threads) {
  const std::optional<std::vector<double>> residuals = model.GenerateResiduals(data, form, threads);
  if (!residuals) return std::nullopt;
  Misfit misfit{*residuals, *residuals};
  for (std::size_t i = 0; i < data.N(); ++i) {
    const double root = std::sqrt(data.sig[i]), y = data.Y[i], e = (*residuals)[i];
    misfit.r[i] = root * e;
    misfit.Size[i] = root * (std::abs(y) + std::abs(y - e));
  }
  return misfit;
}

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return values.size() % 2 == 1 ? *middle : (*std::max_element(values.begin(), middle) + *middle) / 2;
}

double ScaleOf(const Misfit& misfit) {
  std::vector<double> lengths;
  for (const double r : misfit.r) lengths.push_back(std::abs(r));
  return std::max(Median(std::move(lengths)) / kNormalMad, kLeastScale * Median(misfit.Size));
}

std::vector<double> WeightsOf(LossKind loss, double scale, const std::vector<double>& r) {
  std::vector<double> weights;
  for (const double one : r) weights.push_back(one == 0 ? 1 : LossWeight(loss, one / scale));
  return weights;
}

std::vector<std::size_t> OutliersBy(const std::vector<double>& weights, const SolveData& data) {
  std::vector<std::size_t> rows;
  for (std::size_t i = 0; i < weights.size(); ++i)
    if (weights[i] < kOutlierWeight) rows.push_back(data.Row.empty() ? i + 1 : data.Row[i]);
  std::ranges::sort(rows);
  return rows;
}

class RobustFit {
 public:
  RobustFit(ModelClass& model, const SolveData& data, const Settings& settings, std::string& log, SolveForm& form)
      : model_(model), data_(data), settings_(settings), log_(log), form_(form), reweighted_(data) {}

  bool Run();

 private:
  bool LeastSquares();
  std::optional<SearchEnd> Rounds(LossKind loss, double tolerance, double partOfScale = 1);
  bool FitReweighted(const std::vector<double>& weights);
  bool TakeVariances();
  bool Finish(SearchEnd ended, const FitResult& squares);
  double Scale(const Misfit& misfit) const { return settings_.LossScale > 0 ? settings_.LossScale : ScaleOf(misfit); }
  void Line(std::string_view text) { log_.append(text).append(NL); }

  ModelClass& model_;
  const SolveData& data_;
  const Settings& settings_;
  std::string& log_;
  SolveForm& form_;

  const std::string name_{kLossNames[static_cast<std::size_t>(settings_.Loss)]};
  SolveData reweighted_;
  int rounds_ = 0, iterations_ = 0;
  std::string why_;  // it failed
};

bool RobustFit::LeastSquares() {
  Settings squares = settings_;
  squares.Loss = LossKind::Squares;
  return model_.Fit(data_, squares, log_, form_);
}

bool RobustFit::Run() {
  if (!LeastSquares()) return false;
  const ModelSetup setup = model_;
  const FitResult squares = model_;
  iterations_ = model_.NumIterations;
  Line("Going on with loss " + name_ + " from the solution by least squares");
  form_.ShowConverging(model_.SolveType == 0);
  std::optional<SearchEnd> ended = SearchEnd::Paused;
  if (model_.SolveType != 0 || squares.Ended != SearchEnd::Paused) {
    ended = Redescends(settings_.Loss) ? Rounds(LossKind::Huber, kNearEnough, kStartScale) : SearchEnd::Converged;
    if (ended && *ended != SearchEnd::Paused) ended = Rounds(settings_.Loss, kSettled);
  }
  static_cast<ModelSetup&>(model_) = setup;
  const bool solved = ended && !form_.Aborted && Finish(*ended, squares);
  if (form_.Aborted) {
    model_.Loss = LossKind::Squares;
    return model_.Solved = false;
  }
  form_.ShowConverging(false);
  if (solved) return true;
  static_cast<FitResult&>(model_) = squares;
  model_.Loss = settings_.Loss;
  Line(why_);
  Line("Solution failed: no solution with loss " + name_);
  log_ += NL;
  model_.Failure = why_;
  return model_.Solved = false;
}

// Reweights until the fitted values move by no more than `tolerance` in units of the scale. Nothing where a round has
// no solution, and where the form is aborted.
std::optional<SearchEnd> RobustFit::Rounds(LossKind loss, double tolerance, double partOfScale) {
  std::optional<Misfit> before = MisfitOf(model_, data_, form_, settings_.Threads);
  for (int round = 0; before && round < kMostRounds; ++round) {
    form_.Yield();
    if (form_.Aborted) return std::nullopt;
    if (form_.Paused) {
      form_.Paused = false;
      return SearchEnd::Paused;
    }
    const double scale = partOfScale * Scale(*before);
    ++rounds_;
    if (!FitReweighted(WeightsOf(loss, scale, before->r))) return std::nullopt;
    if (model_.SolveType == 0 && model_.Ended == SearchEnd::Paused) return SearchEnd::Paused;
    std::optional<Misfit> after = MisfitOf(model_, data_, form_, settings_.Threads);
    bool settled = after.has_value();
    for (std::size_t i = 0; settled && i < data_.N(); ++i)
      settled = std::abs(after->r[i] - before->r[i]) <= tolerance * scale + kRounding * after->Size[i];
    if (settled) return SearchEnd::Converged;
    before = std::move(after);
  }
  if (before) return SearchEnd::IterationLimit;
  why_ = "The model has no value at some point.";
  return std::nullopt;
}

// One fit by the solver of the model, from its present coefficients.
bool RobustFit::FitReweighted(const std::vector<double>& weights) {
  double sum = 0;
  std::size_t weighted = 0;
  for (std::size_t i = 0; i < data_.N(); ++i) {
    sum += reweighted_.sig[i] = data_.sig[i] * weights[i];
    if (reweighted_.sig[i] > 0) ++weighted;
  }
  if (weighted <= static_cast<std::size_t>(model_.NumDependentVar())) {
    why_ = "Loss " + name_ + " leaves only " + std::to_string(weighted) + (weighted == 1 ? " point" : " points") +
           " a weight, too few for the model: its scale is too small.";
    return false;
  }
  const double mean = sum / static_cast<double>(data_.N());
  for (double& weight : reweighted_.sig) weight /= mean;
  std::string unread;
  FitRun run(model_, reweighted_, settings_, unread, form_);
  bool solved = false;
  if (model_.SolveType == 0) {
    for (std::size_t i = 0; i < model_.ICRanges.size(); ++i)
      model_.ICRanges[i] = {model_.CoefficientValues[i], model_.CoefficientValues[i], 1};
    model_.SpecifyICComplete = true;
    solved = run.Nonlinear();
    iterations_ += model_.NumIterations;
  } else {
    solved = run.Linear();
  }
  if (!solved) why_ = "Round " + std::to_string(rounds_) + " of reweighting failed: " + model_.Failure;
  return solved;
}

// The variances of the present coefficients by the data's own weights. Where the data are the fitted values there is
// nowhere to go, and a search ends where it begins.
bool RobustFit::TakeVariances() {
  const std::optional<std::vector<double>> residuals = model_.GenerateResiduals(data_, form_, settings_.Threads);
  if (!residuals) return false;
  for (std::size_t i = 0; i < data_.N(); ++i) reweighted_.Y[i] = data_.Y[i] - (*residuals)[i];
  reweighted_.sig = data_.sig;
  const std::vector<double> found = model_.CoefficientValues;
  std::vector<double> a = found;
  std::vector<int> ia;
  for (int i = 1; i <= model_.NumDependentVar(); ++i) ia.push_back(model_.IsHeld(i) || model_.IsAtBound(i) ? 0 : 1);
  Matrix covar(a.size()), alpha(a.size());
  BlockTeam team(model_, data_.N(), settings_.Threads);
  LevenbergMarquardt kernel(team, reweighted_, settings_.DerivativeMethod, form_);
  double chisq = 0, alamda = -1;
  bool complete = false;
  try {
    complete = kernel.mrqmin(a, ia, covar, alpha, chisq, alamda);
    alamda = 0;
    complete = complete && kernel.mrqmin(a, ia, covar, alpha, chisq, alamda);
  } catch (const NumericFault&) {
  }
  model_.CoefficientValues = found;
  if (complete)
    for (std::size_t i = 0; i < a.size(); ++i) model_.Variances[i] = covar(i, i);
  return complete;
}

// Statistics, and the account of them. What belongs to the search by least squares stays as it was.
bool RobustFit::Finish(SearchEnd ended, const FitResult& squares) {
  const std::vector<double> a = model_.CoefficientValues;
  static_cast<FitResult&>(model_) = squares;
  model_.CoefficientValues = a;
  model_.NumIterations = iterations_;
  model_.Ended = ended;
  const std::optional<Misfit> misfit = MisfitOf(model_, data_, form_, settings_.Threads);
  // Those of a linear solution don't depend on where it lies, unless on a bound.
  const bool keepsVariances = model_.SolveType != 0 && !model_.HasBounds();
  if (!misfit || (!keepsVariances && !TakeVariances())) {
    why_ = model_.ErrorMessage.empty() ? "The standard errors cannot be computed." : model_.ErrorMessage;
    return false;
  }
  model_.Loss = settings_.Loss;
  model_.LossScale = Scale(*misfit);
  model_.LossScaleGiven = settings_.LossScale > 0;
  BlockTeam team(model_, data_.N(), settings_.Threads);
  if (!model_.GetGoodnessOfFit(data_, static_cast<int>(data_.N()) - squares.DOFError, form_, team)) {
    why_ = "Too few residuals are within the scale of loss " + name_ + " to tell standard errors: it is too small.";
    return false;
  }
  Line("Loss " + name_ + ": scale " + GeneralNumber(model_.LossScale) +
       (model_.LossScaleGiven ? " as given, " : " from the residuals, ") + std::to_string(rounds_) +
       (rounds_ == 1 ? " round" : " rounds") + " of reweighting");
  if (ended == SearchEnd::IterationLimit)
    Line("Reached the limit of " + std::to_string(kMostRounds) + " rounds: the coefficients have not settled.");
  else
    Line(ended == SearchEnd::Paused ? "Iterations stopped by user." : "The coefficients have settled.");
  Line(OutlierText(OutliersBy(WeightsOf(model_.Loss, model_.LossScale, misfit->r), data_)));
  Line("Residual Sum of Squares = " + GeneralNumber(model_.RSS));
  Line("Solution Complete");
  log_ += NL;
  return model_.Solved = true;
}

}  // namespace

bool FitRobustly(ModelClass& model, const SolveData& data, const Settings& settings, std::string& log,
                 SolveForm& form) {
  return RobustFit(model, data, settings, log, form).Run();
}

Settings SettingsOfRefit(const ModelClass& model, Settings settings) {
  settings.Loss = model.Loss;
  settings.LossScale = model.LossScaleGiven ? model.LossScale : 0;
  return settings;
}

std::optional<std::vector<double>> RobustWeights(ModelClass& model, const SolveData& data) {
  SolveForm unattended;
  const std::optional<Misfit> misfit = MisfitOf(model, data, unattended, 1);
  if (!misfit) return std::nullopt;
  return WeightsOf(model.Loss, model.LossScale, misfit->r);
}

std::vector<std::size_t> OutlierRows(ModelClass& model, const SolveData& data) {
  if (model.Loss == LossKind::Squares) return {};
  return OutliersBy(RobustWeights(model, data).value_or(std::vector<double>()), data);
}

std::string OutlierText(const std::vector<std::size_t>& rows) {
  if (rows.empty()) return "Outliers: none";
  std::string text = rows.size() == 1 ? "Outliers: row " : "Outliers: rows ";
  for (std::size_t i = 0; i < std::min(rows.size(), kRowsNamed); ++i)
    text += (i > 0 ? ", " : "") + std::to_string(rows[i]);
  if (rows.size() > kRowsNamed) text += " and " + std::to_string(rows.size() - kRowsNamed) + " more";
  return text;
}

}  // namespace quorvex
