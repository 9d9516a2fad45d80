#include "sheet/ComputeWeights.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "core/LargePages.h"
#include "core/NumberText.h"

namespace quorvex {

namespace {

// Whether the square is within the range of a double; any other deviation counts as 1.
bool IsKnown(double deviation) { return std::abs(deviation) >= 1e-150 && std::abs(deviation) <= 1e150; }

// The weights, and the mean that they were divided by.
std::pair<std::vector<double>, double> WeightsAndMean(std::span<const double> SD) {
  // Where none is given they are all 1, and so are the weights.
  if (std::ranges::all_of(SD, [](double deviation) { return deviation == 1; })) return {LargeCopy(SD), 1.0};
  std::vector<double> weights;
  ReserveLarge(weights, SD.size());
  weights.resize(SD.size());
  // Divisions by themselves go several at a time, which the sum, taken in order, could not.
  std::transform(SD.begin(), SD.end(), weights.begin(), [](double deviation) {
    const double known = IsKnown(deviation) ? deviation : 1;
    return 1 / (known * known);
  });
  const double mean = std::accumulate(weights.begin(), weights.end(), 0.0) / static_cast<double>(SD.size());
  std::transform(weights.begin(), weights.end(), weights.begin(), [mean](double weight) { return weight / mean; });
  return {std::move(weights), mean};
}

}  // namespace

std::vector<double> ComputeWeights(std::span<const double> SD) { return WeightsAndMean(SD).first; }

std::vector<std::string> DeviationWarnings(const SolveData& data) {
  std::vector<std::string> warnings;
  if (!data.HasSD) return warnings;
  const auto warn = [&](const auto& isMeant, const auto& counts) {
    std::vector<std::pair<std::size_t, double>> rows;
    for (std::size_t i = 0; i < data.N(); ++i)
      if (isMeant(data.SD[i])) rows.emplace_back(data.Row.empty() ? i + 1 : data.Row[i], data.SD[i]);
    if (rows.empty()) return;
    const auto [row, deviation] = *std::ranges::min_element(rows);
    warnings.push_back("The standard deviation in row " + std::to_string(row) + " is " + GeneralNumber(deviation) +
                       " and counts as " + GeneralNumber(counts(deviation)) +
                       (rows.size() > 1 ? "; such rows in all: " + std::to_string(rows.size()) + "." : "."));
  };
  warn([](double deviation) { return !IsKnown(deviation); }, [](double) { return 1.0; });
  warn([](double deviation) { return deviation < 0 && IsKnown(deviation); },
       [](double deviation) { return -deviation; });
  return warnings;
}

void TakeWeights(SolveData& data) {
  auto [weights, mean] = WeightsAndMean(data.SD);
  data.sig = std::move(weights);
  data.UnitDeviation = data.HasSD ? std::sqrt(1 / mean) : 0;
}

}  // namespace quorvex
