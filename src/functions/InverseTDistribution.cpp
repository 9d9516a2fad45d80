#include "functions/InverseTDistribution.h"

#include <cmath>
#include <cstddef>

#include "functions/InverseNormalDistribution.h"
#include "functions/betai.h"

namespace quorvex {

double InverseTDistribution(double p, double df) {
  constexpr double kAgrees = 1e-7;
  double lower = 0.25;
  double upper = 320;
  double t = 0;
  double probability = 0;
  for (int round = 0; round < 100 && std::abs(probability - p) > kAgrees; ++round) {
    t = (lower + upper) / 2;
    probability = 0.5 + (betai(df / 2, 0.5, 1) - betai(df / 2, 0.5, df / (df + t * t))) * 0.5;
    (probability <= p ? lower : upper) = t;
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
