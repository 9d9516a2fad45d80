// Smoothing by locally weighted regression at a window of 10 %, as the command and the calculator do it: a full sheet,
// which is interpolated between some fifty fits, and the most points of which each is fitted.

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "Workloads.h"
#include "analysis/LowessSmooth.h"

namespace quorvex {
namespace {

void Smooth(benchmark::State& state) {
  bench::Random random(1979);
  std::vector<double> x, y;
  for (int i = 0; i < state.range(0); ++i) {
    x.push_back(i * 0.001);
    y.push_back(std::sin(x.back()) + random.Normal());
  }
  for ([[maybe_unused]] auto pass : state)
    benchmark::DoNotOptimize(LowessSmooth(x, y, 0.1, kLowessSteps, LowessDelta(x)));
}
BENCHMARK(Smooth)->ArgName("points")->Arg(5'000)->Arg(65'536)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvex
