#include "plot3d/DrawBoxAxes.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "drawing/DrawPlotText.h"
#include "plot3d/TurnedBox.h"

namespace quorvex {
namespace {

constexpr std::size_t kVertical = 2;
// The vertical axis first: its numbers stand in one place at most angles, while those of the others come and go.
constexpr std::size_t kInOrder[] = {kVertical, 0, 1};

std::int32_t Nearest(double value) { return static_cast<std::int32_t>(std::lrint(value)); }

// The edge of the box that carries the ticks, numbers and title of an axis.
class CarryingEdge {
 public:
  CarryingEdge(const BoxProjection& box, std::size_t axis) : box_(box), axis_(axis), at_(StartOf(box.View(), axis)) {
    const DevicePlace from = Place(0), to = Place(1), middle = Place(0.5);
    const double dx = to.x - from.x, dy = to.y - from.y;
    Length = std::hypot(dx, dy);
    if (Length == 0) return;
    Along = {dx / Length, dy / Length};
    Outward = {-Along.y, Along.x};
    // Opposite corners lie at equal distances from the middle of the box.
    const DevicePoint a = box.Corner({-1, -1, -1}), b = box.Corner({1, 1, 1});
    if (Outward.Times(middle.x - (a.x + b.x) / 2.0, middle.y - (a.y + b.y) / 2.0) < 0) Outward = {Along.y, -Along.x};
  }

  double Length = 0;
  Direction Along, Outward;

  DevicePlace Place(double fraction) const { return box_.OnEdge(axis_, at_, fraction); }

  // The same, moved outward.
  DevicePlace Beside(double fraction, double distance) const {
    const DevicePlace place = Place(fraction);
    return {place.x + distance * Outward.x, place.y + distance * Outward.y};
  }

 private:
  // Of the axes below those edges that are lowest in the picture and yet on its rim: of the lower face those next to
  // the viewer or, where the picture stands on its head, of the upper face those away from the viewer. The vertical
  // axis is at the corner farthest to the left.
  static BoxView::Ends StartOf(const BoxView& view, std::size_t axis) {
    const int side = view.OverTheTop() ? -1 : 1;
    if (axis != kVertical) return {side * view.NearP(), side * view.NearQ(), -side};
    const BoxView::Ends one = {view.NearP(), -view.NearQ(), -1}, other = {-view.NearP(), view.NearQ(), -1};
    return view.Corner(one).Horizontal < view.Corner(other).Horizontal ? one : other;
  }

  const BoxProjection& box_;
  std::size_t axis_;
  BoxView::Ends at_;
};

// A number and where it stands, with some room at its sides.
struct PlacedNumber {
  const std::string& Label;
  DeviceExtent Extent;
  TurnedBox Box;
};

// Of how many numbers one is shown, so that they stand apart; nothing where not even two do.
std::optional<std::size_t> Stride(std::span<const PlacedNumber> numbers) {
  const auto standApart = [&](std::size_t stride) {
    for (std::size_t i = stride; i < numbers.size(); i += stride)
      if (numbers[i].Box.Overlaps(numbers[i - stride].Box)) return false;
    return true;
  };
  for (std::size_t stride = 1; stride < numbers.size(); ++stride)
    if (standApart(stride)) return stride;
  return std::nullopt;
}

// Puts numbers and titles where nothing else stands.
class TextPlaces {
 public:
  TextPlaces(const DeviceMetrics& metrics, const BoxMargins& around) : metrics_(metrics), around_(around) {}

  void DrawNumbers(DrawingSurface& surface, const BoxAxis& scale, const CarryingEdge& edge, const LabelStrip& strip) {
    std::vector<PlacedNumber> numbers;
    EachLabel(scale, strip, [&](const std::string& label, const DeviceExtent& extent, double fraction) {
      TurnedBox box = NumberBox(extent);
      box.Middle = edge.Beside(fraction, metrics_.MajorTick + metrics_.Margin2X / 4.0 + box.Reach(edge.Outward));
      numbers.push_back({label, extent, box});
    });
    const std::optional<std::size_t> stride = Stride(numbers);
    if (!stride) return;
    const SurfaceObject font = CreatePlotFont(scale.AxisNumberFont, 0, surface);
    const Selection inUse(surface, font);
    surface.SetTextColor(scale.AxisNumberColor);
    for (std::size_t i = 0; i < numbers.size(); i += *stride) {
      const auto& [label, extent, box] = numbers[i];
      if (!IsFree(box)) continue;
      taken_.push_back(box);
      surface.TextOutA(Nearest(box.Middle.x - extent.cx / 2.0), Nearest(box.Middle.y - extent.cy / 2.0), label);
    }
  }

  void DrawTitle(DrawingSurface& surface, const BoxAxis& scale, const CarryingEdge& edge, const PlotText& title) {
    const DeviceExtent size = title.Size;
    if (title.Segments.empty() || edge.Length < size.cy) return;
    // Read from the left or, where the axis is upright, from below.
    int angle = Nearest(std::atan2(-edge.Along.y, edge.Along.x) * 180 / std::numbers::pi);
    if (angle > 90) angle -= 180;
    if (angle <= -90) angle += 180;
    const double turn = angle * std::numbers::pi / 180;
    TurnedBox box{{}, 1.0 * size.cx, 1.0 * size.cy, {std::cos(turn), -std::sin(turn)}};
    // Outside of the numbers of any axis, for they may stand in the way.
    const TurnedBox number = NumberBox(LargestNumber(around_));
    const DevicePlace best =
        edge.Beside(0.5, metrics_.MajorTick + metrics_.Margin2X / 2.0 + 2 * number.Reach(edge.Outward) + size.cy / 2.0);
    box.Middle = Within(box, best);
    // Where another text is in the way, it goes along the axis as far as it must, if it can.
    for (int step = 1; !IsFree(box) && step * size.cy < size.cx + edge.Length; ++step)
      for (const int way : {-step * size.cy, step * size.cy}) {
        const DevicePlace aside = {best.x + way * box.Along.x, best.y + way * box.Along.y};
        TurnedBox moved = box;
        moved.Middle = Within(box, aside);
        if (!IsFree(moved)) continue;
        box = moved;
        break;
      }
    taken_.push_back(box);

    const Direction along = box.Along, across = box.Across();
    surface.SetTextColor(scale.AxisTitleColor);
    DrawPlotText(surface, title, PlotTextFonts(surface, scale.AxisTitleFont, angle),
                 Nearest(box.Middle.x - along.x * size.cx / 2 - across.x * size.cy / 2),
                 Nearest(box.Middle.y - along.y * size.cx / 2 - across.y * size.cy / 2), angle);
  }

 private:
  TurnedBox NumberBox(const DeviceExtent& extent) const {
    return {{}, extent.cx + metrics_.Margin2X / 2.0, 1.0 * extent.cy};
  }

  bool IsFree(const TurnedBox& box) const {
    return std::ranges::none_of(taken_, [&](const TurnedBox& other) { return box.Overlaps(other); });
  }

  // The place next to `at` where a box lies within the page; in its middle where it is too long for that.
  DevicePlace Within(const TurnedBox& box, DevicePlace at) const {
    const DeviceRect& m = metrics_.Margins;
    const auto within = [](double wanted, double reach, double from, double to) {
      return 2 * reach >= to - from ? (from + to) / 2 : std::clamp(wanted, from + reach, to - reach);
    };
    return {within(at.x, box.Reach({1, 0}), m.left, metrics_.Width - m.right),
            within(at.y, box.Reach({0, 1}), m.top, metrics_.Height - m.bottom)};
  }

  const DeviceMetrics& metrics_;
  const BoxMargins& around_;
  std::vector<TurnedBox> taken_;
};

}  // namespace

void DrawBoxTicks(DrawingSurface& surface, const PlotClass3D& plot, const DeviceMetrics& metrics,
                  const BoxProjection& box) {
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const BoxAxis& scale = *plot.BoxAxes()[axis];
    const CarryingEdge edge(box, axis);
    const auto tick = [&](double fraction, std::int32_t length) {
      DrawLine(surface, edge.Place(fraction).Rounded(), edge.Beside(fraction, length).Rounded());
    };
    // Of an axis seen from near its end the ticks would make a blot.
    const auto stand = [&](int ticks) { return edge.Length / ticks >= 3.0 * metrics.PenScale; };
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

void DrawBoxNumbers(DrawingSurface& surface, const PlotClass3D& plot, const DeviceMetrics& metrics,
                    const BoxMargins& around, const BoxProjection& box) {
  TextPlaces places(metrics, around);
  for (const std::size_t axis : kInOrder)
    places.DrawNumbers(surface, *plot.BoxAxes()[axis], CarryingEdge(box, axis), around.Labels[axis]);
  for (const std::size_t axis : kInOrder)
    places.DrawTitle(surface, *plot.BoxAxes()[axis], CarryingEdge(box, axis), around.AxisTitles[axis]);
}

}  // namespace quorvex
