#include <algorithm>
#include <array>
#include <cmath>

#include "core/Limits.h"
#include "engine/ModelClass.h"
#include "engine/RobustLoss.h"

namespace quorvex {
namespace {

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

// Two passes over the points in the order of the data, which is also the order of the Durbin-Watson differences.
bool ModelClass::GetGoodnessOfFit(const SolveData& data, int numcoef, SolveForm& form) {
  const std::size_t N = data.N();
  const double n = static_cast<double>(N);
  std::array<double, kMostIndependentVariables> x;
  std::array<double, kBlock> fitted;
  bool blockFitted = false;
  double resSum = 0, rss = 0, rssNorm = 0, differences = 0, weightedY = 0, previous = 0;
  RobustError robust(Loss, LossScale);
  for (std::size_t i = 0; i < N; ++i) {
    const std::size_t inBlock = i % kBlock;
    if (inBlock == 0) {
      form.Pulse();
      if (form.Aborted) return false;
      blockFitted = EvaluateBlock(data.X, i, std::min(kBlock, N - i), fitted.data());
    }
    // A block that fails as one is tried point by point, and the first point without a value decides.
    if (!blockFitted && !Evaluate(data.Point(i, x), fitted[inBlock])) return false;
    const double e = data.Y[i] - fitted[inBlock];
    resSum += e;
    rss += e * e;
    rssNorm += data.sig[i] * e * e;
    if (Loss != LossKind::Squares) robust.Add(std::sqrt(data.sig[i]) * e);
    if (i > 0) differences += (e - previous) * (e - previous);
    weightedY += data.sig[i] * data.Y[i];
    previous = e;
  }
  const double mean = weightedY / n;  // the weights have mean 1
  // In a second pass about the mean: the sum of squares less n*mean^2 would cancel where Y lies far from 0.
  double rst = 0;
  for (std::size_t i = 0; i < N; ++i) rst += data.sig[i] * (data.Y[i] - mean) * (data.Y[i] - mean);

  const std::int32_t dofRegression = std::max(numcoef - 1, 1);
  const std::int32_t dofError = std::max(static_cast<std::int32_t>(N) - numcoef, 1);
  // Constant Y leaves nothing to explain: an exact fit explains it all the same, any other nothing.
  const double r2 = rst == 0 ? (rssNorm == 0 ? 1.0 : 0.0) : 1.0 - rssNorm / rst;
  // 1 - (1 - R2)(n - 1)/dofError, written as what the coefficients cost.
  const double r2Adjust = r2 - static_cast<double>(dofRegression) / dofError * (1.0 - r2);
  // About 2 where neighbouring residuals are independent, near 0 where they follow each other.
  const double durbin = rss == 0 ? 0.0 : differences / rss;
  const double stdErr =
      Loss == LossKind::Squares ? std::sqrt(std::abs(rssNorm / dofError)) : robust.StdErr(n, numcoef, dofError);
  for (const double value : {resSum, rss, rssNorm, rst, r2, r2Adjust, durbin, stdErr})
    if (!std::isfinite(value)) return false;

  // All or nothing: a rejected solution leaves the statistics as they were.
  DOFRegression = dofRegression;
  DOFError = dofError;
  ResSum = resSum;
  RSS = rss;
  RssNorm = rssNorm;
  ResAvg = resSum / n;
  RST = rst;
  StdErr = stdErr;
  // A model may be worse than the mean, which would make these negative.
  R2 = std::max(r2, 0.0);
  R2Adjust = std::max(r2Adjust, 0.0);
  Durbin = durbin;
  return true;
}

}  // namespace quorvex
