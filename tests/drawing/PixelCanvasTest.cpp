#include <gtest/gtest.h>

#include <numbers>
#include <numeric>
#include <random>

#include "RecordingSurface.h"
#include "drawing/PixelCanvas.h"

namespace quorvex {
namespace {

using Polygon = std::vector<DevicePoint>;
constexpr int kWidth = 90, kHeight = 70;
constexpr std::int32_t kPixel = PixelCanvas::kUnitsPerPixel, kBlack = 0, kWhite = 0xFFFFFF;
constexpr std::uint32_t kWhitePixel = 0xFFFFFFFF;

struct Picture {
  std::vector<std::uint32_t> Pixels = std::vector<std::uint32_t>((kWidth + 3) * kHeight, kWhitePixel);
  PixelCanvas Canvas{Pixels.data(), kWidth + 3, kWidth, kHeight};

  std::uint32_t At(int x, int y) const { return Pixels[static_cast<std::size_t>(y * (kWidth + 3) + x)]; }
  double Ink(int x, int y) const { return (255 - (At(x, y) & 0xFF)) / 255.0; }  // of a black pen
  double Ink() const {
    double ink = 0;
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x) ink += Ink(x, y);
    return ink;
  }
};

// By the definition, in whole numbers: an odd number of edges lies left of the place or goes through it.
bool HoldsPlace(const Polygon& polygon, std::int64_t x, std::int64_t y) {
  bool inside = false;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    DevicePoint a = polygon[i], b = polygon[(i + 1) % polygon.size()];
    if (a.y > b.y) std::swap(a, b);
    if (y >= a.y && y < b.y && (x - a.x) * (std::int64_t{b.y} - a.y) >= (y - a.y) * (std::int64_t{b.x} - a.x))
      inside = !inside;
  }
  return inside;
}

bool Holds(const Polygon& polygon, int column, int row) { return HoldsPlace(polygon, column * kPixel, row * kPixel); }

DevicePoint RandomPoint(std::mt19937& random, std::int32_t beyond) {
  const auto within = [&](int pixels) {
    return std::uniform_int_distribution<std::int32_t>(-beyond, pixels * kPixel + beyond)(random);
  };
  return {within(kWidth), within(kHeight)};
}

TEST(PixelCanvas, FillsThePixelsWhoseMiddleLiesInside) {
  std::mt19937 random(11);
  for (const std::int32_t beyond : {0, 300, 1'000'000, 1'000'000'000})
    for (int corners = 3; corners <= 20; ++corners)
      for (int round = 0; round < 6; ++round) {
        Polygon polygon;
        for (int i = 0; i < corners; ++i) {
          polygon.push_back(RandomPoint(random, beyond));
          if (i % 4 == 1) polygon.back() = {polygon.back().x / kPixel * kPixel, polygon.back().y / kPixel * kPixel};
          if (i % 5 == 4) polygon.back().y = polygon[polygon.size() - 2].y;
        }
        Picture picture;
        const bool clips = round % 2 == 1;
        if (clips) picture.Canvas.SetClip({20, 15, 70, 1000});
        picture.Canvas.Fill(polygon, 0x0A141E);
        for (int y = 0; y < kHeight; ++y)
          for (int x = 0; x < kWidth; ++x)
            ASSERT_EQ(picture.At(x, y),
                      Holds(polygon, x, y) && (!clips || (x >= 20 && x < 70 && y >= 15)) ? 0xFF1E140Au : kWhitePixel)
                << corners << " corners, beyond " << beyond << ", at " << x << ", " << y;
      }
}

int Painted(const std::vector<Polygon>& facets, std::vector<int>& times) {
  times.assign(kWidth * kHeight, 0);
  for (const Polygon& facet : facets) {
    Picture picture;
    picture.Canvas.Fill(facet, kBlack);
    for (int i = 0; i < kWidth * kHeight; ++i)
      times[static_cast<std::size_t>(i)] += picture.At(i % kWidth, i / kWidth) != kWhitePixel;
  }
  return std::accumulate(times.begin(), times.end(), 0);
}

TEST(PixelCanvas, GivesEachPixelToOneOfTheFacetsThatShareCorners) {
  std::mt19937 random(3);
  std::vector<int> times;
  for (const std::int32_t shake : {0, 3, 20}) {  // of the nodes, in device units
    constexpr int kNodes = 12;
    const std::int32_t across = (kWidth + 20) * kPixel / (kNodes - 1), down = (kHeight + 20) * kPixel / (kNodes - 1);
    std::uniform_int_distribution<std::int32_t> off(-shake, shake);
    std::vector<DevicePoint> nodes;
    for (int j = 0; j < kNodes; ++j)
      for (int i = 0; i < kNodes; ++i)
        nodes.push_back({i * across - 10 * kPixel + off(random), j * down - 10 * kPixel + off(random)});
    std::vector<Polygon> facets;
    for (std::size_t j = 0; j + 1 < kNodes; ++j)
      for (std::size_t i = 0; i + 1 < kNodes; ++i) {
        const std::size_t at = j * kNodes + i;
        Polygon cell = {nodes[at], nodes[at + 1], nodes[at + kNodes + 1], nodes[at + kNodes]};
        std::rotate(cell.begin(), cell.begin() + static_cast<std::ptrdiff_t>(random() % 4), cell.end());
        if (random() % 2 == 0) std::reverse(cell.begin(), cell.end());
        facets.push_back(std::move(cell));
      }
    EXPECT_EQ(Painted(facets, times), kWidth * kHeight);
    EXPECT_EQ(std::count(times.begin(), times.end(), 1), kWidth * kHeight) << "shaken by " << shake;
  }
  // A fan about a point, its rim far outside.
  for (int round = 0; round < 20; ++round) {
    const DevicePoint hub = RandomPoint(random, 0);
    std::vector<DevicePoint> rim;
    for (int i = 0; i < 12; ++i) {
      const double angle = 2 * std::numbers::pi * (i + 0.6 * static_cast<double>(random() % 100) / 100) / 12;
      rim.push_back(
          {static_cast<std::int32_t>(9e8 * std::cos(angle)), static_cast<std::int32_t>(9e8 * std::sin(angle))});
    }
    std::vector<Polygon> facets;
    for (std::size_t i = 0; i < rim.size(); ++i)
      facets.push_back(i % 2 == 0 ? Polygon{hub, rim[i], rim[(i + 1) % rim.size()]}
                                  : Polygon{rim[(i + 1) % rim.size()], rim[i], hub});
    Painted(facets, times);
    EXPECT_EQ(std::count(times.begin(), times.end(), 1), kWidth * kHeight);
  }
}

std::vector<std::int32_t> Ramp(int colours) {
  std::vector<std::int32_t> ramp;
  for (int i = 0; i < colours; ++i) ramp.push_back(i);  // shades of red, told by their number
  return ramp;
}
int ColourNumber(std::uint32_t pixel) { return static_cast<int>(pixel >> 16 & 0xFF); }

TEST(PixelCanvas, ShadesByTheBarycentricFormula) {
  std::mt19937 random(5);
  std::uniform_real_distribution<double> place(-0.2, 1.2);
  int near = 0, painted = 0;
  for (const std::int32_t beyond : {0, 300, 1'000'000'000})
    for (const int colours : {1, 2, 20, 256})
      for (int round = 0; round < 20; ++round) {
        const std::array<DevicePoint, 3> corners = {RandomPoint(random, beyond), RandomPoint(random, beyond),
                                                    RandomPoint(random, beyond)};
        const std::array<double, 3> places = {place(random), place(random), place(random)};
        const auto [a, b, c] = corners;
        Picture picture;
        picture.Canvas.Shade(corners, places, Ramp(colours));
        const long double area = (static_cast<long double>(b.x) - a.x) * (static_cast<long double>(c.y) - a.y) -
                                 (static_cast<long double>(b.y) - a.y) * (static_cast<long double>(c.x) - a.x);
        for (int y = 0; y < kHeight; ++y)
          for (int x = 0; x < kWidth; ++x) {
            if (!Holds({a, b, c}, x, y)) {
              ASSERT_EQ(picture.At(x, y), kWhitePixel);
              continue;
            }
            const long double px = x * kPixel - a.x, py = y * kPixel - a.y;
            const long double ofB =
                (px * (static_cast<long double>(c.y) - a.y) - py * (static_cast<long double>(c.x) - a.x)) / area;
            const long double ofC =
                (py * (static_cast<long double>(b.x) - a.x) - px * (static_cast<long double>(b.y) - a.y)) / area;
            const long double at =
                std::clamp((1 - ofB - ofC) * places[0] + ofB * places[1] + ofC * places[2], 0.0L, 1.0L) * colours;
            const int expected = std::min(static_cast<int>(at), colours - 1);
            ++painted;
            // Where a colour ends the last digit decides.
            if (std::abs(at - std::round(at)) < 1e-9L)
              ++near;
            else
              ASSERT_EQ(ColourNumber(picture.At(x, y)), expected) << "at " << x << ", " << y << " of " << colours;
          }
      }
  EXPECT_LT(near, painted / 2);  // the clamped ones
}

// Fills polygons on a canvas, and cuts triangles as any surface does that has no pixels.
class FillingSurface : public RecordingSurface {
 public:
  explicit FillingSurface(PixelCanvas& canvas) : canvas_(canvas) {}
  void Polygon(std::span<const DevicePoint> points) override { canvas_.Fill(points, *Objects().Brush().Colour); }
  void ShadeTriangle(const std::array<DevicePoint, 3>& corners, const std::array<double, 3>& places,
                     std::span<const std::int32_t> ramp) override {
    DrawingSurface::ShadeTriangle(corners, places, ramp);
  }

 private:
  PixelCanvas& canvas_;
};

TEST(PixelCanvas, ShadesAsASurfaceWithoutPixelsDoes) {
  std::mt19937 random(8);
  std::uniform_real_distribution<double> place(-0.3, 1.3);
  int all = 0, different = 0;
  for (int round = 0; round < 200; ++round) {
    const std::array<DevicePoint, 3> corners = {RandomPoint(random, 100), RandomPoint(random, 100),
                                                RandomPoint(random, 100)};
    const std::array<double, 3> places = {place(random), place(random), place(random)};
    const std::vector<std::int32_t> ramp = Ramp(round % 2 == 0 ? 6 : 16);
    // In a sliver a colour may be narrower than the units that cuts are rounded to.
    const auto [a, b, c] = corners;
    if (std::abs((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x)) < 1000 * kPixel * kPixel) continue;
    Picture shaded, cut;
    shaded.Canvas.Shade(corners, places, ramp);
    FillingSurface(cut.Canvas).ShadeTriangle(corners, places, ramp);
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x) {
        if (shaded.At(x, y) == kWhitePixel) continue;
        const int steps = ColourNumber(shaded.At(x, y)) - ColourNumber(cut.At(x, y));
        ++all;
        different += steps != 0;
        // The pieces' corners are rounded, so a pixel on the triangle's edge may be outside of its own.
        bool within = true;
        for (const int off : {-1, 1})
          within = within && HoldsPlace({a, b, c}, x * kPixel + off, y * kPixel) &&
                   HoldsPlace({a, b, c}, x * kPixel, y * kPixel + off);
        ASSERT_TRUE(!within || std::abs(steps) <= 1) << "at " << x << ", " << y;
      }
  }
  EXPECT_GT(all, 20000);
  EXPECT_LT(different, all / 50);
}

TEST(PixelCanvas, InksALineByItsWidthTimesItsLength) {
  for (const double width : {1.0, 2.0, 3.0, 7.0, 10.0})
    for (int degrees = 0; degrees < 180; degrees += 5) {
      const double angle = degrees * std::numbers::pi / 180;
      const auto corner = [&](double side) {
        return DevicePoint{static_cast<std::int32_t>(std::lrint((45.3 + side * 25 * std::cos(angle)) * kPixel)),
                           static_cast<std::int32_t>(std::lrint((34.6 + side * 25 * std::sin(angle)) * kPixel))};
      };
      const Polygon line = {corner(-1), corner(1)};  // there and back
      const double length = std::hypot(line[1].x - line[0].x, line[1].y - line[0].y) / kPixel;
      Picture picture;
      picture.Canvas.Outline(line, {.Width = width});
      // The two ends are halves of a disc whose edge falls off over a pixel.
      const double ends = std::numbers::pi * (width * width / 4 + 1 / 12.0);
      // At 45 degrees the rows of pixels lie 0.71 apart, and coverage that falls off over 1 does not sum up evenly.
      EXPECT_NEAR(picture.Ink() / length, width + ends / length, degrees % 90 == 45 ? 0.08 : 0.03)
          << width << " wide at " << degrees << " degrees";
    }
}

// Down a column, or along a row where it is steep, a line of a pixel's width inks as much as it is thick there.
TEST(PixelCanvas, InksAThinLineEvenly) {
  std::mt19937 random(31);
  for (int round = 0; round < 200; ++round) {
    const Polygon line = {RandomPoint(random, -3 * kPixel), RandomPoint(random, -3 * kPixel)};
    const bool steep = std::abs(line[1].y - line[0].y) > std::abs(line[1].x - line[0].x);
    const auto along = [&](DevicePoint at) { return (steep ? at.y : at.x) / double{kPixel}; };
    const auto [from, to] = std::minmax({along(line[0]), along(line[1])});
    const double thickness =
        std::hypot(line[1].x - line[0].x, line[1].y - line[0].y) / std::max((to - from) * kPixel, 1.0);
    Picture picture;
    picture.Canvas.Outline(line, {});
    for (int step = 0; step < (steep ? kHeight : kWidth); ++step) {
      double ink = 0;
      for (int across = 0; across < (steep ? kWidth : kHeight); ++across)
        ink += steep ? picture.Ink(across, step) : picture.Ink(step, across);
      ASSERT_NEAR(ink, step > from - 0.5 && step <= to + 0.5 ? thickness : 0, 4 / 255.0) << "round " << round;
    }
  }
}

// The coverage by its definition: from the distance of the nearest side.
TEST(PixelCanvas, InksRoundCornersOnce) {
  std::mt19937 random(21);
  for (int round = 0; round < 120; ++round) {
    const double width = 2 + round % 6;
    const std::int32_t beyond = round % 4 == 3 ? 1'000'000'000 : 40;
    Polygon polygon;
    for (int i = 0; i < 3 + round % 5; ++i) polygon.push_back(RandomPoint(random, beyond));
    polygon.push_back(polygon.back());
    Picture picture;
    if (round % 3 == 0) picture.Canvas.SetClip({-5, 10, 50, 60});
    picture.Canvas.Outline(polygon, {.Width = width, .FlatEnds = true});
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x) {
        double distance = 1e9;
        for (std::size_t i = 0; i < polygon.size(); ++i) {
          const DevicePoint from = polygon[i], to = polygon[(i + 1) % polygon.size()];
          const double ax = 1.0 * from.x / kPixel - x, ay = 1.0 * from.y / kPixel - y;
          const double dx = (1.0 * to.x - from.x) / kPixel, dy = (1.0 * to.y - from.y) / kPixel;
          const double square = dx * dx + dy * dy;
          const double t = square == 0 ? 0 : std::clamp(-(ax * dx + ay * dy) / square, 0.0, 1.0);
          distance = std::min(distance, std::hypot(ax + t * dx, ay + t * dy));
        }
        const bool clipped = round % 3 == 0 && (x >= 50 || y < 10 || y >= 60);
        // Coverage and mixture are each rounded to a step of a colour.
        ASSERT_NEAR(picture.Ink(x, y), clipped ? 0 : std::clamp(width / 2 + 0.5 - distance, 0.0, 1.0), 2.5 / 255)
            << "round " << round << " at " << x << ", " << y;
      }
  }
}

TEST(PixelCanvas, WalksAPatternRoundEachPolygonAnew) {
  const Polygon frame = {
      {5 * kPixel, 5 * kPixel}, {80 * kPixel, 5 * kPixel}, {80 * kPixel, 60 * kPixel}, {5 * kPixel, 60 * kPixel}};
  const struct {
    int style;
    std::int32_t width;
    double scale;
    std::vector<double> pattern;
  } cases[] = {{1, 1, 1, {12, 4}},
               {1, 1, 2, {24, 8}},
               {2, 1, 1, {4, 4}},
               {3, 1, 1, {18, 5, 4, 5}},
               {4, 1, 1.5, {18, 6, 6, 6, 6, 6}},
               {4, 10, 1, {26, 14, 4, 14, 4, 14}}};
  for (const auto& c : cases) {
    Picture picture;
    const CanvasPen pen{.Pattern = {c.style, c.width, c.scale}, .FlatEnds = true};
    picture.Canvas.Outline(frame, pen);
    picture.Canvas.Outline(frame, pen);  // the same pixels
    const double period = std::accumulate(c.pattern.begin(), c.pattern.end(), 0.0);
    for (int along = 2; along < 75 + 55; ++along) {
      if (std::abs(along - 75) < 2) continue;  // round the corner two strokes may meet
      double rest = std::fmod(along, period), away = 1;
      std::size_t element = 0;
      for (; rest >= c.pattern[element]; ++element) rest -= c.pattern[element];
      away = std::min(rest, c.pattern[element] - rest);
      if (away < 0.6) continue;
      const int x = along < 75 ? 5 + along : 80, y = along < 75 ? 5 : 5 + along - 75;
      EXPECT_EQ(picture.Ink(x, y), element % 2 == 0 ? 1 : 0) << "style " << c.style << " at " << along;
    }
  }
}

// Strokes of 12 pixels, 4 wide, with gaps of 4: the first two go from column 10 to 22 and from 26 to 38.
TEST(PixelCanvas, EndsStrokesRoundUnlessTold) {
  const Polygon frame = {
      {10 * kPixel, 30 * kPixel}, {85 * kPixel, 30 * kPixel}, {85 * kPixel, 300 * kPixel}, {10 * kPixel, 300 * kPixel}};
  for (const bool flat : {true, false}) {
    Picture picture;
    picture.Canvas.Outline(frame, {.Width = 4, .Pattern = {1, 1, 1}, .FlatEnds = flat});
    for (const int column : {23, 25, 39}) {
      EXPECT_EQ(picture.Ink(column, 30), flat ? 0 : 1);
      EXPECT_NEAR(picture.Ink(column, 32), flat ? 0 : 2.5 - std::sqrt(5), 0.01);
    }
    EXPECT_EQ(picture.Ink(21, 31), 1);
  }
}

// The sanitizers look on.
TEST(PixelCanvas, TakesCornersAndPlacesOfAnySize) {
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max(),
                         kLeast = std::numeric_limits<std::int32_t>::min();
  const double inf = std::numeric_limits<double>::infinity(), nan = std::nan("");
  Picture picture;
  const std::array<DevicePoint, 3> corners = {DevicePoint{kLeast, kLeast}, {kMost, kLeast}, {0, kMost}};
  for (const std::array<double, 3>& places : {std::array{inf, -inf, 0.0}, {nan, 0.0, 1.0}, {1e300, -1e300, 1e308}})
    picture.Canvas.Shade(corners, places, Ramp(7));
  picture.Canvas.Shade(corners, {0, 0, 0}, {});
  picture.Canvas.Fill(corners, 0x010203);
  EXPECT_EQ(picture.At(kWidth / 2, kHeight / 2), 0xFF030201u);
  for (int style = 0; style < 5; ++style)
    for (const double width : {1.0, 200.0}) picture.Canvas.Outline(corners, {.Width = width, .Pattern = {style, 1, 1}});
  picture.Canvas.Outline({}, {});
  picture.Canvas.Fill({}, kWhite);
  picture.Canvas.SetClip({50, 50, 10, 10});
  picture.Canvas.Fill(corners, kWhite);
  EXPECT_NE(picture.At(kWidth / 2, kHeight / 2), kWhitePixel);
}

}  // namespace
}  // namespace quorvex
