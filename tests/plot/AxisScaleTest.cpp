#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/NumericFault.h"
#include "plot/AxisScale.h"
#include "plot/StyledLines.h"

namespace quorvex {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// The rule in exact fractions (Python), which knows no rounding.
TEST(NiceAxisLimits, TakesTheStepsOfTheRule) {
  const struct {
    double min, max;
    AxisLimits limits;
  } kCases[] = {
      {0, 1, {0, 1, 10, false}},
      {0, 2.1, {0, 2.5, 5, false}},
      {0, 0, {-1, 1, 10, false}},
      {7, 7, {6, 8, 10, false}},
      {-3.3, 12.8, {-4, 14, 9, false}},
      {0.0012, 0.0057, {0.001, 0.006, 10, false}},
      {-0.7, 0.3, {-0.7, 0.3, 10, false}},
      {1234567, 7654321, {1e6, 8e6, 7, false}},
      {-1e-9, 3e-9, {-1e-9, 3e-9, 8, false}},
      {99.5, 100.25, {99.5, 100.3, 8, false}},
      {5.08, 81.78, {0, 90, 9, false}},
      {10.07, 81.78, {10, 90, 8, false}},
      {0.3, 9.9, {0, 10, 10, false}},
      {-1e6, -1e3, {-1e6, 0, 10, false}},
  };
  for (const auto& c : kCases) {
    const AxisLimits limits = NiceAxisLimits(c.min, c.max);
    const double digits = 1e-15 * (std::abs(c.min) + std::abs(c.max));
    EXPECT_NEAR(limits.Min, c.limits.Min, digits) << c.min << " to " << c.max;
    EXPECT_NEAR(limits.Max, c.limits.Max, 4 * digits) << c.min << " to " << c.max;
    EXPECT_EQ(limits.Ticks, c.limits.Ticks) << c.min << " to " << c.max;
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
  const struct {
    double min, max;
    AxisLimits limits;
  } kCases[] = {
      {1, 1, {1e-1, 1, 1, true}},  // at least one
      {1000, 1000, {1e2, 1e3, 1, true}},
      {2, 500, {1, 1e3, 3, true}},
      {0.001, 1000, {1e-3, 1e3, 6, true}},
      {0.0999, 0.1, {1e-2, 1e-1, 1, true}},
      {1e-12, 3e-5, {1e-12, 1e-4, 8, true}},
      {10, 100, {1e1, 1e2, 1, true}},
      {99.9, 100.1, {1e1, 1e3, 2, true}},
      {5, 7, {1, 1e1, 1, true}},
      {0, 1, {0, 1, 10, false}},  // not on a logarithmic axis
      {-2, -1, {-2, -1, 10, false}},
  };
  for (const auto& c : kCases) EXPECT_EQ(RecomputeLogAxisLimits(c.min, c.max), c.limits) << c.min << " to " << c.max;
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
