#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numeric>

#include "TableFile.h"
#include "analysis/LowessSmooth.h"

namespace quorvex {
namespace {

struct Points {
  std::vector<double> X, Y;
};

// Two columns of a file of tests/data, in ascending order of the first named.
Points SortedColumns(const std::string& name, std::size_t x, std::size_t y) {
  std::ifstream file(TestData(name));
  std::string line;
  std::getline(file, line);
  const char separator = name.ends_with(".csv") ? ',' : '\t';
  std::vector<std::pair<double, double>> rows;
  while (std::getline(file, line)) {
    const std::vector<std::string> fields = Split(line, separator);
    rows.emplace_back(Number(fields.at(x)), Number(fields.at(y)));
  }
  std::stable_sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  Points points;
  for (const auto& [px, py] : rows) points.X.push_back(px), points.Y.push_back(py);
  return points;
}

TEST(LowessSmooth, AgreesWithReferences) {
  for (const auto& row : TableRows("lowess.txt", 5)) {
    const bool geyser = row[0] == "old_faithful.csv";
    const Points points = SortedColumns(row[0], geyser ? 1 : 0, geyser ? 0 : 1);
    const auto smooth = LowessSmooth(points.X, points.Y, Number(row[1]), std::stoi(row[2]), Number(row[3]));
    const std::string where = row[0] + " f=" + row[1] + " delta=" + row[3];
    ASSERT_TRUE(smooth) << where;
    const std::vector<double> reference = Numbers(row[4]);
    ASSERT_EQ(smooth->ys.size(), reference.size());
    // Both round in their own order, at most some hundred times a value.
    const double unit = std::abs(*std::max_element(reference.begin(), reference.end(),
                                                   [](double a, double b) { return std::abs(a) < std::abs(b); }));
    for (std::size_t i = 0; i < reference.size(); ++i) {
      EXPECT_NEAR(smooth->ys[i], reference[i], 1e-10 * unit) << where << " point " << i;
      EXPECT_EQ(smooth->res[i], points.Y[i] - smooth->ys[i]);
    }
  }
}

// n(1 : n), moved and scaled.
Points Ramp(std::size_t n, double origin, double step, double height) {
  Points points{std::vector<double>(n), std::vector<double>(n)};
  for (std::size_t i = 0; i < n; ++i) {
    points.X[i] = origin + static_cast<double>(i) * step;
    points.Y[i] = height * static_cast<double>(i);
  }
  return points;
}

TEST(LowessSmooth, KeepsAStraightLineAtAnyScaleAndTakesAnOutlierForNone) {
  for (const auto& [origin, step, height] : {std::tuple{0.0, 1.0, 1.0},
                                             {1e9, 1e-3, 1e-9},
                                             {-1e-9, 1e-11, 1e9},
                                             {0.0, 1e-170, 1e150},
                                             {0.0, 1e170, 1e-150}}) {
    Points points = Ramp(40, origin, step, height);
    points.Y[17] += 1000 * height;
    const auto smooth = LowessSmooth(points.X, points.Y, 0.5, kLowessSteps, 0);
    ASSERT_TRUE(smooth);
    EXPECT_EQ(smooth->rw[17], 0);
    for (std::size_t i = 0; i < 40; ++i)
      EXPECT_NEAR(smooth->ys[i] / height, static_cast<double>(i), 0.1) << origin << " " << step << " " << i;
  }
}

// Three points at f = 1: the middle one has the others at a distance of h, where weights are 0, and stays; at an end
// the one at h has none either, so the line through the other two is a line through both.
TEST(LowessSmooth, FollowsTheDefinitionOnFewPoints) {
  const double inf = std::numeric_limits<double>::infinity();
  const struct {
    std::vector<double> X, Y;
    double F;
    std::vector<double> Smooth;  // empty where it fails
  } cases[] = {
      {{}, {}, 0.5, {}},
      {{3}, {7}, 0.5, {7}},
      {{1, 2}, {5, 9}, 0.5, {5, 9}},
      {{1, 2, 3}, {5, 9, 2}, 0.999999, {5, 9, 2}},
      {{4, 4, 4, 4}, {1, 1, 1, 1}, 0.5, {1, 1, 1, 1}},
      {{4, 4, 4, 4}, {0, 1, 2, 3}, 0.5, {1.5, 1.5, 1.5, 1.5}},
      {{0, 0, 1, 1}, {1, 3, 7, 7}, 0.5, {2, 2, 7, 7}},
      {{1, inf}, {1, 2}, 0.5, {}},
      {{1, 2}, {1, std::nan("")}, 0.5, {}},
      {{-1.5e308, 1.5e308}, {1, 2}, 0.5, {}},
      {{1, 1, 1}, {-1.7e308, 1.7e308, 1.7e308}, 0.5, {}},
  };
  for (const auto& c : cases) {
    const auto smooth = LowessSmooth(c.X, c.Y, c.F, kLowessSteps, 0);
    ASSERT_EQ(smooth.has_value(), !c.Smooth.empty() || c.X.empty());
    for (std::size_t i = 0; i < c.Smooth.size(); ++i) EXPECT_DOUBLE_EQ(smooth->ys[i], c.Smooth[i]);
  }
}

// Of three points the furthest has no weight, so that a line through two goes through its own: all residuals are 0.
TEST(LowessSmooth, LeavesPointsThatHaveOneNeighbourAsTheyAre) {
  for (const double unit : {1e-9, 1.0, 1e9}) {
    Points points = Ramp(35, 0, 1, 0);
    for (std::size_t i = 0; i < 35; ++i) {
      const auto place = static_cast<double>(i);
      points.X[i] = unit * (place + (i % 2 == 0 ? 0 : 0.2));
      points.Y[i] = unit * (3 + std::sin(7 * place * place));
    }
    const auto smooth = LowessSmooth(points.X, points.Y, 0.1, kLowessSteps, 0);
    ASSERT_TRUE(smooth);
    for (std::size_t i = 0; i < 35; ++i) EXPECT_NEAR(smooth->ys[i] / points.Y[i], 1, 1e-14) << unit << ' ' << i;
  }
}

TEST(LowessSmooth, StopsWhenItIsCancelled) {
  const Points points = Ramp(100, 0, 1, 1);
  LongWork work;
  EXPECT_TRUE(LowessSmooth(points.X, points.Y, 0.1, kLowessSteps, 0, work));
  EXPECT_EQ(work.Total(), 300u);
  EXPECT_GT(work.Done(), 290u);
  work.Cancel();
  EXPECT_FALSE(LowessSmooth(points.X, points.Y, 0.1, kLowessSteps, 0, work));
}

TEST(LowessDelta, IsAFiftiethOfTheRangeOfMoreThan5000Points) {
  EXPECT_EQ(LowessDelta(Ramp(5000, -7, 1, 1).X), 0);
  EXPECT_EQ(LowessDelta(Ramp(5001, -7, 1, 1).X), 100);
  EXPECT_EQ(LowessDelta({}), 0);
}

}  // namespace
}  // namespace quorvex
