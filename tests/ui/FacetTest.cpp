// Facets of surfaces on the Qt surface: straight on an image's pixels, and through the painter elsewhere.

#include <gtest/gtest.h>

#include <QImage>
#include <QPicture>
#include <cmath>
#include <random>

#include "drawing/ui/QtSurface.h"
#include "plot/ui/PlotOutput.h"

namespace quorvex {
namespace {

constexpr std::int32_t kPixel = QtSurface::kUnitsPerPixel, kRed = 0x0000FF;
constexpr QRgb kWhitePixel = 0xFFFFFFFF, kRedPixel = 0xFFFF0000;
constexpr int kNoLine = 5, kHollow = 5;

void DrawPolygon(QtSurface& surface, const std::vector<DevicePoint>& corners) { surface.Polygon(corners); }

// Cells without outlines, each of an odd shape, that together fill the picture and more.
void DrawCells(QtSurface& surface, std::int32_t unit) {
  std::mt19937 random(4);
  constexpr int kNodes = 13;
  std::array<std::array<DevicePoint, kNodes>, kNodes> nodes;
  for (int j = 0; j < kNodes; ++j)
    for (int i = 0; i < kNodes; ++i)
      nodes[static_cast<std::size_t>(j)][static_cast<std::size_t>(i)] = {
          (i * 10 - 10) * unit + static_cast<std::int32_t>(random() % 40) * unit / 10,
          (j * 10 - 10) * unit + static_cast<std::int32_t>(random() % 40) * unit / 10};
  const SelectedObject pen(surface, surface.CreatePen(kNoLine, 1, 0));
  const SelectedObject brush(surface, surface.CreateSolidBrush(kRed));
  const FacetScope facets(surface);
  for (std::size_t j = 0; j + 1 < kNodes; ++j)
    for (std::size_t i = 0; i + 1 < kNodes; ++i)
      surface.Polygon(std::array{nodes[j][i], nodes[j][i + 1], nodes[j + 1][i + 1], nodes[j + 1][i]});
}

int Count(const QImage& image, const QRect& where, QRgb colour) {
  int count = 0;
  for (int y = where.top(); y <= where.bottom(); ++y)
    for (int x = where.left(); x <= where.right(); ++x) count += image.pixel(x, y) == colour;
  return count;
}

TEST(Facets, LeaveNoGapOnAnImage) {
  QImage image = BlankPicture({90, 90});
  {
    QtSurface surface(image);
    DrawCells(surface, kPixel);
  }
  EXPECT_EQ(Count(image, image.rect(), kRedPixel), 90 * 90);
}

TEST(Facets, StayWithinARectangularClip) {
  QImage image = BlankPicture({90, 90});
  {
    QtSurface surface(image);
    {
      const ClipRectangle clip(surface, 20 * kPixel, 30 * kPixel, 60 * kPixel, 70 * kPixel);
      DrawCells(surface, kPixel);
    }
    const SelectedObject brush(surface, surface.CreateSolidBrush(0));
    const FacetScope facets(surface);
    const DevicePoint corner{80 * kPixel, 80 * kPixel};
    DrawPolygon(surface, {corner, {corner.x + 40, corner.y}, {corner.x, corner.y + 40}});
  }
  EXPECT_EQ(Count(image, QRect(20, 30, 41, 41), kRedPixel), 41 * 41);  // the edges are within
  EXPECT_EQ(Count(image, image.rect(), kRedPixel), 41 * 41);
  EXPECT_EQ(image.pixel(81, 81), 0xFF000000);  // the clip is lifted
}

// What a canvas cannot: a clip along a path, a map, and a recording that is painted askew.
TEST(Facets, LeaveNoGapThroughThePainter) {
  QImage clipped = BlankPicture({90, 90}), mapped = BlankPicture({90, 90}), played = BlankPicture({90, 90});
  {
    QtSurface surface(clipped);
    const DevicePoint corners[] = {{-800, -800}, {8000, -800}, {-800, 8000}};
    const SurfaceObject region(surface, surface.CreatePolygonRgn(corners, 1));
    surface.SelectClipRgn(region);
    DrawCells(surface, kPixel);
  }
  {
    QtSurface surface(mapped);
    surface.SetMapMode(8);
    surface.SetWindowExtEx(1000, 1000);
    surface.SetViewportExtEx(100 * kPixel, 100 * kPixel);
    DrawCells(surface, 10);
  }
  QPicture recording;
  {
    QtSurface surface(recording);
    DrawCells(surface, 1);
  }
  {
    QPainter painter(&played);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.rotate(3);
    recording.play(&painter);
  }
  for (const QImage* image : {&clipped, &mapped, &played})
    for (int y = 0; y < 90; ++y)
      for (int x = 0; x < 90; ++x) {
        // Green and blue tell how much of the white ground shines through.
        ASSERT_LE(qGreen(image->pixel(x, y)), image == &played ? 40 : 10) << x << ", " << y;
      }
}

TEST(Facets, MixWithWhatThePainterDraws) {
  QImage image = BlankPicture({60, 60});
  const QImage before = image;  // shares its pixels with the image, until these are painted
  {
    QtSurface surface(image);
    const SelectedObject brush(surface, surface.CreateSolidBrush(kRed));
    const SelectedObject pen(surface, surface.CreatePen(0, kPixel, 0));
    surface.MoveToEx(0, 30 * kPixel);  // gathered, and to be painted first
    surface.LineTo(60 * kPixel, 30 * kPixel);
    {
      const FacetScope facets(surface);
      DrawPolygon(surface, {{80, 80}, {400, 80}, {400, 400}, {80, 400}});
    }
    surface.MoveToEx(30 * kPixel, 0);
    surface.LineTo(30 * kPixel, 60 * kPixel);
    const FacetScope facets(surface);
    surface.ShadeTriangle({DevicePoint{160, 160}, {240, 160}, {160, 240}}, {0, 0, 0}, std::array{0x00FF00});
  }
  EXPECT_EQ(image.pixel(5, 30), 0xFF000000);   // the line before,
  EXPECT_EQ(image.pixel(40, 30), kRedPixel);   // the facet over it,
  EXPECT_EQ(image.pixel(10, 40), 0xFF000000);  // its outline,
  EXPECT_EQ(image.pixel(30, 40), 0xFF000000);  // the line over that
  EXPECT_EQ(image.pixel(22, 22), 0xFF00FF00);  // and a triangle
  EXPECT_EQ(Count(before, before.rect(), kWhitePixel), 60 * 60);
}

TEST(Facets, AreShadedAlikeOnPixelsAndInPieces) {
  std::array<std::int32_t, 8> ramp;
  for (std::size_t i = 0; i < ramp.size(); ++i) ramp[i] = static_cast<std::int32_t>(i * 30);
  const std::array<DevicePoint, 3> corners = {DevicePoint{20, 30}, {690, 140}, {250, 700}};
  const std::array<double, 3> places = {0.1, 0.95, 0.5};
  QImage shaded = BlankPicture({90, 90}), cut = BlankPicture({90, 90});
  {
    QtSurface surface(shaded), cutting(cut);
    surface.ShadeTriangle(corners, places, ramp);
    const FacetScope facets(cutting);
    cutting.DrawingSurface::ShadeTriangle(corners, places, ramp);
  }
  int painted = 0, different = 0;
  for (int y = 0; y < 90; ++y)
    for (int x = 0; x < 90; ++x) {
      painted += shaded.pixel(x, y) != kWhitePixel;
      different += shaded.pixel(x, y) != cut.pixel(x, y);
    }
  EXPECT_GT(painted, 2500);
  EXPECT_LT(different, painted / 50);
}

// Whether as facets or not: a frame 320 units round from its first corner, in dashes of 12 and gaps of 4.
TEST(Facets, ShowThePatternOfThePenInTheirOutlines) {
  for (const bool joined : {true, false}) {
    QImage image = BlankPicture({120, 60});
    {
      QtSurface surface(image);
      const SelectedObject pen(surface, surface.CreatePen(1, kPixel, 0));
      const Selection brush(surface, surface.GetStockObject(kHollow));
      surface.SetFacets(joined);
      DrawPolygon(surface, {{80, 80}, {880, 80}, {880, 400}, {80, 400}});
      surface.SetFacets(false);
    }
    for (int along = 1; along < 100; ++along) {
      const int within = along % 16;
      if (within == 0 || within == 11 || within == 12 || within == 15) continue;  // the ends, by half a pixel
      EXPECT_EQ(image.pixel(10 + along, 10), within < 12 ? 0xFF000000 : kWhitePixel) << joined << " at " << along;
    }
  }
}

TEST(Facets, DrawNoOutlineInAPenWithoutALine) {
  QImage image = BlankPicture({60, 60});
  {
    QtSurface surface(image);
    const SelectedObject pen(surface, surface.CreatePen(kNoLine, 3 * kPixel, 0));
    const SelectedObject brush(surface, surface.CreateSolidBrush(kRed));
    surface.Rectangle(80, 80, 160, 160);
    surface.MoveToEx(0, 0);
    surface.LineTo(480, 480);
    DrawPolygon(surface, {{240, 80}, {400, 80}, {400, 240}});
    const FacetScope facets(surface);
    DrawPolygon(surface, {{240, 280}, {400, 280}, {400, 440}});
  }
  for (int y = 0; y < 60; ++y)
    for (int x = 0; x < 60; ++x) EXPECT_EQ(qRed(image.pixel(x, y)), 255) << x << ", " << y;
  EXPECT_GT(Count(image, image.rect(), kRedPixel), 300);
}

}  // namespace
}  // namespace quorvex
