#include <gtest/gtest.h>

#include "plot3d/DrawSurface.h"
#include "plot3d/Surfaces.h"

namespace quorvex {
namespace {

constexpr int kNoLine = 5;
constexpr SeriesStyle kFilled{.DisplayLine = false, .ShadeMesh = true, .ShadeColor = 0x00C8FF};

// The polygons of a surface in the unit box.
std::vector<FacetSurface::Facet> Drawn(const PlotClass3D& plot, const PlotSeries& model) {
  FacetSurface surface;
  EXPECT_TRUE(DrawSurface(surface, model, plot, {}, Thousand(plot)));
  EXPECT_TRUE(surface.IsTidy());
  return surface.Facets;
}

std::vector<std::vector<DevicePoint>> Corners(const std::vector<FacetSurface::Facet>& facets) {
  std::vector<std::vector<DevicePoint>> corners;
  for (const FacetSurface::Facet& facet : facets) corners.push_back(facet.Corners);
  return corners;
}

// Keeps the triangles of True color.
class ShadingSurface : public FacetSurface {
 public:
  std::vector<std::array<double, 3>> Places;
  std::vector<std::int32_t> Ramp;

  void ShadeTriangle(const std::array<DevicePoint, 3>& corners, const std::array<double, 3>& places,
                     std::span<const std::int32_t> ramp) override {
    RecordingSurface::ShadeTriangle(corners, places, ramp);
    Places.push_back(places);
    Ramp.assign(ramp.begin(), ramp.end());
    Shaded += Area({corners.begin(), corners.end()});
  }
  double Shaded = 0;
};

PlotClass3D Tilted() { return UnitBox(kThreeFourFive, kThreeFourFive); }

TEST(DrawSurface, ShowsACellWhereItsNodesAre) {
  const auto facets = Drawn(Tilted(), Surface("a*x1/2", {0, 1, 2}, {0, 1, 2}));
  // (x1, x2) = (0, 1), (1, 1), (1, 0), (0, 0).
  EXPECT_EQ(Corners(facets),
            (std::vector<std::vector<DevicePoint>>{{{1566, 1326}, {766, 1286}, {166, 806}, {966, 846}}}));
}

TEST(DrawSurface, DrawsAsItsStyleSays) {
  PlotClass3D plot = Tilted();
  plot.ShadeMeshByValue = false;
  DeviceMetrics metrics;
  metrics.PenScale = 3;
  const struct {
    const char* what;
    bool line, shade;
    std::size_t cells;
    std::optional<std::int32_t> fill;
    std::int32_t pen;
  } kCases[] = {{"nothing", false, false, 0, {}, 0},
                {"lines", true, false, 4, {}, 0x0000FF},
                {"filled", false, true, 4, 0x00C8FF, 0x00C8FF},
                {"both", true, true, 4, 0x00C8FF, 0x0000FF}};
  for (const auto& c : kCases) {
    const PlotSeries model = Surface("a*x1*x2", {0, 1, 3}, {0, 1, 3},
                                     {.DisplayLine = c.line,
                                      .DrawStyle = 2,
                                      .DrawWidth = 4,
                                      .DrawColor = 0x0000FF,
                                      .ShadeMesh = c.shade,
                                      .ShadeColor = 0x00C8FF});
    FacetSurface surface;
    EXPECT_TRUE(DrawSurface(surface, model, plot, metrics, Thousand(plot))) << c.what;
    EXPECT_TRUE(surface.IsTidy()) << c.what;
    EXPECT_EQ(surface.Facets.size(), c.cells) << c.what;
    for (const FacetSurface::Facet& facet : surface.Facets) {
      EXPECT_EQ(facet.Fill, c.fill) << c.what;
      EXPECT_EQ(facet.Pen.Colour, c.pen) << c.what;
      EXPECT_EQ(facet.Pen.Style, 2) << c.what;
      EXPECT_EQ(facet.Pen.Width, 12) << c.what;
    }
  }
}

// Every cell must cover the ones behind it. What a cell hides lies farther off along X1 and X2, whatever their heights
// are, and so the order within each row and within each column decides.
TEST(DrawSurface, PaintsNearCellsLast) {
  constexpr int kCells = 4;
  const PlotSeries model = Surface("a*x1/4+a*x2/2", {0, 1, kCells + 1}, {0, 1, kCells + 1});
  for (const double xy : {0, 20, 35, 90, 125, 160, 180, 215, 250, 270, 305, 340, 360})
    for (const double z : {0, 35, 80, 100, 145, 180}) {
      const PlotClass3D plot = UnitBox(xy, z);
      const BoxProjection projection = Thousand(plot);
      const auto facets = Corners(Drawn(plot, model));
      const auto painted = [&](int i, int j) {
        const auto node = [&](int a, int b) {
          const double X1 = 1.0 * a / kCells, X2 = 1.0 * b / kCells;
          return projection.ToDevice(X1, X2, X1 / 4 + X2 / 2);
        };
        const std::vector<DevicePoint> cell = {node(i, j + 1), node(i + 1, j + 1), node(i + 1, j), node(i, j)};
        return std::find(facets.begin(), facets.end(), cell) - facets.begin();
      };
      const double nearerByX1 = std::cos(plot.ZAngle) * std::sin(plot.XYAngle);
      const double nearerByX2 = std::cos(plot.ZAngle) * std::cos(plot.XYAngle);
      constexpr double kEdgeOn = 1e-9;  // then neither is nearer
      ASSERT_EQ(facets.size(), static_cast<std::size_t>(kCells * kCells));
      for (int i = 0; i + 1 < kCells; ++i)
        for (int j = 0; j < kCells; ++j) {
          if (std::abs(nearerByX1) > kEdgeOn) {
            EXPECT_EQ(painted(i, j) < painted(i + 1, j), nearerByX1 > 0) << xy << ' ' << z << " X1 " << i << ' ' << j;
          }
          if (std::abs(nearerByX2) > kEdgeOn) {
            EXPECT_EQ(painted(j, i) < painted(j, i + 1), nearerByX2 > 0) << xy << ' ' << z << " X2 " << j << ' ' << i;
          }
        }
    }
}

TEST(DrawSurface, GoesAlongX2WithinARow) {
  // Which way in each of the quadrants: the corner (x1, x2) = (0, 0), (0, 1), (1, 1) or (1, 0) is the farthest.
  const struct {
    double xy, z;
    int first[2], second[2];  // the cells of 3 by 3 with which it begins
  } kCases[] = {{35, 35, {0, 0}, {0, 1}},   {125, 35, {0, 2}, {0, 1}}, {215, 35, {2, 2}, {2, 1}},
                {305, 35, {2, 0}, {2, 1}},  {35, 145, {2, 2}, {2, 1}}, {125, 145, {2, 0}, {2, 1}},
                {215, 145, {0, 0}, {0, 1}}, {305, 145, {0, 2}, {0, 1}}};
  for (const auto& c : kCases) {
    const PlotClass3D plot = UnitBox(c.xy, c.z);
    const auto facets = Drawn(plot, Surface("a*x1*x2", {0, 0.75, 4}, {0, 0.75, 4}));
    const auto origin = [&](const int(&cell)[2]) {
      const double X1 = 0.25 * cell[0], X2 = 0.25 * cell[1];
      return Thousand(plot).ToDevice(X1, X2, X1 * X2);
    };
    EXPECT_EQ(facets[0].Corners[3], origin(c.first)) << c.xy << ' ' << c.z;
    EXPECT_EQ(facets[1].Corners[3], origin(c.second)) << c.xy << ' ' << c.z;
  }
}

TEST(DrawSurface, CutsItselfAtTheLimits) {
  // A plane x1 + x2, of which the limits leave the middle, seen from above: three quarters of the square.
  PlotClass3D plot = UnitBox(kFacingX2, kFromAbove);
  plot.Z.Min = 0.5;
  plot.Z.Max = 1.5;
  const PlotSeries plane = Surface("a*x1+a*x2", {0, 1, 9}, {0, 1, 9}, kFilled);
  for (const bool byValue : {false, true}) {
    plot.ShadeMeshByValue = byValue;
    double area = 0;
    for (const auto& facet : Drawn(plot, plane)) area += Area(facet.Corners);
    EXPECT_EQ(area, 750000) << byValue;
  }
  plot.MeshColorScheme = kTrueColorScheme;
  ShadingSurface surface;
  EXPECT_TRUE(DrawSurface(surface, plane, plot, {}, Thousand(plot)));
  EXPECT_EQ(surface.Shaded, 750000);
}

TEST(DrawSurface, StaysWithinTheLimits) {
  // From the side, where a height is a height on the device.
  PlotClass3D plot = UnitBox(kFacingX2, kFromTheSide);
  plot.MeshContourDensity = 7;
  const PlotSeries wave = Surface("a*sin(9*x1)*cos(11*x2)+a/2", {0, 1, 23}, {0, 1, 19}, kFilled);
  for (const bool byValue : {false, true}) {
    plot.ShadeMeshByValue = byValue;
    const auto facets = Drawn(plot, wave);
    EXPECT_GT(facets.size(), 100u);
    DeviceRect all = Bounds(facets[0].Corners);
    for (const auto& facet : facets) {
      const DeviceRect own = Bounds(facet.Corners);
      all = {std::min(all.left, own.left), std::min(all.top, own.top), std::max(all.right, own.right),
             std::max(all.bottom, own.bottom)};
      // A band is a seventh of the height.
      if (byValue) {
        EXPECT_LE(own.bottom - own.top, 144);
      }
    }
    EXPECT_EQ(all, (DeviceRect{366, 366, 1366, 1366}));
  }
}

TEST(DrawSurface, LeavesOutCellsWithoutANodeInRange) {
  PlotClass3D plot = Tilted();
  const PlotSeries steep = Surface("10*a*x1-4.5*a", {0, 1, 2}, {0, 1, 2}, kFilled);  // from -4.5 to 5.5
  for (const bool byValue : {false, true}) {
    plot.ShadeMeshByValue = byValue;
    EXPECT_TRUE(Drawn(plot, steep).empty());
    EXPECT_TRUE(Drawn(plot, Surface("a*x1+a*2", {0, 1, 9}, {0, 1, 9}, kFilled)).empty()) << "above the box";
  }
}

TEST(DrawSurface, HasStraightContoursOnAPlane) {
  PlotClass3D plot = Tilted();
  plot.MeshContourDensity = 4;
  plot.MeshColorScheme = 0;
  plot.DisplayContourLines = true;
  plot.ContourPenColor = 0x123456;
  plot.ContourPenStyle = 3;
  plot.ContourPenWidth = 2;
  const auto facets = Drawn(plot, Surface("a*x2", {0, 1, 2}, {0, 1, 2}, kFilled));
  ASSERT_EQ(facets.size(), 4u);
  constexpr std::int32_t kGreys[] = {0, 0x555555, 0xAAAAAA, 0xFFFFFF};
  for (int k = 0; k < 4; ++k) {
    const auto& facet = facets[static_cast<std::size_t>(k)];
    const double low = 0.25 * k, high = low + 0.25;
    std::vector<DevicePoint> expected = {Seen(0, high, high), Seen(1, high, high), Seen(1, low, low),
                                         Seen(0, low, low)};
    for (std::size_t first = 0; first < 4 && expected[0] != facet.Corners[0]; ++first)
      std::rotate(expected.begin(), expected.begin() + 1, expected.end());
    EXPECT_EQ(facet.Corners, expected) << k;
    EXPECT_EQ(facet.Fill, kGreys[k]);
    EXPECT_EQ(facet.Pen.Colour, 0x123456);
    EXPECT_EQ(facet.Pen.Style, 3);
    EXPECT_EQ(facet.Pen.Width, 2);
  }
  plot.DisplayContourLines = false;
  EXPECT_EQ(Drawn(plot, Surface("a*x2", {0, 1, 2}, {0, 1, 2}, kFilled))[0].Pen.Style, kNoLine);
}

TEST(DrawSurface, CutsASaddleIntoBands) {
  PlotClass3D plot = Tilted();
  plot.MeshContourDensity = 4;
  // 0 and 1 at the nodes by turns.
  const auto facets = Drawn(plot, Surface("a*x1+a*x2-2*a*x1*x2", {0, 1, 2}, {0, 1, 2}, kFilled));
  ASSERT_EQ(facets.size(), 4u);
  const double q = 0.25, h = 0.5, t = 0.75;
  const std::vector<DevicePoint> expected = {Seen(h, 1, h), Seen(t, 1, q), Seen(1, t, q), Seen(1, h, h),
                                             Seen(h, 0, h), Seen(q, 0, q), Seen(0, q, q), Seen(0, h, h)};
  EXPECT_EQ(facets[0].Corners.size(), 6u);
  EXPECT_EQ(facets[1].Corners, expected);
  EXPECT_EQ(facets[2].Corners.size(), 8u);
  EXPECT_EQ(facets[3].Corners.size(), 6u);
}

TEST(DrawSurface, ColoursAFlatSurfaceByTheMiddleOfTheScheme) {
  PlotClass3D plot = Tilted();
  plot.MeshColorScheme = 0;
  const struct {
    std::int16_t bands;
    bool useAxisScale;
    std::int32_t fill;
  } kCases[] = {{3, false, 0x808080},
                {2, false, 0x000000},  // on the level between: the lower one
                {5, true, 0x404040},   // 0.25 of the axis
                {2, true, 0x000000}};
  for (const auto& c : kCases) {
    plot.MeshContourDensity = c.bands;
    plot.UseAxisScale = c.useAxisScale;
    const auto facets = Drawn(plot, Surface("a/4+0*x1*x2", {0, 1, 2}, {0, 1, 2}, kFilled));
    ASSERT_EQ(facets.size(), 1u) << c.bands;
    EXPECT_EQ(facets[0].Corners,
              (std::vector<DevicePoint>{Seen(0, 1, 0.25), Seen(1, 1, 0.25), Seen(1, 0, 0.25), Seen(0, 0, 0.25)}));
    EXPECT_EQ(facets[0].Fill, c.fill) << c.bands;
  }
}

TEST(DrawSurface, SpansItsColoursOverItselfOrTheAxis) {
  PlotClass3D plot = Tilted();
  plot.MeshColorScheme = 0;
  plot.MeshContourDensity = 6;
  const PlotSeries half = Surface("a*x1/2", {0, 1, 2}, {0, 1, 2}, kFilled);  // from 0 to 0.5
  for (const bool useAxisScale : {false, true}) {
    plot.UseAxisScale = useAxisScale;
    const auto facets = Drawn(plot, half);
    ASSERT_EQ(facets.size(), useAxisScale ? 3u : 6u);
    EXPECT_EQ(facets.front().Fill, 0x000000);
    EXPECT_EQ(facets.back().Fill, useAxisScale ? 0x666666 : 0xFFFFFF);
  }
}

TEST(DrawSurface, CutsInDecadesOnALogarithmicAxis) {
  PlotClass3D plot = UnitBox(kFacingX2, kFromAbove);
  plot.Z.Min = 1;
  plot.Z.Max = 100;
  plot.Z.LogScale = true;
  plot.MeshContourDensity = 4;
  // Four even bands along X1, which runs down.
  const auto facets = Drawn(plot, Surface("a*100^x1", {0, 1, 2}, {0, 1, 2}, kFilled));
  ASSERT_EQ(facets.size(), 4u);
  for (int k = 0; k < 4; ++k)
    EXPECT_EQ(Bounds(facets[static_cast<std::size_t>(k)].Corners),
              (DeviceRect{366, 366 + 250 * k, 1366, 616 + 250 * k}));
}

TEST(DrawSurface, SkipsCellsThatALogarithmicAxisHasNoPlaceFor) {
  PlotClass3D plot = UnitBox(kFacingX2, kFromAbove);
  plot.X.Min = plot.Y.Min = 1;
  plot.X.Max = plot.Y.Max = 1000;
  plot.X.LogScale = plot.Y.LogScale = true;
  for (const bool byValue : {false, true}) {
    plot.ShadeMeshByValue = byValue;
    // Nodes at -1, 0, 1, 2, 3 of X1: two cells of four are left, one of them from log10 1 to log10 2.
    const auto facets = Drawn(plot, Surface("a/2+0*x1*x2", {-1, 3, 5}, {1, 1000, 2}, kFilled));
    ASSERT_EQ(facets.size(), 2u);
    EXPECT_EQ(Bounds(facets[0].Corners), (DeviceRect{366, 366, 1366, 466}));
  }
}

TEST(DrawSurface, ShadesSmoothlyInTrueColor) {
  PlotClass3D plot = UnitBox(kFacingX2, kFromAbove);
  plot.MeshColorScheme = kTrueColorScheme;
  SeriesStyle style = kFilled;
  for (const bool line : {false, true}) {
    style.DisplayLine = line;
    ShadingSurface surface;
    EXPECT_TRUE(DrawSurface(surface, Surface("a*x1/2+a*x2/4", {0, 1, 2}, {0, 1, 2}, style), plot, {}, Thousand(plot)));
    EXPECT_TRUE(surface.IsTidy());
    // Of heights from 0 to 0.75: (0, 1) has 1/3, (1, 1) has 1, (1, 0) has 2/3.
    ASSERT_EQ(surface.Places.size(), 2u);
    constexpr double kThird = 1.0 / 3;
    const std::array<double, 3> kExpected[] = {{kThird, 1, 2 * kThird}, {kThird, 2 * kThird, 0}};
    for (std::size_t i = 0; i < 2; ++i)
      for (std::size_t corner = 0; corner < 3; ++corner)
        EXPECT_NEAR(surface.Places[i][corner], kExpected[i][corner], 1e-15);
    EXPECT_EQ(surface.Shaded, 1e6);
    EXPECT_EQ(surface.Ramp.front(), 0);
    EXPECT_EQ(surface.Ramp.back(), 0x00C8FF);
    ASSERT_EQ(surface.Facets.size(), line ? 1u : 0u);
    if (line) {
      EXPECT_EQ(surface.Facets[0].Fill, std::nullopt);
    }
  }
}

TEST(DrawSurface, RefusesATableThatIsNoMesh) {
  const PlotClass3D plot = Tilted();
  for (const auto& [X1, X2] : {std::pair{TableRange{0, 1, 1}, TableRange{0, 1, 5}}, {{0, 1, 5}, {0, 1, 1}}}) {
    RecordingSurface surface;
    EXPECT_FALSE(DrawSurface(surface, Surface("a*x1*x2", X1, X2), plot, {}, Thousand(plot)));
    EXPECT_TRUE(surface.Calls.empty());
  }
}

}  // namespace
}  // namespace quorvex
