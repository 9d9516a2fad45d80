#include "plot3d/DrawBox.h"

#include <algorithm>

#include "drawing/StyledLines.h"
#include "plot/PlotBoxes.h"
#include "plot3d/DrawBoxAxes.h"

namespace quorvex {
namespace {

using Ends = BoxView::Ends;
constexpr std::size_t kAxes = 3;

// The far ends of all edges: the corner at which the three far faces meet.
Ends FarCorner(const BoxView& view) { return {-view.NearP(), -view.NearQ(), -1}; }

// Whether an edge lies before the data: one of those that meet in the upper corner next to the viewer.
bool IsInFront(const BoxView& view, const Ends& from, const Ends& to) {
  const Ends corner = {view.NearP(), view.NearQ(), 1};
  return from == corner || to == corner;
}

void DrawBoxPlanes(DrawingSurface& surface, const PlotClass3D& plot, const BoxProjection& box) {
  const struct {
    const BoxPlane& Plane;
    std::size_t First, Second;  // the axes that span it
  } kPlanes[] = {{plot.BoxXY, 0, 1}, {plot.BoxYZ, 1, 2}, {plot.BoxXZ, 0, 2}};
  for (const auto& [plane, first, second] : kPlanes) {
    if (!plane.Shade) continue;
    std::array<DevicePoint, 4> corners;
    constexpr int kAround[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
    for (std::size_t i = 0; i < corners.size(); ++i) {
      Ends at = FarCorner(box.View());
      at[first] = kAround[i][0];
      at[second] = kAround[i][1];
      corners[i] = box.Corner(at);
    }
    constexpr int kWinding = 2;
    const SurfaceObject region(surface, surface.CreatePolygonRgn(corners, kWinding));
    const SurfaceObject brush(surface, surface.CreateSolidBrush(plane.Color));
    surface.FillRgn(region, brush);
  }
}

void DrawFarEdges(DrawingSurface& surface, const PlotClass3D& plot, const BoxProjection& box) {
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    const SelectedObject pen(surface,
                             surface.CreatePen(0, plot.AxisWidth * box.PenScale(), plot.BoxAxes()[axis]->TickColor));
    EachEdge([&](std::size_t along, const Ends& from, const Ends& to) {
      if (along == axis && !IsInFront(box.View(), from, to)) DrawLine(surface, box.Corner(from), box.Corner(to));
    });
  }
}

// The lines of an axis' ticks on the two far faces that it belongs to.
void DrawGrids(DrawingSurface& surface, const PlotClass3D& plot, const BoxProjection& box) {
  const auto grid = [&](std::size_t axis, std::size_t across, double fraction, std::int32_t style, std::int32_t width) {
    Ends at = FarCorner(box.View());
    at[across] = -1;
    const DevicePlace from = box.OnEdge(axis, at, fraction);
    at[across] = 1;
    const DevicePlace to = box.OnEdge(axis, at, fraction);
    DrawStyledSegment(surface, from.Rounded(), to.Rounded(), style, width, plot.BoxAxes()[axis]->TickColor,
                      box.PenScale());
  };
  constexpr std::size_t kAcross[kAxes][2] = {{1, 2}, {0, 2}, {0, 1}};
  for (std::size_t axis = 0; axis < kAxes; ++axis)
    for (std::size_t plane = 0; plane < 2; ++plane) {
      const BoxAxis& scale = *plot.BoxAxes()[axis];
      if (!scale.Grids[plane].Major) continue;
      for (int i = 1; i < scale.NumMajorTicks; ++i)
        grid(axis, kAcross[axis][plane], scale.Major(i), plot.MajorGridLineStyle, plot.TickPenWidthMajor);
    }
  for (std::size_t axis = 0; axis < kAxes; ++axis)
    for (std::size_t plane = 0; plane < 2; ++plane)
      if (const BoxAxis& scale = *plot.BoxAxes()[axis]; scale.Grids[plane].Minor)
        scale.EachMinor([&](double fraction) {
          grid(axis, kAcross[axis][plane], fraction, plot.MinorGridLineStyle, plot.TickPenWidthMinor);
        });
}

}  // namespace

DeviceExtent LargestNumber(const BoxMargins& around) {
  DeviceExtent largest;
  for (const LabelStrip& strip : around.Labels)
    largest = {std::max(largest.cx, strip.Width), std::max(largest.cy, strip.Height)};
  return largest;
}

BoxMargins MeasureBox(DrawingSurface& surface, const PlotClass3D& plot, const DeviceMetrics& metrics) {
  BoxMargins around;
  around.Title = ParsePlotText(surface, plot.PlotTitle, plot.PlotTitleFont, 0, metrics.TitleArea().width());
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    const BoxAxis& scale = *plot.BoxAxes()[axis];
    around.AxisTitles[axis] = ParsePlotText(surface, scale.AxisTitle, scale.AxisTitleFont, 0);
    around.Labels[axis] = MeasureLabels(surface, scale, metrics.TitleArea().width() / 5);  // on either side
  }
  return around;
}

DeviceRect ComputeBoxRect(const BoxMargins& around, const DeviceMetrics& metrics, bool square) {
  std::int32_t title = 0;
  for (const PlotText& text : around.AxisTitles) title = std::max(title, text.Size.cy);
  const auto [width, height] = LargestNumber(around);
  const DeviceRect& m = metrics.Margins;
  const std::int32_t beside = metrics.Margin4X + title + metrics.Margin2X + width + metrics.MajorTick;
  // Beside a slanted edge a number is lower than below a level one, by up to a quarter of its width.
  const std::int32_t below = metrics.Margin4Y + title + metrics.Margin2Y + height + width / 4 + metrics.MajorTick;
  const DeviceRect rect = {m.left + beside, m.top + metrics.Margin4Y + around.Title.Size.cy + metrics.Margin2Y,
                           metrics.Width - m.right - beside, metrics.Height - m.bottom - below};
  if (!square) return rect;
  const DeviceRect small = rect.Squared();
  const std::int32_t right = (rect.width() - small.width()) / 2, down = (rect.height() - small.height()) / 2;
  return {small.left + right, small.top + down, small.right + right, small.bottom + down};
}

void DrawBox(DrawingSurface& surface, const PlotClass3D& plot, const DeviceMetrics& metrics, const BoxMargins& around,
             const BoxProjection& box, const DeviceRect& frame) {
  surface.SetBkMode(1);
  DrawBoxPlanes(surface, plot, box);
  DrawFarEdges(surface, plot, box);
  const DeviceRect title = DrawPageTitle(surface, plot, metrics, around.Title, frame);
  DrawBoxTicks(surface, plot, metrics, box);
  DrawGrids(surface, plot, box);
  DrawBoxNumbers(surface, plot, metrics, around, box, title);
}

void DrawBoxFrontEdges(DrawingSurface& surface, const PlotClass3D& plot, const BoxProjection& box) {
  const SelectedObject pen(surface, surface.CreatePen(0, plot.AxisWidth * box.PenScale(), 0));
  EachEdge([&](std::size_t, const Ends& from, const Ends& to) {
    if (IsInFront(box.View(), from, to)) DrawLine(surface, box.Corner(from), box.Corner(to));
  });
}

}  // namespace quorvex
