#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "engine/Points.h"
#include "engine/RobustFit.h"
#include "engine/RobustLoss.h"
#include "engine/UserModel.h"
#include "sheet/ComputeWeights.h"

namespace quorvex {
namespace {

using enum LossKind;
using Rows = std::vector<std::size_t>;

struct Robust {
  Robust(const std::string& line, LossKind loss, double scale = 0, bool linear = false, std::size_t variables = 1)
      : Model(NewModelFor(variables, LocaleText())) {
    Model->SetID(line, {line});
    Model->UserType = !linear;
    Model->SolveType = linear ? 1 : 0;
    Preferences.Loss = loss;
    Preferences.LossScale = scale;
  }
  bool Fit(const SolveData& data, SolveForm&& form = {}) { return Model->Fit(data, Preferences, Log, form); }
  bool Logged(const std::string& text) const { return Log.find(text) != std::string::npos; }

  std::unique_ptr<ModelClass> Model;
  Settings Preferences;
  std::string Log;
};

// Oxidation of ammonia: K. A. Brownlee, Statistical Theory and Methodology, 1960.
const SolveData kStackLoss =
    Points({{80, 80, 75, 62, 62, 62, 62, 62, 58, 58, 58, 58, 58, 58, 50, 50, 50, 50, 50, 56, 70},
            {27, 27, 25, 24, 22, 23, 24, 24, 23, 18, 18, 17, 18, 19, 18, 18, 19, 19, 20, 20, 20},
            {89, 88, 90, 87, 87, 87, 93, 93, 87, 80, 89, 88, 82, 93, 89, 86, 72, 79, 80, 82, 91}},
           {42, 37, 37, 28, 18, 18, 19, 20, 15, 14, 14, 13, 11, 12, 8, 7, 8, 8, 9, 15, 15});

// Calls from Belgium, in millions; from 1964 to 1969 minutes were counted in their place: P. J. Rousseeuw & A. M.
// Leroy, Robust Regression and Outlier Detection, 1987.
SolveData Phones(std::vector<double> sd = {}) {
  std::vector<double> years;
  for (int year = 50; year < 74; ++year) years.push_back(year);
  SolveData data = Points({years}, {4.4,  4.7,  4.7, 5.9, 6.6, 7.3, 8.1, 8.8, 10.6, 12.0, 13.5, 14.9,
                                    16.1, 21.2, 119, 124, 142, 159, 182, 212, 43,   24,   27,   29});
  if (!sd.empty()) data.sig = ComputeWeights(data.SD = sd);
  return data;
}

// Treloar, 1974, the velocity of the enzyme in row 11 changed from 207 to 120.
const SolveData kPuromycin = Points({{0.02, 0.02, 0.06, 0.06, 0.11, 0.11, 0.22, 0.22, 0.56, 0.56, 1.1, 1.1}},
                                    {76, 47, 97, 107, 123, 139, 159, 152, 191, 201, 120, 200});

std::vector<double> EverySecondAndThird() {
  std::vector<double> sd;
  for (int i = 0; i < 24; ++i) sd.push_back(i % 3 == 0 ? 1 : i % 3 == 1 ? 2 : 4);
  return sd;
}

struct Case {
  const char* Model;
  bool Linear;
  const SolveData* Data;
  LossKind Loss;
  double Given;
  std::vector<double> Values;
  double Scale, StdErr;
  std::vector<double> Errors;
  Rows Outliers;
};

// Lines and planes: R 4.2, MASS::rlm with acc = 1e-14, that package's or the same psi, the redescending from the answer
// of Huber's, and its summary. The curve: the equations of the estimate, solved with 40 digits by mpmath 1.2; those
// with a given scale agree with scipy 1.10, optimize.least_squares with f_scale = k * scale.
TEST(RobustFit, AgreesWithReferences) {
  const SolveData phones = Phones(), weighted = Phones(EverySecondAndThird());
  const char *plane = "a+b*x1+c*x2+d*x3", *line = "a*x+b", *curve = "a*x/(b+x)";
  // clang-format off
  const std::vector<Case> cases = {
      {plane, false, &kStackLoss, Huber, 0, {-41.026485373295060, 0.829385770253855, 0.926059415548606, -0.127846317965416},
       2.44048904599281, 2.67377809099139, {9.806872294353090, 0.111174962319926, 0.303393403349553, 0.128846345686811}, {21}},
      {plane, false, &kStackLoss, SoftL1, 0, {-40.219977713200649, 0.810213635763623, 0.931601511353396, -0.125977918568240},
       2.45479251264522, 2.93816087411203, {10.776574379812413, 0.122167926190229, 0.333392898306989, 0.141586653337014}, {4, 21}},
      {plane, false, &kStackLoss, Cauchy, 0, {-40.658648041643680, 0.834598565375637, 0.876473936475645, -0.123838492826590},
       2.36462674306395, 2.83285350124672, {10.390328430373504, 0.117789274405416, 0.321443678452487, 0.136512010002443}, {4, 21}},
      {plane, false, &kStackLoss, Bisquare, 0, {-42.285321536491288, 0.927558992802421, 0.650711198390210, -0.112333123035657},
       2.28185331456693, 2.59866850444811, {9.531385661489510, 0.108051926237781, 0.294870724088204, 0.125226899561213}, {4, 21}},
      {line, true, &phones, Huber, 0, {2.03960046572059, -102.52963811809346},
       9.00902830582914, 14.5459404367421, {0.428936382421174, 26.546160807801218}, {15, 16, 17, 18, 19, 20}},
      {line, true, &phones, Bisquare, 0, {1.09804648483075, -52.30251068224010},
       1.65545571377125, 1.50875410826557, {0.0444907314158826, 2.7534575266292709}, {14, 15, 16, 17, 18, 19, 20, 21}},
      {line, false, &phones, Cauchy, 0, {1.12144912658938, -53.57653138391637},
       1.63620877164355, 1.56308915935545, {0.0460929846599764, 2.8526183206669531}, {14, 15, 16, 17, 18, 19, 20, 21}},
      {line, true, &weighted, Huber, 0, {1.67322490485029, -82.78825713049207},
       6.05373875238937, 8.35618947941096, {0.247360587847317, 15.132429033153276}, {15, 16, 17, 18, 19, 20, 22}},
      {line, false, &weighted, Bisquare, 0, {1.02220307863665, -47.94420559819771},
       1.50222715654826, 1.45248943233584, {0.0429967080940268, 2.6303488342842876}, {15, 16, 17, 18, 19, 20, 21}},
      {curve, false, &kPuromycin, Huber, 0, {205.87946302571, 0.060972394998061},
       8.8043614495002, 12.329389896776, {7.7085611916053, 0.0091654537792748}, {1, 11}},
      {curve, false, &kPuromycin, SoftL1, 0, {204.81066097219, 0.059801761032053},
       9.0965853624427, 14.492286867316, {9.0055466696379, 0.010619694722015}, {1, 11}},
      {curve, false, &kPuromycin, Cauchy, 0, {209.30939227651, 0.063667208812914},
       8.8014275228243, 11.724928573779, {7.4328115825827, 0.0089581977511141}, {1, 11}},
      {curve, false, &kPuromycin, Bisquare, 0, {212.51486725973, 0.066460546704348},
       9.4113038372133, 11.189763527635, {7.1935810979286, 0.0087989306808097}, {1, 11}},
      {curve, false, &kPuromycin, Huber, 10, {205.32453170122, 0.060153853466895},
       10, 13.379522584399, {8.329453813068, 0.0098377848192639}, {11}},
      {curve, false, &kPuromycin, SoftL1, 10, {204.21457593257, 0.05919684177457},
       10, 14.655084748861, {9.0777019133862, 0.010660691898771}, {1, 11}},
      {curve, false, &kPuromycin, Cauchy, 10, {208.34117573868, 0.062583951613288},
       10, 12.089549911835, {7.6217449069221, 0.0091189838194086}, {1, 11}},
  };
  // clang-format on
  for (const Case& c : cases) {
    Robust robust(c.Model, c.Loss, c.Given, c.Linear, c.Data->X.size());
    if (c.Model == curve) {
      robust.Model->CoefficientValues = {200, 0.05};
      robust.Model->ICRanges = {{200, 200, 1}, {0.05, 0.05, 1}};
      robust.Model->SpecifyICComplete = true;
    }
    SCOPED_TRACE(c.Model + std::string(" ") + std::string(kLossNames[static_cast<std::size_t>(c.Loss)]));
    ASSERT_TRUE(robust.Fit(*c.Data)) << robust.Log;
    // A search sees no gain below 1e-16 of its merit function, or 1e-8 of a standard error, and rounds that converge
    // slowly let ten of these be.
    const double open = c.Linear ? 1e-9 : 2e-7;
    const auto equal = [&](double value, double reference) { EXPECT_NEAR(value / reference, 1, open); };
    ModelClass& model = *robust.Model;
    for (std::size_t i = 0; i < c.Values.size(); ++i) {
      EXPECT_NEAR(model.CoefficientValues[i], c.Values[i], open * c.Errors[i]);
      equal(model.StandardError(static_cast<int>(i) + 1), c.Errors[i]);
    }
    equal(model.LossScale, c.Scale);
    equal(model.StdErr, c.StdErr);
    EXPECT_EQ(model.Loss, c.Loss);
    EXPECT_EQ(model.Ended, SearchEnd::Converged) << robust.Log;
    EXPECT_EQ(OutlierRows(model, *c.Data), c.Outliers);
    EXPECT_TRUE(robust.Logged(OutlierText(c.Outliers) + "\r\n")) << robust.Log;
    EXPECT_TRUE(model.GetICRange()[0].Steps == 1 && robust.Log.ends_with("Solution Complete\r\n\r\n"));
    // Sums of squares are those of all points, and a later look at the statistics tells the same error.
    const std::vector<double> residuals = model.GenerateResiduals(*c.Data).value();
    double rss = 0;
    for (const double e : residuals) rss += e * e;
    EXPECT_NEAR(model.RSS / rss, 1, 1e-12);
    const double stdErr = model.StdErr;
    EXPECT_TRUE(model.GetGoodnessOfFit(*c.Data, static_cast<int>(c.Values.size())));
    EXPECT_EQ(model.StdErr, stdErr);
  }
}

// By the midpoint rule; kinks lie where two intervals meet.
TEST(RobustLoss, IsAsGoodAsLeastSquaresFrom95PercentOfNormalPoints) {
  for (const LossKind loss : {Huber, SoftL1, Cauchy, Bisquare}) {
    const double h = 1e-4;
    double slope = 0, square = 0;
    for (int i = 0; i < 240000; ++i) {
      const double u = -12 + (i + 0.5) * h;
      const double density = std::exp(-u * u / 2) / std::sqrt(2 * std::numbers::pi), psi = u * LossWeight(loss, u);
      slope += h * density * LossSlope(loss, u);
      square += h * density * psi * psi;
      if (i % 97 == 0) {
        const double d = (u + 1e-6) * LossWeight(loss, u + 1e-6) - (u - 1e-6) * LossWeight(loss, u - 1e-6);
        ASSERT_NEAR(d / 2e-6, LossSlope(loss, u), 1e-8) << u;
      }
    }
    EXPECT_NEAR(slope * slope / square, 0.95, 1e-5) << static_cast<int>(loss);
  }
}

TEST(RobustFit, FollowsTheUnitsOfTheData) {
  for (const LossKind loss : {Huber, SoftL1, Cauchy, Bisquare})
    for (const bool linear : {false, true}) {
      const double near = linear ? 1e-9 : 2e-7;
      Robust plain("a*x+b", loss, 0, linear);
      ASSERT_TRUE(plain.Fit(Phones()));
      for (const double factor : {1e-9, 1e9, linear ? 1e-100 : 0x1p-30, linear ? 1e100 : 0x1p30}) {
        Robust scaled("a*x+b", loss, 0, linear);
        SolveData data = Phones();
        for (double& y : data.Y) y *= factor;
        ASSERT_TRUE(scaled.Fit(data)) << factor << scaled.Log;
        for (std::size_t i = 0; i < 2; ++i)
          EXPECT_NEAR(scaled.Model->CoefficientValues[i] / plain.Model->CoefficientValues[i] / factor, 1, near);
        EXPECT_NEAR(scaled.Model->StdErr / plain.Model->StdErr / factor, 1, near);
        EXPECT_EQ(OutlierRows(*scaled.Model, data), OutlierRows(*plain.Model, Phones()));
      }
    }
}

// More than half of the points on a line, and the others anywhere: the line, whatever the loss, and no errors.
TEST(RobustFit, FindsTheLineThatMoreThanHalfOfThePointsAreOn) {
  for (const LossKind loss : {Huber, SoftL1, Cauchy, Bisquare})
    for (const bool linear : {false, true})
      for (const double wild : {0.0, 7.0, 1e6}) {
        Robust robust("a*x+b", loss, 0, linear);
        SolveData data = Points({{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}}, {5, 7, 9, 11, 13, 15, 17, 19, 21, 23});
        data.Y[2] += wild;
        data.Y[6] -= wild;
        data.Y[8] += 2 * wild;
        SCOPED_TRACE(std::to_string(wild) + robust.Log);
        ASSERT_TRUE(robust.Fit(data)) << robust.Log;
        // A search sees no gain below 1e-16 of the merit function, most of which the wild points make.
        const double near = linear ? 1e-10 : 1e-6;
        EXPECT_NEAR(robust.Model->Values(1), 2, near) << robust.Log;
        EXPECT_NEAR(robust.Model->Values(2), 3, near) << robust.Log;
        EXPECT_LE(robust.Model->StandardError(2), near);
        EXPECT_EQ(OutlierRows(*robust.Model, data), wild == 0 ? Rows() : Rows({3, 7, 9}));
      }
  // Nothing but zeros, and the fewest points that any fit takes.
  Robust zeros("a*x+b", Bisquare, 0, true), few("a*x+b", Huber, 0, true);
  ASSERT_TRUE(zeros.Fit(Points({{1, 2, 3, 4}}, {0, 0, 0, 0})));
  EXPECT_EQ(zeros.Model->LossScale, 0);
  EXPECT_EQ(zeros.Model->StdErr, 0);
  EXPECT_TRUE(few.Fit(Points({{1, 2, 3}}, {1, 2, 4}))) << few.Log;
}

// Every third point is bad, and all on one side: the others tell the line, since their errors of 0.1 balance.
TEST(RobustFit, StandsAThirdOfBadPointsToOneSide) {
  std::vector<double> x, y;
  for (int i = 0; i < 30; ++i) {
    x.push_back(i);
    y.push_back(1 + 2 * i + (i % 2 == 0 ? -0.1 : 0.1) + (i % 3 == 0 ? 30 : 0));
  }
  for (const LossKind loss : {Cauchy, Bisquare})
    for (const bool linear : {false, true}) {
      Robust line("a*x+b", loss, 0, linear);
      ASSERT_TRUE(line.Fit(Points({x}, y))) << line.Log;
      EXPECT_NEAR(line.Model->Values(1), 2, 0.0005);
      EXPECT_NEAR(line.Model->Values(2), 1, 0.005);
    }
}

TEST(RobustFit, TellsAScaleThatIsTooSmall) {
  Robust robust("a*x+b", Bisquare, 1e-8, true);
  EXPECT_FALSE(robust.Fit(Phones())) << robust.Log;
  EXPECT_FALSE(robust.Model->Solved);
  EXPECT_TRUE(robust.Model->Failure.ends_with(": its scale is too small.")) << robust.Model->Failure;
  EXPECT_TRUE(robust.Logged(robust.Model->Failure));
  EXPECT_EQ(robust.Model->Loss, Bisquare);  // which is what failed
}

TEST(RobustFit, GoesOnFromTheBestOfASweepAndOfTryingHarder) {
  Robust plain("a*x/(b+x)", Bisquare), sweep("a*x/(b+x)", Bisquare), harder("a*x/(b+x)", Bisquare);
  for (Robust* robust : {&plain, &sweep, &harder}) {
    robust->Model->CoefficientValues = {200, 0.05};
    robust->Model->ICRanges = {{100, 300, robust == &sweep ? 3 : 1}, {0.05, 0.05, 1}};
    robust->Model->SpecifyICComplete = true;
    robust->Preferences.TryHarder = robust == &harder;
    ASSERT_TRUE(robust->Fit(kPuromycin)) << robust->Log;
    for (std::size_t i = 0; i < 2; ++i)
      EXPECT_NEAR(robust->Model->CoefficientValues[i] / plain.Model->CoefficientValues[i], 1, 1e-7);
  }
  EXPECT_EQ(sweep.Model->SweepCount, 3);
  EXPECT_EQ(sweep.Model->GetSweepInfo().size(), 3u);
  EXPECT_EQ(sweep.Model->GetICRange()[0], (ICRange{100, 300, 3}));
  // Held, a coefficient keeps its value and has no error.
  plain.Model->SetConstant(2, 0);
  plain.Model->SetValue(2, 0.07);
  ASSERT_TRUE(plain.Fit(kPuromycin));
  EXPECT_EQ(plain.Model->Values(2), 0.07);
  EXPECT_EQ(plain.Model->Covariance(2), 0);
  // And without a loss nothing is left of it.
  plain.Preferences.Loss = Squares;
  Robust squares("a*x/(b+x)", Squares);
  plain.Model->SetConstant(2, 1);
  for (Robust* robust : {&plain, &squares}) {
    robust->Model->CoefficientValues = {200, 0.05};
    robust->Model->SpecifyICComplete = true;
    ASSERT_TRUE(robust->Fit(kPuromycin));
  }
  EXPECT_EQ(plain.Model->CoefficientValues, squares.Model->CoefficientValues);
  EXPECT_EQ(plain.Model->StdErr, squares.Model->StdErr);
  EXPECT_EQ(OutlierRows(*plain.Model, kPuromycin), Rows());
}

// Raises a flag at its turn.
struct Impatient : SolveForm {
  Impatient(int abortAt, int pauseAt) : AbortAt(abortAt), PauseAt(pauseAt) {}
  void Yield() override {
    ++Turns;
    Aborted |= Turns == AbortAt;
    Paused |= Turns == PauseAt;
  }
  int AbortAt, PauseAt, Turns = 0;
};

TEST(RobustFit, HearsAbortAndPause) {
  for (const bool linear : {false, true})
    for (const int at : {1, 3, 8, 15}) {
      Robust aborted("a*x+b", Huber, 0, linear), paused("a*x+b", Huber, 0, linear);
      EXPECT_FALSE(aborted.Fit(Phones(), Impatient(at, 0)));
      EXPECT_FALSE(aborted.Model->Solved);
      EXPECT_EQ(aborted.Model->Failure, "");
      EXPECT_TRUE(paused.Fit(Phones(), Impatient(0, at))) << paused.Log;
      EXPECT_EQ(paused.Model->Ended, SearchEnd::Paused);
      EXPECT_EQ(paused.Model->Loss, Huber);
      EXPECT_TRUE(paused.Logged("Iterations stopped by user.")) << paused.Log;
    }
}

TEST(RobustFit, NamesOutliersByTheRowsOfTheUser) {
  SolveData data = kPuromycin;
  for (std::size_t i = 0; i < data.N(); ++i) data.Row.push_back(100 - i);
  Robust robust("a*x/(b+x)", Cauchy, 10);
  robust.Model->CoefficientValues = {200, 0.05};
  robust.Model->SpecifyICComplete = true;
  ASSERT_TRUE(robust.Fit(data));
  EXPECT_TRUE(robust.Logged("Outliers: rows 90, 100\r\n")) << robust.Log;
  Rows many(23);
  for (std::size_t i = 0; i < many.size(); ++i) many[i] = i + 1;
  EXPECT_EQ(OutlierText(many),
            "Outliers: rows 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20 and 3 more");
  EXPECT_EQ(OutlierText({7}), "Outliers: row 7");
  EXPECT_EQ(OutlierText({}), "Outliers: none");
}

}  // namespace
}  // namespace quorvex
