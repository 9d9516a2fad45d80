// The elementary functions and operators: time per value in blocks of 256, one by one, and of libm, taken in turns so
// that all three meet the same state of the machine, and the quickest of each. The ratios are what counts.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <ctime>
#include <limits>

#include "equation/BlockOperations.h"
#include "equation/Expression.h"
#include "functions/Elementary.h"
#include "linear/BlockDot.h"

namespace quorvex {
namespace {

constexpr std::size_t kBlock = 256;

// Of this thread alone: others may run beside it.
double CpuSeconds() {
  timespec time;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

// The quickest of many runs, per value.
class Quickest {
 public:
  template <class Fill>
  void Take(Fill fill) {
    constexpr int kRepeats = 100;
    const double start = CpuSeconds();
    for (int repeat = 0; repeat < kRepeats; ++repeat) {
      fill();
      benchmark::ClobberMemory();
    }
    nanoseconds_ = std::min(nanoseconds_, (CpuSeconds() - start) * 1e9 / kRepeats / kBlock);
  }
  double Nanoseconds() const { return nanoseconds_; }

 private:
  double nanoseconds_ = std::numeric_limits<double>::infinity();
};

enum class Spacing { Even, Log };

// The arguments fill the range from `low` to `high`, in scattered order. block(x, y), one(x) and libm(x) are the three
// forms.
template <class Block, class One, class Libm>
void Compare(benchmark::State& state, double low, double high, Block block, One one, Libm libm,
             Spacing spacing = Spacing::Even) {
  double x[kBlock], y[kBlock];
  for (std::size_t i = 0; i < kBlock; ++i) {
    const double part = static_cast<double>(i * 77 % kBlock) / kBlock;
    x[i] = spacing == Spacing::Even ? low + (high - low) * part : low * std::pow(high / low, part);
  }
  benchmark::DoNotOptimize(y);
  const auto each = [&](auto&& f) {
    for (std::size_t i = 0; i < kBlock; ++i) y[i] = f(x[i]);
  };
  Quickest inBlocks, oneByOne, ofLibm;
  for ([[maybe_unused]] auto pass : state) {
    inBlocks.Take([&] { block(x, y); });
    oneByOne.Take([&] { each(one); });
    ofLibm.Take([&] { each(libm); });
  }
  state.counters["block_ns"] = inBlocks.Nanoseconds();
  state.counters["scalar_ns"] = oneByOne.Nanoseconds();
  state.counters["libm_ns"] = ofLibm.Nanoseconds();
  state.counters["block/libm"] = inBlocks.Nanoseconds() / ofLibm.Nanoseconds();
  state.counters["scalar/libm"] = oneByOne.Nanoseconds() / ofLibm.Nanoseconds();
}

using Block = void (*)(const double*, double*, std::size_t);
using One = double (*)(double);

void OfOne(benchmark::State& state, double low, double high, Block block, One one, One libm,
           Spacing spacing = Spacing::Even) {
  Compare(
      state, low, high, [block](const double* x, double* y) { block(x, y, kBlock); }, one, libm, spacing);
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

BENCHMARK_CAPTURE(OfOne, Exp, -20, 20, ExpBlock, Exp, std::exp);
BENCHMARK_CAPTURE(OfOne, ExpVanishing, -2000, -746, ExpBlock, Exp, std::exp);
BENCHMARK_CAPTURE(OfOne, Ln, 0.1, 100, LnBlock, Ln, std::log);
BENCHMARK_CAPTURE(OfOne, Sin, -10, 10, SinBlock, Sin, std::sin);
BENCHMARK_CAPTURE(OfOne, SinOfLarge, 1e5, 1e8, SinBlock, Sin, std::sin);
BENCHMARK_CAPTURE(OfOne, SinOfHuge, 1e8, 1e300, SinBlock, Sin, std::sin, Spacing::Log);
BENCHMARK_CAPTURE(OfOne, Cos, -10, 10, CosBlock, Cos, std::cos);
BENCHMARK_CAPTURE(OfOne, Tan, -10, 10, TanBlock, Tan, std::tan);
BENCHMARK_CAPTURE(OfOne, TanOfLarge, 1e5, 1e8, TanBlock, Tan, std::tan);
BENCHMARK_CAPTURE(OfOne, Atn, -10, 10, AtnBlock, Atn, std::atan);
BENCHMARK_CAPTURE(OfPower, Fractional, 0.1, 100, 1.3);
BENCHMARK_CAPTURE(OfPower, Square, -10, 10, 2);
BENCHMARK_CAPTURE(OfPower, CubeOfEitherSign, -10, 10, 3);
BENCHMARK_CAPTURE(OfPowers, EachItsOwn, 0.1, 20);

// An operator over two columns, or a column and a number, beside a call for each point.
void OfOperator(benchmark::State& state, int code, bool withNumber, double (*byHand)(double a, double b)) {
  double x[kBlock], y[kBlock], out[kBlock];
  for (std::size_t i = 0; i < kBlock; ++i) {
    x[i] = 1 + static_cast<double>(i * 77 % kBlock);
    y[i] = 2 + static_cast<double>(i);
  }
  benchmark::DoNotOptimize(out);
  const BlockOperand second{withNumber ? nullptr : y, 1.3};
  Quickest inBlocks, oneByOne;
  for ([[maybe_unused]] auto pass : state) {
    inBlocks.Take([&] { BinaryOverBlock(code, {x, 0}, second, kBlock, out); });
    oneByOne.Take([&] {
      for (std::size_t i = 0; i < kBlock; ++i) out[i] = byHand(x[i], second.At(i));
    });
  }
  state.counters["block_ns"] = inBlocks.Nanoseconds();
  state.counters["block/scalar"] = inBlocks.Nanoseconds() / oneByOne.Nanoseconds();
}
BENCHMARK_CAPTURE(OfOperator, Sum, kAdd, false, [](double a, double b) { return a + b; });
BENCHMARK_CAPTURE(OfOperator, Scaled, kMultiply, true, [](double a, double b) { return a * b; });
BENCHMARK_CAPTURE(OfOperator, Quotient, kDivide, false, [](double a, double b) { return a / b; });
BENCHMARK_CAPTURE(OfOperator, Less, kLess, false, [](double a, double b) { return a < b ? -1.0 : 0.0; });

// The dot products of eight columns with each other, in one call and in 36.
void TriangleOfEight(benchmark::State& state) {
  constexpr std::size_t kColumns = 8, kDots = kColumns * (kColumns + 1) / 2;
  double columns[kColumns][kBlock], out[kDots];
  const double* each[kColumns];
  for (std::size_t k = 0; k < kColumns; ++k) {
    for (std::size_t i = 0; i < kBlock; ++i) columns[k][i] = static_cast<double>(i * (2 * k + 1) % kBlock);
    each[k] = columns[k];
  }
  benchmark::DoNotOptimize(out);
  Quickest together, apart;
  for ([[maybe_unused]] auto pass : state) {
    together.Take([&] { TriangleOfDots(each, each, kColumns, kBlock, out); });
    apart.Take([&] {
      for (std::size_t j = 0, at = 0; j < kColumns; ++j)
        for (std::size_t k = 0; k <= j; ++k) out[at++] = BlockDot(each[j], each[k], kBlock);
    });
  }
  state.counters["together_ns"] = together.Nanoseconds() / kDots;
  state.counters["together/apart"] = together.Nanoseconds() / apart.Nanoseconds();
}
BENCHMARK(TriangleOfEight);

}  // namespace
}  // namespace quorvex
