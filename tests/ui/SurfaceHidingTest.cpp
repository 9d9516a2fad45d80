// Surfaces are painted from far to near. What they hide so must be what a depth buffer hides.

#include <gtest/gtest.h>

#include <QImage>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "drawing/ui/QtSurface.h"
#include "plot/ui/PlotOutput.h"
#include "plot3d/DrawSurface.h"
#include "plot3d/MeshBands.h"
#include "plot3d/MeshCell.h"
#include "plot3d/Surfaces.h"

namespace quorvex {
namespace {

constexpr int kSide = 500, kNodes = 61;
constexpr std::int32_t kUnits = QtSurface::kUnitsPerPixel;

QRgb Pixel(std::int32_t colour) { return qRgb(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF); }

// A picture in which each pixel shows the nearest of the triangles that have its middle inside, in whatever order they
// come.
class DepthBuffer {
 public:
  DepthBuffer(const PlotClass3D& plot, QImage& picture)
      : sine_(std::sin(plot.ZAngle)),
        cosine_(std::cos(plot.ZAngle)),
        picture_(picture),
        nearest_(std::size_t{kSide} * kSide, -std::numeric_limits<double>::infinity()) {}

  void Fill(const std::array<SurfacePlace, 3>& corners, QRgb colour) {
    std::array<DevicePoint, 3> at;
    for (std::size_t i = 0; i < 3; ++i) at[i] = DevicePlace{corners[i].x, corners[i].y}.Rounded();
    const auto across = [](DevicePoint a, DevicePoint b, double x, double y) {
      return (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x);
    };
    const double whole = across(at[0], at[1], at[2].x, at[2].y);
    if (whole == 0) return;
    const DeviceRect bounds = Bounds({at.begin(), at.end()});
    for (int row = bounds.top / kUnits; row <= bounds.bottom / kUnits; ++row)
      for (int column = bounds.left / kUnits; column <= bounds.right / kUnits; ++column) {
        const double x = column * kUnits, y = row * kUnits;
        const double a = across(at[1], at[2], x, y) / whole, b = across(at[2], at[0], x, y) / whole, c = 1 - a - b;
        if (a < 0 || b < 0 || c < 0) continue;
        const double nearness = a * Nearness(corners[0]) + b * Nearness(corners[1]) + c * Nearness(corners[2]);
        double& nearest = nearest_[static_cast<std::size_t>(row * kSide + column)];
        if (nearness <= nearest) continue;
        nearest = nearness;
        picture_.setPixel(column, row, colour);
      }
  }

 private:
  // Towards the viewer, in edges of the box, of a place in the unit box: its height r and what is seen of its vertical
  // place, C r - S u, tell how far it lies along u.
  double Nearness(const SurfacePlace& place) const {
    constexpr double kEdge = kSide * kUnits / 1.732;
    const double r = place.z - 0.5, vertical = 0.5 * 1.732 - place.y / kEdge;
    const double u = (cosine_ * r - vertical) / sine_;
    return cosine_ * u + sine_ * r;
  }

  double sine_, cosine_;
  QImage& picture_;
  std::vector<double> nearest_;
};

TEST(DrawSurface, HidesWhatADepthBufferHides) {
  // Two ridges across the box, a higher one and one that varies along its way.
  const PlotSeries ridges =
      Surface("a*exp(-((x1+0.6*x2-0.5)/0.12)^2)*0.95+exp(-((x1-0.4*x2-0.35)/0.1)^2)*(0.5+0.2*sin(9*x2))",
              {0, 1, kNodes}, {0, 1, kNodes}, {.DisplayLine = false, .ShadeMesh = 1});
  const SeriesTable table = ridges.CopyDataTo(1);
  const std::span<const double> X1 = table.X, X2 = ridges.CopyDataTo(2).X, Y = table.Y;
  for (const double xy : {2, 35, 125, 178, 182, 215, 305, 358})
    for (const double z : {35, 145}) {
      PlotClass3D plot = UnitBox(xy, z);
      plot.MeshContourDensity = 12;
      plot.UseAxisScale = true;
      const BoxProjection projection(plot.View(), {0, 0, kSide * kUnits, kSide * kUnits},
                                     {plot.X.Limits(), plot.Y.Limits(), plot.Z.Limits()}, kUnits);
      QImage painted = BlankPicture({kSide, kSide}), expected = painted;
      const QRgb blank = painted.pixel(0, 0);
      {
        QtSurface surface(painted);
        ASSERT_TRUE(DrawSurface(surface, ridges, plot, {}, projection));
      }

      DepthBuffer buffer(plot, expected);
      const std::vector<double> levels = BandLevels({0, 1}, 12);
      const std::vector<std::int32_t> colours = BandColours(12, plot.MeshColorScheme);
      const auto node = [&](std::size_t i) {
        const DevicePlace place = projection.Place(X1[i], X2[i], Y[i]);
        return SurfacePlace{place.x, place.y, Y[i]};
      };
      for (std::size_t i = 0; i + kNodes < X1.size(); ++i) {
        if (i % kNodes == kNodes - 1) continue;
        for (std::size_t k = 1; k < levels.size(); ++k) {
          const CellPart part =
              CutCell({node(i), node(i + 1), node(i + kNodes + 1), node(i + kNodes)}, {levels[k - 1], levels[k]});
          for (std::size_t corner = 2; corner < part.Corners().size(); ++corner)
            buffer.Fill({part.Corners()[0], part.Corners()[corner - 1], part.Corners()[corner]}, Pixel(colours[k - 1]));
        }
      }

      int covered = 0, different = 0;
      for (int y = 0; y < kSide; ++y)
        for (int x = 0; x < kSide; ++x) {
          covered += expected.pixel(x, y) != blank;
          different += expected.pixel(x, y) != painted.pixel(x, y);
        }
      EXPECT_GT(covered, kSide * kSide / 10);
      // Where the edge of a hill comes between cells, either rule is off by a pixel now and then.
      EXPECT_LE(different, 0.005 * covered) << xy << ' ' << z;
    }
}

}  // namespace
}  // namespace quorvex
