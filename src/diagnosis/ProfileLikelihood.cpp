#include "diagnosis/ProfileLikelihood.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "diagnosis/TaskForm.h"
#include "engine/ModelClass.h"
#include "engine/TrustRegion.h"
#include "engine/WeightedResiduals.h"
#include "equation/Catalogue.h"
#include "equation/Linearization.h"

namespace quorvex {
namespace {

constexpr double kClose = 1e-9;      // how near a limit is closed in on, in parts of its distance from the solution
constexpr double kFarthest = 1e9;    // a coefficient goes no further, in parts of its value or standard error
constexpr double kExact = 1e-13;     // scatter below this part of Y is rounding
constexpr double kRounding = 1e-10;  // with so small a one, less may be no better than what rounding makes of it
constexpr double kLower = 1e-4;  // a merit function lower by that much, in units of the variance, is a better solution
constexpr double kSameAnswer = 0.1;  // a Tau so small is within what a search leaves: limits around it are the answer's
constexpr double kJump = 1e-6;       // a step so short, in parts of the distance, is made whatever it gains
constexpr double kStepsToLast = 8;   // as many lead to the last level where Tau is a straight line
constexpr int kMostSteps = 200, kMostRounds = 60, kMostRestarts = 4, kMostSearches = 3;

// A fit with one coefficient held.
struct HeldFit {
  double Value = NAN, Tau = NAN;
  double Length = HUGE_VAL;    // of the residuals
  std::vector<double> Others;  // the other free coefficients
};

// Where the merit function is least, as far as is known.
struct Least {
  std::vector<double> a;  // free coefficients
  double Length = HUGE_VAL;
};

// Searches from `a` to the end. The length is infinite where the start has no value.
Least Search(WeightedResiduals& residuals, std::vector<double> a, SolveForm& form) {
  if (a.empty()) {
    std::vector<double> r;
    return residuals.Residuals(a, r) ? Least{a, Norm(r)} : Least{a, HUGE_VAL};
  }
  residuals.Bounds().BringInside(a);
  TrustRegionEnd end;
  end.a = std::move(a);
  for (int i = 0; i < kMostSearches && !end.Converged && !form.Aborted; ++i)
    end = TrustRegionSearch(residuals, std::move(end.a), {}, form);
  return {std::move(end.a), end.Length};
}

// By how much the sum of squares of one length exceeds that of another, in squares of the unit.
double Rise(double length, double least, double unit) { return (length - least) / unit * ((length + least) / unit); }

// What one side of a solution tells.
struct SideOfProfile {
  std::vector<ProfilePoint> Points;                     // away from the solution
  std::array<double, kLimitLevels.size()> Limits = {};  // NaN where there is none
  std::string Ends;
  Least Better;  // of a finite length where a better solution has turned up, which ends the work
};

std::string Short(double value) { return GeneralNumber(value, 7); }

// The twin that searches go on with: its coefficients free as the solution has had them.
std::unique_ptr<ModelClass> TwinOf(const ModelClass& model) {
  std::unique_ptr<ModelClass> twin = model.CopyTo();
  if (twin->SolveType == 1)
    for (Coefficient& coefficient : twin->Coefficients) coefficient.Constant = 1;
  return twin;
}

// Goes from the solution to one side with one coefficient held.
class SideWalk {
 public:
  // `number` counts all coefficients from 1, `which` the free ones from 0; `direction` is 1 or -1.
  SideWalk(const ModelClass& model, const SolveData& data, const ProfileScale& scale, const Least& least,
           std::size_t which, int number, int direction, SolveForm& form)
      : twin_(TwinOf(model)),
        quantiles_(scale.Quantiles),
        least_(least),
        which_(which),
        number_(number),
        direction_(direction),
        form_(form),
        residuals_(Held(*twin_, number), data, form),
        unit_(std::sqrt(scale.Variance) * residuals_.Unit()) {
    const auto at = static_cast<std::ptrdiff_t>(which);
    centre_ = {least.a[which], 0, least.Length, least.a};
    centre_.Others.erase(centre_.Others.begin() + at);
    const Coefficient& coefficient = twin_->Coefficients[static_cast<std::size_t>(number - 1)];
    bound_ = direction > 0 ? coefficient.Maximum : coefficient.Minimum;
    const double error = std::sqrt(scale.Variance * std::abs(twin_->Covariance(number)));
    const double size = std::abs(centre_.Value);
    error_ = error > 0 && std::isfinite(error) ? error : size > 0 ? 1e-3 * size : 1e-3;
    result_.Limits.fill(NAN);
  }

  SideOfProfile Walk();

 private:
  static ModelClass& Held(ModelClass& twin, int number) {
    twin.SetConstant(number, 0);
    return twin;
  }
  std::optional<HeldFit> FitAt(double value, const std::vector<double>& start);
  std::vector<double> OthersOnLine(const HeldFit& p, const HeldFit& q, double value) const;
  void Accept(HeldFit fit);
  double LimitBetween(HeldFit below, HeldFit above, double quantile);
  void SeeWhetherItLevelsOff(double gain);
  void EndAt(double limit, const std::string& why);
  bool EndsHere(double step);
  double Distance(double value) const { return std::abs(value - centre_.Value); }
  bool Stopped() const { return form_.Aborted || std::isfinite(result_.Better.Length); }

  const std::unique_ptr<ModelClass> twin_;
  const std::array<double, kLimitLevels.size()>& quantiles_;
  const Least& least_;
  const std::size_t which_;
  const int number_, direction_;
  SolveForm& form_;
  WeightedResiduals residuals_;
  const double unit_;  // of lengths: the standard deviation of a residual
  double bound_ = HUGE_VAL, error_ = 1;
  double edge_ = HUGE_VAL;  // where the model is known to have no value; infinite as long as none is
  HeldFit centre_, last_, beforeLast_;
  std::size_t level_ = 0;  // the next one to be met
  double lastGain_ = 0;
  int levelling_ = 0;  // steps in a row that promise no more
  SideOfProfile result_;
};

// The best of the others with the coefficient held. Nothing where the model has no value at the start.
std::optional<HeldFit> SideWalk::FitAt(double value, const std::vector<double>& start) {
  twin_->SetValue(number_, value);
  HeldFit fit;
  fit.Value = value;
  const Least least = Search(residuals_, start, form_);
  fit.Length = least.Length;
  fit.Others = least.a;
  if (!std::isfinite(fit.Length)) return std::nullopt;
  const double rise = Rise(fit.Length, least_.Length, unit_);
  if (rise < -kLower && fit.Length < result_.Better.Length) {
    result_.Better = {fit.Others, fit.Length};
    result_.Better.a.insert(result_.Better.a.begin() + static_cast<std::ptrdiff_t>(which_), value);
  }
  fit.Tau = std::sqrt(std::max(rise, 0.0));
  return fit;
}

// Where the others may be at a value, on the line through two fits.
std::vector<double> SideWalk::OthersOnLine(const HeldFit& p, const HeldFit& q, double value) const {
  std::vector<double> others = q.Others;
  const double part = q.Value != p.Value ? (value - q.Value) / (q.Value - p.Value) : 0;
  for (std::size_t j = 0; j < others.size(); ++j) others[j] += part * (q.Others[j] - p.Others[j]);
  return others;
}

// Closes in on the value between two where Tau is the quantile; NaN where the model has no value there. Method: T. R.
// Chandrupatla, Adv. Eng. Software 28, 1997: inverse quadratic interpolation where the last three values allow it, else
// bisection.
double SideWalk::LimitBetween(HeldFit below, HeldFit above, double quantile) {
  const auto f = [quantile](const HeldFit& fit) { return fit.Tau - quantile; };
  // The newest, the end of the interval on its other side, and the one that the newest has replaced.
  HeldFit newest = std::move(below), other = std::move(above), former;
  double part = f(newest) / (f(newest) - f(other));
  for (int round = 0; round < kMostRounds && !Stopped(); ++round) {
    const double value = newest.Value + part * (other.Value - newest.Value);
    std::optional<HeldFit> fit = FitAt(value, OthersOnLine(other, newest, value));
    if (!fit) return NAN;
    if ((f(*fit) < 0) == (f(newest) < 0)) {
      former = std::move(newest);
    } else {
      former = std::move(other);
      other = std::move(newest);
    }
    newest = std::move(*fit);
    const HeldFit& best = std::abs(f(newest)) < std::abs(f(other)) ? newest : other;
    const double width = other.Value - newest.Value;
    const double close = std::abs(kClose * Distance(best.Value) / width);
    if (f(best) == 0 || !(close < 0.5)) return best.Value;
    const double xi = (newest.Value - other.Value) / (former.Value - other.Value);
    const double phi = (f(newest) - f(other)) / (f(former) - f(other));
    part = 0.5;
    if (phi * phi < xi && (1 - phi) * (1 - phi) < 1 - xi)
      part = f(newest) / (f(other) - f(newest)) * (f(former) / (f(other) - f(former))) +
             (former.Value - newest.Value) / width * (f(newest) / (f(former) - f(newest))) *
                 (f(other) / (f(former) - f(other)));
    part = std::clamp(part, close, 1 - close);
  }
  return std::abs(f(newest)) < std::abs(f(other)) ? newest.Value : other.Value;
}

// Takes a fit for the last one, and the limits of the levels between them.
void SideWalk::Accept(HeldFit fit) {
  for (; level_ < quantiles_.size() && fit.Tau >= quantiles_[level_] && !Stopped(); ++level_) {
    const double quantile = quantiles_[level_];
    result_.Limits[level_] = LimitBetween(last_, fit, quantile);
    result_.Points.push_back({result_.Limits[level_], direction_ * quantile});
  }
  result_.Points.push_back({fit.Value, direction_ * fit.Tau});
  beforeLast_ = std::exchange(last_, std::move(fit));
}

// Counts the steps after which Tau, whose gains change by a constant factor as each step is twice as long, will not
// meet the next level.
void SideWalk::SeeWhetherItLevelsOff(double gain) {
  const double ratio = lastGain_ > 0 ? gain / lastGain_ : 0;
  const double rest = gain <= 0 ? 0 : ratio < 0.9 ? gain * ratio / (1 - ratio) : HUGE_VAL;
  levelling_ = last_.Tau + 4 * rest < quantiles_[level_] ? levelling_ + 1 : 0;
}

// Gives all levels not met yet the same limit.
void SideWalk::EndAt(double limit, const std::string& why) {
  const std::string levels =
      std::to_string(kLimitLevels[level_]) + (level_ + 1 < kLimitLevels.size() ? " % and above" : " %");
  const char* const side = direction_ > 0 ? "upper" : "lower";
  result_.Ends = why + (std::isfinite(limit) ? ": it is the " : ": there is no ") + side + " limit at " + levels + ".";
  for (; level_ < quantiles_.size(); ++level_) result_.Limits[level_] = limit;
}

// Ends the walk where it can't go on from the last fit by `step`, or needn't.
bool SideWalk::EndsHere(double step) {
  const std::string& name = twin_->Variables(number_);
  const double far = Distance(last_.Value);
  if (last_.Value == bound_)
    EndAt(bound_, name + " meets its bound of " + Short(bound_) + " before the merit function has risen enough");
  else if (far > kFarthest * std::max(std::abs(centre_.Value), error_) || (levelling_ >= 8 && far > 1e3 * error_))
    EndAt(direction_ * HUGE_VAL, "The merit function doesn't rise enough however far " + name + " goes");
  else if (std::isfinite(edge_) && step <= kClose * std::max(far, error_))
    EndAt(last_.Value, std::string("The model has no value at some point with ") + name +
                           (direction_ > 0 ? " above " : " below ") + Short(last_.Value));
  return level_ == quantiles_.size();
}

SideOfProfile SideWalk::Walk() {
  const double wanted = quantiles_.back() / kStepsToLast;  // the gain of a step
  last_ = beforeLast_ = centre_;
  double step = 0.25 * error_ * quantiles_.front();
  for (int i = 0; i < kMostSteps && !EndsHere(step); ++i) {
    double value = last_.Value + direction_ * std::min(step, 0.5 * std::abs(edge_ - last_.Value));
    if (direction_ * (value - bound_) > 0) value = bound_;
    std::optional<HeldFit> fit = FitAt(value, OthersOnLine(beforeLast_, last_, value));
    if (!fit) fit = FitAt(value, last_.Others);
    if (Stopped()) return result_;
    if (!fit) {
      edge_ = value;
      step = 0.5 * std::abs(value - last_.Value);
      continue;
    }
    const double gain = fit->Tau - last_.Tau;
    // Not below what tells a steep rise from a jump.
    const double shorter = std::max(wanted / gain, 0.1) * std::abs(value - last_.Value);
    if (gain > 3 * wanted && shorter > kJump * std::max(Distance(last_.Value), error_)) {
      step = shorter;
      continue;
    }
    const double stepped = std::abs(value - last_.Value), before = std::abs(last_.Value - beforeLast_.Value);
    Accept(std::move(*fit));
    if (Stopped() || level_ == quantiles_.size()) return result_;
    if (std::abs(stepped - 2 * before) <= 1e-6 * stepped) SeeWhetherItLevelsOff(gain);
    lastGain_ = gain;
    step = stepped * (gain > 0 ? std::clamp(wanted / gain, 0.5, 2.0) : 2.0);
  }
  if (level_ < quantiles_.size())
    EndAt(NAN, "The profile of " + twin_->Variables(number_) + " was not at its end after " +
                   std::to_string(kMostSteps) + " steps");
  return result_;
}

std::string TransformRefusal(const ModelClass& model, const SolveData& data) {
  if (model.SolveType != 1 || model.UserType) return {};
  const CatalogueModel* const row = LookupBuiltInModel(model.id, static_cast<int>(data.X.size()));
  try {
    if (row == nullptr || LinearizeData(*row, data.X, data.Y) == data.Y) return {};
  } catch (const NumericFault&) {
  }
  return "The linear solver has fitted a transform of Y: the merit function of Y itself is not least at its solution.";
}

std::string LowerRefusal(const ModelClass& twin, const WeightedResiduals& residuals, const Least& least, double own) {
  const auto merit = [&](double length) { return Short(length / residuals.Unit() * (length / residuals.Unit())); };
  std::string where;
  std::size_t j = 0;
  for (int i = 1; i <= twin.NumDependentVar(); ++i)
    if (!twin.IsHeld(i)) where += (where.empty() ? "" : ", ") + twin.Variables(i) + " = " + Short(least.a[j++]);
  return "The solution is not the best: its merit function of " + merit(own) + " falls to " + merit(least.Length) +
         " at " + where + ".";
}

CoefficientProfile Join(const SideOfProfile& below, const SideOfProfile& above, double centre) {
  CoefficientProfile profile;
  profile.Value = centre;
  for (std::size_t level = 0; level < kLimitLevels.size(); ++level)
    profile.Limits[level] = {below.Limits[level], above.Limits[level]};
  profile.Curve.BelowEnds = below.Ends;
  profile.Curve.AboveEnds = above.Ends;
  std::vector<ProfilePoint>& points = profile.Curve.Points;
  points = below.Points;
  points.push_back({centre, 0});
  points.insert(points.end(), above.Points.begin(), above.Points.end());
  std::erase_if(points, [](const ProfilePoint& point) { return !std::isfinite(point.Value); });
  std::ranges::stable_sort(points, {}, &ProfilePoint::Value);
  return profile;
}

}  // namespace

std::optional<ProfiledModel> ProfileCoefficients(const ModelClass& model, const SolveData& data,
                                                 const ProfileScale& scale, const Settings& settings, SolveForm& form) {
  const auto refused = [](std::string why) { return ProfiledModel{{}, std::move(why)}; };
  if (!model.Solved) return refused("The model is not solved.");
  if (model.Loss != LossKind::Squares)
    return refused("Profile limits are for least squares alone: with Loss = " +
                   std::string(kLossNames[static_cast<std::size_t>(model.Loss)]) + " there are none.");
  if (std::string why = TransformRefusal(model, data); !why.empty()) return refused(std::move(why));
  const std::unique_ptr<ModelClass> twin = TwinOf(model);
  std::vector<int> numbers;
  for (int i = 1; i <= twin->NumDependentVar(); ++i)
    if (!twin->IsHeld(i)) numbers.push_back(i);
  if (numbers.empty()) return refused("No coefficient is free.");

  WeightedResiduals residuals(*twin, data, form);
  const std::vector<double> solution = residuals.FreeOf(model.CoefficientValues);
  const double unit = std::sqrt(scale.Variance) * residuals.Unit();
  const std::string exact = "The points don't scatter about the model, so that nothing could limit its coefficients.";
  if (!(unit > kExact * Norm(residuals.Target()))) return refused(exact);
  std::vector<double> r;
  const bool valued = residuals.Residuals(solution, r);
  if (form.Aborted) return std::nullopt;
  if (!valued) return refused("The model has no value at some point.");
  const double own = Norm(r);
  Least least = Search(residuals, solution, form);
  for (int restart = 0; restart < kMostRestarts; ++restart) {
    if (form.Aborted) return std::nullopt;
    if (Rise(own, least.Length, unit) > kSameAnswer * kSameAnswer) break;
    std::vector<SideOfProfile> sides(2 * numbers.size());
    const bool finished =
        RunTasks(sides.size(), settings.Threads, form, "Profile: side", [&](std::size_t i, SolveForm& side) {
          sides[i] = SideWalk(model, data, scale, least, i / 2, numbers[i / 2], i % 2 == 0 ? -1 : 1, side).Walk();
        });
    if (!finished) return std::nullopt;
    const auto better = std::ranges::min_element(sides, {}, [](const SideOfProfile& s) { return s.Better.Length; });
    if (!std::isfinite(better->Better.Length)) {
      ProfiledModel profiled;
      for (std::size_t j = 0; j < numbers.size(); ++j) {
        CoefficientProfile profile = Join(sides[2 * j], sides[2 * j + 1], least.a[j]);
        profile.Coefficient = numbers[j];
        profile.Name = model.Variables(numbers[j]);
        profiled.Coefficients.push_back(std::move(profile));
      }
      return profiled;
    }
    least = Search(residuals, better->Better.a, form);
  }
  if (!(own > kRounding * Norm(residuals.Target()))) return refused(exact);
  ProfiledModel lower = refused(LowerRefusal(*twin, residuals, least, own));
  lower.FoundBetter = true;
  return lower;
}

}  // namespace quorvex
