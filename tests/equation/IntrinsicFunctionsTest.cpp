#include <gtest/gtest.h>

#include <limits>
#include <sstream>

#include "equation/Checked.h"

namespace quorvex {
namespace {

constexpr double kPi = 3.14159265358979;

TEST(IntrinsicFunctions, HaveTheirWordsCodesAndArgumentCounts) {
  constexpr struct {
    int first;
    const char* words;
    int arguments;
  } kRuns[] = {
      {1, "abs exp fix int fract log ln log10 rnd sgn sqr cos sin tan arcsin arccos arctan sec cosec cotan", 1},
      {21, "arcsec arccosec arccotan hsin hcos htan hsec hcosec hcotan harcsin harccos harctan harcsec", 1},
      {34, "harccosec harccotan rtod dtor erf erfc fact factln gamma gammaln psi", 1},
      {45, "if", 3},
      {46, "endtrue endif", 0},
      {48, "igamma igammac beta poisson student chi2 chi2c jn yn in kn jnu ynu djnu dynu inu knu dinu dknu", 2},
      {67, "sphjn sphyn dsphjn dsphyn max min mag", 2},
      {74, "legendre binomial ibeta fdist", 3},
      {78, "j0 j1 y0 y1 i0 i1 k0 k1 airya airyb dairya dairyb floor ceil", 1}};
  int seen = 0;
  for (const auto& run : kRuns) {
    std::istringstream words(run.words);
    int code = run.first;
    for (std::string word; words >> word; ++seen, ++code) {
      const IntrinsicFunction* function = FindFunction(word);
      ASSERT_NE(function, nullptr) << word;
      EXPECT_EQ(function->Code, code) << word;
      EXPECT_EQ(function->Arguments, run.arguments) << word;
    }
  }
  EXPECT_EQ(seen, 91);
}

TEST(IntrinsicFunctions, AreWrittenByUsersWithThreeExceptions) {
  for (const auto& function : IntrinsicFunctions()) {
    const bool compilerOnly = function.Name == "endtrue" || function.Name == "endif";
    EXPECT_EQ(IsFunctionName(function.Name, false), !compilerOnly) << function.Name;
    EXPECT_EQ(IsFunctionName(function.Name, true), !compilerOnly && function.Name != "erfc") << function.Name;
  }
  for (const char* word : {"", "x", "a", "Sin", "sinh", "atan", "pi"}) {
    EXPECT_EQ(FindFunction(word), nullptr) << word;
    EXPECT_FALSE(IsFunctionName(word, false)) << word;
  }
}

TEST(CallFunction, KeepsItsHyperbolicFunctionsWithinDoubles) {
  for (const char* word : {"hsin", "hcos", "htan", "hsec", "hcosec", "hcotan"})
    for (double sign : {1, -1}) EXPECT_EQ(Value(word, {sign * 800}), Value(word, {sign * 707})) << word;
}

TEST(CallFunction, EndsWithAFiniteValueOrAFaultWhateverTheArguments) {
  const double inf = std::numeric_limits<double>::infinity();
  const std::vector<double> kArguments = {-inf, -1e300, -32769, -707, -2,    -1,  -0.5, -1e-300, -0.0,
                                          0,    5e-324, 1e-155, 0.25, 0.5,   1,   2,    3,       7.5,
                                          100,  710,    5e4,    1e9,  1e300, inf, NAN};
  const std::size_t count = kArguments.size();
  for (const auto& function : IntrinsicFunctions()) {
    if (!function.Call) continue;
    const std::size_t combinations = std::size_t(std::pow(count, function.Arguments));
    for (std::size_t combination = 0; combination < combinations; ++combination) {
      const double args[] = {kArguments[combination % count], kArguments[combination / count % count],
                             kArguments[combination / count / count]};
      const auto value = Checked(function, args);
      const bool finite = std::all_of(args, args + function.Arguments, [](double a) { return std::isfinite(a); });
      EXPECT_TRUE(!value || !finite || std::isfinite(*value))
          << function.Name << " " << args[0] << " " << args[1] << " " << args[2];
    }
  }
}

TEST(RandomState, FollowsItsSeedControl) {
  RandomState a, b;
  const double first = a.Draw(-3.5);
  EXPECT_EQ(a.Draw(0), first);
  const double second = a.Draw(1);
  EXPECT_NE(second, first);
  EXPECT_EQ(a.Draw(0), second);
  EXPECT_EQ(b.Draw(-3.5), first);
  EXPECT_EQ(b.Draw(2), second);
  EXPECT_NE(b.Draw(-4), first);
}

TEST(RandomState, DrawsEvenlyFromTheUnitInterval) {
  RandomState random;
  constexpr int kDraws = 100000;
  double sum = 0, sumOfSquares = 0, ofNeighbours = 0, last = 0.5;
  std::vector<int> cells(10);
  for (int i = 0; i < kDraws; ++i) {
    const double value = random.Draw(1);
    ASSERT_GE(value, 0);
    ASSERT_LT(value, 1);
    sum += value;
    sumOfSquares += value * value;
    ofNeighbours += (value - 0.5) * (last - 0.5);
    last = value;
    ++cells[std::size_t(value * 10)];
  }
  // Five standard deviations of each sum over independent, evenly spread numbers.
  const double root = std::sqrt(kDraws);
  EXPECT_NEAR(sum, kDraws / 2.0, 5 * root * std::sqrt(1.0 / 12));
  EXPECT_NEAR(sumOfSquares, kDraws / 3.0, 5 * root * std::sqrt(4.0 / 45));
  EXPECT_NEAR(ofNeighbours, 0, 5 * root / 12);
  for (int cell : cells) EXPECT_NEAR(cell, kDraws / 10, 5 * root * 0.3);
}

TEST(Atn2, TakesTheAngleFromTheSigns) {
  constexpr struct {
    double X, Y, angle;
  } kRows[] = {{1, 0, 0},    {1, 1, kPi / 4},   {0, 1, kPi / 2},        {-1, 1, 3 * kPi / 4},
               {-1, 0, kPi}, {0, -1, -kPi / 2}, {-1, -1, -3 * kPi / 4}, {1, -1, -kPi / 4},
               {0, 0, 0}};
  for (const auto& row : kRows) EXPECT_NEAR(Atn2(row.X, row.Y), row.angle, 4e-15) << row.X << " " << row.Y;
}

}  // namespace
}  // namespace quorvex
