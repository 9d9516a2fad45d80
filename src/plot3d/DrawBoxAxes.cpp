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

  // From now on nothing stands across the edges of the box or the title of the page.
  void KeepOff(const BoxProjection& box, const DeviceRect& pageTitle) {
    taken_.push_back(TurnedBox::Upright(pageTitle));
    EachEdge([&](std::size_t, const BoxView::Ends& from, const BoxView::Ends& to) {
      taken_.push_back(TurnedBox::Line(box.Corner(from), box.Corner(to)));
    });
  }

  void DrawTitle(DrawingSurface& surface, const BoxAxis& scale, const CarryingEdge& edge, PlotText title) {
    const std::int32_t height = title.Size.cy;
    if (title.Segments.empty() || edge.Length < height) return;
    // Read from the left or, where the axis is upright, from below.
    int angle = Nearest(std::atan2(-edge.Along.y, edge.Along.x) * 180 / std::numbers::pi);
    if (angle > 90) angle -= 180;
    if (angle <= -90) angle += 180;
    const double turn = angle * std::numbers::pi / 180;
    const Direction along = {std::cos(turn), -std::sin(turn)};
    // Outside of the numbers of any axis, for they may stand in the way.
    const TurnedBox number = NumberBox(LargestNumber(around_));
    const DevicePlace best =
        edge.Beside(0.5, metrics_.MajorTick + metrics_.Margin2X / 2.0 + 2 * number.Reach(edge.Outward) + height / 2.0);
    const TurnedBox whole{best, 1.0 * title.Size.cx, 1.0 * height, along};
    std::optional<TurnedBox> box = FreePlace(whole, edge.Length);
    if (!box) {
      // As long as its axis, or less where other texts leave less room.
      TurnedBox part = whole;
      for (part.Width = std::min(part.Width, edge.Length); !box && part.Width > height; part.Width *= 0.9)
        box = FreePlace(part, edge.Length);
      if (!box) return;
      title = ParsePlotText(surface, scale.AxisTitle, scale.AxisTitleFont, 0, static_cast<std::int32_t>(box->Width));
      box->Width = title.Size.cx;
    }
    taken_.push_back(*box);

    const std::int32_t width = title.Size.cx;
    const Direction across = box->Across();
    surface.SetTextColor(scale.AxisTitleColor);
    DrawPlotText(surface, title, PlotTextFonts(surface, scale.AxisTitleFont, angle),
                 Nearest(box->Middle.x - along.x * width / 2 - across.x * height / 2),
                 Nearest(box->Middle.y - along.y * width / 2 - across.y * height / 2), angle);
  }

 private:
  TurnedBox NumberBox(const DeviceExtent& extent) const {
    return {{}, extent.cx + metrics_.Margin2X / 2.0, 1.0 * extent.cy};
  }

  bool IsFree(const TurnedBox& box) const {
    return std::ranges::none_of(taken_, [&](const TurnedBox& other) { return box.Overlaps(other); });
  }

  // A box within the page that nothing else is in the way of: where it is or, up to its width and the length of its
  // edge away, along its line.
  std::optional<TurnedBox> FreePlace(const TurnedBox& wanted, double edgeLength) const {
    const DeviceRect area = metrics_.TitleArea();
    const double left = area.left + wanted.Reach({1, 0}), right = area.right - wanted.Reach({1, 0});
    const double top = area.top + wanted.Reach({0, 1}), bottom = area.bottom - wanted.Reach({0, 1});
    if (left > right || top > bottom) return std::nullopt;
    TurnedBox box = wanted;
    constexpr double kMostSteps = 64;  // for small letters on a large page
    const double farthest = wanted.Width + edgeLength, stride = std::max(wanted.Height, farthest / kMostSteps);
    for (double step = 0; step < farthest; step += stride)
      for (const double way : {-step, step}) {
        box.Middle = {std::clamp(wanted.Middle.x + way * box.Along.x, left, right),
                      std::clamp(wanted.Middle.y + way * box.Along.y, top, bottom)};
        if (IsFree(box)) return box;
      }
    return std::nullopt;
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
                    const BoxMargins& around, const BoxProjection& box, const DeviceRect& pageTitle) {
  TextPlaces places(metrics, around);
  for (const std::size_t axis : kInOrder)
    places.DrawNumbers(surface, *plot.BoxAxes()[axis], CarryingEdge(box, axis), around.Labels[axis]);
  places.KeepOff(box, pageTitle);
  for (const std::size_t axis : kInOrder)
    places.DrawTitle(surface, *plot.BoxAxes()[axis], CarryingEdge(box, axis), around.AxisTitles[axis]);
}

}  // namespace quorvex
