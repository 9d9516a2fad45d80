#include "plot3d/DrawBox.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <vector>

#include "plot/DrawPlotText.h"
#include "plot/PlotBoxes.h"
#include "plot/StyledLines.h"

namespace quorvex {
namespace {

using Ends = BoxView::Ends;
constexpr std::size_t kAxes = 3, kVertical = 2;

// A direction over the device, of length 1; y grows downward.
struct Direction {
  double x = 0, y = 0;
};

std::int32_t Nearest(double value) { return static_cast<std::int32_t>(std::lrint(value)); }

const std::array<const BoxAxis*, kAxes> AxesOf(const PlotClass3D& plot) { return {&plot.X, &plot.Y, &plot.Z}; }

// The far ends of all edges: the corner at which the three far faces meet.
Ends FarCorner(const BoxView& view) { return {-view.NearP(), -view.NearQ(), -1}; }

// The place at a fraction of the edge along `axis` that starts at the corner `at`.
DevicePlace OnEdge(const BoxProjection& box, std::size_t axis, Ends at, double fraction) {
  at[axis] = -1;
  const DevicePoint from = box.Corner(at);
  at[axis] = 1;
  const DevicePoint to = box.Corner(at);
  return {from.x + fraction * (to.x - from.x), from.y + fraction * (to.y - from.y)};
}

void Line(DrawingSurface& surface, DevicePoint from, DevicePoint to) {
  surface.MoveToEx(from.x, from.y);
  surface.LineTo(to.x, to.y);
}

// Calls `draw` with the two ends of each of the twelve edges and the axis it runs along.
template <typename Draw>
void EachEdge(Draw draw) {
  for (std::size_t axis = 0; axis < kAxes; ++axis)
    for (const int first : {-1, 1})
      for (const int second : {-1, 1}) {
        Ends from;
        from[axis] = -1;
        from[(axis + 1) % kAxes] = first;
        from[(axis + 2) % kAxes] = second;
        Ends to = from;
        to[axis] = 1;
        draw(axis, from, to);
      }
}

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
                             surface.CreatePen(0, plot.AxisWidth * box.PenScale(), AxesOf(plot)[axis]->TickColor));
    EachEdge([&](std::size_t along, const Ends& from, const Ends& to) {
      if (along == axis && !IsInFront(box.View(), from, to)) Line(surface, box.Corner(from), box.Corner(to));
    });
  }
}

// The lines of an axis' ticks on the two far faces that it belongs to.
void DrawGrids(DrawingSurface& surface, const PlotClass3D& plot, const BoxProjection& box) {
  const auto grid = [&](std::size_t axis, std::size_t across, double fraction, std::int32_t style, std::int32_t width) {
    Ends at = FarCorner(box.View());
    at[across] = -1;
    const DevicePlace from = OnEdge(box, axis, at, fraction);
    at[across] = 1;
    const DevicePlace to = OnEdge(box, axis, at, fraction);
    DrawStyledSegment(surface, from.Rounded(), to.Rounded(), style, width, AxesOf(plot)[axis]->TickColor,
                      box.PenScale());
  };
  constexpr std::size_t kAcross[kAxes][2] = {{1, 2}, {0, 2}, {0, 1}};
  for (std::size_t axis = 0; axis < kAxes; ++axis)
    for (std::size_t plane = 0; plane < 2; ++plane) {
      const BoxAxis& scale = *AxesOf(plot)[axis];
      if (!scale.Grids[plane].Major) continue;
      for (int i = 1; i < scale.NumMajorTicks; ++i)
        grid(axis, kAcross[axis][plane], scale.Major(i), plot.MajorGridLineStyle, plot.TickPenWidthMajor);
    }
  for (std::size_t axis = 0; axis < kAxes; ++axis)
    for (std::size_t plane = 0; plane < 2; ++plane)
      if (const BoxAxis& scale = *AxesOf(plot)[axis]; scale.Grids[plane].Minor)
        scale.EachMinor([&](double fraction) {
          grid(axis, kAcross[axis][plane], fraction, plot.MinorGridLineStyle, plot.TickPenWidthMinor);
        });
}

// The edge of the box that carries an axis' ticks, numbers and title.
class CarryingEdge {
 public:
  CarryingEdge(const BoxProjection& box, std::size_t axis) : box_(box), axis_(axis), at_(StartOf(axis)) {
    const DevicePlace from = Place(0), to = Place(1), middle = Place(0.5);
    const double dx = to.x - from.x, dy = to.y - from.y;
    Length = std::hypot(dx, dy);
    if (Length == 0) return;
    Along = {dx / Length, dy / Length};
    Outward = {-Along.y, Along.x};
    // Opposite corners lie at equal distances from the middle of the box.
    const DevicePoint a = box.Corner({-1, -1, -1}), b = box.Corner({1, 1, 1});
    const double away = (middle.x - (a.x + b.x) / 2.0) * Outward.x + (middle.y - (a.y + b.y) / 2.0) * Outward.y;
    if (away < 0) Outward = {-Outward.x, -Outward.y};
  }

  double Length = 0;
  Direction Along, Outward;

  DevicePlace Place(double fraction) const { return OnEdge(box_, axis_, at_, fraction); }

  // The same, moved outward.
  DevicePlace Beside(double fraction, double distance) const {
    const DevicePlace place = Place(fraction);
    return {place.x + distance * Outward.x, place.y + distance * Outward.y};
  }

 private:
  // Of the axes below those edges that are lowest in the picture and yet on its rim: of the lower face those next to
  // the viewer or, where the picture stands on its head, of the upper face those away from the viewer. The vertical
  // axis is at the corner farthest to the left.
  Ends StartOf(std::size_t axis) const {
    const BoxView& view = box_.View();
    const int side = view.OverTheTop() ? -1 : 1;
    const Ends below = {side * view.NearP(), side * view.NearQ(), -side};
    if (axis != kVertical) return below;
    const Ends one = {view.NearP(), -view.NearQ(), -1}, other = {-view.NearP(), view.NearQ(), -1};
    return view.Corner(one).Horizontal < view.Corner(other).Horizontal ? one : other;
  }

  const BoxProjection& box_;
  std::size_t axis_;
  Ends at_;
};

void DrawTicks(DrawingSurface& surface, const PlotClass3D& plot, const DeviceMetrics& metrics,
               const std::array<CarryingEdge, kAxes>& edges) {
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    const BoxAxis& scale = *AxesOf(plot)[axis];
    const CarryingEdge& edge = edges[axis];
    // Of an axis seen from near its end the ticks would make a blot.
    const auto stand = [&](int ticks) { return edge.Length / ticks >= 3.0 * metrics.PenScale; };
    const auto tick = [&](double fraction, std::int32_t length) {
      Line(surface, edge.Place(fraction).Rounded(), edge.Beside(fraction, length).Rounded());
    };
    {
      const SelectedObject pen(surface,
                               surface.CreatePen(0, plot.TickPenWidthMajor * metrics.PenScale, scale.TickColor));
      for (int i = 0; stand(scale.NumMajorTicks) && i <= scale.NumMajorTicks; ++i)
        tick(scale.Major(i), metrics.MajorTick);
    }
    const SelectedObject pen(surface, surface.CreatePen(0, plot.TickPenWidthMinor * metrics.PenScale, scale.TickColor));
    if (stand(scale.NumMajorTicks * std::max<int>(scale.NumMinorTicks, 1)))
      scale.EachMinor([&](double fraction) { tick(fraction, metrics.MinorTick); });
  }
}

// How far a text of that size, unturned, reaches in a direction.
double Reach(DeviceExtent size, Direction direction) {
  return std::abs(direction.x) * size.cx + std::abs(direction.y) * size.cy;
}

DeviceRect Around(DevicePlace middle, DeviceExtent size) {
  const std::int32_t left = Nearest(middle.x - size.cx / 2.0), top = Nearest(middle.y - size.cy / 2.0);
  return {left, top, left + size.cx, top + size.cy};
}

// Of how many numbers one is shown, so that they stand apart along the edge; nothing where not even two do.
std::optional<int> Stride(const CarryingEdge& edge, const LabelStrip& strip, int divisions) {
  for (int stride = 1; stride <= divisions; ++stride) {
    const double step = edge.Length * stride / divisions;
    constexpr double kApart = 1.05;  // a twentieth of a number between them, as below a frame
    if (std::abs(edge.Along.x) * step >= kApart * strip.Width || std::abs(edge.Along.y) * step >= strip.Height)
      return stride;
  }
  return std::nullopt;
}

void DrawNumbers(DrawingSurface& surface, const PlotClass3D& plot, const DeviceMetrics& metrics,
                 const BoxMargins& around, const std::array<CarryingEdge, kAxes>& edges) {
  std::vector<DeviceRect> taken;  // by numbers already there
  const auto isFree = [&](const DeviceRect& place) {
    const std::int32_t gap = metrics.Margin2X / 2;
    return std::ranges::none_of(taken, [&](const DeviceRect& other) {
      return place.left < other.right + gap && other.left < place.right + gap && place.top < other.bottom &&
             other.top < place.bottom;
    });
  };
  for (const std::size_t axis : {kVertical, std::size_t{0}, std::size_t{1}}) {
    const BoxAxis& scale = *AxesOf(plot)[axis];
    const CarryingEdge& edge = edges[axis];
    const LabelStrip& strip = around.Labels[axis];
    const std::optional<int> stride = Stride(edge, strip, scale.NumMajorTicks);
    if (!stride) continue;
    const SurfaceObject font = CreatePlotFont(scale.AxisNumberFont, 0, surface);
    const Selection inUse(surface, font);
    surface.SetTextColor(scale.AxisNumberColor);
    int number = 0;
    EachLabel(scale, strip, [&](const std::string& label, const DeviceExtent& extent, double fraction) {
      if (number++ % *stride != 0) return;
      const double distance = metrics.MajorTick + metrics.Margin2X / 2.0 + Reach(extent, edge.Outward) / 2;
      const DeviceRect place = Around(edge.Beside(fraction, distance), extent);
      if (!isFree(place)) return;
      taken.push_back(place);
      surface.TextOutA(place.left, place.top, label);
    });
  }
}

DeviceExtent LargestNumber(const BoxMargins& around) {
  DeviceExtent largest;
  for (const LabelStrip& strip : around.Labels)
    largest = {std::max(largest.cx, strip.Width), std::max(largest.cy, strip.Height)};
  return largest;
}

// Titles run along their axes, outside of the numbers.
void DrawAxisTitles(DrawingSurface& surface, const PlotClass3D& plot, const DeviceMetrics& metrics,
                    const BoxMargins& around, const std::array<CarryingEdge, kAxes>& edges) {
  const DeviceExtent numbers = LargestNumber(around);  // of any axis, whose numbers may stand in the way
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    const BoxAxis& scale = *AxesOf(plot)[axis];
    const CarryingEdge& edge = edges[axis];
    const PlotText& title = around.AxisTitles[axis];
    const DeviceExtent size = title.Size;
    if (title.Segments.empty() || edge.Length < size.cy) continue;

    // Read from the left or, where the axis is upright, from below.
    int angle = Nearest(std::atan2(-edge.Along.y, edge.Along.x) * 180 / std::numbers::pi);
    if (angle > 90) angle -= 180;
    if (angle <= -90) angle += 180;
    const double turn = angle * std::numbers::pi / 180;
    const Direction along = {std::cos(turn), -std::sin(turn)}, across = {std::sin(turn), std::cos(turn)};

    DevicePlace middle =
        edge.Beside(0.5, metrics.MajorTick + metrics.Margin2X + Reach(numbers, edge.Outward) + size.cy / 2.0);
    // Within the page, whatever the length.
    const DeviceExtent turned = {Nearest(Reach(size, along)), Nearest(Reach(size, {along.y, along.x}))};
    const DeviceRect& m = metrics.Margins;
    const auto within = [](double at, double extent, double from, double to) {
      return extent >= to - from ? (from + to) / 2 : std::clamp(at, from + extent / 2, to - extent / 2);
    };
    middle.x = within(middle.x, turned.cx, m.left, metrics.Width - m.right);
    middle.y = within(middle.y, turned.cy, m.top, metrics.Height - m.bottom);

    surface.SetTextColor(scale.AxisTitleColor);
    DrawPlotText(surface, title, PlotTextFonts(surface, scale.AxisTitleFont, angle),
                 Nearest(middle.x - along.x * size.cx / 2 - across.x * size.cy / 2),
                 Nearest(middle.y - along.y * size.cx / 2 - across.y * size.cy / 2), angle);
  }
}

}  // namespace

BoxMargins MeasureBox(DrawingSurface& surface, const PlotClass3D& plot) {
  BoxMargins around;
  around.Title = ParsePlotText(surface, plot.PlotTitle, plot.PlotTitleFont, 0);
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    const BoxAxis& scale = *AxesOf(plot)[axis];
    around.AxisTitles[axis] = ParsePlotText(surface, scale.AxisTitle, scale.AxisTitleFont, 0);
    around.Labels[axis] = MeasureLabels(surface, scale);
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
  return square ? rect.Squared() : rect;
}

void DrawBox(DrawingSurface& surface, const PlotClass3D& plot, const DeviceMetrics& metrics, const BoxMargins& around,
             const BoxProjection& box, const DeviceRect& frame) {
  const std::array<CarryingEdge, kAxes> edges = {CarryingEdge(box, 0), CarryingEdge(box, 1), CarryingEdge(box, 2)};
  surface.SetBkMode(1);
  DrawBoxPlanes(surface, plot, box);
  DrawFarEdges(surface, plot, box);
  DrawPageTitle(surface, plot, metrics, around.Title, frame);
  DrawTicks(surface, plot, metrics, edges);
  DrawGrids(surface, plot, box);
  DrawNumbers(surface, plot, metrics, around, edges);
  DrawAxisTitles(surface, plot, metrics, around, edges);
}

void DrawBoxFrontEdges(DrawingSurface& surface, const PlotClass3D& plot, const BoxProjection& box) {
  const SelectedObject pen(surface, surface.CreatePen(0, plot.AxisWidth * box.PenScale(), 0));
  EachEdge([&](std::size_t, const Ends& from, const Ends& to) {
    if (IsInFront(box.View(), from, to)) Line(surface, box.Corner(from), box.Corner(to));
  });
}

}  // namespace quorvex
