#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <utility>

#include "core/Limits.h"
#include "engine/BlockTeam.h"
#include "engine/EqClass.h"
#include "engine/PointDerivatives.h"
#include "engine/Points.h"
#include "engine/SeededRandom.h"
#include "engine/mrqmin.h"
#include "equation/Catalogue.h"

namespace quorvex {
namespace {

constexpr std::size_t kMany = 24'000;  // points that are shared out, in 94 blocks

// x in (0, 10], and about each value of f some noise.
SolveData Noisy(const std::function<double(double)>& f, double noise, std::size_t n = kMany, std::uint64_t seed = 1) {
  SeededRandom random(seed);
  std::vector<double> x(n), y(n);
  for (std::size_t i = 0; i < n; ++i) {
    x[i] = 10 * static_cast<double>(i + 1) / static_cast<double>(n);
    y[i] = f(x[i]) + noise * (random.Uniform() + random.Uniform() + random.Uniform() - 1.5);
  }
  return Points({std::move(x)}, std::move(y));
}

void Append(std::string& text, const std::vector<double>& values) {
  for (const double value : values) text += std::to_string(std::bit_cast<std::uint64_t>(value)) + ' ';
  text += '\n';
}

// Everything that a fit leaves behind, to the bit.
std::string Outcome(const ModelClass& model, bool solved, const std::string& log) {
  std::string text = log + model.Failure + '|' + model.ErrorMessage + '|' + (solved ? "solved " : "failed ") +
                     std::to_string(model.NumIterations) + ' ' + std::to_string(static_cast<int>(model.Ended)) + '\n';
  Append(text, model.CoefficientValues);
  Append(text, model.Variances);
  Append(text, {model.RSS, model.RssNorm, model.RST, model.ResAvg, model.ResSum, model.Durbin, model.R2, model.R2Adjust,
                model.StdErr, model.LossScale, static_cast<double>(model.DOFError)});
  return text;
}

struct Case {
  std::string Name, Model;
  std::vector<double> Start;
  SolveData Data;
  std::function<void(ModelClass&, Settings&)> Adjust = {};
};

double Decay(double x) { return 3 * std::exp(-0.7 * x) + 0.5; }

std::vector<Case> Cases() {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  std::vector<Case> cases;
  const SolveData decay = Noisy(Decay, 0.1);
  const std::string model = "a*exp(-b*x)+c";
  cases.push_back({"converges", model, {1, 1, 1}, decay});
  cases.push_back(
      {"is rejected often", "a*sin(b*x+c)", {1, 2.6, 0}, Noisy([](double x) { return std::sin(3 * x); }, 2)});
  cases.push_back({"has a value missing late", "a*x+b*sqr(9.7-x+c-c)", {1, 1, 1}, decay});
  cases.push_back({"has a weight of NaN at the start of a block", model, {1, 1, 1}, decay});
  cases.back().Data.sig[kBlock * 90] = kNaN;
  cases.push_back({"has its X out of the domain at the end of a block", "a*ln(x-b)+c", {1, -1, 1}, decay});
  cases.back().Data.X[0][kBlock * 40 - 1] = -5;
  cases.push_back({"loses its value at trials",
                   "a*sqr(b-x)+c",
                   {1, 30, 0},
                   Noisy([](double x) { return std::sqrt(10.01 - x); }, 0.01)});
  cases.push_back({"forks",
                   "if(x<4.99,a*exp(-b*x),c*x)",
                   {1, 1, 2},
                   Noisy([](double x) { return x < 4.99 ? Decay(x) : 0.3 * x; }, 0.1)});
  cases.push_back(
      {"holds a coefficient", model, {1, 1, 0.5}, decay, [](ModelClass& m, Settings&) { m.SetConstant(3, 0); }});
  cases.push_back({"has bounds", model, {1, 1, 1}, decay, [](ModelClass& m, Settings&) { m.SetBounds(2, 0, 0.5); }});
  cases.push_back({"is robust", model, {1, 1, 1}, decay, [](ModelClass&, Settings& s) { s.Loss = LossKind::Huber; }});
  for (std::size_t i = 0; i < kMany; i += 50) cases.back().Data.Y[i] += 20;
  cases.push_back({"tries harder", model, {1, 50, 1}, decay, [](ModelClass&, Settings& s) { s.TryHarder = true; }});
  cases.push_back({"has weights", model, {1, 1, 1}, decay});
  for (std::size_t i = 0; i < kMany; ++i) cases.back().Data.sig[i] = i % 2 == 0 ? 0.5 : 1.5;
  cases.push_back({"has negative weights", model, {1, 1, 1}, decay});
  for (std::size_t i = 0; i < kMany; ++i) cases.back().Data.sig[i] = i % 100 == 0 ? -0.5 : 1.0;
  cases.push_back({"has typed derivatives", "a*exp(-b*x)", {1, 1}, decay, [](ModelClass& m, Settings&) {
                     m.SetDerivative(1, "exp(-b*x)");
                     m.SetDerivative(2, "-a*x*exp(-b*x)");
                   }});
  cases.push_back({"has a typed derivative that fails late", "a*x", {1}, decay, [](ModelClass& m, Settings&) {
                     m.SetDerivative(1, "x*sqr(9.5-x)/sqr(9.5-x)");
                   }});
  cases.push_back({"names statistics", "a*(x-xmean)+b", {1, 1}, decay});
  cases.push_back({"draws random numbers", "a*x+b+0.001*rnd(1)", {1, 1}, decay, [](ModelClass&, Settings& s) {
                     s.MaxIterations = 4;
                   }});
  cases.push_back({"draws them in derivatives", "a*x+b", {1, 1}, decay, [](ModelClass& m, Settings&) {
                     m.SetDerivative(1, "x+0.001*rnd(1)");
                     m.SetDerivative(2, "1");
                   }});
  cases.push_back({"is ill-conditioned", "a+b*x+c*x^2", {1, 1, 1}, decay});
  for (double& x : cases.back().Data.X[0]) x += 3000;
  return cases;
}

std::string FitBy(const Case& by, DerivativeKind method, int threads) {
  EqClass model{LocaleText()};
  model.SetID(by.Model, {by.Model});
  Settings settings;
  settings.DerivativeMethod = method;
  settings.Threads = threads;
  if (by.Adjust) by.Adjust(model, settings);
  for (std::size_t i = 0; i < by.Start.size(); ++i) model.SetValue(static_cast<int>(i) + 1, by.Start[i]);
  model.SpecifyICComplete = true;
  for (std::size_t i = 0; i < by.Start.size(); ++i) model.ICRanges[i] = {by.Start[i], by.Start[i], 1};
  std::string log;
  SolveForm form;
  const bool solved = model.Fit(by.Data, settings, log, form);
  return Outcome(model, solved, log);
}

TEST(ParallelFit, HasTheSameBitsByAnyNumberOfThreads) {
  for (const Case& by : Cases()) {
    const DerivativeKind methods[] = {DerivativeKind::Exact, DerivativeKind::Central};
    for (const DerivativeKind method : methods) {
      const std::string alone = FitBy(by, method, 1);
      for (const int threads : {2, 3, 16})
        EXPECT_EQ(FitBy(by, method, threads), alone) << by.Name << " by " << threads << " threads";
    }
  }
  const Case richardson = Cases()[0];
  EXPECT_EQ(FitBy(richardson, DerivativeKind::Richardson, 3), FitBy(richardson, DerivativeKind::Richardson, 1));
}

TEST(ParallelFit, SolvesBuiltInModelsAlike) {
  const SolveData data = Noisy(Decay, 0.1);
  for (const CatalogueModel& row : Catalogue(1)) {
    if (row.IDIndex % 25 != 1) continue;
    std::string outcomes[2];
    for (const int threads : {1, 3}) {
      EqClass model{LocaleText()};
      model.SetBuiltIn(row);
      model.SolveType = 0;
      Settings settings;
      settings.Threads = threads;
      settings.TryHarder = row.IDIndex % 150 == 1;  // by the derivatives of its own
      std::string log;
      SolveForm form;
      const bool solved = model.Fit(data, settings, log, form);
      outcomes[threads / 3] = Outcome(model, solved, log);
    }
    EXPECT_EQ(outcomes[1], outcomes[0]) << row.ID;
  }
}

// A form whose user aborts at one of its turns.
struct Impatient : SolveForm {
  explicit Impatient(int at) : At(at) {}
  void Pulse() override { Aborted |= ++Turns == At; }
  int At, Turns = 0;
};

TEST(ParallelFit, EndsSoonAfterAnAbort) {
  const SolveData data = Noisy(Decay, 0.1, 1'000'000);
  for (const int at : {1, 50, 1000, 3000}) {
    EqClass model{LocaleText()};
    model.SetID("a*exp(-b*x)+c", {"a*exp(-b*x)+c"});
    Settings settings;
    settings.Threads = 3;
    settings.DerivativeMethod = DerivativeKind::Exact;
    std::string log;
    Impatient form(at);
    EXPECT_FALSE(model.Fit(data, settings, log, form));
    EXPECT_FALSE(model.Solved);
    EXPECT_EQ(form.Turns, at);  // no turn after that one
  }
}

// What a team is for: blocks in their order, whoever computed them, in as many slots as there are.
TEST(ParallelFit, TakesBlocksInTheirOrder) {
  EqClass model{LocaleText()};
  model.SetID("a*x", {"a*x"});
  constexpr std::size_t kBlocks = (kMany + kBlock - 1) / kBlock;
  for (const int threads : {1, 2, 5}) {
    BlockTeam team(model, kMany, threads);
    EXPECT_EQ(team.Size(), static_cast<std::size_t>(threads));
    for (const std::size_t slots : {std::size_t{16}, kBlocks}) {
      const std::size_t room = threads == 1 ? 1 : slots;
      for (const std::size_t last : {std::size_t{0}, std::size_t{17}, kBlocks}) {
        for (const bool fails : {false, true}) {
          std::vector<std::size_t> of(room), taken;
          const auto compute = [&](std::size_t member, std::size_t block, std::size_t slot) {
            EXPECT_LT(member, team.Size());
            of[slot] = block;
            return !(fails && block >= last);
          };
          const auto take = [&](std::size_t block, std::size_t slot) {
            EXPECT_EQ(of[slot], block);
            taken.push_back(block);
            return fails || block != last;
          };
          EXPECT_EQ(team.Run(
                        room, [] { return true; }, compute, take),
                    last);
          ASSERT_EQ(taken.size(), fails || last == kBlocks ? last : last + 1);
          for (std::size_t i = 0; i < taken.size(); ++i) EXPECT_EQ(taken[i], i);
        }
      }
    }
  }
  EXPECT_EQ(BlockTeam(model, 19'999, 4).Size(), 1u);
  model.SetID("a*rnd(1)", {"a*rnd(1)"});
  EXPECT_EQ(BlockTeam(model, kMany, 4).Size(), 1u);
}

// Values first and derivatives after, if at all, must not change what a trial is worth.
TEST(PointDerivatives, HaveTheValuesThatAreComputedWithoutThem) {
  const SolveData data = Noisy(Decay, 0.1, 300);
  const auto compare = [&](EqClass& model, DerivativeKind method) {
    PointDerivatives whole(model, data, method), values(model, data, method);
    for (const std::size_t first : {std::size_t{0}, kBlock}) {
      const std::size_t n = std::min(kBlock, data.N() - first);
      bool complete = false;
      try {
        complete = whole.Compute(first, n);
      } catch (const std::exception&) {
      }
      if (!complete) continue;
      ASSERT_TRUE(values.ComputeValues(first, n)) << model.id;
      for (std::size_t i = 0; i < n; ++i)
        ASSERT_EQ(std::bit_cast<std::uint64_t>(whole.Values()[i]), std::bit_cast<std::uint64_t>(values.Values()[i]))
            << model.id << " at " << data.X[0][first + i];
    }
  };
  SeededRandom random(7);
  for (const CatalogueModel& row : Catalogue(1)) {
    EqClass model{LocaleText()};
    model.SetBuiltIn(row);
    for (double& a : model.CoefficientValues) a = 0.2 + random.Uniform();
    compare(model, DerivativeKind::Richardson);
  }
  for (const std::string text : {"a*exp(-b*x)+c*x^b", "if(x<3,a*x,b*ln(x))", "a*sin(b*x)/(1+c*x)"})
    for (const DerivativeKind method : {DerivativeKind::Richardson, DerivativeKind::Central, DerivativeKind::Exact}) {
      EqClass model{LocaleText()};
      model.SetID(text, {text});
      for (double& a : model.CoefficientValues) a = 0.2 + random.Uniform();
      compare(model, method);
    }
}

// The search as it was without giving up: all points of each trial, with their derivatives. Written from the formulas,
// with the model's own derivatives and the same elimination, it takes the same steps to rounding.
TEST(LevenbergMarquardt, GivesUpNoTrialThatIsBetter) {
  int rejections = 0, gains = 0;
  for (std::uint64_t seed = 1; seed <= 60; ++seed) {
    SeededRandom random(seed);
    const double b = 0.2 + 3 * random.Uniform();
    const SolveData data = Noisy([&](double x) { return 2 * std::sin(b * x) + 0.2 * x; }, 1, 1000, seed);
    EqClass model{LocaleText()};
    model.SetID("a*sin(b*x)+c*x", {"a*sin(b*x)+c*x"});
    BlockTeam team(model, data.N(), 1);
    SolveForm form;
    LevenbergMarquardt kernel(team, data, DerivativeKind::Exact, form);
    std::vector<double> a = {1, b * (0.5 + random.Uniform()), 0};
    const std::vector<int> ia = {1, 1, 1};
    Matrix covar(3), alpha(3);
    double chisq = 0, alamda = -1;
    ASSERT_TRUE(kernel.mrqmin(a, ia, covar, alpha, chisq, alamda));
    const auto sumAt = [&](const std::vector<double>& at) {
      double sum = 0;
      for (std::size_t i = 0; i < data.N(); ++i) {
        const double x = data.X[0][i], e = data.Y[i] - (at[0] * std::sin(at[1] * x) + at[2] * x);
        sum += e * e;
      }
      return sum;
    };
    for (int step = 0; step < 60; ++step) {
      const double before = chisq, damping = alamda;
      const std::vector<double> from = a;
      ASSERT_TRUE(kernel.mrqmin(a, ia, covar, alpha, chisq, alamda));
      // The model holds the trial, whatever became of it.
      const double trial = sumAt(model.CoefficientValues);
      if (chisq == before) {
        ++rejections;
        EXPECT_GE(trial, before * (1 - 1e-13));
        EXPECT_EQ(a, from);
        EXPECT_EQ(alamda, damping * 10);
      } else {
        ++gains;
        EXPECT_EQ(a, model.CoefficientValues);
        EXPECT_NEAR(chisq, trial, 1e-12 * trial);
        EXPECT_EQ(alamda, damping * 0.1);
      }
      // At a minimum rounding decides.
      if (chisq < before && before - chisq < 1e-12 * chisq) break;
      if (alamda > 1e10) break;
    }
  }
  EXPECT_GT(rejections, 100);
  EXPECT_GT(gains, 100);
}

}  // namespace
}  // namespace quorvex
