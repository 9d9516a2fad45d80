#include "functions/InverseNormalDistribution.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/NumericFault.h"

namespace quorvex {

double InverseNormalDistribution(double p) {
  if (!(p > 0 && p < 1)) throw NumericFault();
  if (p == 0.5) return 0;
  const double tail = std::min(p, 1 - p);
  const double t = std::sqrt(-2 * std::log(tail));
  double z = t - (2.515517 + t * (0.802853 + t * 0.010328)) / (1 + t * (1.432788 + t * (0.189269 + t * 0.001308)));
  const double rootTwoPi = std::sqrt(2 * std::numbers::pi);
  // The first step leaves an error of some 1e-10, and the second none that a double shows.
  for (int step = 0; step < 2; ++step) {
    // The tail beyond z has the derivatives -density and z * density.
    const double density = std::exp(-z * z / 2) / rootTwoPi;
    const double newton = (std::erfc(z / std::numbers::sqrt2) / 2 - tail) / density;
    z += newton / (1 - newton * z / 2);
  }
  return p < 0.5 ? -z : z;
}

}  // namespace quorvex
