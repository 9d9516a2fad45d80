// The calculator on curves of a full sheet, each step as a key of it does it.

#include <benchmark/benchmark.h>

#include <cmath>
#include <utility>
#include <vector>

#include "calculator/Operations.h"

namespace quorvex {
namespace {

constexpr int kPoints = 65'536;

PlotSeries Wave(double shift) {
  std::vector<double> x, y;
  for (int i = 0; i < kPoints; ++i) {
    x.push_back(i + shift);
    y.push_back(std::sin(i * 0.01) + 2);
  }
  return NewCurve(std::move(x), std::move(y), "wave");
}

// Two curves that share no X, so that the grid has twice as many.
void AddOnCommonGrid(benchmark::State& state) {
  Stackclass stack;
  stack.Push(Wave(0));
  stack.Push(Wave(0.5));
  for ([[maybe_unused]] auto pass : state) {
    Stackclass work = stack;
    arithmetic(0, work, {});
    benchmark::DoNotOptimize(work);
  }
}
BENCHMARK(AddOnCommonGrid)->Unit(benchmark::kMillisecond);

void Operate(benchmark::State& state, int index) {
  Stackclass stack;
  stack.Push(Wave(0));
  for ([[maybe_unused]] auto pass : state) {
    Stackclass work = stack;
    operations(index, work, {});
    benchmark::DoNotOptimize(work);
  }
}
BENCHMARK_CAPTURE(Operate, Sine, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Operate, Integral, 4)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Operate, Derivative, 9)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Operate, Fourier, 23)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvex
