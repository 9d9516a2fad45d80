#include <gtest/gtest.h>

#include "engine/InterpClass.h"
#include "engine/Points.h"

namespace quorvex {
namespace {

InterpClass Fitted(int kind, const SolveData& data) {
  InterpClass curve(kind);
  std::string log;
  EXPECT_TRUE(curve.Fit(data, log)) << log;
  return curve;
}

double At(const InterpClass& curve, double x) {
  double y = std::nan("");
  std::string why;
  EXPECT_TRUE(curve.Evaluate(x, y, why)) << x << ": " << why;
  return y;
}

// The linear system of a natural spline, solved by mpmath at 50 digits.
TEST(InterpClass, SplineAgreesWithTheExactNaturalSpline) {
  const InterpClass curve = Fitted(kCubicSpline, Points({{0, 1, 2.5, 3, 5}}, {1, 2.5, 0, -1, 4}));
  constexpr double kSecond[] = {0, -3.88571428571428571, 0.285714285714285714, 5.37142857142857143, 0};
  for (std::size_t i = 1; i <= 5; ++i) EXPECT_NEAR(curve.InputY2(i), kSecond[i - 1], 1e-14);
  constexpr std::pair<double, double> kCases[] = {{0, 1},
                                                  {0.3, 1.6268},
                                                  {1, 2.5},
                                                  {1.7, 1.85031111111111111},
                                                  {2.6, -0.2464},
                                                  {4.1, 0.464885714285714286},
                                                  {4.999, 3.99570952425714286},
                                                  {5, 4}};
  for (const auto& [x, y] : kCases) EXPECT_NEAR(At(curve, x), y, 4e-15) << x;
}

TEST(InterpClass, PolynomialReproducesAPolynomial) {
  const auto cubic = [](double x) { return ((0.5 * x - 2) * x + 1) * x - 3; };
  std::vector<double> x = {-2, -1.5, 0, 0.25, 1, 3, 4}, y;
  for (const double v : x) y.push_back(cubic(v));
  const InterpClass curve = Fitted(kPolynomial, Points({x}, y));
  for (double v = -2; v <= 4; v += 0.125) EXPECT_NEAR(At(curve, v), cubic(v), 1e-12) << v;
}

TEST(InterpClass, RationalReproducesARationalAndItsNodes) {
  // Of full degree for seven points; one of less would end the scheme in 0/0, which counts as a failure.
  const auto quotient = [](double x) { return (1 + x * (2 + x * (-1 + x / 2))) / (5 + x * x * (1 + x / 20)); };
  std::vector<double> x = {-2, -1, 0.5, 1, 2, 3, 4.5}, y;
  for (const double v : x) y.push_back(quotient(v));
  const InterpClass curve = Fitted(kRationalFunction, Points({x}, y));
  for (double v = -2; v <= 4.5; v += 0.13) EXPECT_NEAR(At(curve, v), quotient(v), 1e-12) << v;
  for (std::size_t i = 0; i < x.size(); ++i) EXPECT_EQ(At(curve, x[i]), y[i]);
}

TEST(InterpClass, TellsTheLogWhatCameOfIt) {
  std::vector<double> ten, eleven;
  for (int i = 0; i < 11; ++i) eleven.push_back(i);
  ten.assign(eleven.begin(), eleven.end() - 1);
  const std::string averaged = "Duplicate points detected, points averaged. \r\n";
  const std::string fewForSplines = "Need at least 3 points for Cubic Splines.\r\n";
  const std::string fewForRational = "Need at least 2 points for Rational Function Interpolation.\r\n";
  const struct {
    int kind;
    std::string name;
    std::vector<double> x;
    bool solved;
    std::string told = "";
  } kCases[] = {
      {kCubicSpline, "Cubic Splines", {1, 2}, false, fewForSplines},
      {kCubicSpline, "Cubic Splines", {1, 2, 2}, false, averaged + fewForSplines},
      {kCubicSpline, "Cubic Splines", eleven, true},
      {kPolynomial, "Polynomial", {1, 2, 2}, true, averaged},
      {kPolynomial, "Polynomial", ten, true},
      {kPolynomial, "Polynomial", eleven, false, "Number of points exceeds maximum of 10.\r\n"},
      {kRationalFunction, "Rational Function", {1}, false, fewForRational},
      {kRationalFunction, "Rational Function", ten, true},
  };
  for (const auto& c : kCases) {
    InterpClass curve(c.kind);
    std::string log;
    EXPECT_EQ(curve.Fit(Points({c.x}, c.x), log), c.solved);
    EXPECT_EQ(curve.Solved, c.solved);
    const std::string end = c.solved ? " Interpolation Successful" : " Interpolation Failed.";
    EXPECT_EQ(log, "Beginning " + c.name + " Interpolation \r\n" + c.told + (c.solved ? "" : "Solution for ") + c.name +
                       end + "\r\n\r\n");
  }
  InterpClass unknown(7);
  std::string log;
  EXPECT_TRUE(unknown.Fit(Points({{1, 1}}, {1, 1}), log) && unknown.Solved && log.empty());
}

TEST(InterpClass, FaultsOfAnOverflowAreLoggedByKind) {
  InterpClass curve(kCubicSpline);
  std::string log;
  EXPECT_FALSE(curve.Fit(Points({{0, 1, 2}}, {1e308, -1e308, 1e308}), log));
  EXPECT_EQ(log,
            "Beginning Cubic Splines Interpolation \r\n"
            "Solution for Cubic Spline Interpolation failed: Numberical Error\r\n");
}

TEST(InterpClass, MergesRunsOfEqualXToTheirMean) {
  const InterpClass curve = Fitted(kPolynomial, Points({{1, 2, 2, 2, 4}}, {5, 1, 2, 6, -1}));
  EXPECT_EQ(curve.CopyInterpolationTableTo(), (InterpolationTable{{1, 2, 4}, {5, 3, -1}, {0, 0, 0}}));
  EXPECT_EQ(curve.InputYMax, 5);
  EXPECT_EQ(curve.InputYMin, -1);
}

TEST(InterpClass, HasNoValueOutsideItsInput) {
  const InterpClass curve = Fitted(kCubicSpline, Points({{1, 2, 4}}, {1, 0, 3}));
  EXPECT_EQ(At(curve, 4), 3);
  for (const double x : {0.999, 4.001, std::nan("")}) {
    double y = 0;
    std::string why;
    EXPECT_FALSE(curve.Evaluate(x, y, why));
    EXPECT_EQ(why, "Data lies outside of the valid range");
  }
}

TEST(InterpClass, SaysWhereItCannotBeEvaluated) {
  // One series with a pole of the rational function at 1: (x + 1)/(x - 1).
  const InterpClass pole = Fitted(kRationalFunction, Points({{0, 2, 3}}, {-1, 3, 2}));
  InterpClass tooLong(kPolynomial);  // as a file may give it
  std::vector<double> x;
  for (int i = 0; i < 11; ++i) x.push_back(i);
  tooLong.CopyInterpolationTableFrom({x, x, x});
  tooLong.InputXMax = 10;
  InterpClass empty(kCubicSpline);
  for (const InterpClass* curve :
       {&pole, static_cast<const InterpClass*>(&tooLong), static_cast<const InterpClass*>(&empty)}) {
    double y = 0;
    std::string why;
    EXPECT_FALSE(curve->Evaluate(curve == &pole ? 1.0 : 0.0, y, why));
    EXPECT_EQ(why, "Error evaluating the function");
  }
}

TEST(InterpClass, TabulatesItsInputOrARange) {
  InterpClass curve = Fitted(kCubicSpline, Points({{1, 2, 4}}, {1, 0, 3}));
  ASSERT_TRUE(curve.GenerateTable({}));
  ASSERT_EQ(curve.NumTablePoints(), 3u);
  EXPECT_EQ(curve.XTableData(2), 2);
  EXPECT_EQ(curve.YTableData(2), 0);
  ASSERT_TRUE(curve.GenerateTable({.Min = -5, .Max = 3, .NumPoints = 5}));  // cut to 1 and 3
  ASSERT_EQ(curve.NumTablePoints(), 5u);
  EXPECT_EQ(curve.XTableData(1), 1);
  EXPECT_EQ(curve.XTableData(5), 3);
  ASSERT_TRUE(curve.GenerateTable({.Min = 0, .Max = 4, .NumPoints = 5}, true));  // 0 has no value
  ASSERT_EQ(curve.NumTablePoints(), 4u);
  EXPECT_EQ(curve.XTableData(1), 1);
  std::string log;
  ASSERT_TRUE(curve.Fit(Points({{1, 2, 4}}, {1, 0, 4}), log));  // another curve has no table yet
  EXPECT_EQ(curve.NumTablePoints(), 0u);
  ASSERT_TRUE(curve.GenerateTable({}));
  EXPECT_FALSE(curve.GenerateTable({.Min = 1, .Max = 4, .NumPoints = 1}));
  EXPECT_EQ(curve.NumTablePoints(), 0u);
}

}  // namespace
}  // namespace quorvex
