#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "core/Limits.h"
#include "engine/BlockTeam.h"
#include "engine/FetchPoints.h"
#include "engine/ModelClass.h"
#include "engine/RobustLoss.h"

namespace quorvex {
namespace {

// What the statistics are made of, point by point in the order of the data, which is also the order of the
// Durbin-Watson differences.
struct ResidualSums {
  double ResSum = 0, RSS = 0, RssNorm = 0, Differences = 0, WeightedY = 0;
  double Previous = 0;  // residual

  void Add(double y, double fitted, double weight) {
    const double e = y - fitted;
    ResSum += e;
    RSS += e * e;
    RssNorm += weight * e * e;
    Differences += (e - Previous) * (e - Previous);
    WeightedY += weight * y;
    Previous = e;
  }
};

// What a robust fit knows of its error, residual by residual; RobustFit.h has the formula.
class RobustError {
 public:
  RobustError(LossKind loss, double scale) : loss_(loss), scale_(scale) {}

  void Add(double r) {
    const double u = r == 0 ? 0 : r / scale_, psi = r * LossWeight(loss_, u), slope = LossSlope(loss_, u);
    squares_ += psi * psi;
    slopes_ += slope;
    slopeSquares_ += slope * slope;
  }
  // Not finite where the slopes' mean is not above 0.
  double StdErr(double n, double coefficients, double dofError) const {
    const double m = slopes_ / n;
    if (!(m > 0)) return NAN;
    const double variance = std::max(slopeSquares_ - n * m * m, 0.0) / (n - 1);
    return (1 + coefficients / n * variance / (m * m)) * std::sqrt(squares_ / dofError) / m;
  }

 private:
  LossKind loss_;
  double scale_, squares_ = 0, slopes_ = 0, slopeSquares_ = 0;
};

}  // namespace

bool ModelClass::GetGoodnessOfFit(const SolveData& data, int numcoef) {
  SolveForm unattended;
  return GetGoodnessOfFit(data, numcoef, unattended);
}

bool ModelClass::GetGoodnessOfFit(const SolveData& data, int numcoef, SolveForm& form) {
  BlockTeam alone(*this, data.N(), 1);
  return GetGoodnessOfFit(data, numcoef, form, alone);
}

// Two passes over the points.
bool ModelClass::GetGoodnessOfFit(const SolveData& data, int numcoef, SolveForm& form, BlockTeam& team) {
  const std::size_t N = data.N();
  const double n = static_cast<double>(N);
  const std::size_t slots = team.Slots(kBlock);
  std::vector<double> fitted(slots * kBlock);
  const auto compute = [&](std::size_t member, std::size_t block, std::size_t slot) {
    ModelClass& model = team.Model(member);
    const std::size_t first = block * kBlock, count = std::min(kBlock, N - first);
    double* const values = &fitted[slot * kBlock];
    FetchPoints(data, first + team.Size() * kBlock, kBlock, true);
    if (model.EvaluateBlock(data.X, first, count, values)) return true;
    // A block that fails as one is tried point by point, and the first point without a value decides.
    std::array<double, kMostIndependentVariables> x;
    for (std::size_t i = 0; i < count; ++i)
      if (!model.Evaluate(data.Point(first + i, x), values[i])) return false;
    return true;
  };
  ResidualSums sums;
  RobustError robust(Loss, LossScale);
  const auto take = [&](std::size_t block, std::size_t slot) {
    const std::size_t first = block * kBlock, count = std::min(kBlock, N - first);
    const double* const values = &fitted[slot * kBlock];
    const double *const y = &data.Y[first], *const sig = &data.sig[first];
    ResidualSums grown = sums;  // a copy, which stays in registers
    if (first == 0) grown.Previous = y[0] - values[0];
    for (std::size_t i = 0; i < count; ++i) grown.Add(y[i], values[i], sig[i]);
    sums = grown;
    if (Loss != LossKind::Squares)
      for (std::size_t i = 0; i < count; ++i) robust.Add(std::sqrt(sig[i]) * (y[i] - values[i]));
    return true;
  };
  const auto goOn = [&] {
    form.Pulse();
    return !form.Aborted;
  };
  team.ShareCoefficients();
  if (team.Run(slots, goOn, compute, take) * kBlock < N) return false;
  const double mean = sums.WeightedY / n;  // the weights have mean 1
  // In a second pass about the mean: the sum of squares less n*mean^2 would cancel where Y lies far from 0.
  double rst = 0;
  for (std::size_t i = 0; i < N; ++i) rst += data.sig[i] * (data.Y[i] - mean) * (data.Y[i] - mean);

  const std::int32_t dofRegression = std::max(numcoef - 1, 1);
  const std::int32_t dofError = std::max(static_cast<std::int32_t>(N) - numcoef, 1);
  // Constant Y leaves nothing to explain: an exact fit explains it all the same, any other nothing.
  const double r2 = rst == 0 ? (sums.RssNorm == 0 ? 1.0 : 0.0) : 1.0 - sums.RssNorm / rst;
  // 1 - (1 - R2)(n - 1)/dofError, written as what the coefficients cost.
  const double r2Adjust = r2 - static_cast<double>(dofRegression) / dofError * (1.0 - r2);
  // About 2 where neighbouring residuals are independent, near 0 where they follow each other.
  const double durbin = sums.RSS == 0 ? 0.0 : sums.Differences / sums.RSS;
  const double stdErr =
      Loss == LossKind::Squares ? std::sqrt(std::abs(sums.RssNorm / dofError)) : robust.StdErr(n, numcoef, dofError);
  for (const double value : {sums.ResSum, sums.RSS, sums.RssNorm, rst, r2, r2Adjust, durbin, stdErr})
    if (!std::isfinite(value)) return false;

  // All or nothing: a rejected solution leaves the statistics as they were.
  DOFRegression = dofRegression;
  DOFError = dofError;
  ResSum = sums.ResSum;
  RSS = sums.RSS;
  RssNorm = sums.RssNorm;
  ResAvg = sums.ResSum / n;
  RST = rst;
  StdErr = stdErr;
  // A model may be worse than the mean, which would make these negative.
  R2 = std::max(r2, 0.0);
  R2Adjust = std::max(r2Adjust, 0.0);
  Durbin = durbin;
  return true;
}

}  // namespace quorvex
