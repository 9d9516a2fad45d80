// A fit of points in memory, and what one evaluation of a user's model costs. A fit's time per point and iteration
// tells how much of it is evaluation: a numerical derivative evaluates the model many times.

#include <benchmark/benchmark.h>

#include <string>
#include <utility>

#include "Workloads.h"
#include "core/DerivativeKind.h"
#include "engine/EqClass.h"

namespace quorvex {
namespace {

using bench::FitCase;

SolveData Data(const FitCase& fit, std::size_t count) {
  bench::Points points = bench::MakePoints(fit, count);
  SolveData data;
  data.X = {std::move(points.X)};
  data.Y = std::move(points.Y);
  data.SD.assign(count, 1.0);
  data.sig.assign(count, 1.0);
  return data;
}

void SetStart(ModelClass& model, const FitCase& fit) {
  for (std::size_t i = 0; i < fit.Start.size(); ++i) model.SetValue(static_cast<int>(i) + 1, fit.Start[i]);
  model.SetICRange(std::vector<ICRange>(fit.Start.size()));
}

void Fit(benchmark::State& state) {
  const FitCase& fit = bench::kTwoExponentials;
  const auto count = static_cast<std::size_t>(state.range(0));
  const SolveData data = Data(fit, count);
  Settings settings;
  settings.DerivativeMethod = static_cast<DerivativeKind>(state.range(1));
  settings.Threads = 1;
  EqClass model{LocaleText()};
  model.SetID("two exponentials", {fit.Model});
  SolveForm form;
  for ([[maybe_unused]] auto pass : state) {
    SetStart(model, fit);
    model.SpecifyICComplete = true;
    std::string log;
    if (!model.Fit(data, settings, log, form)) return state.SkipWithError(log.c_str());
  }
  state.SetLabel(settings.DerivativeMethod == DerivativeKind::Richardson ? "Richardson" : "central differences");
  state.counters["iterations"] = model.NumIterations;
  state.counters["RSS"] = model.RSS;
  state.counters["per_point_and_pass"] =
      benchmark::Counter(static_cast<double>(count) * (model.NumIterations + 1),
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(Fit)->ArgsProduct({{1'000, 100'000, 1'000'000}, {0, 1}})->Unit(benchmark::kMillisecond);

void Evaluate(benchmark::State& state, const FitCase& fit) {
  constexpr std::size_t kPoints = 1000;
  const bench::Points points = bench::MakePoints(fit, kPoints);
  EqClass model{LocaleText()};
  model.SetID("model", {fit.Model});
  SetStart(model, fit);
  for ([[maybe_unused]] auto pass : state) {
    double sum = 0;
    for (const double& x : points.X) {
      double y = 0;
      if (!model.Evaluate({&x, 1}, y)) return state.SkipWithError("no value");
      sum += y;
    }
    benchmark::DoNotOptimize(sum);
  }
  state.counters["per_point"] =
      benchmark::Counter(kPoints, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK_CAPTURE(Evaluate, two_exponentials, bench::kTwoExponentials);
BENCHMARK_CAPTURE(Evaluate, two_peaks, bench::kTwoPeaks);

}  // namespace
}  // namespace quorvex
