#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "plot/AxisLabels.h"

namespace quorvex {
namespace {

using Labels = std::vector<std::string>;

TEST(BuildAutoLabelFormat, HasDecimalsForTheStep) {
  const struct {
    AxisLimits limits;
    const char* format;
  } kCases[] = {
      {{0, 1, 10}, "0.0"},
      {{-4, 14, 9}, "0.0"},
      {{1e6, 8e6, 7}, "0.0"},
      {{0, 0.4, 8}, "0.00"},
      {{99.5, 100.3, 8}, "0.0"},
      {{0.001, 0.006, 10}, "0.0000"},
      {{2, 2.0000000001, 10}, "0.00000000000"},
      {{3.0871, 4.3834, 3}, "0.00"},          // as a zoom leaves them: 3.09, 3.52, 3.95, 4.38
      {{1.5, 2.0000000000000004, 5}, "0.0"},  // the last bit is no decimal
      {{0, 2e7, 10}, "0.00E+00"},             // numbers of 8 digits in steps of 7
      {{-1e7, 0, 5}, "0.00E+00"},
      {{1e9, 1.00001e9, 10}, "0.0000000E+00"},
      {{9e14, 1e15, 10}, "0.000E+00"},
      {{1e14, 1.000001e14, 10}, "0.00000000E+00"},   // numbers of 15 digits in steps of 8
      {{1e15, 1.0000001e15, 10}, "0.00000000E+00"},  // of 16 in steps of 8: no digit more than the step needs
      {{1e15, 1e15 + 10, 10}, "0.000000000000000E+00"},
      {{9999990, 1e7, 10}, "0.00000000E+00"},  // numbers of 8 digits in steps of 1
      {{0, 5e-8, 5}, "0.0E+00"},
      {{0, 1e-7, 5}, "0.0E+00"},
      {{9e-8, 9.1e-8, 10}, "0.00E+00"},
  };
  for (const auto& c : kCases)
    EXPECT_EQ(BuildAutoLabelFormat(c.limits), c.format) << c.limits.Min << " to " << c.limits.Max;
}

// Limits as a zoom leaves them, at every size.
TEST(BuildAutoLabelFormat, TellsEveryTickToAFiftiethOfAStep) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> exponent(-12, 12), part(-1, 1);
  for (int i = 0; i < 500; ++i) {
    const double size = std::pow(10.0, exponent(random)), at = size * part(random);
    const AxisLimits limits{at, at + size * std::pow(10.0, -3 * std::abs(part(random))), 7};
    std::string format;
    const Labels labels = MakeAxisLabels(limits, format, true);
    const double step = (limits.Max - limits.Min) / limits.Ticks;
    for (std::size_t t = 0; t < labels.size(); ++t)
      ASSERT_NEAR(NumericText(labels[t]).value(), limits.Max - static_cast<double>(t) * step, step / 50 * 1.000001)
          << format << " for " << limits.Min << " to " << limits.Max;
  }
}

TEST(MakeAxisLabels, CountsDownFromTheLargest) {
  const struct {
    AxisLimits limits;
    std::string format;
    bool autoFormat;
    Labels labels;
  } kCases[] = {
      {{0, 1, 4}, "0.00", false, {"1.00", "0.75", "0.50", "0.25", "0.00"}},
      {{-4, 6, 5}, "General", false, {"6", "4", "2", "0", "-2", "-4"}},
      {{-4, 6, 5}, "general", true, {"6.0", "4.0", "2.0", "0.0", "-2.0", "-4.0"}},
      {{1e-2, 1e3, 5, true}, "", true, {"1.0E+03", "1.0E+02", "1.0E+01", "1.0E+00", "1.0E-01", "1.0E-02"}},
      {{1, 100, 2, true}, "0", false, {"100", "10", "1"}},
      {{1, 7, 1}, "0.0 mm", false, {"7.0 mm", "1.0 mm"}},
  };
  for (const auto& c : kCases) {
    std::string format = c.format;
    EXPECT_EQ(MakeAxisLabels(c.limits, format, c.autoFormat), c.labels);
    EXPECT_EQ(format == c.format, !c.autoFormat);
  }
}

// Subtracting 0.1 from 0.3 three times leaves -2.8e-17, and ten times from 0.3 misses -0.7.
TEST(FillAxisLabels, ShowsNoRoundingAtZeroAndAtTheEnd) {
  const Labels labels = FillAxisLabels({-0.7, 0.3, 10}, "General");
  ASSERT_EQ(labels.size(), 11U);
  EXPECT_EQ(labels[3], "0");
  EXPECT_EQ(labels[10], "-0.7");
  // The data's own limits, whose last bits put zero beside a whole number of steps (-1.4e-05 to 2.000000000000001e-06).
  const struct {
    double min, max;
    const char* format;
    std::size_t zero;
    const char* text;
  } kCases[] = {{-1.2331e-05, 8.484e-07, "General", 1, "0"},
                {-0.0654, 0.00485, "General", 1, "0"},
                {-4.0007e-06, 5.8937e-06, "0.0E+00", 6, "0.0E+00"},
                {-0.000102305, 8.1807e-05, "General", 5, "0"}};
  for (const auto& c : kCases)
    EXPECT_EQ(FillAxisLabels(NiceAxisLimits(c.min, c.max), c.format).at(c.zero), c.text) << c.min;
  // Zero between two ticks isn't forced onto one of them.
  EXPECT_EQ(FillAxisLabels({-1, 2, 2}, "0.0"), (Labels{"2.0", "0.5", "-1.0"}));
  EXPECT_THROW(FillAxisLabels({0, 1, 0}, "0.0"), NumericFault);
}

}  // namespace
}  // namespace quorvex
