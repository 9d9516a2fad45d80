#include "engine/mrqmin.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>

#include "core/Limits.h"
#include "core/NumericFault.h"
#include "core/VectorWidth.h"
#include "engine/FetchPoints.h"
#include "engine/ModelClass.h"
#include "engine/SolveForm.h"
#include "equation/BlockOperations.h"
#include "equation/Expression.h"
#include "linear/TriangularFactor.h"
#include "linear/gaussj.h"

namespace quorvex {
namespace {

// By how much a variance may exceed what it would be without the other coefficients (D. W. Marquardt, Technometrics 12,
// 1970) before it is computed anew: the sums lose as many digits, and numerical derivatives, right to ten, half as
// many.
constexpr double kInflation = 1e4;

// Where the last step has gained less than this part of the merit function, the next is likely to gain nothing.
constexpr double kLittle = 1e-9;

// A trial that meets a fault, be it behind the block at which it was already worse, is not rejected: the fault ends the
// search and is told with its point. Who is so many times worse than the best may be beyond what sums and derivatives
// can hold, and is computed to its end to find that out. To give up such trials, too, saved no time that could be
// measured, for they are few, and some fits that fail no longer did, or at another point. Nearer ones are given up.
constexpr double kFarOff = 100;

bool AllFinite(std::span<const double> values) {
  return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

}  // namespace

LevenbergMarquardt::LevenbergMarquardt(BlockTeam& team, const SolveData& data, DerivativeKind derivativeMethod,
                                       SolveForm& form)
    : team_(team),
      model_(team.Model()),
      data_(data),
      derivativeMethod_(derivativeMethod),
      form_(form),
      costly_(model_.UserType && !model_.TakesTypedDerivatives() &&
              !(derivativeMethod == DerivativeKind::Exact && model_.HasExactDerivatives())),
      bounded_(model_.HasBounds()),
      box_(bounded_ ? model_.Bounds() : Box()),
      open_(box_.Lower.size(), false) {
  TakeWeights();
}

void LevenbergMarquardt::TakeWeights() {
  struct Counts {
    std::size_t NotOne = 0, BelowZero = 0;  // or none at all
  };
  const auto count = [](auto, const double* sig, std::size_t n) __attribute__((always_inline)) {
    Counts of;
    for (std::size_t i = 0; i < n; ++i) {
      of.NotOne += sig[i] != 1;
      of.BelowZero += !(sig[i] >= 0);
    }
    return of;
  };
  const Counts counts = AtFullWidth(count, data_.sig.data(), data_.sig.size());
  weighted_ = counts.NotOne > 0;
  givesUp_ = counts.BelowZero == 0 && model_.RunsOverBlocks();
}

bool LevenbergMarquardt::mrqmin(std::vector<double>& a, const std::vector<int>& ia, Matrix& covar, Matrix& alpha,
                                double& chisq, double& alamda) {
  if (a.size() > kMostCoefficients) {
    model_.ErrorMessage = "A model may have " + std::to_string(kMostCoefficients) + " coefficients at most.";
    throw NumericFault();
  }
  // Curvature and gradient at the start; every later step has those of the last trial that was accepted.
  if (alamda < 0) {
    mfit_ = static_cast<std::size_t>(std::count_if(ia.begin(), ia.end(), [](int free) { return free != 0; }));
    beta_.assign(a.size(), 0.0);
    da_.assign(a.size(), 0.0);
    alamda = 0.001;
    rejected_ = false;
    gain_ = 1;
    members_.clear();
    for (std::size_t i = 0; i < team_.Size(); ++i)
      members_.push_back({PointDerivatives(team_.Model(i), data_, derivativeMethod_), NormalEquations(ia)});
    const Pass start = bounded_ ? StartFrom(a, ia, alpha, chisq) : mrqcof(a, alpha, beta_, chisq);
    if (start == Pass::Aborted) return false;
    if (start == Pass::NoValue) throw NumericFault();
    ochisq_ = chisq;
    atry_ = a;
  }
  constexpr std::string_view kSingular = "Singular matrix encountered in gaussian elimination.";
  if (bounded_ && alamda != 0.0) {
    if (!StepInside(a, ia, alpha, alamda)) {
      model_.ErrorMessage = kSingular;
      throw NumericFault();
    }
    return Judge(a, ia, covar, alpha, chisq, alamda);
  }
  std::vector<int> inside;
  if (bounded_) inside = HoldOnBounds(a, ia, alpha);
  const std::vector<int>& free = bounded_ ? inside : ia;
  for (std::size_t j = 0; j < mfit_; ++j) {
    for (std::size_t k = 0; k < mfit_; ++k) covar(j, k) = alpha(j, k);
    // The damping is in proportion to the diagonal, so that a step does not depend on the units of the coefficients.
    covar(j, j) = alpha(j, j) * (1.0 + alamda);
    // Some 300 rejections in a row take alamda, which has no upper bound, out of range: that ends the search here.
    if (!std::isfinite(covar(j, j))) throw NumericFault();
    da_[j] = beta_[j];
  }
  // da_ goes in as the gradient and comes out as the step, covar goes in as the damped curvature and comes out
  // inverted.
  if (!gaussj(covar, mfit_, da_)) {
    model_.ErrorMessage = kSingular;
    throw NumericFault();
  }
  if (alamda == 0.0) {
    // Without damping gaussj has left the plain inverse. "Not less", since a NaN must count as inflated, too.
    bool inflated = false;
    for (std::size_t j = 0; j < mfit_; ++j) inflated = inflated || !(std::abs(alpha(j, j) * covar(j, j)) < kInflation);
    covsrt(covar, free, mfit_);
    return !inflated || TakeVariances(a, free, covar);
  }
  // da_ is packed: it holds the free coefficients alone.
  std::size_t j = 0;
  for (std::size_t l = 0; l < a.size(); ++l)
    if (ia[l] != 0) atry_[l] = a[l] + da_[j++];
  return Judge(a, ia, covar, alpha, chisq, alamda);
}

// Tries the trial, and takes it where it is better. False where the form is aborted.
bool LevenbergMarquardt::Judge(std::vector<double>& a, const std::vector<int>& ia, Matrix& covar, Matrix& alpha,
                               double& chisq, double& alamda) {
  if (!AllFinite(atry_)) throw NumericFault();

  // covar and da_ are free again and take the curvature and gradient of the trial, to become alpha and beta if it is
  // better.
  Pass trial = Pass::NoValue;
  try {
    trial = Try(a, ia, covar, chisq);
  } catch (const NumericFault&) {
    // On a bound the derivative may have a pole, where inside there is none.
    if (!bounded_ || !NoteOpenBounds(a, ia)) throw;
  }
  if (bounded_ && trial == Pass::NoValue) NoteOpenBounds(a, ia);
  if (trial == Pass::Aborted) return false;
  rejected_ = trial != Pass::Complete || !(chisq < ochisq_);
  if (!rejected_) {
    gain_ = (ochisq_ - chisq) / ochisq_;
    // Less damping leads towards the Gauss-Newton step, which converges fast near the minimum.
    alamda *= 0.1;
    ochisq_ = chisq;
    for (std::size_t row = 0; row < mfit_; ++row)
      for (std::size_t col = 0; col < mfit_; ++col) alpha(row, col) = covar(row, col);
    beta_ = da_;
    a = atry_;
  } else {
    // No better, or the model has no value somewhere: the next step is shorter, and that is all there is to tell.
    alamda *= 10.0;
    chisq = ochisq_;
    model_.ErrorMessage.clear();
  }
  return true;
}

// Whether values alone are to be computed first.
bool LevenbergMarquardt::ExpectsRejection(const std::vector<double>& a, const std::vector<int>& ia) const {
  if (!givesUp_ || !(rejected_ || (costly_ && gain_ < kLittle))) return false;
  for (std::size_t l = 0; bounded_ && l < a.size(); ++l)
    if (MeetsBound(a, ia, l)) return false;
  return true;
}

// The pass over the points at the trial.
LevenbergMarquardt::Pass LevenbergMarquardt::Try(const std::vector<double>& a, const std::vector<int>& ia,
                                                 Matrix& covar, double& chisq) {
  if (ExpectsRejection(a, ia)) {
    const Pass values = SumSquares(atry_, chisq, ochisq_);
    if (values == Pass::Aborted || (values == Pass::NoBetter && chisq < kFarOff * ochisq_)) return values;
  }
  return mrqcof(atry_, covar, da_, chisq, ochisq_);
}

bool LevenbergMarquardt::IsOnBound(const std::vector<double>& a, std::size_t l) const {
  return a[l] == box_.Lower[l] || a[l] == box_.Upper[l];
}

bool LevenbergMarquardt::AnyOnBound(const std::vector<double>& a, const std::vector<int>& ia) const {
  for (std::size_t l = 0; l < a.size(); ++l)
    if (ia[l] != 0 && IsOnBound(a, l)) return true;
  return false;
}

// The pass over the points at the start. What lies on a bound without a value or a derivative there, or with one of 0,
// would never leave it: it is moved inside, not far at first.
LevenbergMarquardt::Pass LevenbergMarquardt::StartFrom(std::vector<double>& a, const std::vector<int>& ia,
                                                       Matrix& alpha, double& chisq) {
  constexpr std::array<double, 4> kParts = {1e-3, 1e-6, 0.1, 1e-9};
  const std::vector<double> start = a;
  for (std::size_t attempt = 0;; ++attempt) {
    Pass pass = Pass::NoValue;
    try {
      pass = mrqcof(a, alpha, beta_, chisq);
    } catch (const NumericFault&) {
      if (attempt == kParts.size() || !AnyOnBound(start, ia)) throw;
    }
    bool moved = false;
    for (std::size_t l = 0, j = 0; l < a.size(); ++l) {
      if (ia[l] == 0) continue;
      const bool stuck = pass == Pass::NoValue || (pass == Pass::Complete && alpha(j, j) == 0);
      ++j;
      if (!stuck || !IsOnBound(start, l) || attempt == kParts.size()) continue;
      const double width = box_.Upper[l] - box_.Lower[l];
      const double away = kParts[attempt] * (std::isfinite(width) ? width : std::max(1.0, std::abs(start[l])));
      a[l] = std::clamp(start[l] == box_.Lower[l] ? start[l] + away : start[l] - away, box_.Lower[l], box_.Upper[l]);
      moved = true;
    }
    if (pass == Pass::Complete) model_.ErrorMessage.clear();
    if (!moved) return pass;
  }
}

// The step to the minimum of the damped form within the bounds, and the trial. False for a singular matrix.
bool LevenbergMarquardt::StepInside(const std::vector<double>& a, const std::vector<int>& ia, const Matrix& alpha,
                                    double alamda) {
  // Beside a coefficient on its bound another may have lost its part in the model, as the rate of a term whose factor
  // is 0. It stays until the former moves.
  const bool onBound = AnyOnBound(a, ia);
  Box steps;
  for (std::size_t l = 0, j = 0; l < a.size(); ++l) {
    if (ia[l] == 0) continue;
    const double part = onBound && alpha(j, j) == 0 ? 0 : open_[l] ? 0.5 : 1;
    steps.Lower.push_back(part == 0 ? 0 : part * (box_.Lower[l] - a[l]));
    steps.Upper.push_back(part == 0 ? 0 : part * (box_.Upper[l] - a[l]));
    ++j;
  }
  const auto damped = [&](std::size_t j, std::size_t k) { return j == k ? alpha(j, j) * (1.0 + alamda) : alpha(j, k); };
  BoxProblem problem;
  problem.Minimum = [&](const std::vector<bool>& free,
                        const std::vector<double>& x) -> std::optional<std::vector<double>> {
    std::vector<std::size_t> which;
    for (std::size_t j = 0; j < mfit_; ++j)
      if (free[j]) which.push_back(j);
    Matrix part(which.size());
    std::vector<double> step(which.size()), z = x;
    for (std::size_t r = 0; r < which.size(); ++r) {
      for (std::size_t c = 0; c < which.size(); ++c) part(r, c) = damped(which[r], which[c]);
      if (!std::isfinite(part(r, r))) throw NumericFault();
      step[r] = beta_[which[r]];
      for (std::size_t k = 0; k < mfit_; ++k)
        if (!free[k] && x[k] != 0) step[r] -= alpha(which[r], k) * x[k];
    }
    if (!gaussj(part, which.size(), step)) return std::nullopt;
    for (std::size_t r = 0; r < which.size(); ++r) z[which[r]] = step[r];
    return z;
  };
  problem.Descent = [&](const std::vector<double>& x) {
    std::vector<double> descent(mfit_, 0.0);
    for (std::size_t j = 0; j < mfit_; ++j) {
      double g = beta_[j];
      for (std::size_t k = 0; k < mfit_; ++k) g -= damped(j, k) * x[k];
      if (alpha(j, j) > 0) descent[j] = g / std::sqrt(alpha(j, j));
    }
    return descent;
  };
  const auto step = MinimizeInBox(problem, steps, std::vector<double>(mfit_, 0.0));
  if (!step) return false;
  for (std::size_t l = 0, j = 0; l < a.size(); ++l) {
    if (ia[l] == 0) continue;
    const double d = (*step)[j];
    // To the bit on the bound, which a sum may miss.
    const bool closed = !open_[l] && d != 0;
    if (closed && d == steps.Lower[j])
      atry_[l] = box_.Lower[l];
    else if (closed && d == steps.Upper[j])
      atry_[l] = box_.Upper[l];
    else
      atry_[l] = std::clamp(a[l] + d, box_.Lower[l], box_.Upper[l]);
    ++j;
  }
  return true;
}

// Whether the trial lies on a bound of the coefficient that it comes to.
bool LevenbergMarquardt::MeetsBound(const std::vector<double>& a, const std::vector<int>& ia, std::size_t l) const {
  return ia[l] != 0 && IsOnBound(atry_, l) && !IsOnBound(a, l);
}

// After a trial without a value: notes the bounds that it has met, which are from now on met half way. False where it
// has met none.
bool LevenbergMarquardt::NoteOpenBounds(const std::vector<double>& a, const std::vector<int>& ia) {
  bool met = false;
  for (std::size_t l = 0; l < a.size(); ++l) {
    if (!MeetsBound(a, ia, l)) continue;
    open_[l] = met = true;
  }
  return met;
}

// Who is free at the end: not what lies on a bound, nor what has no part in the model beside that. `alpha` becomes that
// of these.
std::vector<int> LevenbergMarquardt::HoldOnBounds(const std::vector<double>& a, const std::vector<int>& ia,
                                                  Matrix& alpha) {
  std::vector<int> free = ia;
  if (!AnyOnBound(a, ia)) return free;
  std::vector<std::size_t> kept;
  for (std::size_t l = 0, j = 0; l < a.size(); ++l) {
    if (ia[l] == 0) continue;
    free[l] = !IsOnBound(a, l) && alpha(j, j) != 0;
    if (free[l] != 0) kept.push_back(j);
    ++j;
  }
  mfit_ = kept.size();
  for (std::size_t r = 0; r < mfit_; ++r)
    for (std::size_t c = 0; c < mfit_; ++c) alpha(r, c) = alpha(kept[r], kept[c]);
  return free;
}

// Computes block after block at `a` and takes what comes of each in their order. The model is left holding `a`.
template <class Compute, class Take>
LevenbergMarquardt::Pass LevenbergMarquardt::OverBlocks(const std::vector<double>& a, std::size_t slots,
                                                        Compute compute, Take take) {
  const auto share = [&] {
    for (std::size_t i = 0; i < a.size(); ++i) model_.SetValue(static_cast<int>(i) + 1, a[i]);
  };
  const auto count = [&](std::size_t first) { return std::min(kBlock, data_.N() - first); };
  share();
  team_.ShareCoefficients();
  const std::string message = model_.ErrorMessage;
  bool givenUp = false;
  // Once for each block: often enough for a click to be felt, and too seldom to cost time.
  const auto goOn = [&] {
    form_.Pulse();
    return !form_.Aborted;
  };
  const std::size_t first = kBlock * team_.Run(
                                         slots, goOn,
                                         [&](std::size_t member, std::size_t block, std::size_t slot) {
                                           const std::size_t from = block * kBlock;
                                           FetchPoints(data_, from + team_.Size() * kBlock, kBlock, weighted_);
                                           return compute(members_[member], from, count(from), slot);
                                         },
                                         [&](std::size_t, std::size_t slot) {
                                           givenUp = !take(slot);
                                           return !givenUp;
                                         });
  if (first >= data_.N()) return Pass::Complete;
  if (form_.Aborted) return Pass::Aborted;
  if (givenUp) {
    model_.ErrorMessage = message;
    return Pass::NoBetter;
  }
  if (team_.Size() > 1) {
    // The first block that fails fails once more, for model and message to be what one thread would leave.
    share();
    model_.ErrorMessage = message;
    compute(members_[0], first, count(first), 0);
  }
  return Pass::NoValue;
}

// The normal equations and the merit function at `a`.
LevenbergMarquardt::Pass LevenbergMarquardt::mrqcof(const std::vector<double>& a, Matrix& alpha,
                                                    std::vector<double>& beta, double& chisq, double limit) {
  const std::size_t size = members_[0].Equations.Size(), slots = team_.Slots(size);
  std::vector<double> ofBlocks(slots * size), sums(size, 0.0);
  const auto compute = [&](Member& member, std::size_t first, std::size_t n, std::size_t slot) {
    if (!member.Points.Compute(first, n)) return false;
    double* const dy = member.Points.Values();
    BinaryOverBlock(kSubtract, {data_.Y.data() + first, 0}, {dy, 0}, n, dy);
    member.Equations.SumBlock(dy, weighted_ ? data_.sig.data() + first : nullptr, member.Points.Columns(), n,
                              &ofBlocks[slot * size]);
    return true;
  };
  chisq = 0;
  const auto take = [&](std::size_t slot) {
    for (std::size_t k = 0; k < size; ++k) sums[k] += ofBlocks[slot * size + k];
    chisq = sums.front();
    return !(givesUp_ && chisq >= limit && chisq < kFarOff * limit && AllFinite(sums));
  };
  const Pass pass = OverBlocks(a, slots, compute, take);
  if (pass != Pass::Complete) return pass;
  if (!AllFinite(sums)) throw NumericFault();
  members_[0].Equations.Take(sums, alpha, beta);
  return Pass::Complete;
}

// The merit function alone, to the bit.
LevenbergMarquardt::Pass LevenbergMarquardt::SumSquares(const std::vector<double>& a, double& chisq, double limit) {
  const std::size_t slots = team_.Slots(1);
  std::vector<double> ofBlocks(slots);
  const auto compute = [&](Member& member, std::size_t first, std::size_t n, std::size_t slot) {
    if (!member.Points.ComputeValues(first, n)) return false;
    double* const dy = member.Points.Values();
    BinaryOverBlock(kSubtract, {data_.Y.data() + first, 0}, {dy, 0}, n, dy);
    ofBlocks[slot] = member.Equations.SumSquares(dy, weighted_ ? data_.sig.data() + first : nullptr, n);
    return true;
  };
  chisq = 0;
  const auto take = [&](std::size_t slot) {
    chisq += ofBlocks[slot];
    return !(chisq >= limit);
  };
  const Pass pass = OverBlocks(a, slots, compute, take);
  if (pass == Pass::Complete && !std::isfinite(chisq)) throw NumericFault();  // a NaN
  return pass;
}

// Puts the variances, as a QR of the derivatives gives them, into the diagonal of the covariance. Where that is
// singular to the last digit, or a model with random numbers has no value this time, the diagonal stays as it is. False
// where the form is aborted.
bool LevenbergMarquardt::TakeVariances(const std::vector<double>& a, const std::vector<int>& ia, Matrix& covar) {
  std::vector<std::size_t> free;
  for (std::size_t l = 0; l < a.size(); ++l)
    if (ia[l] != 0) free.push_back(l);
  TriangularFactor factor(mfit_);
  const std::size_t slots = team_.Slots((kBlock + 1) * std::max(mfit_, std::size_t{1}));
  std::vector<ColumnMatrix> rows(slots, ColumnMatrix(kBlock + 1, mfit_));  // row 0 is the factor's own
  std::vector<std::size_t> counts(slots);
  const auto compute = [&](Member& member, std::size_t first, std::size_t n, std::size_t slot) {
    if (!member.Points.ComputeSharp(first, n)) return false;
    member.Points.TakeWeighted(first, n, free, rows[slot]);
    counts[slot] = n;
    return true;
  };
  const auto take = [&](std::size_t slot) {
    factor.Append(rows[slot], counts[slot]);
    return true;
  };
  const Pass pass = OverBlocks(a, slots, compute, take);
  if (pass != Pass::Complete) return pass != Pass::Aborted;
  const std::vector<double> variances = factor.InverseDiagonal();
  if (!AllFinite(variances)) return true;
  for (std::size_t j = 0; j < mfit_; ++j) covar(free[j], free[j]) = variances[j];
  return true;
}

}  // namespace quorvex
