#include <gtest/gtest.h>

#include <limits>

#include "TableFile.h"
#include "core/NumericFault.h"
#include "drawing/StyledLines.h"
#include "plot/AxisScale.h"

namespace quorvex {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(NiceAxisLimits, TakesTheStepsOfTheRule) {
  for (const auto& row : TableRows("axis_limits.txt", 5)) {
    const double min = Number(row[0]), max = Number(row[1]), digits = 1e-15 * (std::abs(min) + std::abs(max));
    const AxisLimits limits = NiceAxisLimits(min, max);
    EXPECT_NEAR(limits.Min, Number(row[2]), digits) << min << " to " << max;
    EXPECT_NEAR(limits.Max, Number(row[3]), 4 * digits) << min << " to " << max;
    EXPECT_EQ(limits.Ticks, Number(row[4])) << min << " to " << max;
  }
}

TEST(NiceAxisLimits, HoldsTheDataInSteps) {
  for (int i = 1; i < 2000; ++i) {
    const double min = std::sin(i) * std::pow(10, i % 17 - 8), max = min + std::exp(std::fmod(i * 0.37, 30) - 15);
    const AxisLimits limits = NiceAxisLimits(min, max);
    const double step = (limits.Max - limits.Min) / limits.Ticks;
    const double rounding = 1e-14 * (std::abs(min) + std::abs(max));
    EXPECT_LE(limits.Min, min + rounding);
    EXPECT_GE(limits.Max, max - rounding);
    EXPECT_GE(min, limits.Min - rounding);
    EXPECT_LE(limits.Max - step, max + rounding) << "a step too many";
    EXPECT_LE(limits.Ticks, 11);
  }
}

TEST(NiceAxisLimits, RefusesWhatHasNoScale) {
  for (const auto& [min, max] : {std::pair{-kInfinity, 1.0}, {1e300, kInfinity}, {-1.7e308, 1.7e308}, {1e20, 1e20}}) {
    EXPECT_THROW(NiceAxisLimits(min, max), NumericFault) << min << " to " << max;
  }
}

TEST(RecomputeLogAxisLimits, TakesWholeDecades) {
  for (const auto& row : TableRows("axis_limits_logarithmic.txt", 6)) {
    const AxisLimits limits{Number(row[2]), Number(row[3]), std::stoi(row[4]), row[5] == "log"};
    EXPECT_EQ(RecomputeLogAxisLimits(Number(row[0]), Number(row[1])), limits) << row[0] << " to " << row[1];
  }
  EXPECT_THROW(RecomputeLogAxisLimits(1, 1.5e308), NumericFault);
}

TEST(AxisMap, LeadsToTheDeviceAndBack) {
  const AxisMap linear = AxisMap::Between(-2, 8, false, 100, 600);
  EXPECT_EQ(linear.ToDevice(-2), 100);
  EXPECT_EQ(linear.ToDevice(0.509), 225);
  EXPECT_DOUBLE_EQ(linear.ToData(350), 3);

  const AxisMap log = AxisMap::Between(0.1, 1000, true, 500, 100);  // upward
  EXPECT_EQ(log.ToDevice(0.1), 500);
  EXPECT_EQ(log.ToDevice(10), 300);
  EXPECT_NEAR(log.ToData(200), 100, 1e-10);

  for (const double lost : {0.0, -5.0}) EXPECT_EQ(log.ToDevice(lost), kOutOfRange);
  EXPECT_EQ(linear.ToDevice(5000), 250200);  // out of range, but where it belongs
  EXPECT_EQ(linear.ToDevice(1e300), 1'000'000'000);
  EXPECT_EQ(linear.ToDevice(-1e300), -1'000'000'000);
  EXPECT_EQ(linear.ToDevice(std::nan("")), kOutOfRange);
}

}  // namespace
}  // namespace quorvex
