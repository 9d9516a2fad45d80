#include <gtest/gtest.h>

#include <numeric>

#include "RecordingSurface.h"
#include "drawing/StyledLines.h"

namespace quorvex {
namespace {

using Calls = std::vector<std::string>;

// What the strokes of a pattern cover, worked out from the arc length of the whole polyline instead of walking it: a
// place is covered when its distance from the start, modulo the pattern's length, lies in a stroke.
bool IsCovered(double distance, const std::vector<double>& pattern) {
  double rest = std::fmod(distance, std::accumulate(pattern.begin(), pattern.end(), 0.0));
  for (std::size_t i = 0; i < pattern.size(); rest -= pattern[i++])
    if (rest < pattern[i]) return i % 2 == 0;
  return false;
}

struct Stroke {
  double x1, y1, x2, y2;
};

std::vector<Stroke> StrokesOf(const RecordingSurface& surface) {
  std::vector<Stroke> strokes;
  for (const std::string& call : surface.Only({"MoveToEx", "LineTo"})) {
    std::istringstream words(call);
    std::string name;
    int x = 0, y = 0;
    words >> name >> x >> y;
    if (name == "MoveToEx")
      strokes.push_back({1.0 * x, 1.0 * y, 0, 0});
    else
      strokes.back().x2 = x, strokes.back().y2 = y;
  }
  return strokes;
}

// Every whole unit of the polyline's length is looked at from its middle, so that rounding to device units of slanted
// strokes cannot matter; 3-4-5 sides keep corners at whole lengths.
TEST(DrawStyledPolyline, RunsItsPatternsOnRoundTheCorners) {
  const std::int32_t xs[] = {10, 40, 40, 10, 310}, ys[] = {10, 50, 127, 167, 567};  // sides of 50, 77, 50 and 500
  const double sides[] = {50, 77, 50, 500};
  const struct {
    int style;
    std::int32_t width, scale;
    std::vector<double> pattern;
  } cases[] = {{1, 1, 1, {12, 4}},
               {1, 10, 1, {26, 14}},
               {2, 1, 1, {4, 4}},
               {2, 6, 1, {4, 10}},
               {3, 1, 1, {18, 5, 4, 5}},
               {3, 7, 1, {34, 12, 4, 12}},
               {4, 1, 1, {12, 4, 4, 4, 4, 4}},
               {4, 5, 2, {36, 16, 8, 16, 8, 16}}};
  for (const auto& c : cases) {
    RecordingSurface surface;
    ASSERT_TRUE(DrawStyledPolyline(surface, xs, ys, c.style, c.width, 255, c.scale));
    EXPECT_EQ(surface.ObjectCount(), 0u);
    EXPECT_EQ(surface.Calls[0], "CreatePen 0 " + std::to_string(c.width * c.scale) + " 255 = 5");
    const std::vector<Stroke> strokes = StrokesOf(surface);
    double before = 0;
    for (std::size_t side = 0; side < 4; before += sides[side++])
      for (double along = 0.5; along < sides[side]; ++along) {
        const double x = xs[side] + along / sides[side] * (xs[side + 1] - xs[side]);
        const double y = ys[side] + along / sides[side] * (ys[side + 1] - ys[side]);
        // Strokes begin and end at whole lengths, here rounded to units: up to 0.5 each way, less than a diagonal.
        const bool expected = IsCovered(before + along, c.pattern);
        if (IsCovered(before + along + 0.9, c.pattern) != expected ||
            (before + along >= 0.9 && IsCovered(before + along - 0.9, c.pattern) != expected))
          continue;
        bool covered = false;
        for (const Stroke& s : strokes) {
          const double length = std::hypot(s.x2 - s.x1, s.y2 - s.y1);
          if (length == 0) continue;
          const double ux = (s.x2 - s.x1) / length, uy = (s.y2 - s.y1) / length;
          const double t = (x - s.x1) * ux + (y - s.y1) * uy, away = std::abs((x - s.x1) * uy - (y - s.y1) * ux);
          covered = covered || (t >= 0 && t <= length && away < 0.8);
        }
        EXPECT_EQ(covered, expected) << "style " << c.style << " width " << c.width << " at " << before + along;
      }
  }
}

TEST(DrawStyledPolyline, WalksADashToTheLetter) {
  RecordingSurface surface;
  const std::int32_t xs[] = {0, 30, 30}, ys[] = {0, 0, 10};  // dashes of 12 and gaps of 4: the second ends at 28
  DrawStyledPolyline(surface, xs, ys, 1, 1, 0, 1);
  EXPECT_EQ(surface.Only({"MoveToEx", "LineTo"}),
            (Calls{"MoveToEx 0 0", "LineTo 12 0", "MoveToEx 16 0", "LineTo 28 0", "MoveToEx 30 2", "LineTo 30 10"}));
}

TEST(DrawStyledPolyline, HoldsWidthScaleAndStyleToWhatThereIs) {
  const struct {
    int style;
    std::int32_t width, scale;
    const char *pen, *firstLine;
  } cases[] = {{0, 0, 1, "CreatePen 0 1 7 = 5", "LineTo 90 5"},  {0, 11, 3, "CreatePen 0 30 7 = 5", "LineTo 90 5"},
               {5, 3, 0, "CreatePen 0 3 7 = 5", "LineTo 90 5"},  {-1, -4, -2, "CreatePen 0 1 7 = 5", "LineTo 90 5"},
               {2, 99, 1, "CreatePen 0 10 7 = 5", "LineTo 9 5"}, {1, 0, -1, "CreatePen 0 1 7 = 5", "LineTo 17 5"},
               {3, 10, 2, "CreatePen 0 20 7 = 5", "LineTo 89 5"}};
  for (const auto& c : cases) {
    RecordingSurface surface;
    ASSERT_TRUE(DrawStyledSegment(surface, {5, 5}, {90, 5}, c.style, c.width, 7, c.scale));
    EXPECT_EQ(surface.Calls[0], c.pen);
    EXPECT_EQ(surface.Only({"LineTo"}).at(0), c.firstLine) << c.style << ' ' << c.width;
  }
}

TEST(DrawStyledPolyline, LeavesOutWhatIsOutOfRangeInASolidLine) {
  const struct {
    std::vector<std::int32_t> xs, ys;
    Calls drawn;
  } cases[] = {
      {{1, 2, 3, 4}, {1, 50000, -50000, 4}, {"MoveToEx 1 1", "LineTo 4 4"}},
      {{50000, 2, 2, 3}, {1, 2, 2, 3}, {"MoveToEx 2 2", "LineTo 3 3"}},
      {{1, 2, 1, 1}, {1, 50001, 1, 2}, {"MoveToEx 1 1", "LineTo 1 2"}},  // back to the point that was drawn last
      {{49999, -49999}, {-49999, 49999}, {"MoveToEx 49999 -49999", "LineTo -49999 49999"}},
      {{1, 50000}, {1, 1}, {"MoveToEx 1 1"}},
  };
  for (const auto& c : cases) {
    RecordingSurface surface;
    EXPECT_TRUE(DrawStyledPolyline(surface, c.xs, c.ys, 0, 1, 0, 1));
    EXPECT_EQ(surface.Only({"MoveToEx", "LineTo"}), c.drawn);
  }
}

TEST(DrawStyledPolyline, DrawsNothingWithoutAPointInRangeBeforeTheLast) {
  using Coordinates = std::vector<std::int32_t>;
  for (const Coordinates& xs : {Coordinates{}, {1}, {50000, 1}, {-50000, 60000, 3}})
    for (const int style : {0, 1}) {
      RecordingSurface surface;
      EXPECT_FALSE(DrawStyledPolyline(surface, xs, Coordinates(xs.size(), 1), style, 1, 0, 1));
      EXPECT_TRUE(surface.Calls.empty());
    }
}

// A curve that leaves the page for 2e9 units and returns: the pattern is where it would be after walking all that way,
// but the strokes outside were not drawn one by one.
TEST(DrawStyledPolyline, KeepsItsPlaceInThePatternOverAFarExcursion) {
  RecordingSurface surface;
  const std::int32_t far = 2000000005;
  const std::int32_t xs[] = {0, far, far, 0}, ys[] = {0, 0, 10, 10};
  ASSERT_TRUE(DrawStyledPolyline(surface, xs, ys, 1, 1, 0, 1));
  const Calls calls = surface.Only({"MoveToEx", "LineTo"});
  EXPECT_LT(calls.size(), 20000u);
  // The way back is 2 far + 10 - x long at x, 4 more than a multiple of 16 at 0, and dashes start at the multiples.
  const Calls end(calls.end() - 4, calls.end());
  EXPECT_EQ(end, (Calls{"MoveToEx 20 10", "LineTo 8 10", "MoveToEx 4 10", "LineTo 0 10"}));
}

// Out there a step that points at the page, which it would reach far behind its end, ends where it does.
TEST(DrawStyledPolyline, KeepsItsPlaceInThePatternOverAStepTowardsThePage) {
  RecordingSurface surface;
  const std::int32_t xs[] = {0, 0, 5000, 5000}, ys[] = {0, 60000, 59999, 0};
  ASSERT_TRUE(DrawStyledPolyline(surface, xs, ys, 1, 1, 0, 1));
  const Calls calls = surface.Only({"MoveToEx", "LineTo"});
  // At y it has gone 124999 - y, and dashes start at the multiples of 16.
  const Calls end(calls.end() - 4, calls.end());
  EXPECT_EQ(end, (Calls{"MoveToEx 5000 23", "LineTo 5000 11", "MoveToEx 5000 7", "LineTo 5000 0"}));
}

// Only the step that leaves for out there, 3125 dashes long, is walked.
TEST(DrawStyledPolyline, WalksNoPatternAlongAStepOutOfSight) {
  constexpr std::int32_t kFar = 2000000000, kOut = 60000;
  using Coordinates = std::vector<std::int32_t>;
  const struct {
    Coordinates xs, ys;
  } kCases[] = {{{0, kOut, kOut}, {0, 0, kFar}},
                {{0, -kOut, -kOut}, {0, 0, -kFar}},
                {{0, 0, kFar}, {0, kOut, kOut}},
                {{0, kOut, kFar}, {0, 0, kFar}}};
  for (const auto& c : kCases)
    for (const std::int32_t scale : {1, 8}) {
      Coordinates xs = c.xs, ys = c.ys;
      for (Coordinates* places : {&xs, &ys})
        for (std::int32_t& place : *places) place = place == kFar ? kFar : place == -kFar ? -kFar : place * scale;
      RecordingSurface surface;
      ASSERT_TRUE(DrawStyledPolyline(surface, xs, ys, 1, 1, 0, scale));
      EXPECT_NEAR(static_cast<double>(surface.Only({"LineTo"}).size()), 3125, 10) << xs[1] << ' ' << ys[1];
    }
}

TEST(GetLineSampleLength, EndsSamplesWithAWholePattern) {
  const struct {
    int style;
    std::int32_t width, scale, length;
  } cases[] = {{0, 3, 2, 77},  {9, 3, 2, 77}, {1, 1, 1, 28},  {1, 10, 1, 66}, {2, 2, 1, 31},
               {3, 6, 3, 138}, {4, 2, 1, 28}, {4, 99, 1, 62}, {2, 0, 0, 28},  {3, 5, 1, 42}};
  for (const auto& c : cases)
    EXPECT_EQ(GetLineSampleLength(c.style, c.width, 77, c.scale), c.length) << c.style << ' ' << c.width;
}

}  // namespace
}  // namespace quorvex
