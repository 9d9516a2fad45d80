#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <functional>
#include <sstream>

#include "NistSets.h"
#include "Paths.h"
#include "engine/ModelShape.h"
#include "engine/Points.h"
#include "engine/SeededRandom.h"
#include "engine/TryHarder.h"
#include "engine/UserModel.h"

namespace quorvex {
namespace {

struct Harder {
  Harder(const std::string& line, std::vector<double> start, std::size_t variables = 1)
      : Model(NewModelFor(variables, LocaleText())), Start(std::move(start)) {
    Model->SetID("test", {line});
    EXPECT_TRUE(Model->IsValidEquation()) << line;
    Start.resize(static_cast<std::size_t>(Model->NumDependentVar()), 1.0);
    for (std::size_t i = 0; i < Start.size(); ++i) {
      Model->SetValue(static_cast<int>(i) + 1, Start[i]);
      Model->ICRanges[i] = {Start[i], Start[i], 1};
    }
    Model->SpecifyICComplete = true;
    Preferences.TryHarder = true;
  }
  bool Fit(const SolveData& data, SolveForm&& form = {}) { return Model->Fit(data, Preferences, Log, form); }

  std::unique_ptr<ModelClass> Model;
  std::vector<double> Start;
  Settings Preferences;
  std::string Log;
};

SolveData Table(const std::string& name, std::size_t variables) {
  std::ifstream file(TestData(name));
  EXPECT_TRUE(file) << name;
  SolveData data = Points(std::vector<std::vector<double>>(variables), {});
  for (std::string line; std::getline(file, line);) {
    std::istringstream row(line);
    std::vector<double> numbers;
    for (double number; row >> number;) numbers.push_back(number);
    if (numbers.size() <= variables) continue;
    for (std::size_t v = 0; v < variables; ++v) data.X[v].push_back(numbers[v]);
    data.Y.push_back(numbers[variables]);
  }
  data.SD = data.sig = std::vector<double>(data.Y.size(), 1.0);
  return data;
}

SolveData Curve(std::size_t n, double first, double last, const std::function<double(double)>& f) {
  std::vector<double> x, y;
  for (std::size_t i = 0; i < n; ++i) {
    x.push_back(first + (last - first) * static_cast<double>(i) / static_cast<double>(n - 1));
    y.push_back(f(x.back()));
  }
  return Points({x}, y);
}

// NIST StRD: from both of its starts and from ones, within the default limit of iterations.
TEST(TryHarder, ReachesTheCertifiedValuesOfAllNonlinearSets) {
  for (NistSet& set : NistSets("nonlinear")) {
    const auto variables = static_cast<std::size_t>(Number(set["n_indep"]));
    const SolveData data = Table("nist/" + set["file"], variables);
    const std::vector<std::string> names = Split(set["coef_names"], ' ');
    const std::vector<double> certified = Numbers(set["certified"]);
    for (const std::string start : {"start1", "start2", "ones"}) {
      SCOPED_TRACE(set["name"] + " " + start);
      Harder harder(set["model"], {}, variables);
      if (start != "ones")
        for (std::size_t k = 0; k < names.size(); ++k)
          for (int i = 1; i <= harder.Model->NumDependentVar(); ++i)
            if (harder.Model->Variables(i) == names[k]) harder.Model->SetValue(i, Numbers(set[start])[k]);
      ASSERT_TRUE(harder.Fit(data)) << harder.Log;
      EXPECT_NEAR(harder.Model->RSS / Number(set["certified_rss"]), 1, 1e-8);
      if (start == "ones") continue;  // where terms of equal form may have changed places
      for (std::size_t k = 0; k < names.size(); ++k)
        for (int i = 1; i <= harder.Model->NumDependentVar(); ++i) {
          if (harder.Model->Variables(i) != names[k]) continue;
          EXPECT_GT(CorrectDigits(harder.Model->Values(i), certified[k], 11), 4.8) << names[k];
        }
    }
  }
}

// The data-fitting problems of J. J. More, B. S. Garbow & K. E. Hillstrom, ACM TOMS 7 (1981), with the minima given
// there to six digits, from their starts times 1, 10 and 100.
TEST(TryHarder, FindsThePublishedMinimaFromFarStarts) {
  const auto counted = [](int n, const std::function<double(double)>& x, const std::function<double(double)>& y) {
    SolveData data = Points({{}}, {});
    for (int i = 1; i <= n; ++i) data.X[0].push_back(x(i)), data.Y.push_back(y(i));
    data.SD = data.sig = std::vector<double>(data.Y.size(), 1.0);
    return data;
  };
  std::vector<double> tenths;
  for (int i = 0; i < 65; ++i) tenths.push_back(i / 10.0);
  std::vector<std::vector<double>> bard(3);
  for (int i = 1; i <= 15; ++i) {
    bard[0].push_back(i);
    bard[1].push_back(16 - i);
    bard[2].push_back(std::min(i, 16 - i));
  }
  const struct {
    const char* Name;
    const char* Model;
    std::vector<double> Start;
    SolveData Data;
    double Minimum;
    double Furthest = 100;  // of the factors
  } problems[] = {
      {"Bard",
       "a+x1/(x2*b+x3*c)",
       {1, 1, 1},
       Points(bard, {.14, .18, .22, .25, .29, .32, .35, .39, .37, .58, .73, .96, 1.34, 2.10, 4.39}),
       8.21487e-3},
      {"Kowalik and Osborne",
       "a*(x^2+x*b)/(x^2+x*c+d)",
       {.25, .39, .415, .39},
       Points({{4, 2, 1, .5, .25, .167, .125, .1, .0833, .0714, .0625}},
              {.1957, .1947, .1735, .1600, .0844, .0627, .0456, .0342, .0323, .0235, .0246}),
       3.07505e-4},
      {"Meyer",
       "a*exp(b/(x+c))",
       {.02, 4000, 250},
       Points({{50, 55, 60, 65, 70, 75, 80, 85, 90, 95, 100, 105, 110, 115, 120, 125}},
              {34780, 28610, 23650, 19630, 16370, 13720, 11540, 9744, 8261, 7030, 6005, 5147, 4427, 3820, 3307, 2872}),
       87.9458},
      {"Osborne 1", "a+b*exp(-x*d)+c*exp(-x*g)", {.5, 1.5, -1, .01, .02}, Table("nist/MGH17.txt", 1), 5.46489e-5},
      {"Osborne 2",
       "a*exp(-x*f)+b*exp(-(x-p)^2*g)+c*exp(-(x-q)^2*h)+d*exp(-(x-r)^2*k)",
       {1.3, .65, .65, .7, .6, 3, 5, 7, 2, 4.5, 5.5},
       Points({tenths},
              {1.366, 1.191, 1.112, 1.013, .991, .885, .831, .847, .786, .725, .746, .679, .608, .655, .616, .606, .602,
               .626,  .651,  .724,  .649,  .649, .694, .644, .624, .661, .612, .558, .533, .495, .500, .423, .395, .375,
               .372,  .391,  .396,  .405,  .428, .429, .523, .562, .607, .653, .672, .708, .633, .668, .645, .632, .591,
               .559,  .597,  .625,  .739,  .710, .729, .720, .636, .581, .428, .292, .162, .098, .054}),
       4.01377e-2,
       1},
      {"Jennrich and Sampson",
       "exp(x*a)+exp(x*b)",
       {.3, .4},
       counted(
           10, [](double i) { return i; }, [](double i) { return 2 + 2 * i; }),
       124.362},
      {"Biggs EXP6",
       "c*exp(-x*a)-d*exp(-x*b)+g*exp(-x*f)",
       {1, 2, 1, 1, 1, 1},
       counted(
           13, [](double i) { return .1 * i; },
           [](double i) { return std::exp(-.1 * i) - 5 * std::exp(-i) + 3 * std::exp(-.4 * i); }),
       0},
      {"Brown and Dennis",
       "(a+x*b-exp(x))^2+(c+d*sin(x)-cos(x))^2",
       {25, 5, -5, -1},
       counted(
           20, [](double i) { return i / 5; }, [](double) { return 0; }),
       85822.2},
      {"Gulf research",
       "exp(-abs(x-b)^c/a)",
       {5, 2.5, .15},
       counted(
           99, [](double i) { return 25 + std::pow(-50 * std::log(i / 100), 2. / 3); },
           [](double i) { return i / 100; }),
       0},
      {"Gaussian",
       "a*exp(-b*(x-c)^2/2)",
       {.4, 1, 0},
       counted(
           15, [](double i) { return (8 - i) / 2; },
           [](double i) {
             constexpr double kHalf[] = {.3989, .3521, .2420, .1295, .0540, .0175, .0044, .0009};
             return kHalf[static_cast<std::size_t>(std::abs(i - 8))];
           }),
       1.12793e-8},
  };
  for (const auto& problem : problems)
    for (double factor = 1; factor <= problem.Furthest; factor *= 10) {
      std::vector<double> start = problem.Start;
      for (double& value : start) value *= factor;
      Harder harder(problem.Model, start, problem.Data.X.size());
      ASSERT_TRUE(harder.Fit(problem.Data)) << problem.Name << " " << factor << "\n" << harder.Log;
      EXPECT_LE(harder.Model->RSS, problem.Minimum * (1 + 1e-5) + 1e-15) << problem.Name << " " << factor;
    }
}

// From ones, and whatever the units of X and Y.
TEST(TryHarder, ReadsStartsOffTheData) {
  for (const double unit : {1.0, 1e-9, 1e9}) {
    const struct {
      const char* Model;
      SolveData Data;
    } cases[] = {
        {"a*exp(-b*x)+c", Curve(30, 0, 5 * unit, [&](double x) { return (7 * std::exp(-1.7 * x / unit) + 2) / unit; })},
        {"a*exp(-((x-b)/c)^2)", Curve(131, 1050 * unit, 1180 * unit,
                                      [&](double x) { return 500 * std::exp(-std::pow((x / unit - 1112) / 7, 2)); })},
        {"a*exp(-b*x)*sin(c*x+d)",
         Curve(100, 0, 3 * unit, [&](double x) { return std::exp(-x / unit) * std::sin(31 * x / unit + 1); })},
        {"a/(1+exp(b-c*x))",
         Curve(40, 1900 * unit, 2000 * unit, [&](double x) { return 8 / (1 + std::exp(195 - .1 * x / unit)); })},
        {"1/(a+b*x+c*x^2)",
         Curve(40, 0, 4 * unit, [&](double x) { return unit / (1 - .1 * x / unit + .3 * std::pow(x / unit, 2)); })},
    };
    for (const auto& c : cases) {
      Harder harder(c.Model, {});
      ASSERT_TRUE(harder.Fit(c.Data)) << c.Model << " " << unit << "\n" << harder.Log;
      EXPECT_GT(harder.Model->R2, 1 - 1e-12) << c.Model << " " << unit;
    }
  }
  // The two strongest lines of a measured spectrum, over the background. R2 of the same model from starts by hand.
  SolveData spectrum = Table("gamma_spectrum.txt", 1);
  Harder lines("a*exp(-((x-b)/c)^2)+d*exp(-((x-f)/g)^2)+h*exp(-k*x)", {});
  ASSERT_TRUE(lines.Fit(spectrum)) << lines.Log;
  EXPECT_LT(lines.Model->RSS, 155670);
  EXPECT_EQ(lines.Model->FoundBy, "starts suggested by the data");
  EXPECT_EQ(lines.Model->Failure, "");
  EXPECT_NE(lines.Log.find("Found by: starts suggested by the data\r\n"), std::string::npos);
}

TEST(TryHarder, GivesTheSameBitsOnEachRunAndLeavesTheUsersStartsAlone) {
  const SolveData data = Table("nist/Gauss1.txt", 1);
  const std::string line = "b1*exp(-b2*x)+b3*exp(-(x-b4)^2/b5^2)+b6*exp(-(x-b7)^2/b8^2)";
  Harder one(line, {}), other(line, {});
  ASSERT_TRUE(one.Fit(data) && other.Fit(data));
  EXPECT_EQ(one.Model->CoefficientValues, other.Model->CoefficientValues);
  EXPECT_EQ(one.Log, other.Log);
  EXPECT_EQ(one.Model->ICRanges, std::vector<ICRange>(8));
}

TEST(TryHarder, KeepsWhatTheOrdinarySearchFoundWhereNothingIsBetter) {
  const SolveData data = Table("nist/Misra1a.txt", 1);
  Harder off("b1*(1-exp(-b2*x))", {250, 5e-4}), on("b1*(1-exp(-b2*x))", {250, 5e-4});
  off.Preferences.TryHarder = false;
  ASSERT_TRUE(off.Fit(data) && on.Fit(data));
  EXPECT_EQ(on.Model->CoefficientValues, off.Model->CoefficientValues);
  EXPECT_EQ(on.Model->Variances, off.Model->Variances);
  EXPECT_EQ(on.Model->NumIterations, off.Model->NumIterations);
  EXPECT_EQ(on.Model->FoundBy, "");
  EXPECT_TRUE(on.Log.starts_with(off.Log));
}

TEST(TryHarder, LeavesAWorseMinimumForABetterOne) {
  const SolveData data = Curve(60, 0, 1, [](double x) { return 2 * std::sin(40 * x + 1) + .5; });
  Harder off("a*sin(b*x+c)+d", {1, 20, 0, 0}), on("a*sin(b*x+c)+d", {1, 20, 0, 0});
  off.Preferences.TryHarder = false;
  ASSERT_TRUE(off.Fit(data));
  EXPECT_LT(off.Model->R2, .5);
  ASSERT_TRUE(on.Fit(data));
  EXPECT_GT(on.Model->R2, 1 - 1e-12);
  EXPECT_FALSE(on.Model->FoundBy.empty());
}

TEST(TryHarder, FailsAsBeforeWhereThereIsNothingToFind) {
  const SolveData data = Curve(20, -10, -1, [](double x) { return x; });
  Harder off("a*ln(x)+b*sqr(x)", {}), on("a*ln(x)+b*sqr(x)", {});
  off.Preferences.TryHarder = false;
  EXPECT_FALSE(off.Fit(data));
  EXPECT_FALSE(on.Fit(data));
  EXPECT_FALSE(on.Model->Solved);
  EXPECT_EQ(on.Model->CoefficientValues, off.Model->CoefficientValues);
  EXPECT_EQ(on.Model->Failure, off.Model->Failure);
  EXPECT_TRUE(on.Log.starts_with(off.Log));
  EXPECT_TRUE(on.Log.ends_with("Trying harder found no solution.\r\n\r\n")) << on.Log;
}

// A form that raises a flag once it has been asked so often.
struct Impatient : SolveForm {
  Impatient(int abortAt, int pauseAt) : AbortAt(abortAt), PauseAt(pauseAt) {}
  void Pulse() override {
    Aborted |= ++Pulses == AbortAt;
    Paused |= Pulses == PauseAt;
  }
  int Pulses = 0, AbortAt, PauseAt;
};

TEST(TryHarder, EndsAtOnceWhereItIsAbortedAndTakesTheBestWhereItIsPaused) {
  const SolveData data = Curve(131, 1050, 1180, [](double x) { return 500 * std::exp(-std::pow((x - 1112) / 7, 2)); });
  Settings settings;
  settings.TryHarder = true;
  std::string log;
  for (const int at : {1, 5, 50, 300, 1500, 2500}) {
    Impatient form(at, 0);
    Harder harder("a*exp(-((x-b)/c)^2)", {});
    EXPECT_FALSE(harder.Model->Fit(data, settings, log, form));
    EXPECT_FALSE(harder.Model->Solved);
    EXPECT_EQ(form.Pulses, at);  // nothing was computed after that
  }
  // Where the ordinary search has failed and nothing is found yet, and behind a noisy first answer.
  const SolveData noisy = Curve(60, 0, 1, [](double x) { return 2 * std::sin(40 * x + 1) + .3 * std::sin(1e4 * x); });
  Impatient pause(0, 2000);
  Harder sine("a*sin(b*x+c)+d", {1, 20, 0, 0});
  EXPECT_TRUE(sine.Model->Fit(noisy, settings, log, pause)) << log;
}

TEST(FindRoles, ReadsUnitsAndPlacesOffTheFormula) {
  const struct {
    const char* Model;
    const char* Roles;  // of each coefficient
  } cases[] = {
      {"a*exp(-b*x)+c", "linear x^-1 linear"},
      {"a*exp(-((x-b)/c)^2)", "linear place x^1"},
      {"a/(1+exp(b-c*x))", "linear x^0,follows x^-1"},
      {"a*exp(-b*exp(-c*x))", "linear x^0,grows x^-1"},
      {"a*x^b", "linear x^0"},
      {"(a+b*x)/(1+c*x+d*x^2)", "linear linear x^-1 x^-2"},
      {"1/(a+b*x+c*x^2)", "x^0*y^-1 x^-1*y^-1 x^-2*y^-1"},
  };
  for (const auto& c : cases) {
    const std::unique_ptr<ModelClass> model = NewModelFor(1, LocaleText());
    model->SetID(c.Model, {c.Model});
    SeededRandom random(1);
    SolveForm form;
    std::string roles;
    const auto found = FindRoles(*model, Curve(10, 0, 1e9, [](double x) { return x; }), random, form);
    const bool anyLinear = std::ranges::any_of(found, &CoefficientRole::Linear);
    for (const CoefficientRole& role : found) {
      if (!roles.empty()) roles += " ";
      if (role.Linear)
        roles += "linear";
      else if (!role.UnitKnown)
        roles += "unknown";
      else if (role.PlaceOf == 0)
        roles += "place";
      else
        roles += "x^" + std::to_string(static_cast<int>(role.XPower[0])) +
                 (anyLinear ? "" : "*y^" + std::to_string(static_cast<int>(role.YPower)));
      if (role.FollowsWith >= 0) roles += role.Grows ? ",grows" : ",follows";
    }
    EXPECT_EQ(roles, c.Roles) << c.Model;
  }
}

}  // namespace
}  // namespace quorvex
