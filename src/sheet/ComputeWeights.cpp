#include "sheet/ComputeWeights.h"

#include <algorithm>
#include <cmath>

namespace quorvex {

std::vector<double> ComputeWeights(std::span<const double> SD) {
  std::vector<double> weights(SD.size());
  double sum = 0;
  for (std::size_t i = 0; i < SD.size(); ++i) {
    const double size = std::abs(SD[i]);
    weights[i] = size >= 1e-150 && size <= 1e150 ? 1 / (SD[i] * SD[i]) : 1;
    sum += weights[i];
  }
  const double mean = sum / static_cast<double>(SD.size());
  std::transform(weights.begin(), weights.end(), weights.begin(), [mean](double weight) { return weight / mean; });
  return weights;
}

}  // namespace quorvex
