// What the Qt surface puts on its pixels.

#include <gtest/gtest.h>

#include <QFontInfo>
#include <QImage>
#include <cmath>
#include <random>
#include <vector>

#include "drawing/Markers.h"
#include "drawing/PlotFont.h"
#include "drawing/StyledLines.h"
#include "drawing/ui/QtSurface.h"
#include "plot/ui/PlotOutput.h"

namespace quorvex {
namespace {

constexpr QRgb kWhitePixel = 0xFFFFFFFF;
constexpr std::int32_t kPixel = QtSurface::kUnitsPerPixel;

// How many pixels of a rectangle are not white.
int Inked(const QImage& image, const QRect& where) {
  int count = 0;
  for (int y = where.top(); y <= where.bottom(); ++y)
    for (int x = where.left(); x <= where.right(); ++x) count += image.pixel(x, y) != kWhitePixel;
  return count;
}

TEST(QtSurface, MeasuresItsDevice) {
  for (const int perInch : {96, 192}) {
    QImage image = BlankPicture({5 * perInch, 4 * perInch, 1.0 * perInch});
    const QtSurface surface(image);
    EXPECT_EQ(surface.GetDeviceCaps(DeviceCap::HORZSIZE), 127);
    EXPECT_EQ(surface.GetDeviceCaps(DeviceCap::VERTSIZE), 102);
    EXPECT_EQ(surface.GetDeviceCaps(DeviceCap::HORZRES), 5 * perInch * kPixel);
    EXPECT_EQ(surface.GetDeviceCaps(DeviceCap::LOGPIXELSY), perInch * kPixel);
    EXPECT_EQ(surface.TwipsPerPixelX(), 1440.0 / perInch / kPixel);
    EXPECT_EQ(surface.PenScale(), perInch / 96 * kPixel);
    EXPECT_FALSE(surface.IsPrinter());
  }
}

TEST(QtSurface, KeepsStraightLinesOnWholePixels) {
  for (const int width : {1, 2, 3, 4}) {
    QImage image = BlankPicture({60, 60});
    {
      QtSurface surface(image);
      const SelectedObject pen(surface, surface.CreatePen(0, width * kPixel, 0x0000FF));
      surface.MoveToEx(10 * kPixel + 1, 30 * kPixel - 3);
      surface.LineTo(50 * kPixel + 2, 30 * kPixel - 3);
      surface.MoveToEx(30 * kPixel + 3, 10 * kPixel);
      surface.LineTo(30 * kPixel + 3, 50 * kPixel);
    }
    for (const bool down : {false, true}) {
      int full = 0, partly = 0;
      for (int i = 0; i < 60; ++i) {
        const QRgb pixel = down ? image.pixel(20, i) : image.pixel(i, 20);
        (pixel == 0xFFFF0000 ? full : partly) += pixel != kWhitePixel;
      }
      EXPECT_EQ(full, width);
      EXPECT_EQ(partly, 0) << "width " << width;
    }
  }
}

TEST(QtSurface, KeepsEachPixelWhenItLeavesOutRetracedPoints) {
  // The same line through all points, drawn by the painter itself.
  std::mt19937 random(7);
  std::uniform_int_distribution<int> height(20, 180);
  QPolygonF points;
  for (int i = 0; i < 4000; ++i)
    points.append(QPointF(10 + i / 20, i % 3 == 0 && i > 0 ? points.back().y() : height(random)));
  QImage expected = BlankPicture({220, 200}), actual = expected;
  {
    QPainter painter(&expected);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::black, 1, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    painter.translate(0.5, 0.5);
    painter.drawPolyline(points);
    QtSurface surface(actual);
    surface.MoveToEx(static_cast<int>(points[0].x()) * kPixel, static_cast<int>(points[0].y()) * kPixel);
    for (const QPointF& point : points)
      surface.LineTo(static_cast<int>(point.x()) * kPixel, static_cast<int>(point.y()) * kPixel);
  }
  // Smoothed ink adds up where the painter goes over a place again and again: inked or not is what must agree.
  for (int y = 0; y < 200; ++y)
    for (int x = 0; x < 220; ++x)
      ASSERT_EQ(expected.pixel(x, y) == kWhitePixel, actual.pixel(x, y) == kWhitePixel) << x << ' ' << y;
}

// The third and later of equal markers are stamps of a picture; each on a surface of its own is painted.
TEST(QtSurface, StampsMarkersAsItPaintsThem) {
  std::int32_t xs[] = {20, 60, 64, 30, 98}, ys[] = {20, 70, 72, 50, 98};
  for (std::int32_t& x : xs) x = x * kPixel + 3;
  for (std::int32_t& y : ys) y = y * kPixel - 3;
  for (int style = 0; style < 10; ++style)
    for (const int scale : {1, 2}) {
      QImage stamped = BlankPicture({100, 100, 96.0 * scale}), painted = stamped;
      {
        QtSurface surface(stamped);
        DrawMarkers(surface, xs, ys, 0x1E64C8, style, 6 * kPixel, scale * kPixel);
      }
      for (std::size_t i = 0; i < std::size(xs); ++i) {
        QtSurface surface(painted);
        DrawMarkers(surface, std::span(xs).subspan(i, 1), std::span(ys).subspan(i, 1), 0x1E64C8, style, 6 * kPixel,
                    scale * kPixel);
      }
      for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 100; ++x) {
          const QColor a = stamped.pixelColor(x, y), b = painted.pixelColor(x, y);
          // Smoothed edges are rounded twice.
          ASSERT_LE(std::abs(a.red() - b.red()), 3) << "style " << style << " at " << x << ", " << y;
          ASSERT_LE(std::abs(a.blue() - b.blue()), 3) << "style " << style << " at " << x << ", " << y;
        }
    }
}

TEST(QtSurface, DrawsWhatComesInSightOfALineFarBeyondThePage) {
  for (const int style : {0, 1}) {
    QImage image = BlankPicture({100, 100});
    {
      QtSurface surface(image);
      const std::int32_t far = 49990 * kPixel, middle = 50 * kPixel;
      DrawStyledSegment(surface, {-far, middle}, {far, middle}, style, 1, 0, kPixel);
      DrawStyledSegment(surface, {middle, -far}, {middle, far}, style, 1, 0, kPixel);
    }
    for (const QRect& side : {QRect(0, 50, 25, 1), QRect(75, 50, 25, 1), QRect(50, 0, 1, 25), QRect(50, 75, 1, 25)})
      EXPECT_GE(Inked(image, side), style == 0 ? 25 : 15);
    EXPECT_EQ(Inked(image, QRect(0, 0, 49, 49)), 0);
  }
}

// Dashes over one another in a few columns and rows, gathered or painted one by one: the same pixels get ink.
TEST(QtSurface, PaintsDashesThatCoverEachOtherAsOne) {
  for (const std::int32_t width : {1, 3}) {
    QImage together = BlankPicture({100, 100}), single = BlankPicture({100, 100});
    {
      QtSurface gathering(together), painting(single);
      const SelectedObject gatheringPen(gathering, gathering.CreatePen(0, width * kPixel, 0));
      const SelectedObject paintingPen(painting, painting.CreatePen(0, width * kPixel, 0));
      std::mt19937 random(5);
      const auto place = [&] { return static_cast<std::int32_t>(10 + random() % 80) * kPixel; };
      for (int line = 0; line < 6; ++line) {
        const std::int32_t at = place();
        for (int dash = 0; dash < 8; ++dash) {
          const std::int32_t from = place(), to = from + (static_cast<std::int32_t>(random() % 12) - 6) * kPixel;
          for (QtSurface* surface : {&gathering, &painting}) {
            surface->MoveToEx(line % 2 == 0 ? at : from, line % 2 == 0 ? from : at);
            surface->LineTo(line % 2 == 0 ? at : to, line % 2 == 0 ? to : at);
          }
          painting.SetBkMode(1);  // a call of another kind
        }
      }
    }
    EXPECT_GT(Inked(single, single.rect()), 100);
    for (int y = 0; y < 100; ++y)
      for (int x = 0; x < 100; ++x)
        ASSERT_EQ(together.pixel(x, y) == kWhitePixel, single.pixel(x, y) == kWhitePixel) << x << ", " << y;
  }
}

// A straight curve in the five styles, its points a pixel apart and dense: no ink farther off than the pen reaches.
TEST(QtSurface, DrawsAStraightCurveStraight) {
  for (int style = 0; style < 5; ++style)
    for (const double slope : {0.013, 0.37, 3.1}) {
      QImage image = BlankPicture({200, 100});
      std::vector<std::int32_t> xs, ys;
      const auto place = [](double pixels) { return static_cast<std::int32_t>(std::lrint(pixels * kPixel)); };
      for (int i = 0; i <= 2000; ++i) {
        const double x = i * std::min(180.0, 80 / slope) / 2000;
        xs.push_back(place(10 + x));
        ys.push_back(place(10 + slope * x));
      }
      {
        QtSurface surface(image);
        DrawStyledPolyline(surface, xs, ys, style, 1, 0, kPixel);
      }
      int inked = 0;
      for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 200; ++x) {
          const double ink = (255 - qGray(image.pixel(x, y))) / 255.0;
          inked += ink > 0;
          // So much ink a pen of a pixel's width leaves that far from its middle, which may be some tenth off.
          const double off = std::abs(y - 10 - slope * (x - 10)) / std::hypot(1, slope);
          ASSERT_LE(ink, std::max(1.25 - off, 0.0))
              << "style " << style << " slope " << slope << " at " << x << ' ' << y;
        }
      EXPECT_GT(inked, 60);
    }
}

// A curve of 100 points, and the same in two halves, which have too few corners to be painted step by step.
TEST(QtSurface, DrawsAWideCurveOfManyCornersAsOneOfFew) {
  QImage many = BlankPicture({200, 100}), few = BlankPicture({200, 100});
  std::vector<std::int32_t> xs, ys;
  for (int i = 0; i < 101; ++i) {
    xs.push_back(2 * i * kPixel);
    ys.push_back(static_cast<std::int32_t>(std::lrint((50 - 40 * std::sin(i / 8.0)) * kPixel)));
  }
  {
    QtSurface surface(many);
    DrawStyledPolyline(surface, xs, ys, 0, 2, 0, kPixel);
  }
  {
    QtSurface surface(few);
    DrawStyledPolyline(surface, std::span(xs).first(51), std::span(ys).first(51), 0, 2, 0, kPixel);
    surface.SetBkMode(1);
    DrawStyledPolyline(surface, std::span(xs).subspan(50), std::span(ys).subspan(50), 0, 2, 0, kPixel);
  }
  double ink = 0, difference = 0;
  for (int y = 0; y < 100; ++y)
    for (int x = 0; x < 200; ++x) {
      const int a = qGray(many.pixel(x, y)), b = qGray(few.pixel(x, y));
      ink += 255 - b;
      difference += std::abs(a - b);
      ASSERT_LT(std::abs(a - b), 128) << x << ", " << y;
    }
  EXPECT_LT(difference, 0.1 * ink);  // where ends overlap edges are a trace darker
}

TEST(QtSurface, ConfinesDrawingToItsClip) {
  QImage image = BlankPicture({100, 100});
  {
    QtSurface surface(image);
    const SelectedObject brush(surface, surface.CreateSolidBrush(0));
    const ClipRectangle clip(surface, 20 * kPixel, 30 * kPixel, 60 * kPixel, 70 * kPixel);
    surface.Rectangle(0, 0, 99 * kPixel, 99 * kPixel);
  }
  EXPECT_EQ(Inked(image, image.rect()), 41 * 41);  // the edges are within
  EXPECT_EQ(Inked(image, QRect(20, 30, 41, 41)), 41 * 41);
}

TEST(QtSurface, MapsAWindowOfTheDrawingToAViewport) {
  QImage image = BlankPicture({200, 100});
  {
    QtSurface surface(image);
    surface.SetMapMode(8);
    surface.SetWindowOrgEx(1000, 1000);
    surface.SetWindowExtEx(100, 100);
    surface.SetViewportOrgEx(100 * kPixel, 50 * kPixel);
    surface.SetViewportExtEx(50 * kPixel, 50 * kPixel);
    const SelectedObject brush(surface, surface.CreateSolidBrush(0));
    surface.Rectangle(1000, 1000, 1100, 1100);
  }
  EXPECT_GT(Inked(image, QRect(102, 52, 46, 46)), 46 * 46 - 1);
  EXPECT_EQ(Inked(image, QRect(0, 0, 98, 100)), 0);
  EXPECT_EQ(Inked(image, QRect(153, 0, 47, 100)), 0);
}

// The metric twin of Arial, at 12 points on 96 and on 192 pixels to the inch: 16 and 32 pixels.
TEST(QtSurface, TurnsTextAboutItsUpperLeftCorner) {
  for (const int scale : {1, 2}) {
    DeviceExtent extent;
    for (const int angle : {0, 90}) {
      QImage image = BlankPicture({200 * scale, 200 * scale, 96.0 * scale});
      {
        QtSurface surface(image);
        surface.SetBkMode(1);
        const SelectedObject font(surface, CreatePlotFont({"Arial", 12, false, false}, angle, surface));
        extent = surface.GetTextExtentPoint32A("HHHHHH");
        surface.TextOutA(100 * scale * kPixel, 100 * scale * kPixel, "HHHHHH");
      }
      extent = {extent.cx / kPixel, extent.cy / kPixel};
      // Capital H of the typeface is 1479 of 2048 units wide, so six at 16 pixels are 69.3.
      EXPECT_NEAR(extent.cx, 69.3 * scale, 3 * scale);
      EXPECT_NEAR(extent.cy, 18 * scale, 1 * scale);
      const QRect cell = angle == 0 ? QRect(100 * scale, 100 * scale, extent.cx, extent.cy)
                                    : QRect(100 * scale, 100 * scale - extent.cx, extent.cy, extent.cx);
      EXPECT_GT(Inked(image, cell), 200 * scale);
      EXPECT_EQ(Inked(image, cell), Inked(image, image.rect())) << angle;
    }
  }
}

}  // namespace
}  // namespace quorvex
