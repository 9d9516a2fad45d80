#include "sheet/ComputeWeights.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "core/LargePages.h"

namespace quorvex {

namespace {

// The weights, and the mean that they were divided by.
std::pair<std::vector<double>, double> WeightsAndMean(std::span<const double> SD) {
  std::vector<double> weights;
  weights.reserve(SD.size());
  PreferLargePages(weights);
  weights.resize(SD.size());
  // Divisions by themselves go several at a time, which the sum, taken in order, could not.
  std::transform(SD.begin(), SD.end(), weights.begin(), [](double deviation) {
    const double size = std::abs(deviation);
    // Beyond these the square leaves the range of a double; such a deviation counts as 1.
    const double known = size >= 1e-150 && size <= 1e150 ? deviation : 1;
    return 1 / (known * known);
  });
  const double mean = std::accumulate(weights.begin(), weights.end(), 0.0) / static_cast<double>(SD.size());
  std::transform(weights.begin(), weights.end(), weights.begin(), [mean](double weight) { return weight / mean; });
  return {std::move(weights), mean};
}

}  // namespace

std::vector<double> ComputeWeights(std::span<const double> SD) { return WeightsAndMean(SD).first; }

void TakeWeights(SolveData& data) {
  auto [weights, mean] = WeightsAndMean(data.SD);
  data.sig = std::move(weights);
  data.UnitDeviation = data.HasSD ? std::sqrt(1 / mean) : 0;
}

}  // namespace quorvex
