#include <gtest/gtest.h>

#include <random>

#include "TableFile.h"
#include "core/NumberText.h"
#include "core/NumericFault.h"
#include "plot/AxisLabels.h"

namespace quorvex {
namespace {

using Labels = std::vector<std::string>;

TEST(BuildAutoLabelFormat, HasDecimalsForTheStep) {
  for (const auto& row : TableRows("axis_formats.txt", 4)) {
    const AxisLimits limits{Number(row[0]), Number(row[1]), std::stoi(row[2])};
    EXPECT_EQ(BuildAutoLabelFormat(limits), row[3]) << row[0] << " to " << row[1];
  }
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
      {{46348, 46349, 2}, "dd.mm. hh:mm", false, {"23.11. 00:00", "22.11. 12:00", "22.11. 00:00"}},
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
