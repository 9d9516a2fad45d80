#include "functions/InverseTDistribution.h"

#include <cmath>
#include <cstddef>

#include "functions/InverseNormalDistribution.h"
#include "functions/betai.h"

namespace quorvex {
namespace {

// The bisection ends where the probability is as near as this.
constexpr double kAgrees = 1e-7;

// The probability below t of Student's distribution, where it has been computed so far: since it grows with t, it tells
// for many other t whether they lie below the quantile, and surely not near enough to be it.
class Probabilities {
 public:
  Probabilities(double p, double df) : p_(p), df_(df) {}

  // Less p.
  double Excess(double t) {
    const double excess = 0.5 + (1 - betai(df_ / 2, 0.5, df_ / (df_ + t * t))) * 0.5 - p_;
    // Beyond the rounding of betai; and of a t below 0 betai knows the square alone.
    if (excess < -2 * kAgrees && t > below_ && t > 0) below_ = t;
    if (excess > 2 * kAgrees && t < above_ && t > 0) above_ = t;
    return excess;
  }

  bool Below(double t) const { return t <= below_; }
  bool Above(double t) const { return t >= above_; }

 private:
  double p_, df_, below_ = -HUGE_VAL, above_ = HUGE_VAL;
};

// Computes some probabilities close to the quantile, on both sides of it: secants from the first terms of its expansion
// about that of the normal distribution (Abramowitz & Stegun 26.7.5). Where they lead nowhere nothing is lost.
void Approach(Probabilities& probabilities, double p, double df) {
  const double z = InverseNormalDistribution(p), square = z * z;
  double t = z * (1 + ((square + 1) + ((5 * square + 16) * square + 3) / (24 * df)) / (4 * df));
  double excess = probabilities.Excess(t), slope = 0;
  double last = t * 1.001, excessOfLast = probabilities.Excess(last);
  for (int round = 0; round < 6; ++round) {
    slope = (excessOfLast - excess) / (last - t);
    if (std::abs(excess) < kAgrees / 2 || !(slope > 0)) break;
    last = t;
    excessOfLast = excess;
    t -= excess / slope;
    excess = probabilities.Excess(t);
  }
  for (const double aside : {-4 * kAgrees, 4 * kAgrees})
    if (slope > 0) probabilities.Excess(t + aside / slope);
}

}  // namespace

double InverseTDistribution(double p, double df) {
  double lower = 0.25;
  double upper = 320;
  double t = 0;
  Probabilities probabilities(p, df);
  if (p > 0.5 && p < 1 && df >= 1) Approach(probabilities, p, df);
  double excess = -p;
  for (int round = 0; round < 100 && std::abs(excess) > kAgrees; ++round) {
    t = (lower + upper) / 2;
    excess = probabilities.Below(t) ? -1 : probabilities.Above(t) ? 1 : probabilities.Excess(t);
    (excess <= 0 ? lower : upper) = t;
  }
  return std::floor(t * 10000 + 0.5) / 10000;
}

std::array<double, 4> ConfidenceQuantiles(double df) {
  if (std::isinf(df))
    return {InverseNormalDistribution(0.84), InverseNormalDistribution(0.95), InverseNormalDistribution(0.975),
            InverseNormalDistribution(0.995)};
  // All models and all runs of a macro ask for a few degrees of freedom, each of which takes a hundred incomplete beta
  // functions.
  struct Known {
    double df = NAN;
    std::array<double, 4> quantiles = {};
  };
  thread_local std::array<Known, 32> known;
  Known& last = known[static_cast<std::size_t>(std::fmin(std::fmax(df, 0), 1e9)) % known.size()];
  if (last.df != df)
    last = {df,
            {InverseTDistribution(0.84, df), InverseTDistribution(0.95, df), InverseTDistribution(0.975, df),
             InverseTDistribution(0.995, df)}};
  return last.quantiles;
}

}  // namespace quorvex
