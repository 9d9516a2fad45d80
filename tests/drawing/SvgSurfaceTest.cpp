#include <gtest/gtest.h>

#include "Golden.h"
#include "RecordingSurface.h"
#include "core/XmlText.h"
#include "drawing/SvgSurface.h"
#include "drawing/SvgText.h"

namespace quorvex {
namespace {

// 8 units to a pixel, as on screen.
class FineSurface : public RecordingSurface {
 public:
  FineSurface() : RecordingSurface(80 * 8, 60 * 8, 96 * 8) {}
  std::int32_t UnitsPerPixel() const override { return 8; }
};

// One of each operation, in an order that groups and splits them.
TEST(SvgSurface, WritesWhatIsDrawn) {
  FineSurface measures;
  SvgSurface svg(measures);
  {
    const SelectedObject pen(svg, svg.CreatePen(0, 8, 0x0000FF));
    svg.Rectangle(0, 0, 640, 480);
    const SurfaceObject window(svg, svg.CreateRectRgn(80, 80, 400, 320));
    svg.SelectClipRgn(window);
    svg.MoveToEx(80, 100);  // a curve, and one that leaves the page
    svg.LineTo(96, 101);
    svg.LineTo(160, 250);
    svg.MoveToEx(80, 200);
    svg.LineTo(1 << 30, 201);
    svg.Ellipse(100, 100, 116, 116);
    svg.SelectClipRgn(0);
  }
  {
    const SelectedObject pen(svg, svg.CreatePen(0, 16, 0x00FF00));
    const Selection hollow(svg, svg.GetStockObject(5));
    svg.MoveToEx(80, 80);  // a frame
    for (const DevicePoint corner : {DevicePoint{400, 80}, {400, 320}, {80, 320}, {80, 80}})
      svg.LineTo(corner.x, corner.y);
    const DevicePoint triangle[] = {{100, 100}, {120, 140}, {80, 140}};
    svg.Polygon(triangle);
    const SurfaceObject region(svg, svg.CreatePolygonRgn(triangle, 1)), brush(svg, svg.CreateSolidBrush(0xFF0000));
    svg.FillRgn(region, brush);
    svg.SelectClipRgn(region);
    svg.FillRgn(region, brush);
    svg.SelectClipRgn(0);
  }
  {
    const FacetScope facets(svg);
    const SelectedObject brush(svg, svg.CreateSolidBrush(0x808080));
    const DevicePoint cell[] = {{101, 101}, {133, 101}, {133, 133}};
    for (const auto& [style, width] : {std::pair{5, 1}, {0, 8}, {2, 8}, {1, 24}}) {
      const SelectedObject pen(svg, svg.CreatePen(style, width, 0x202020));
      svg.Polygon(cell);
    }
    const std::array<DevicePoint, 3> corners = {{{80, 80}, {160, 80}, {80, 160}}};
    const std::int32_t even[] = {0, 0x7F7F7F, 0xFFFFFF}, uneven[] = {0, 0xFFFFFF, 0};
    svg.ShadeTriangle(corners, {0, 1, 0}, even);
    svg.ShadeTriangle(corners, {0.25, 0.5, 0.75}, uneven);
    svg.ShadeTriangle(corners, {0.5, 0.5, 0.5}, even);
    svg.ShadeTriangle({{{80, 80}, {160, 160}, {240, 240}}}, {0, 1, 0.5}, even);  // nothing to be seen
  }
  svg.TextOutA(80, 80, "on white");
  svg.SetBkMode(1);
  svg.SetTextColor(0xFF00FF);
  {
    const SelectedObject font(svg, svg.CreateFontIndirectA({-104, 900, 700, true, true, true, 2, "A'b"}));
    svg.TextOutA(80, 80, "a<b");
  }
  ExpectGolden("Surface.svg", svg.Document("T & t", "\"d\""));
  EXPECT_EQ(measures.ObjectCount(), 0u);
}

TEST(SvgText, IsHarmless) {
  const std::pair<std::string, std::string> texts[] = {
      {"", ""},
      {"a<b>&\"'", "a&lt;b&gt;&amp;&quot;'"},
      {"1\t2\r\n3", "1 2  3"},
      {std::string("\0\x01\x1F\x7F", 4), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
      {"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"},
      {"\xC3", "\xEF\xBF\xBD"},                                    // cut off
      {"\xC0\xAF|", "\xEF\xBF\xBD\xEF\xBF\xBD|"},                  // overlong
      {"\xED\xA0\x80|", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD|"},  // a surrogate
      {"\xEF\xBF\xBF|", "\xEF\xBF\xBD|"}};                         // U+FFFF
  for (const auto& [text, xml] : texts) EXPECT_EQ(XmlText(text), xml);
  EXPECT_EQ(SvgFontFamily(""), "sans-serif");
  EXPECT_EQ(SvgFontFamily("Liberation Sans"), "'Liberation Sans',sans-serif");
  EXPECT_EQ(SvgFontFamily("a'\\\"<"), "'a\\'\\\\&quot;&lt;',sans-serif");
}

TEST(SvgText, WritesNumbersAndColours) {
  const std::pair<double, const char*> numbers[] = {{0, "0"},          {-0.0, "0"},           {-0.0004, "0"},
                                                    {0.125, "0.125"},  {-12.0625, "-12.063"}, {1e9, "1000000000"},
                                                    {1.0 / 3, "0.333"}};
  for (const auto& [value, text] : numbers) EXPECT_EQ(SvgNumber(value), text);
  EXPECT_EQ(SvgColour(0x123ABC), "#bc3a12");
  SvgPath path;
  path.Add({{0.5, 0.5}, {1, -1}, {1.0004, 0}}, false);
  path.Add({{2, 2}, {3, 3}}, true);
  EXPECT_EQ(path.Data(), "M0.5 0.5l0.5-1.5 0 1M2 2l1 1z");
}

}  // namespace
}  // namespace quorvex
