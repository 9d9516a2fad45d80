// All 298 built-in models of one variable on 10,000 points: the nonlinear search from the program's own starts, and
// how long its parts take when each is done once for every model.

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "Workloads.h"
#include "core/DerivativeKind.h"
#include "engine/EqClass.h"
#include "equation/BlockProgram.h"
#include "equation/Catalogue.h"
#include "linear/BlockDot.h"
#include "linear/gaussj.h"

namespace quorvex {
namespace {

constexpr std::size_t kPoints = 10'000;

SolveData Data() {
  bench::Random random(404);
  SolveData data;
  data.X.resize(1);
  for (std::size_t i = 1; i <= kPoints; ++i) {
    const double x = 1 + 9 * static_cast<double>(i) / kPoints;
    data.X[0].push_back(x);
    data.Y.push_back(2 + 6 * std::pow(x, 1.3) * std::exp(-0.45 * x) + 0.08 * random.Normal());
  }
  data.SD = data.sig = std::vector<double>(kPoints, 1.0);
  return data;
}

std::vector<std::unique_ptr<EqClass>> Models() {
  std::vector<std::unique_ptr<EqClass>> models;
  for (const CatalogueModel& row : Catalogue(1)) {
    models.push_back(std::make_unique<EqClass>(LocaleText()));
    models.back()->SetBuiltIn(row);
    models.back()->SolveType = 0;
  }
  return models;
}

void CatalogueFits(benchmark::State& state) {
  const SolveData data = Data();
  const auto models = Models();
  SolveForm form;
  int solved = 0, iterations = 0;
  for ([[maybe_unused]] auto pass : state) {
    solved = iterations = 0;
    for (const auto& model : models) {
      model->SpecifyICComplete = false;
      std::string log;
      solved += model->Fit(data, Settings(), log, form) ? 1 : 0;
      iterations += model->NumIterations;
    }
  }
  state.counters["solved"] = solved;
  state.counters["iterations"] = iterations;
}
BENCHMARK(CatalogueFits)->Unit(benchmark::kMillisecond);

void CatalogueStarts(benchmark::State& state) {
  const SolveData data = Data();
  const auto models = Models();
  for ([[maybe_unused]] auto pass : state)
    for (const auto& model : models) benchmark::DoNotOptimize(model->SetIC(data));
}
BENCHMARK(CatalogueStarts)->Unit(benchmark::kMillisecond);

void CatalogueValues(benchmark::State& state) {
  const SolveData data = Data();
  const auto models = Models();
  std::array<double, kBlock> y;
  for ([[maybe_unused]] auto pass : state)
    for (const auto& model : models)
      for (std::size_t first = 0; first < kPoints; first += kBlock)
        benchmark::DoNotOptimize(model->EvaluateBlock(data.X, first, std::min(kBlock, kPoints - first), y.data()));
}
BENCHMARK(CatalogueValues)->Unit(benchmark::kMillisecond);

void CatalogueDerivatives(benchmark::State& state) {
  const SolveData data = Data();
  const auto models = Models();
  std::array<double, kBlock> y;
  std::vector<std::vector<double>> dyda(21, std::vector<double>(kBlock));
  std::vector<double*> columns;
  for (auto& column : dyda) columns.push_back(column.data());
  std::vector<const double*> slopes(dyda.size());
  for ([[maybe_unused]] auto pass : state)
    for (const auto& model : models)
      for (std::size_t first = 0; first < kPoints; first += kBlock)
        benchmark::DoNotOptimize(model->DifferentiateBlock(data, first, std::min(kBlock, kPoints - first),
                                                           DerivativeKind::Richardson, y.data(), columns.data(),
                                                           slopes.data()));
}
BENCHMARK(CatalogueDerivatives)->Unit(benchmark::kMillisecond);

// The sums of the normal equations, and the systems solved.
void CatalogueLinearAlgebra(benchmark::State& state) {
  const auto models = Models();
  std::vector<std::vector<double>> dyda(21, std::vector<double>(kBlock));
  for (std::size_t j = 0; j < dyda.size(); ++j)
    for (std::size_t i = 0; i < kBlock; ++i) dyda[j][i] = std::cos(static_cast<double>(i * (j + 1)));
  for ([[maybe_unused]] auto pass : state) {
    for (const auto& model : models) {
      const auto n = static_cast<std::size_t>(model->NumDependentVar());
      Matrix alpha(n);
      std::vector<double> beta(n, 1.0);
      for (std::size_t first = 0; first < kPoints; first += kBlock)
        for (std::size_t j = 0; j < n; ++j)
          for (std::size_t k = 0; k <= j; ++k) alpha(j, k) += BlockDot(dyda[j].data(), dyda[k].data(), kBlock);
      for (std::size_t j = 0; j < n; ++j)
        for (std::size_t k = 0; k < j; ++k) alpha(k, j) = alpha(j, k);
      benchmark::DoNotOptimize(gaussj(alpha, n, beta));
    }
  }
}
BENCHMARK(CatalogueLinearAlgebra)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvex
