#include "plot3d/DrawSurface.h"

#include <algorithm>
#include <optional>

#include "drawing/PenLook.h"
#include "plot3d/MeshBands.h"
#include "plot3d/SurfaceMesh.h"

namespace quorvex {
namespace {

constexpr int kHollowBrush = 5;

// The corners on the device's units.
class DeviceCorners {
 public:
  explicit DeviceCorners(const CellPart& part) {
    for (const SurfacePlace& corner : part.Corners()) corners_[count_++] = DevicePlace{corner.x, corner.y}.Rounded();
  }
  DevicePoint operator[](std::size_t i) const { return corners_[i]; }
  std::size_t Count() const { return count_; }

  // Nothing where they enclose nothing that a device could show: two at most, or all in one place.
  void Draw(DrawingSurface& surface) const {
    const std::span<const DevicePoint> corners(corners_.data(), count_);
    const auto isFirst = [&](DevicePoint corner) { return corner == corners[0]; };
    if (count_ >= 3 && !std::all_of(corners.begin(), corners.end(), isFirst)) surface.Polygon(corners);
  }

 private:
  std::array<DevicePoint, 8> corners_;
  std::size_t count_ = 0;
};

// What the ways to draw a surface have in common.
struct Painting {
  DrawingSurface& Surface;
  const SurfaceMesh& Mesh;
  const SeriesStyle& Style;
  const PlotClass3D& Plot;
  HeightRange Limits;
  std::int32_t PenScale;

  template <typename Draw>
  void EachCell(Draw draw) const {
    Mesh.EachCell(Plot.View(), Limits, draw);
  }
  HeightRange Colours() const { return ColourRange(Mesh.Heights(), Limits, Plot.UseAxisScale); }
  SurfaceHandle LinePen() const {
    return Surface.CreatePen(Style.DrawStyle, std::max(Style.DrawWidth, 1) * PenScale,
                             Style.DisplayLine ? Style.DrawColor : Style.ShadeColor);
  }
};

// As lines, or filled in one colour.
void DrawMesh(const Painting& painting) {
  DrawingSurface& surface = painting.Surface;
  const bool filled = painting.Style.ShadeMesh;
  const SurfaceObject fill(surface, filled ? surface.CreateSolidBrush(painting.Style.ShadeColor) : 0);
  const Selection filling(surface, filled ? SurfaceHandle{fill} : surface.GetStockObject(kHollowBrush));
  const SelectedObject pen(surface, painting.LinePen());
  painting.EachCell([&](const MeshCell& cell) { DeviceCorners(CutCell(cell, painting.Limits)).Draw(surface); });
}

// Shades what is left of a cell in triangles from its first corner.
void ShadeCellByPixel(DrawingSurface& surface, const CellPart& part, const DeviceCorners& corners,
                      const HeightRange& colours, std::span<const std::int32_t> ramp) {
  const auto place = [&](std::size_t i) {
    return std::clamp((part.Corners()[i].z - colours.Low) / (colours.High - colours.Low), 0.0, 1.0);
  };
  for (std::size_t i = 2; i < corners.Count(); ++i)
    surface.ShadeTriangle({corners[0], corners[i - 1], corners[i]}, {place(0), place(i - 1), place(i)}, ramp);
}

// Each cell gets its outline before the next one covers what lies behind.
void DrawShadedMesh(const Painting& painting) {
  DrawingSurface& surface = painting.Surface;
  const std::vector<std::int32_t> ramp = ShadeRamp(painting.Style.ShadeColor);
  const HeightRange colours = painting.Colours();
  const Selection filling(surface, surface.GetStockObject(kHollowBrush));
  const SelectedObject pen(surface, painting.LinePen());
  painting.EachCell([&](const MeshCell& cell) {
    const CellPart part = CutCell(cell, painting.Limits);
    const DeviceCorners corners(part);
    ShadeCellByPixel(surface, part, corners, colours, ramp);
    if (painting.Style.DisplayLine) corners.Draw(surface);
  });
}

std::vector<SurfaceObject> BuildBandBrushes(DrawingSurface& surface, int bands, int scheme) {
  std::vector<SurfaceObject> brushes;
  for (const std::int32_t colour : BandColours(bands, scheme))
    brushes.emplace_back(surface, surface.CreateSolidBrush(colour));
  return brushes;
}

// Each cell in the bands that its heights lie in. Contour lines are the outlines of the bands.
void DrawContouredMesh(const Painting& painting) {
  DrawingSurface& surface = painting.Surface;
  const PlotClass3D& plot = painting.Plot;
  const std::vector<double> levels = BandLevels(painting.Colours(), plot.MeshContourDensity);
  const std::vector<SurfaceObject> brushes = BuildBandBrushes(surface, plot.MeshContourDensity, plot.MeshColorScheme);
  const SelectedObject pen(
      surface,
      plot.DisplayContourLines
          ? surface.CreatePen(plot.ContourPenStyle, plot.ContourPenWidth * painting.PenScale, plot.ContourPenColor)
          : surface.CreatePen(kNoLine, 1, 0));
  std::size_t used = 1;
  const Selection filling(surface, brushes[used - 1]);

  // The outer bands go on to the limits, so that rounding of the levels leaves no gap.
  const std::size_t last = brushes.size();
  const auto band = [&](std::size_t k) {
    return HeightRange{k == 1 ? painting.Limits.Low : std::max(levels[k - 1], painting.Limits.Low),
                       k == last ? painting.Limits.High : std::min(levels[k], painting.Limits.High)};
  };
  painting.EachCell([&](const MeshCell& cell) {
    const auto [low, high] =
        std::minmax_element(cell.begin(), cell.end(), [](const auto& a, const auto& b) { return a.z < b.z; });
    const std::size_t lowest = FindBand(levels, 1, low->z), highest = FindBand(levels, lowest, high->z);
    for (std::size_t k = lowest; k <= highest; ++k) {
      const DeviceCorners corners(CutCell(cell, band(k)));
      if (k != used) surface.SelectObject(brushes[k - 1]);
      used = k;
      corners.Draw(surface);
    }
  });
}

}  // namespace

bool DrawSurface(DrawingSurface& surface, const PlotSeries& model, const PlotClass3D& plot,
                 const DeviceMetrics& metrics, const BoxProjection& projection) {
  const SeriesStyle& style = model.Style();
  const bool shaded = style.ShadeMesh;
  if (!shaded && !style.DisplayLine) return true;
  const std::optional<SurfaceMesh> mesh = SurfaceMesh::Of(*model.Model(), projection);
  if (!mesh) return false;

  const FacetScope facets(surface);
  const AxisVector& vertical = projection.Axis(2);
  const Painting painting{surface, *mesh, style, plot, {vertical.Min, vertical.Max}, metrics.PenScale};
  if (!shaded || !plot.ShadeMeshByValue)
    DrawMesh(painting);
  else if (plot.MeshColorScheme == kTrueColorScheme)
    DrawShadedMesh(painting);
  else
    DrawContouredMesh(painting);
  return true;
}

}  // namespace quorvex
