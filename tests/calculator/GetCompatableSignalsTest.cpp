#include <gtest/gtest.h>

#include <cmath>

#include "calculator/Curves.h"
#include "calculator/GetCompatableSignals.h"

namespace quorvex {
namespace {

TEST(GetCompatableSignals, MergesTheGridsOfTwoCurves) {
  const struct {
    const char* What;
    Column X1, Y1, X2, Y2, Grid, First, Second;
  } cases[] = {
      {"one grid", {1, 2, 3}, {1, 4, 9}, {1, 2, 3}, {5, 6, 7}, {1, 2, 3}, {1, 4, 9}, {5, 6, 7}},
      {"interleaved", {0, 2, 4}, {0, 4, 0}, {1, 3, 5}, {10, 30, 50}, {1, 2, 3, 4}, {2, 4, 2, 0}, {10, 20, 30, 40}},
      {"one within the other", {0, 10}, {0, 100}, {4, 5}, {1, 2}, {4, 5}, {40, 50}, {1, 2}},
      {"repeats", {0, 1, 1, 1, 2}, {0, 1, 2, 6, 4}, {1, 1, 3}, {8, 10, 13}, {1, 2}, {3, 4}, {9, 11}},
      {"a common end", {0, 5}, {1, 2}, {5, 9}, {3, 4}, {5}, {2}, {3}},
      {"single points", {5}, {1}, {5}, {2}, {5}, {1}, {2}},
      {"a point within", {5}, {1}, {4, 6}, {2, 4}, {5}, {1}, {3}},
      {"out of order", {2, 0, 1}, {20, 0, 10}, {2, 0}, {1, 0}, {0, 1, 2}, {0, 10, 20}, {0, 0.5, 1}},
      {"steep", {0, 1e-300, 1}, {0, 1e300, 0}, {0, 1}, {1, 2}, {0, 1e-300, 1}, {0, 1e300, 0}, {1, 1, 2}},
  };
  for (const auto& c : cases) {
    const CompatableSignals both = GetCompatableSignals({c.X1, c.Y1}, {c.X2, c.Y2});
    EXPECT_EQ(both.X, c.Grid) << c.What;
    EXPECT_EQ(both.Y1, c.First) << c.What;
    EXPECT_EQ(both.Y2, c.Second) << c.What;
    const CompatableSignals other = GetCompatableSignals({c.X2, c.Y2}, {c.X1, c.Y1});
    EXPECT_EQ(other.X, c.Grid) << c.What;
    EXPECT_EQ(other.Y2, c.First) << c.What;
  }
}

TEST(GetCompatableSignals, RefusesCurvesWithoutACommonRange) {
  const auto error = [](Column x1, Column x2) {
    const Column y1(x1.size(), 1), y2(x2.size(), 1);
    return ErrorOf([&] { GetCompatableSignals({x1, y1}, {x2, y2}); });
  };
  EXPECT_EQ(error({0, 1}, {2, 3}), CalculatorError::NoCommonGrid);
  EXPECT_EQ(error({2, 3}, {0, 1}), CalculatorError::NoCommonGrid);
  EXPECT_EQ(error({}, {0, 1}), CalculatorError::NoCommonGrid);
  // A slope that no number holds, between points of the other curve.
  const Column x = {0, 1e-300}, y = {-1e300, 1e300}, grid = {0, 5e-301, 1e-300}, flat = {0, 0, 0};
  EXPECT_EQ(ErrorOf([&] { GetCompatableSignals({x, y}, {grid, flat}); }), CalculatorError::NoCommonGrid);
}

TEST(GetCompatableSignals, ReadsLongCurvesOnEachOthersPoints) {
  Column x1, y1, x2, y2;
  for (int i = 0; i < 65536; ++i) {
    x1.push_back(i);
    y1.push_back(3.0 * i);
    x2.push_back(i + 0.5);
    y2.push_back(1 - 2 * (i + 0.5));
  }
  const CompatableSignals both = GetCompatableSignals({x1, y1}, {x2, y2});
  ASSERT_EQ(both.X.size(), 2 * 65535U);
  for (std::size_t i = 0; i < both.X.size(); ++i) {
    ASSERT_EQ(both.X[i], 0.5 + 0.5 * static_cast<double>(i));
    ASSERT_EQ(both.Y1[i], 3 * both.X[i]);
    ASSERT_EQ(both.Y2[i], 1 - 2 * both.X[i]);
  }
}

TEST(getnextindex, CountsFromOneToBeyondTheEnd) {
  const Column x = {1, 2, 2, 5};
  EXPECT_EQ(getnextindex(x, 0, 1), 1U);
  EXPECT_EQ(getnextindex(x, 2, 1), 4U);
  EXPECT_EQ(getnextindex(x, 1, 3), 3U);
  EXPECT_EQ(getnextindex(x, 5, 1), 5U);
}

}  // namespace
}  // namespace quorvex
