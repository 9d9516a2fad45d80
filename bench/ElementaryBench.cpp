// The elementary functions: time per value in blocks of 256, one by one, and of libm, taken in turns so that all three
// meet the same state of the machine. The ratios are what counts.

#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstddef>

#include "functions/Elementary.h"

namespace quorvex {
namespace {

constexpr std::size_t kBlock = 256;

// The arguments fill the range from `low` to `high` evenly, in scattered order. block(x, y), one(x) and libm(x) are
// the three forms.
template <class Block, class One, class Libm>
void Compare(benchmark::State& state, double low, double high, Block block, One one, Libm libm) {
  double x[kBlock], y[kBlock];
  for (std::size_t i = 0; i < kBlock; ++i) x[i] = low + (high - low) * static_cast<double>(i * 77 % kBlock) / kBlock;
  const auto seconds = [&](auto&& fill) {
    const auto start = std::chrono::steady_clock::now();
    for (int repeat = 0; repeat < 20; ++repeat) {
      fill();
      benchmark::DoNotOptimize(y);
      benchmark::ClobberMemory();
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() / 20;
  };
  const auto each = [&](auto&& f) {
    for (std::size_t i = 0; i < kBlock; ++i) y[i] = f(x[i]);
  };
  double inBlocks = 0, oneByOne = 0, ofLibm = 0;
  for ([[maybe_unused]] auto pass : state) {
    const double time = seconds([&] { block(x, y); });
    inBlocks += time;
    oneByOne += seconds([&] { each(one); });
    ofLibm += seconds([&] { each(libm); });
    state.SetIterationTime(time);
  }
  const double values = static_cast<double>(state.iterations()) * kBlock * 1e-9;
  state.counters["block_ns"] = inBlocks / values;
  state.counters["scalar_ns"] = oneByOne / values;
  state.counters["libm_ns"] = ofLibm / values;
  state.counters["block/libm"] = inBlocks / ofLibm;
  state.counters["scalar/libm"] = oneByOne / ofLibm;
}

using Block = void (*)(const double*, double*, std::size_t);
using One = double (*)(double);

void OfOne(benchmark::State& state, double low, double high, Block block, One one, One libm) {
  Compare(
      state, low, high, [block](const double* x, double* y) { block(x, y, kBlock); }, one, libm);
}

void OfPower(benchmark::State& state, double low, double high, double b) {
  const auto block = [b](const double* x, double* y) { PowerBlock(x, b, y, kBlock); };
  Compare(
      state, low, high, block, [b](double x) { return Power(x, b); }, [b](double x) { return std::pow(x, b); });
}

void OfPowers(benchmark::State& state, double low, double high) {  // x^x
  const auto block = [](const double* x, double* y) { PowerBlock(x, x, y, kBlock); };
  Compare(
      state, low, high, block, [](double x) { return Power(x, x); }, [](double x) { return std::pow(x, x); });
}

BENCHMARK_CAPTURE(OfOne, Exp, -20, 20, ExpBlock, Exp, std::exp)->UseManualTime();
BENCHMARK_CAPTURE(OfOne, ExpVanishing, -2000, -746, ExpBlock, Exp, std::exp)->UseManualTime();
BENCHMARK_CAPTURE(OfOne, Ln, 0.1, 100, LnBlock, Ln, std::log)->UseManualTime();
BENCHMARK_CAPTURE(OfOne, Sin, -10, 10, SinBlock, Sin, std::sin)->UseManualTime();
BENCHMARK_CAPTURE(OfOne, SinOfLarge, 1e5, 1e8, SinBlock, Sin, std::sin)->UseManualTime();
BENCHMARK_CAPTURE(OfOne, Cos, -10, 10, CosBlock, Cos, std::cos)->UseManualTime();
BENCHMARK_CAPTURE(OfOne, Tan, -10, 10, TanBlock, Tan, std::tan)->UseManualTime();
BENCHMARK_CAPTURE(OfOne, Atn, -10, 10, AtnBlock, Atn, std::atan)->UseManualTime();
BENCHMARK_CAPTURE(OfPower, Fractional, 0.1, 100, 1.3)->UseManualTime();
BENCHMARK_CAPTURE(OfPower, Square, -10, 10, 2)->UseManualTime();
BENCHMARK_CAPTURE(OfPower, CubeOfEitherSign, -10, 10, 3)->UseManualTime();
BENCHMARK_CAPTURE(OfPowers, EachItsOwn, 0.1, 20)->UseManualTime();

}  // namespace
}  // namespace quorvex
