#include <gtest/gtest.h>

#include <set>

#include "drawing/EmfReader.h"
#include "drawing/MetafileSurface.h"
#include "drawing/RecordingSurface.h"

namespace quorvex {
namespace {

using Calls = std::vector<std::string>;

class MetafileSurfaceTest : public testing::Test {
 protected:
  EmfReader Read() {
    EXPECT_NE(surface.CloseEnhMetaFile(), 0u);
    return EmfReader(surface.Metafile().value_or(""));
  }
  Calls Only(std::initializer_list<std::string_view> words) { return Read().Only(words); }

  RecordingSurface target{400, 300};
  MetafileSurface surface{target, {10600, 7900}, std::string("Maker\0Picture\0\0", 15)};
};

TEST_F(MetafileSurfaceTest, BeginsWithAHeaderThatTellsSizesAndDescription) {
  const EmfReader file = Read();
  const std::pair<std::size_t, std::int32_t> kFields[] = {
      {8, 0},           {12, 0},       {16, 399},   {20, 299},   // bounds, the last row and column within
      {24, 0},          {28, 0},       {32, 10600}, {36, 7900},  // frame
      {40, 0x464D4520}, {44, 0x10000}, {60, 15},    {64, 108},   // signature, version, description
      {68, 0},          {72, 400},     {76, 300},                // palette, device
      {80, 106},        {84, 79},      {88, 0},     {92, 0},     // millimetres
      {96, 0},          {100, 106000}, {104, 79000}};            // micrometres
  for (const auto& [at, value] : kFields) EXPECT_EQ(file.I32(at), value) << at;
  EXPECT_EQ(file.Text(108, 15), std::string("Maker\0Picture\0\0", 15));
}

TEST_F(MetafileSurfaceTest, JoinsStepsToLinesAndEndsThemWithTheirPen) {
  {
    const SelectedObject pen(surface, surface.CreatePen(0, 3, 0x0000FF));
    surface.MoveToEx(1, 1);
    for (const DevicePoint point : {DevicePoint{5, 9}, {9, 2}, {14, 20}}) surface.LineTo(point.x, point.y);
    DrawLine(surface, {0, 0}, {7, 8});
    DrawLine(surface, {-900000, 5}, {900000, 6});
    const SelectedObject second(surface, surface.CreatePen(0, 1, 0));
    DrawLine(surface, {3, 3}, {5, 5});
  }
  EXPECT_EQ(Only({"SelectObject", "Line"}),
            (Calls{"SelectObject 1", "Line 1 1 5 9 9 2 14 20", "Line 0 0 7 8", "Line -900000 5 900000 6",
                   "SelectObject 2", "Line 3 3 5 5", "SelectObject 1", "SelectObject 2147483655"}));
}

// In a font of 12 units every character is 6 wide; a character beyond the first plane is two units of text.
TEST_F(MetafileSurfaceTest, TellsTheWayFromCharacterToCharacter) {
  const SelectedObject font(surface, surface.CreateFontIndirectA({.Height = -12, .Escapement = 900, .FaceName = "A"}));
  surface.TextOutA(5, 90, "\u00C4\u03B1\u2082");
  surface.TextOutA(5, 70, "a\U0001D6FDb");
  surface.TextOutA(5, 60, "");
  surface.TextOutA(5, 50, "1 \xB5m");  // no UTF-8
  const EmfReader file = Read();
  EXPECT_EQ(file.Only({"TextOutA"}),
            (Calls{"TextOutA 5 90 \u00C4\u03B1\u2082", "TextOutA 5 70 a\U0001D6FDb", "TextOutA 5 50 1 \u00B5m"}));
  EXPECT_EQ(file.Advances, (std::vector<std::vector<std::int32_t>>{{6, 6, 6}, {6, 6, 0, 6}, {6, 6, 6, 6}}));
}

TEST_F(MetafileSurfaceTest, CutsTheNameOfAFontToItsRoom) {
  const SurfaceObject font(surface, surface.CreateFontIndirectA({.FaceName = std::string(500, 'x')}));
  EXPECT_EQ(Only({"CreateFontIndirectA"}), Calls{"CreateFontIndirectA 0 0 400 0 0 0 2 " + std::string(31, 'x')});
}

TEST_F(MetafileSurfaceTest, TurnsRegionsIntoShapesAndClips) {
  const DevicePoint kTriangle[] = {{10, 10}, {30, 10}, {20, 40}};
  {
    const SurfaceObject area(surface, surface.CreatePolygonRgn(kTriangle, 1)),
        brush(surface, surface.CreateSolidBrush(0x00FF00));
    surface.FillRgn(area, brush);
    const ClipRectangle clip(surface, 5, 6, 105, 206);
    surface.SelectClipRgn(area);
  }
  const EmfReader file = Read();
  // With the edges' own pixels; a file's rectangle lacks its last ones.
  EXPECT_EQ(file.Only({"Polygon", "IntersectClipRect", "SelectClipRgn"}),
            (Calls{"Polygon 10 10 30 10 20 40", "SelectClipRgn 0", "IntersectClipRect 5 6 106 207", "SelectClipRgn 0",
                   "Polygon 10 10 30 10 20 40", "SelectClipRgn 0"}));
  for (const std::uint32_t kind : {59u, 60u, 67u}) EXPECT_TRUE(file.Kinds.contains(kind));  // of a path
}

// A dash of width 1 is 12 long and leaves 4, so ten of them go round a square of 160, and run on at its corners.
TEST_F(MetafileSurfaceTest, DrawsThePatternOfAnOutlineAsStrokes) {
  const DevicePoint kSquare[] = {{0, 0}, {40, 0}, {40, 40}, {0, 40}};
  const SelectedObject pen(surface, surface.CreatePen(1, 1, 0x0000FF)), brush(surface, surface.CreateSolidBrush(0xFF));
  surface.Polygon(kSquare);
  EXPECT_EQ(Only({"Polygon", "Line"}),
            (Calls{"Polygon 0 0 40 0 40 40 0 40", "Line 32 0 40 0 40 4", "Line 8 40 0 40 0 36", "Line 0 0 12 0",
                   "Line 16 0 28 0", "Line 40 8 40 20", "Line 40 24 40 36", "Line 12 40 24 40", "Line 28 40 40 40",
                   "Line 0 4 0 16", "Line 0 20 0 32"}));
}

// The second has another sense of rotation, the third folds back over the second: both are on one side of their edge.
TEST_F(MetafileSurfaceTest, LetsFacetsReachUnderLaterNeighbours) {
  const SelectedObject none(surface, surface.CreatePen(5, 0, 0));
  const SelectedObject brush(surface, surface.CreateSolidBrush(0x123456));
  {
    const FacetScope facets(surface);
    surface.Polygon(std::array<DevicePoint, 3>{{{10, 10}, {30, 10}, {20, 40}}});
    surface.Polygon(std::array<DevicePoint, 4>{{{20, 40}, {50, 40}, {50, 10}, {30, 10}}});
    surface.Polygon(std::array<DevicePoint, 3>{{{50, 40}, {50, 10}, {45, 20}}});
  }
  surface.Polygon(std::array<DevicePoint, 3>{{{30, 10}, {10, 10}, {20, 0}}});  // no facet
  EXPECT_EQ(Only({"CreateSolidBrush", "Polygon"}),
            (Calls{"CreateSolidBrush 1193046", "CreateSolidBrush 1193046", "Polygon 10 10 30 10 50 10 50 40 20 40",
                   "Polygon 30 10 50 10 50 40 20 40", "Polygon 45 20 50 10 50 40", "Polygon 30 10 10 10 20 0"}));
}

TEST_F(MetafileSurfaceTest, ShadesATriangleInEachColourOfItsRamp) {
  const std::vector<std::int32_t> ramp = {0x0000FF, 0x00FF00, 0xFF0000};
  surface.ShadeTriangle({DevicePoint{0, 0}, {90, 0}, {0, 90}}, {0, 1, 0}, ramp);
  EXPECT_EQ(Only({"CreateSolidBrush", "Polygon"}),
            (Calls{"CreateSolidBrush 255", "Polygon 0 0 90 0 0 90", "CreateSolidBrush 65280", "Polygon 30 0 90 0 30 60",
                   "CreateSolidBrush 16711680", "Polygon 60 0 90 0 60 30"}));
}

TEST_F(MetafileSurfaceTest, CountsThePlacesOfItsObjects) {
  for (int i = 0; i < 3; ++i) {
    std::vector<SurfaceObject> pens;
    for (int k = 0; k < 100; ++k) pens.emplace_back(surface, surface.CreatePen(0, k, k));
  }
  EXPECT_EQ(Read().U16(56), 101u);
}

}  // namespace
}  // namespace quorvex
