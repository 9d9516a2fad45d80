// Corners of the box and places of data, against values worked out by hand.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "drawing/StyledLines.h"
#include "plot3d/BoxProjection.h"

namespace quorvex {
namespace {

double Radians(double degrees) { return kViewPi * degrees / 180; }
BoxView ViewAt(double xy, double z) { return {Radians(xy), Radians(z)}; }

TEST(BoxView, TurnsTheCorners) {
  constexpr double kHalfRoot3 = 0.8660254037844386;
  const struct {
    double xy, z;
    BoxView::Ends at;
    double horizontal, vertical, depth;
  } kCases[] = {
      {0, 0, {1, 1, 1}, -0.5, 0.5, 1},      // from the side: X1 to the left, X2 towards the viewer
      {0, 0, {-1, 1, -1}, 0.5, -0.5, 0},    //
      {90, 0, {1, 1, 1}, 0.5, 0.5, 1},      // X2 to the right, X1 towards the viewer
      {180, 0, {1, -1, 1}, 0.5, 0.5, 1},    // X1 to the right, X2 away
      {0, 90, {1, 1, 1}, -0.5, -0.5, 0},    // from above: X1 to the left, X2 downward
      {180, 90, {1, 1, -1}, 0.5, 0.5, 0},   // like a map
      {0, 180, {1, 1, 1}, -0.5, -0.5, -1},  // on its head
      {30,
       30,
       {1, 1, 1},
       0.25 - kHalfRoot3 / 2,
       kHalfRoot3 / 2 - (0.5 + kHalfRoot3) / 4,
       kHalfRoot3 * ((0.5 + kHalfRoot3) / 2 + 0.5)},
      {30,
       30,
       {1, -1, -1},
       -0.25 - kHalfRoot3 / 2,
       -kHalfRoot3 / 2 - (0.5 - kHalfRoot3) / 4,
       kHalfRoot3 * ((0.5 - kHalfRoot3) / 2 - 0.5)},
  };
  for (const auto& c : kCases) {
    const BoxCorner corner = ViewAt(c.xy, c.z).Corner(c.at);
    EXPECT_NEAR(corner.Horizontal, c.horizontal, 1e-14) << c.xy << ", " << c.z;
    EXPECT_NEAR(corner.Vertical, c.vertical, 1e-14) << c.xy << ", " << c.z;
    EXPECT_NEAR(corner.Depth, c.depth, 1e-14) << c.xy << ", " << c.z;
  }
}

// The direction to the viewer is at right angles to those in which the corners go right and up.
TEST(BoxView, KnowsWhichEndsAreNearAtEveryAngle) {
  for (double xy = 3; xy < 360; xy += 7)
    for (double z = 2; z < 180; z += 11) {
      const BoxView view = ViewAt(xy, z);
      const auto change = [&](std::size_t axis, double BoxCorner::*part) {
        BoxView::Ends from = {-1, -1, -1}, to = from;
        to[axis] = 1;
        return view.Corner(to).*part - view.Corner(from).*part;
      };
      const auto h = [&](std::size_t axis) { return change(axis, &BoxCorner::Horizontal); };
      const auto v = [&](std::size_t axis) { return change(axis, &BoxCorner::Vertical); };
      // right x up, which points at the viewer
      const double toViewer[] = {h(1) * v(2) - h(2) * v(1), h(2) * v(0) - h(0) * v(2), h(0) * v(1) - h(1) * v(0)};
      EXPECT_EQ(view.NearP(), toViewer[0] > 0 ? 1 : -1) << xy << ", " << z;
      EXPECT_EQ(view.NearQ(), toViewer[1] > 0 ? 1 : -1) << xy << ", " << z;
      EXPECT_GT(toViewer[2], 0) << xy << ", " << z;
      EXPECT_EQ(view.OverTheTop(), z > 90);
    }
}

TEST(BoxView, TakesQuarterTurnsExactly) {
  EXPECT_EQ(ViewAt(180, 30).NearP(), -1);
  EXPECT_EQ(ViewAt(179.99, 30).NearP(), 1);
  EXPECT_EQ(ViewAt(90, 30).NearQ(), 1) << "strictly between a quarter and three quarters";
  EXPECT_EQ(ViewAt(90.01, 30).NearQ(), -1);
  EXPECT_EQ(ViewAt(270, 30).NearQ(), 1);
  EXPECT_FALSE(ViewAt(30, 90).OverTheTop());
}

// 400 by 400 units around (300, 250), so that an edge of the box, 400 / 1.732, is 231 units.
constexpr DeviceRect kBox = {100, 50, 500, 450};
constexpr std::array<AxisLimits, 3> kLimits = {{{0, 10, 5}, {-2, 2, 4}, {100, 500, 4}}};

TEST(BoxProjection, PutsTheBoxIntoItsRectangle) {
  const BoxProjection side(ViewAt(0, 0), kBox, kLimits, 1);
  EXPECT_EQ(side.Corner({-1, -1, -1}), (DevicePoint{415, 365}));
  EXPECT_EQ(side.Corner({1, 1, 1}), (DevicePoint{185, 135}));
  for (double xy = 0; xy <= 360; xy += 15)
    for (double z = 0; z <= 180; z += 15)
      for (const int p : {-1, 1})
        for (const int q : {-1, 1})
          for (const int r : {-1, 1}) {
            const DevicePoint corner = BoxProjection(ViewAt(xy, z), kBox, kLimits, 1).Corner({p, q, r});
            EXPECT_TRUE(kBox.Contains(corner.x, corner.y)) << xy << ", " << z;
          }
}

TEST(BoxProjection, PlacesData) {
  const BoxProjection side(ViewAt(0, 0), kBox, kLimits, 1);
  EXPECT_EQ(side.ToDevice(0, -2, 100), (DevicePoint{415, 365}));
  EXPECT_EQ(side.ToDevice(5, 2, 300), (DevicePoint{300, 250})) << "X2, seen from its end, moves nothing";
  EXPECT_EQ(side.ToDevice(10, 0, 500), (DevicePoint{185, 135}));
  EXPECT_NEAR(side.Axis(0).Scale, 23, 1e-12);
  EXPECT_EQ(side.Axis(1).Scale, 0);
  EXPECT_NEAR(side.Axis(2).Angle, kViewPi / 2, 1e-12);

  const BoxProjection above(ViewAt(180, 90), kBox, kLimits, 1);
  EXPECT_EQ(above.ToDevice(0, -2, 400), (DevicePoint{185, 365}));
  EXPECT_EQ(above.ToDevice(10, 2, 200), (DevicePoint{415, 135}));
}

// The middle of the data is the middle of the box, and each corner of the limits a corner of it, but for rounding.
TEST(BoxProjection, AgreesWithTheCornersAtEveryAngle) {
  for (double xy = 0; xy <= 360; xy += 20)
    for (double z = 0; z <= 180; z += 20) {
      const BoxProjection box(ViewAt(xy, z), kBox, kLimits, 1);
      EXPECT_NEAR(box.ToDevice(5, 0, 300).x, 300, 1.5);
      EXPECT_NEAR(box.ToDevice(5, 0, 300).y, 250, 1.5);
      const DevicePoint far = box.ToDevice(10, 2, 500), corner = box.Corner({1, 1, 1});
      EXPECT_NEAR(far.x, corner.x, 2);
      EXPECT_NEAR(far.y, corner.y, 2);
    }
}

TEST(BoxProjection, TakesLogarithms) {
  const BoxProjection box(ViewAt(0, 0), kBox, {{{0.01, 100, 4, true}, {0, 1, 5}, {1, 1e4, 4, true}}}, 1);
  EXPECT_EQ(box.ToDevice(1, 0, 100), (DevicePoint{300, 250}));
  constexpr DevicePoint kNowhere = {kOutOfRange, kOutOfRange};
  EXPECT_EQ(box.ToDevice(0, 0, 100), kNowhere);
  EXPECT_EQ(box.ToDevice(1, 0, -5), kNowhere);
  EXPECT_EQ(box.ToDevice(1, std::numeric_limits<double>::quiet_NaN(), 5), kNowhere);
  EXPECT_TRUE(box.Contains(0.01, 0.5, 1e4));
  EXPECT_FALSE(box.Contains(0.01, 0.5, 1.001e4));
  EXPECT_FALSE(box.Contains(-1, 0.5, 1));
}

TEST(BoxProjection, HoldsAnyScale) {
  for (const double unit : {1e-300, 1e-9, 1.0, 1e9, 1e300}) {
    const BoxProjection box(ViewAt(30, 30), kBox, {{{0, unit, 5}, {-unit, unit, 4}, {unit, 2 * unit, 4}}}, 1);
    EXPECT_EQ(box.ToDevice(unit / 2, 0, 1.5 * unit),
              BoxProjection(ViewAt(30, 30), kBox, kLimits, 1).ToDevice(5, 0, 300));
    const DevicePoint away = box.ToDevice(0, 0, 1e5 * unit);
    EXPECT_LT(away.y, -1'000'000);
  }
}

}  // namespace
}  // namespace quorvex
