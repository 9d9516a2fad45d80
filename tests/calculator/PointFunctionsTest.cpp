#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "calculator/Curves.h"
#include "calculator/PointFunctions.h"

namespace quorvex {
namespace {

double At(int index, bool arc, double y, AngleUnit unit = AngleUnit::Radians) {
  return ValueOf(*FindPointFunction(index), arc, unit, y);
}

// The C library's functions know nothing of ours. Ten units in the last place are what a few operations lose.
TEST(PointFunctions, AgreeWithTheCLibraryOverTheWholeRange) {
  const struct {
    int Index;
    bool Arc;
    double (*Expected)(double);
    Column Arguments;
  } cases[] = {
      {1, false, std::sin, {-3, 1e-300, 0.5, 100}},
      {2, false, std::cos, {-3, 1e-300, 0.5, 100}},
      {3, false, std::tan, {-3, 1e-300, 0.5, 100}},
      {1, true, std::asin, {-1, -0.5, 1e-300, 0.3, 0.999999, 1}},
      {2, true, std::acos, {-1, -0.999999, -0.5, 1e-300, 0.3, 0.999999, 1}},
      {3, true, std::atan, {-1e300, -1, 1e-300, 2, 1e300}},
      {6, false, std::sinh, {-710, -1, 1e-300, 1e-8, 0.1, 19.9, 20.1, 710}},
      {7, false, std::cosh, {-710, -1, 1e-300, 0.1, 19.9, 20.1, 710}},
      {8, false, std::tanh, {-1e300, -1, 1e-300, 1e-8, 0.1, 19.9, 20.1}},
      {6, true, std::asinh, {-1e300, -1e8, -2, 1e-300, 1e-8, 0.1, 1e9, 1e300}},
      {7, true, std::acosh, {1, 1 + 1e-12, 1.5, 1e7, 1e9, 1e300}},
      {8, true, std::atanh, {-0.999999, 1e-300, 1e-8, 0.1, 0.5, 0.999999}},
      {11, false, std::exp, {-1e300, -1, 1e-300, 1, 709}},
      {13, false, std::sqrt, {0, 1e-300, 2, 1e300}},
      {14, false, std::log, {1e-300, 0.5, 1, 1e300}},
      {15, false, std::log10, {1e-300, 0.5, 1, 1e300}},
      {10, false, [](double y) { return 1 / y; }, {-1e300, 1e-300, 3}},
      {22, false, [](double y) { return 20 * std::log10(y); }, {1e-300, 2, 1e300}},
      {0, false, [](double y) { return -y; }, {-1e300, 1e-300}},
      {5, false, [](double y) { return std::abs(y); }, {-1e300, 1e-300}},
  };
  for (const auto& c : cases)
    for (const double y : c.Arguments) {
      const double expected = c.Expected(y);
      EXPECT_NEAR(At(c.Index, c.Arc, y), expected, 10 * 2.3e-16 * std::abs(expected)) << c.Index << ' ' << y;
    }
}

TEST(PointFunctions, MeasureAnglesInTheirUnit) {
  EXPECT_DOUBLE_EQ(At(1, false, 30, AngleUnit::Degrees), 0.5);
  EXPECT_DOUBLE_EQ(At(2, true, 0.5, AngleUnit::Degrees), 60);
  EXPECT_DOUBLE_EQ(At(3, true, 1, AngleUnit::Degrees), 45);
  EXPECT_DOUBLE_EQ(At(6, false, 1, AngleUnit::Degrees), std::sinh(1));
  EXPECT_EQ(At(11, true, 0), 1) << "Arc has no meaning for exp.";
}

TEST(PointFunctions, TellWhyThereIsNoValue) {
  using enum CalculatorError;
  const struct {
    int Index;
    bool Arc;
    double Y;
    CalculatorError Error;
  } cases[] = {
      {1, true, 1.0000001, InvalidOperation},
      {2, true, -2, InvalidOperation},
      {7, true, 0.999, InvalidOperation},
      {8, true, 1, DivisionByZero},
      {8, true, 2, InvalidOperation},
      {6, false, 711, Overflow},
      {7, false, -711, Overflow},
      {10, false, 0, DivisionByZero},
      {10, false, 1e-310, Overflow},
      {11, false, 710, Overflow},
      {13, false, -1, InvalidOperation},
      {14, false, 0, InvalidOperation},
      {15, false, -1, InvalidOperation},
      {22, false, 0, InvalidOperation},
  };
  for (const auto& c : cases) EXPECT_EQ(ErrorOf([&] { At(c.Index, c.Arc, c.Y); }), c.Error) << c.Index << ' ' << c.Y;
  EXPECT_EQ(RaisedTo(-2, 3), -8);
  EXPECT_EQ(RaisedTo(0, 0), 1);
  EXPECT_EQ(ErrorOf([] { RaisedTo(0, -1); }), DivisionByZero);
  EXPECT_EQ(ErrorOf([] { RaisedTo(-8, 1.0 / 3); }), InvalidPower);
  EXPECT_EQ(ErrorOf([] { RaisedTo(1e300, 2); }), Overflow);
}

}  // namespace
}  // namespace quorvex
