#include "plot/DrawAxes.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/NumberText.h"
#include "drawing/DrawPlotText.h"
#include "drawing/StyledLines.h"
#include "plot/PlotBoxes.h"

namespace quorvex {
namespace {

constexpr double kCos45 = 0.7071;

const FrameAxis& LeftAxis(const PlotClass& plot) { return plot.SwapAxis ? plot.X : plot.Y; }
const FrameAxis& BottomAxis(const PlotClass& plot) { return plot.SwapAxis ? plot.Y : plot.X; }

std::int32_t Nearest(double value) { return static_cast<std::int32_t>(std::lrint(value)); }

enum class AxisDirection { Horizontal, Vertical };

// One axis in the frame, by what ticks and grids need of it: along itself it is measured from the lower left corner as
// a fraction of its length, across itself it goes from the side of its numbers to the opposite one.
class AxisLine {
 public:
  AxisLine(DrawingSurface& surface, const FrameAxis& axis, const DeviceRect& frame, AxisDirection direction)
      : surface_(surface), axis_(axis), frame_(frame), vertical_(direction == AxisDirection::Vertical) {}

  const FrameAxis& Axis() const { return axis_; }

  // Where the major division `i` ends, from 1.
  std::int32_t Major(int i) const { return Along(axis_.Major(i)); }

  // Calls `draw` with each place between the major ticks.
  template <typename Draw>
  void EachMinor(Draw draw) const {
    axis_.EachMinor([&](double fraction) { draw(Along(fraction)); });
  }

  // A tick into the frame, and with the extra ticks its twin on the opposite side.
  void Tick(std::int32_t at, std::int32_t length) const {
    const std::int32_t inward = vertical_ ? length : -length;
    DrawLine(surface_, Place(at, Near()), Place(at, Near() + inward));
    if (axis_.ShowExtraTicks) DrawLine(surface_, Place(at, Far()), Place(at, Far() - inward));
  }

  void GridLine(std::int32_t at, std::int32_t style, std::int32_t width, std::int32_t colour,
                std::int32_t penScale) const {
    DrawStyledSegment(surface_, Place(at, Near()), Place(at, Far()), style, width, colour, penScale);
  }

 private:
  std::int32_t Along(double fraction) const {
    return Nearest(vertical_ ? frame_.bottom - fraction * frame_.height() : frame_.left + fraction * frame_.width());
  }
  std::int32_t Near() const { return vertical_ ? frame_.left : frame_.bottom; }
  std::int32_t Far() const { return vertical_ ? frame_.right : frame_.top; }
  DevicePoint Place(std::int32_t along, std::int32_t across) const {
    return vertical_ ? DevicePoint{across, along} : DevicePoint{along, across};
  }
  DrawingSurface& surface_;
  const FrameAxis& axis_;
  DeviceRect frame_;
  bool vertical_;
};

// Whether the numbers stand below the frame side by side, the outermost ones within the page.
bool FitsSideBySide(const LabelStrip& strip, const DeviceRect& frame, const DeviceMetrics& metrics) {
  if (strip.Each.empty()) return true;
  // With a twentieth of a number between them. The outermost are centred on the corners, so half of each hangs out.
  return Nearest(static_cast<double>(strip.Each.size() - 1) * strip.Width * 1.05) < frame.width() &&
         strip.Each.back().cx <= 2 * frame.left &&
         strip.Each.front().cx <= 2 * (2 * metrics.Margin4X + metrics.Margins.right);
}

void DrawAxisFrame(DrawingSurface& surface, const PlotClass& plot, const DeviceMetrics& metrics,
                   const DeviceRect& frame) {
  const SelectedObject pen(surface, surface.CreatePen(0, plot.AxisWidth * metrics.PenScale, plot.TickPenColor));
  surface.MoveToEx(frame.left, frame.top);
  surface.LineTo(frame.right, frame.top);
  surface.LineTo(frame.right, frame.bottom);
  surface.LineTo(frame.left, frame.bottom);
  surface.LineTo(frame.left, frame.top);
  surface.LineTo(frame.right, frame.top);  // again, so that the first corner is joined like the others
}

// How far the title at the left may reach along the frame: from the page's title to that of the bottom axis.
struct Stretch {
  std::int32_t Top, Bottom;
};
Stretch BesideFrame(const DeviceRect& frame, const PlotMargins& around, const DeviceMetrics& metrics) {
  return {frame.top - metrics.Margin2Y,
          frame.bottom + metrics.Margin2Y + around.BottomLabels.Height + metrics.Margin2Y};
}

void DrawTitles(DrawingSurface& surface, const PlotClass& plot, const DeviceMetrics& metrics, const PlotMargins& around,
                const DeviceRect& frame) {
  const auto middle = [](std::int32_t a, std::int32_t b, std::int32_t size) { return Nearest((a + b - size) / 2.0); };
  const auto within = [](std::int32_t at, std::int32_t least, std::int32_t most) {
    return std::max(least, std::min(at, most));
  };
  const DeviceRect area = metrics.TitleArea();
  const Stretch beside = BesideFrame(frame, around, metrics);
  DrawPageTitle(surface, plot, metrics, around.Title, frame);

  const FrameAxis& bottom = BottomAxis(plot);
  surface.SetTextColor(bottom.AxisTitleColor);
  const std::int32_t width = around.BottomTitle.Size.cx, length = around.LeftTitle.Size.cx;
  DrawPlotText(surface, around.BottomTitle, PlotTextFonts(surface, bottom.AxisTitleFont, 0),
               within(middle(frame.left, frame.right, width), area.left, area.right - width), beside.Bottom);

  const FrameAxis& left = LeftAxis(plot);
  surface.SetTextColor(left.AxisTitleColor);
  DrawPlotText(surface, around.LeftTitle, PlotTextFonts(surface, left.AxisTitleFont, 90),
               frame.left - metrics.Margin2X - around.LeftLabels.Width - metrics.Margin2X - around.LeftTitle.Size.cy,
               within(middle(frame.top, frame.bottom, -length), beside.Top + length, beside.Bottom), 90);
}

void DrawTicks(DrawingSurface& surface, const PlotClass& plot, const DeviceMetrics& metrics,
               const std::array<AxisLine, 2>& axes) {
  {
    const SelectedObject pen(surface,
                             surface.CreatePen(0, plot.TickPenWidthMajor * metrics.PenScale, plot.TickPenColor));
    for (const AxisLine& line : axes)
      for (int i = 1; i <= line.Axis().NumMajorTicks; ++i) line.Tick(line.Major(i), metrics.MajorTick);
  }
  const SelectedObject pen(surface, surface.CreatePen(0, plot.TickPenWidthMinor * metrics.PenScale, plot.TickPenColor));
  for (const AxisLine& line : axes) line.EachMinor([&](std::int32_t at) { line.Tick(at, metrics.MinorTick); });
}

void DrawGrids(const PlotClass& plot, std::int32_t penScale, const std::array<AxisLine, 2>& axes) {
  for (const AxisLine& line : axes)
    if (line.Axis().ShowMajorGrids)
      for (int i = 1; i <= line.Axis().NumMajorTicks; ++i)
        line.GridLine(line.Major(i), plot.MajorGridLineStyle, plot.TickPenWidthMajor, plot.TickPenColor, penScale);
  for (const AxisLine& line : axes)
    if (line.Axis().ShowMinorGrids)
      line.EachMinor([&](std::int32_t at) {
        line.GridLine(at, plot.MinorGridLineStyle, plot.TickPenWidthMinor, plot.TickPenColor, penScale);
      });
}

void DrawLeftNumbers(DrawingSurface& surface, const PlotAxis& axis, const LabelStrip& strip,
                     const DeviceMetrics& metrics, const DeviceRect& frame) {
  const SurfaceObject font = CreatePlotFont(axis.AxisNumberFont, 0, surface);
  const Selection inUse(surface, font);
  surface.SetTextColor(axis.AxisNumberColor);
  EachLabel(axis, strip, [&](const std::string& label, const DeviceExtent& extent, double fraction) {
    const double y = frame.bottom - fraction * frame.height() - extent.cy / 2.0;
    surface.TextOutA(frame.left - extent.cx - metrics.Margin2X, Nearest(y), label);
  });
}

void DrawBottomNumbers(DrawingSurface& surface, const PlotAxis& axis, const LabelStrip& strip,
                       const DeviceMetrics& metrics, const DeviceRect& frame) {
  const SurfaceObject font = CreatePlotFont(axis.AxisNumberFont, strip.Slanted ? 45 : 0, surface);
  const Selection inUse(surface, font);
  surface.SetTextColor(axis.AxisNumberColor);
  EachLabel(axis, strip, [&](const std::string& label, const DeviceExtent& extent, double fraction) {
    const double x = frame.left + fraction * frame.width();
    if (strip.Slanted)  // rising to the tick
      surface.TextOutA(Nearest(x - (extent.cx + metrics.Margin2Y) * kCos45),
                       Nearest(frame.bottom + metrics.Margin2Y + extent.cx * kCos45), label);
    else
      surface.TextOutA(Nearest(x - extent.cx / 2.0), frame.bottom + metrics.Margin2Y, label);
  });
}

}  // namespace

PlotMargins MeasurePlot(DrawingSurface& surface, const PlotClass& plot, const DeviceMetrics& metrics) {
  PlotMargins around;
  const DeviceRect area = metrics.TitleArea();
  const FrameAxis &bottom = BottomAxis(plot), &left = LeftAxis(plot);
  around.Title = ParsePlotText(surface, plot.PlotTitle, plot.PlotTitleFont, 0, area.width());
  around.BottomTitle = ParsePlotText(surface, bottom.AxisTitle, bottom.AxisTitleFont, 0, area.width());
  around.LeftTitle = ParsePlotText(surface, left.AxisTitle, left.AxisTitleFont, 90);
  const std::int32_t most = std::min(area.width(), area.height()) / 2;
  around.LeftLabels = MeasureLabels(surface, left, most);
  const DeviceRect frame = ComputePlotRect(around, metrics, plot.Make2DSquare);  // yet without the numbers below
  LabelStrip& strip = around.BottomLabels = MeasureLabels(surface, bottom, most);
  if (!FitsSideBySide(strip, frame, metrics)) {
    strip.Slanted = true;
    // At 45 degrees a text takes as much room upwards as across.
    strip.Width = strip.Height = Nearest(strip.Width * kCos45);
  }
  const Stretch beside = BesideFrame(ComputePlotRect(around, metrics, plot.Make2DSquare), around, metrics);
  if (const std::int32_t longest = beside.Bottom - beside.Top; around.LeftTitle.Size.cx > longest)
    around.LeftTitle = ParsePlotText(surface, left.AxisTitle, left.AxisTitleFont, 90, longest);
  return around;
}

DeviceRect ComputePlotRect(const PlotMargins& around, const DeviceMetrics& metrics, bool square) {
  DeviceRect frame;
  frame.top = metrics.Margins.top + metrics.Margin4Y + around.Title.Size.cy + metrics.Margin2Y;
  frame.left = metrics.Margins.left + metrics.Margin4X + around.LeftTitle.Size.cy + metrics.Margin2X +
               around.LeftLabels.Width + metrics.Margin2X;
  frame.bottom = metrics.Height - metrics.Margin4Y - around.BottomTitle.Size.cy - metrics.Margin2Y -
                 around.BottomLabels.Height - metrics.Margin2Y - metrics.Margins.bottom;
  frame.right = metrics.Width - 2 * metrics.Margin4X - metrics.Margins.right;
  return square ? frame.Squared() : frame;
}

void DrawAxes(DrawingSurface& surface, const PlotClass& plot, const DeviceMetrics& metrics, const PlotMargins& around,
              const DeviceRect& frame) {
  const std::array<AxisLine, 2> axes = {AxisLine(surface, LeftAxis(plot), frame, AxisDirection::Vertical),
                                        AxisLine(surface, BottomAxis(plot), frame, AxisDirection::Horizontal)};
  surface.SetBkMode(1);
  DrawAxisFrame(surface, plot, metrics, frame);
  DrawTitles(surface, plot, metrics, around, frame);
  DrawTicks(surface, plot, metrics, axes);
  DrawGrids(plot, metrics.PenScale, axes);
  DrawLeftNumbers(surface, LeftAxis(plot), around.LeftLabels, metrics, frame);
  DrawBottomNumbers(surface, BottomAxis(plot), around.BottomLabels, metrics, frame);
}

}  // namespace quorvex
