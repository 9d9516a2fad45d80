// Models over blocks of points beside loops written by hand with the same elementary functions: a user's model, its
// derivatives, one pass of the normal equations, and closed forms of the catalogue.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "Workloads.h"
#include "core/DerivativeKind.h"
#include "engine/BlockTeam.h"
#include "engine/EqClass.h"
#include "engine/SolveForm.h"
#include "engine/mrqmin.h"
#include "equation/BlockProgram.h"
#include "equation/ClosedForms.h"
#include "functions/Elementary.h"

namespace quorvex {
namespace {

constexpr std::size_t kPoints = 64 * kBlock;

struct Prepared {
  explicit Prepared(const bench::FitCase& fit) {
    bench::Points points = bench::MakePoints(fit, kPoints);
    Data.X = {std::move(points.X)};
    Data.Y = std::move(points.Y);
    Data.SD = Data.sig = std::vector<double>(kPoints, 1.0);
    Model.SetID("model", {fit.Model});
    Model.UserType = true;
    for (std::size_t i = 0; i < fit.Start.size(); ++i) Model.SetValue(static_cast<int>(i) + 1, fit.Start[i]);
  }

  SolveData Data;
  EqClass Model{LocaleText()};
};

void PerPoint(benchmark::State& state) {
  state.counters["per_point"] =
      benchmark::Counter(kPoints, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void EvaluateBlocks(benchmark::State& state, const bench::FitCase& fit) {
  Prepared prepared(fit);
  std::array<double, kBlock> y;
  for ([[maybe_unused]] auto pass : state) {
    for (std::size_t first = 0; first < kPoints; first += kBlock)
      if (!prepared.Model.EvaluateBlock(prepared.Data.X, first, kBlock, y.data()))
        return state.SkipWithError("no value");
    benchmark::DoNotOptimize(y.data());
  }
  PerPoint(state);
}
BENCHMARK_CAPTURE(EvaluateBlocks, two_exponentials, bench::kTwoExponentials);
BENCHMARK_CAPTURE(EvaluateBlocks, two_peaks, bench::kTwoPeaks);

using ByHand = void (*)(const double* x, const double* a, double* y);

void TwoExponentials(const double* x, const double* a, double* y) {
  double u[kBlock], v[kBlock];
  for (std::size_t i = 0; i < kBlock; ++i) u[i] = -a[1] * x[i];
  for (std::size_t i = 0; i < kBlock; ++i) v[i] = -a[3] * x[i];
  ExpBlock(u, u, kBlock);
  ExpBlock(v, v, kBlock);
  for (std::size_t i = 0; i < kBlock; ++i) y[i] = a[0] * u[i] + a[2] * v[i] + a[4];
}

void TwoPeaks(const double* x, const double* a, double* y) {
  double u[kBlock], v[kBlock], w[kBlock];
  for (std::size_t i = 0; i < kBlock; ++i) u[i] = -a[1] * x[i];
  for (std::size_t i = 0; i < kBlock; ++i) v[i] = -((x[i] - a[3]) * (x[i] - a[3])) / (a[4] * a[4]);
  for (std::size_t i = 0; i < kBlock; ++i) w[i] = -((x[i] - a[6]) * (x[i] - a[6])) / (a[7] * a[7]);
  for (double* block : {u, v, w}) ExpBlock(block, block, kBlock);
  for (std::size_t i = 0; i < kBlock; ++i) y[i] = a[0] * u[i] + a[2] * v[i] + a[5] * w[i];
}

void EvaluateByHand(benchmark::State& state, const bench::FitCase& fit, ByHand evaluate) {
  const Prepared prepared(fit);
  std::array<double, kBlock> y;
  for ([[maybe_unused]] auto pass : state) {
    for (std::size_t first = 0; first < kPoints; first += kBlock)
      evaluate(prepared.Data.X[0].data() + first, fit.Start.data(), y.data());
    benchmark::DoNotOptimize(y.data());
  }
  PerPoint(state);
}
BENCHMARK_CAPTURE(EvaluateByHand, two_exponentials, bench::kTwoExponentials, TwoExponentials);
BENCHMARK_CAPTURE(EvaluateByHand, two_peaks, bench::kTwoPeaks, TwoPeaks);

void DifferentiateBlocks(benchmark::State& state, const bench::FitCase& fit, DerivativeKind method) {
  Prepared prepared(fit);
  std::array<double, kBlock> y;
  std::vector<std::vector<double>> dyda(fit.Start.size(), std::vector<double>(kBlock));
  std::vector<double*> columns;
  for (auto& column : dyda) columns.push_back(column.data());
  std::vector<const double*> slopes(dyda.size());
  for ([[maybe_unused]] auto pass : state)
    for (std::size_t first = 0; first < kPoints; first += kBlock)
      if (!prepared.Model.DifferentiateBlock(prepared.Data, first, kBlock, method, y.data(), columns.data(),
                                             slopes.data()))
        return state.SkipWithError("no derivative");
  PerPoint(state);
}
BENCHMARK_CAPTURE(DifferentiateBlocks, two_exponentials_central, bench::kTwoExponentials, DerivativeKind::Central);
BENCHMARK_CAPTURE(DifferentiateBlocks, two_peaks_central, bench::kTwoPeaks, DerivativeKind::Central);
BENCHMARK_CAPTURE(DifferentiateBlocks, two_exponentials_exact, bench::kTwoExponentials, DerivativeKind::Exact);
BENCHMARK_CAPTURE(DifferentiateBlocks, two_peaks_exact, bench::kTwoPeaks, DerivativeKind::Exact);
BENCHMARK_CAPTURE(DifferentiateBlocks, two_exponentials_richardson, bench::kTwoExponentials,
                  DerivativeKind::Richardson);
BENCHMARK_CAPTURE(DifferentiateBlocks, two_peaks_richardson, bench::kTwoPeaks, DerivativeKind::Richardson);

// The first call of a search: one pass over the points and one small linear system.
void NormalEquations(benchmark::State& state, const bench::FitCase& fit, DerivativeKind derivativeMethod) {
  Prepared prepared(fit);
  const std::size_t n = fit.Start.size();
  const std::vector<int> free(n, 1);
  SolveForm form;
  for ([[maybe_unused]] auto pass : state) {
    std::vector<double> a = fit.Start;
    Matrix covar(n), alpha(n);
    double chisq = 0, alamda = -1;
    BlockTeam team(prepared.Model, kPoints, 1);
    LevenbergMarquardt kernel(team, prepared.Data, derivativeMethod, form);
    kernel.mrqmin(a, free, covar, alpha, chisq, alamda);
    benchmark::DoNotOptimize(chisq);
  }
  // The start and the first trial.
  state.counters["per_point_and_pass"] =
      benchmark::Counter(2 * kPoints, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK_CAPTURE(NormalEquations, two_exponentials_central, bench::kTwoExponentials, DerivativeKind::Central);
BENCHMARK_CAPTURE(NormalEquations, two_exponentials_exact, bench::kTwoExponentials, DerivativeKind::Exact);
BENCHMARK_CAPTURE(NormalEquations, two_peaks_central, bench::kTwoPeaks, DerivativeKind::Central);
BENCHMARK_CAPTURE(NormalEquations, two_peaks_exact, bench::kTwoPeaks, DerivativeKind::Exact);
BENCHMARK_CAPTURE(NormalEquations, two_peaks_richardson, bench::kTwoPeaks, DerivativeKind::Richardson);

// ---- closed forms: value and derivatives

using FormByHand = void (*)(const double* x, const double* a, double* y, double* const* d);

struct FormCase {
  const char* ID;
  std::vector<double> A;
  FormByHand Hand;
};

const FormCase kForms[] = {
    {"a*x^b",
     {2, 0.7},
     [](const double* x, const double* a, double* y, double* const* d) {
       double ln[kBlock];
       PowerBlock(x, a[1], d[0], kBlock);
       LnBlock(x, ln, kBlock);
       for (std::size_t i = 0; i < kBlock; ++i) y[i] = a[0] * d[0][i];
       for (std::size_t i = 0; i < kBlock; ++i) d[1][i] = y[i] * ln[i];
     }},
    {"a*exp(b*x)",
     {2, -0.3},
     [](const double* x, const double* a, double* y, double* const* d) {
       for (std::size_t i = 0; i < kBlock; ++i) y[i] = a[1] * x[i];
       ExpBlock(y, d[0], kBlock);
       for (std::size_t i = 0; i < kBlock; ++i) y[i] = a[0] * d[0][i];
       for (std::size_t i = 0; i < kBlock; ++i) d[1][i] = y[i] * x[i];
     }},
    {"a*x/(b+x)",
     {5, 0.5},
     [](const double* x, const double* a, double* y, double* const* d) {
       for (std::size_t i = 0; i < kBlock; ++i) {
         const double q = a[1] + x[i];
         d[0][i] = x[i] / q;
         y[i] = a[0] * x[i] / q;
         d[1][i] = -y[i] / q;
       }
     }},
    {"a*exp((-(x-b)^2)/(2*c^2))",
     {8, 3, 4},
     [](const double* x, const double* a, double* y, double* const* d) {
       for (std::size_t i = 0; i < kBlock; ++i) y[i] = -((x[i] - a[1]) * (x[i] - a[1])) / (2 * (a[2] * a[2]));
       ExpBlock(y, d[0], kBlock);
       for (std::size_t i = 0; i < kBlock; ++i) {
         const double t = (x[i] - a[1]) / a[2];
         y[i] = a[0] * d[0][i];
         d[1][i] = y[i] * t / a[2];
         d[2][i] = y[i] * t * t / a[2];
       }
     }},
    {"a*x^b*exp(-c*x)",
     {6, 0.5, 0.1},
     [](const double* x, const double* a, double* y, double* const* d) {
       double p[kBlock], ln[kBlock];
       PowerBlock(x, a[1], p, kBlock);
       LnBlock(x, ln, kBlock);
       for (std::size_t i = 0; i < kBlock; ++i) y[i] = -a[2] * x[i];
       ExpBlock(y, y, kBlock);
       for (std::size_t i = 0; i < kBlock; ++i) {
         d[0][i] = p[i] * y[i];
         y[i] = a[0] * d[0][i];
         d[1][i] = y[i] * ln[i];
         d[2][i] = -x[i] * y[i];
       }
     }},
    {"cos(x+a)",
     {0.5},
     [](const double* x, const double* a, double* y, double* const* d) {
       for (std::size_t i = 0; i < kBlock; ++i) y[i] = x[i] + a[0];
       SinBlock(y, d[0], kBlock);
       CosBlock(y, y, kBlock);
       for (std::size_t i = 0; i < kBlock; ++i) d[0][i] = -d[0][i];
     }},
    {"a+b*x*ln(x)",
     {1, 2},
     [](const double* x, const double* a, double* y, double* const* d) {
       LnBlock(x, d[1], kBlock);
       for (std::size_t i = 0; i < kBlock; ++i) {
         d[0][i] = 1;
         d[1][i] *= x[i];
         y[i] = a[0] + a[1] * d[1][i];
       }
     }},
    {"a*x^3+b*x^2+c*x+d",
     {1, 2, 3, 4},
     [](const double* x, const double* a, double* y, double* const* d) {
       for (std::size_t i = 0; i < kBlock; ++i) {
         y[i] = ((a[0] * x[i] + a[1]) * x[i] + a[2]) * x[i] + a[3];
         d[3][i] = 1;
         d[2][i] = x[i];
         d[1][i] = x[i] * x[i];
         d[0][i] = d[1][i] * x[i];
       }
     }},
};

void ClosedForms(benchmark::State& state) {
  const FormCase& form = kForms[state.range(0)];
  const bool byHand = state.range(1) != 0;
  const CatalogueModel* const model = LookupBuiltInModel(form.ID, 1);
  if (model == nullptr) return state.SkipWithError("no such model");
  std::array<double, kBlock> x, y;
  for (std::size_t i = 0; i < kBlock; ++i) x[i] = 1 + static_cast<double>(i) / 32;
  std::vector<std::vector<double>> dyda(form.A.size(), std::vector<double>(kBlock));
  std::vector<double*> columns;
  for (auto& column : dyda) columns.push_back(column.data());
  const double* const from = x.data();
  for ([[maybe_unused]] auto pass : state) {
    if (byHand)
      form.Hand(from, form.A.data(), y.data(), columns.data());
    else
      ValueAndDerivatives(*model, &from, kBlock, form.A.data(), y.data(), columns.data());
    benchmark::DoNotOptimize(y.data());
    benchmark::ClobberMemory();
  }
  state.SetLabel(form.ID + std::string(byHand ? " by hand" : ""));
}
BENCHMARK(ClosedForms)->ArgsProduct({benchmark::CreateDenseRange(0, 7, 1), {0, 1}});

}  // namespace
}  // namespace quorvex
