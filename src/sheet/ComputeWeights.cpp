#include "sheet/ComputeWeights.h"

#include <algorithm>
#include <cmath>

#include "core/LargePages.h"

namespace quorvex {

std::vector<double> ComputeWeights(std::span<const double> SD) {
  std::vector<double> weights;
  weights.reserve(SD.size());
  PreferLargePages(weights);
  double sum = 0;
  for (const double deviation : SD) {
    const double size = std::abs(deviation);
    const double weight = size >= 1e-150 && size <= 1e150 ? 1 / (deviation * deviation) : 1;
    weights.push_back(weight);
    sum += weight;
  }
  const double mean = sum / static_cast<double>(SD.size());
  std::transform(weights.begin(), weights.end(), weights.begin(), [mean](double weight) { return weight / mean; });
  return weights;
}

}  // namespace quorvex
