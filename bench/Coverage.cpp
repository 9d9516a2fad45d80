// How often limits hold the true coefficient, by simulation: coverage [data sets] [threads]
//
// Each data set is a model's curve at few points with normal errors; the program's own fits, limits and resampling are
// applied to it as to any data. Prints, for each kind of limits at 95 %, the part of the data sets whose limits hold
// the true value, and on which side it lies where they don't. Of N data sets the part has a standard error of root(0.95
// * 0.05 / N).

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "core/ParallelRuns.h"
#include "diagnosis/Bootstrap.h"
#include "diagnosis/ProfileLikelihood.h"
#include "engine/SeededRandom.h"
#include "engine/UserModel.h"
#include "functions/InverseNormalDistribution.h"
#include "functions/InverseTDistribution.h"

using namespace quorvex;

namespace {

constexpr std::size_t kLevel = 2;  // 95 %

struct Simulation {
  const char* Name;
  const char* Formula;
  std::vector<double> True, X;
  double Error;
};

const Simulation kSimulations[] = {
    {"Michaelis-Menten, 8 points, errors of 5 % of a", "a*x/(b+x)", {100, 2}, {0.5, 0.5, 1, 1, 3, 3, 8, 8}, 5},
    {"exponential decay, 6 points, errors of 5 % of a", "a*exp(-b*x)", {10, 0.5}, {0, 1, 2, 3, 4, 6}, 0.5},
    {"growth to a limit, 7 points, errors of 6 % of a", "a*(1-exp(-b*x))", {20, 0.4}, {1, 2, 3, 4, 5, 7, 9}, 1.2},
};

constexpr std::array<const char*, 4> kKinds = {"symmetric", "profile", "residuals", "cases"};

// Where the truth lies: 0 within the limits, -1 below, 1 above, 2 for no limits.
using Places = std::array<std::vector<int>, kKinds.size()>;

int PlaceOf(double truth, const Interval& limits) {
  if (std::isnan(limits.Lower) || std::isnan(limits.Upper)) return 2;
  return truth < limits.Lower ? -1 : truth > limits.Upper ? 1 : 0;
}

Places Simulate(const Simulation& simulation, std::size_t number) {
  SeededRandom random(SeededRandom(number + 1).Next());
  const std::size_t n = simulation.X.size(), p = simulation.True.size();
  std::unique_ptr<ModelClass> model = CompileModel("model", {simulation.Formula}, 1, LocaleText());
  model->CoefficientValues = simulation.True;
  SolveData data{{simulation.X}, std::vector<double>(n), std::vector<double>(n, 1.0), std::vector<double>(n, 1.0)};
  for (std::size_t i = 0; i < n; ++i) {
    model->Evaluate(std::span(&data.X[0][i], 1), data.Y[i]);
    data.Y[i] += simulation.Error * InverseNormalDistribution(random.Uniform() + 0x1p-54);
  }
  for (std::size_t i = 0; i < p; ++i) model->ICRanges[i] = {simulation.True[i], simulation.True[i], 1};
  model->SpecifyICComplete = true;
  SolveForm form;
  std::string log;
  Settings settings;
  settings.Threads = 1;
  Places places;
  for (std::vector<int>& place : places) place.assign(p, 2);
  if (!model->Fit(data, settings, log, form)) return places;
  const auto quantiles = ConfidenceQuantiles(model->DOFError);
  for (std::size_t i = 0; i < p; ++i) {
    const double value = model->CoefficientValues[i];
    const double half = model->StandardError(static_cast<int>(i) + 1) * quantiles[kLevel];
    places[0][i] = PlaceOf(simulation.True[i], {value - half, value + half});
  }
  const auto profiled = ProfileCoefficients(*model, data, {model->StdErr * model->StdErr, quantiles}, settings, form);
  for (const CoefficientProfile& profile : profiled->Coefficients) {
    const auto i = static_cast<std::size_t>(profile.Coefficient - 1);
    places[1][i] = PlaceOf(simulation.True[i], profile.Limits[kLevel]);
  }
  for (const bool cases : {false, true}) {
    const auto samples = BootstrapModel(*model, data, {1000, cases, number}, settings, form);
    for (std::size_t i = 0; i < p; ++i)
      places[cases ? 3 : 2][i] = PlaceOf(simulation.True[i], samples->Coefficients[i].Limits[kLevel]);
  }
  return places;
}

}  // namespace

int main(int argc, char** argv) {
  const std::size_t count = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 2000;
  const int threads = argc > 2 ? std::atoi(argv[2]) : 0;
  for (const Simulation& simulation : kSimulations) {
    std::vector<Places> all(count);
    RunParallel(
        count, threads, [&](std::size_t i, std::stop_token) { all[i] = Simulate(simulation, i); },
        [](std::size_t) { return true; });
    std::printf("%s: %zu data sets, nominal 95 %%\n", simulation.Name, count);
    std::printf("  coefficient  limits      held %%  below %%  above %%  none\n");
    for (std::size_t i = 0; i < simulation.True.size(); ++i)
      for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
        std::array<std::size_t, 4> places = {};  // -1 to 2
        for (const Places& each : all) ++places[static_cast<std::size_t>(each[kind][i] + 1)];
        const auto part = [&](std::size_t k) {
          return 100.0 * static_cast<double>(places[k]) / static_cast<double>(count);
        };
        std::printf("  %c            %-10s %6.2f  %6.2f  %6.2f  %5zu\n", static_cast<char>('a' + i), kKinds[kind],
                    part(1), part(0), part(2), places[3]);
      }
  }
}
