// All subsets of twenty variables, 1,048,576 combinations, of a hundred points and of a full sheet; and what one
// direct solution of three variables costs, to compare a combination with.

#include <benchmark/benchmark.h>

#include "Workloads.h"
#include "selection/AllSubsets.h"

namespace quorvex {
namespace {

constexpr std::size_t kCandidates = 20;

SelectionData Noise(std::size_t points) {
  bench::Random random(62);
  SelectionData data;
  data.Y.resize(points);
  data.SD.assign(points, 1);
  data.sig.assign(points, 1);
  data.Always.assign(kCandidates, false);
  for (std::size_t j = 0; j < kCandidates; ++j) {
    data.Names.push_back("X" + std::to_string(j + 1));
    data.X.emplace_back(points);
    for (double& x : data.X.back()) x = 100 + random.Normal();
  }
  for (std::size_t i = 0; i < points; ++i) data.Y[i] = data.X[2][i] - data.X[7][i] + random.Normal();
  return data;
}

void AllSubsetsOf20(benchmark::State& state) {
  const SelectionData data = Noise(static_cast<std::size_t>(state.range(0)));
  for ([[maybe_unused]] auto pass : state) {
    SelectionForm form;
    const SubsetSolver solver(data, true, form);
    const auto ranked = AllSubsets(solver, {data.Always, 20, SubsetRank::StdErr}, form);
    if (ranked.size() != kMostSubsets) return state.SkipWithError("not all are ranked");
  }
  state.counters["combinations/s"] =
      benchmark::Counter(static_cast<double>(state.iterations()) * 0x1p20, benchmark::Counter::kIsRate);
}
BENCHMARK(AllSubsetsOf20)->ArgName("points")->Arg(100)->Arg(65'536)->Unit(benchmark::kMillisecond);

void OneDirectSolution(benchmark::State& state) {
  const SelectionData data = Noise(100);
  const SubsetSolver solver(data, true, SelectionForm());
  for ([[maybe_unused]] auto pass : state) benchmark::DoNotOptimize(solver.Fit({2, 7, 11}));
}
BENCHMARK(OneDirectSolution)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace quorvex
