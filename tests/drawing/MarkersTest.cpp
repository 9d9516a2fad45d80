#include <gtest/gtest.h>

#include "RecordingSurface.h"
#include "drawing/Markers.h"

namespace quorvex {
namespace {

using Calls = std::vector<std::string>;

TEST(DrawMarkers, DrawsEachStyleAroundItsPoint) {
  const Calls up = {"MoveToEx 50 37", "LineTo 47 43", "LineTo 53 43", "LineTo 50 37"};
  const Calls down = {"MoveToEx 50 43", "LineTo 47 37", "LineTo 53 37", "LineTo 50 43"};
  const Calls cases[] = {{"Ellipse 47 37 53 43"},
                         {"Rectangle 47 37 53 43"},
                         {"MoveToEx 47 37", "LineTo 53 43", "MoveToEx 47 43", "LineTo 53 37"},
                         {"MoveToEx 50 37", "LineTo 50 43", "MoveToEx 47 40", "LineTo 53 40"},
                         up,
                         down,
                         {"Ellipse 47 37 53 43"},
                         {"Rectangle 47 37 53 43"},
                         {"Polygon 50 37 47 43 53 43", "CreatePolygonRgn 50 37 47 43 53 43 1 = 7"},
                         {"Polygon 50 43 47 37 53 37", "CreatePolygonRgn 50 43 47 37 53 37 1 = 7"},
                         {}};
  const std::int32_t x[] = {50}, y[] = {40};
  for (int style = 0; style <= 10; ++style) {
    RecordingSurface surface;
    DrawMarkers(surface, x, y, 99, style, 3, 2);
    EXPECT_EQ(surface.Only({"MoveToEx", "LineTo", "Ellipse", "Rectangle", "Polygon", "CreatePolygonRgn"}), cases[style])
        << style;
    EXPECT_EQ(surface.ObjectCount(), 0u);
    EXPECT_EQ(surface.Objects().Pen().Colour, 0);  // what was in use before is in use again
    EXPECT_EQ(surface.Objects().Brush().Colour, 0xFFFFFF);
    const bool filled = style >= 6 && style <= 9;
    EXPECT_EQ(surface.Only({"CreateSolidBrush"}), (filled ? Calls{"CreateSolidBrush 99 = 5"} : Calls{}));
    const Calls pens = surface.Only({"CreatePen"});
    ASSERT_EQ(pens.size(), style < 10 ? 1u : 0u);
    if (pens.empty()) continue;
    EXPECT_EQ(pens[0], filled ? "CreatePen 0 2 99 = 6" : "CreatePen 0 2 99 = 5");
  }
}

TEST(DrawMarkers, DrawsOneOfSeveralOnAPixelAndNoneFarOff) {
  RecordingSurface surface;
  const std::int32_t xs[] = {5, 5, 60000, 5, 6, 50000, 50001, 5}, ys[] = {5, 5, 0, 5, 5, -50000, 0, 5};
  DrawMarkers(surface, xs, ys, 0, 0, 1, 1);
  EXPECT_EQ(surface.Only({"Ellipse"}),
            (Calls{"Ellipse 4 4 6 6", "Ellipse 5 4 7 6", "Ellipse 49999 -50001 50001 -49999", "Ellipse 4 4 6 6"}));
}

TEST(MulDiv, RoundsHalvesAwayFromZero) {
  const struct {
    std::int32_t a, b, c, result;
  } cases[] = {{10, 96, 72, 13},      {8, 600, 72, 67}, {3, 1, 2, 2},  {-3, 1, 2, -2},
               {3, 1, -2, -2},        {1, 1, 3, 0},     {5, 7, 0, -1}, {2147483647, 2147483647, 2147483647, 2147483647},
               {2147483647, 2, 1, -1}};
  for (const auto& c : cases) EXPECT_EQ(MulDiv(c.a, c.b, c.c), c.result) << c.a << ' ' << c.b << ' ' << c.c;
}

TEST(PenScale, GivesLinesTheWeightTheyHaveOnAScreen) {
  for (const auto& [perInch, scale] : {std::pair{96, 1}, {72, 1}, {192, 2}, {600, 6}, {1200, 12}, {40, 1}})
    EXPECT_EQ(RecordingSurface(400, 300, perInch).PenScale(), scale) << perInch;
}

}  // namespace
}  // namespace quorvex
