#include "plot/DrawBands.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "drawing/StyledLines.h"
#include "plot/DevicePoints.h"
#include "plot/RefineCurve.h"

namespace quorvex {
namespace {

constexpr std::int32_t kWhite = 0xFFFFFF;
constexpr int kNoPen = 5, kDash = 1;

// `share` of a colour, in percent, and the rest of another.
std::int32_t Mixed(std::int32_t color, std::int32_t other, int share) {
  std::int32_t mixed = 0;
  for (const int shift : {0, 8, 16}) {
    const int part = (((color >> shift) & 0xFF) * share + ((other >> shift) & 0xFF) * (100 - share) + 50) / 100;
    mixed |= part << shift;
  }
  return mixed;
}

// A stretch of a band without interruption: its edges as they are drawn.
struct BandStretch {
  Curve Lower, Upper;
};

// The stretches of one band of a series.
class BandOutline {
 public:
  BandOutline(const PlotSeries& series, BandKind kind, const PlotPicture& picture, const PlotClass& plot,
              double tolerance)
      : series_(series), kind_(kind), picture_(picture), plot_(plot), tolerance_(tolerance) {
    // One length of the axis beyond the frame: nobody sees the difference, and all surfaces can draw it.
    const double min = plot.Y.Min, max = plot.Y.Max;
    least_ = plot.Y.LogScale ? min * (min / max) : min - (max - min);
    most_ = plot.Y.LogScale ? max * (max / min) : max + (max - min);
  }

  std::vector<BandStretch> Stretches() const {
    std::vector<BandStretch> stretches;
    const SeriesTable table = series_.CopyDataTo();
    std::vector<double> x, lower, upper;
    const auto end = [&] {
      if (x.size() > 1) stretches.push_back({Edge(x, lower, false), Edge(x, upper, true)});
      x.clear(), lower.clear(), upper.clear();
    };
    for (const double at : table.X) {
      const Interval limits = series_.BandAt(kind_, at);
      if (!std::isfinite(limits.Lower) || !std::isfinite(limits.Upper)) {
        end();
        continue;
      }
      x.push_back(at);
      lower.push_back(Within(limits.Lower));
      upper.push_back(Within(limits.Upper));
    }
    end();
    return stretches;
  }

 private:
  double Within(double y) const { return std::clamp(y, least_, most_); }

  Curve Edge(const std::vector<double>& x, const std::vector<double>& y, bool upper) const {
    if (plot_.PlotAtFittedOnly) return {x, y};
    return RefineCurve(
        {x, y},
        [&](double at, double& value) {
          const Interval limits = series_.BandAt(kind_, at);
          value = Within(upper ? limits.Upper : limits.Lower);
          return std::isfinite(limits.Lower) && std::isfinite(limits.Upper);
        },
        picture_, plot_, tolerance_);
  }

  const PlotSeries& series_;
  BandKind kind_;
  const PlotPicture& picture_;
  const PlotClass& plot_;
  double tolerance_, least_, most_;
};

// A band with its colours.
struct ShownBand {
  BandKind Kind;
  BandColors Colors;
  std::vector<BandStretch> Stretches;
};

void Fill(DrawingSurface& surface, const ShownBand& band, const PlotPicture& picture, bool swapAxis) {
  const SelectedObject pen(surface, surface.CreatePen(kNoPen, 1, band.Colors.Area));
  const SelectedObject brush(surface, surface.CreateSolidBrush(band.Colors.Area));
  for (const BandStretch& stretch : band.Stretches) {
    const DevicePoints lower(stretch.Lower.X, stretch.Lower.Y, picture, swapAxis),
        upper(stretch.Upper.X, stretch.Upper.Y, picture, swapAxis);
    std::vector<DevicePoint> outline;
    for (std::size_t i = 0; i < upper.Across().size(); ++i) outline.push_back({upper.Across()[i], upper.Down()[i]});
    for (std::size_t i = lower.Across().size(); i-- > 0;) outline.push_back({lower.Across()[i], lower.Down()[i]});
    if (outline.size() > 2) surface.Polygon(outline);
  }
}

void DrawEdges(DrawingSurface& surface, const ShownBand& band, const PlotPicture& picture, bool swapAxis,
               std::int32_t penScale) {
  for (const BandStretch& stretch : band.Stretches)
    for (const Curve* edge : {&stretch.Lower, &stretch.Upper}) {
      const DevicePoints line(edge->X, edge->Y, picture, swapAxis);
      DrawStyledPolyline(surface, line.Across(), line.Down(), band.Kind == BandKind::Prediction ? kDash : 0, 1,
                         band.Colors.Edge, penScale);
    }
}

}  // namespace

BandColors ColorsOfBand(BandKind kind, std::int32_t curve, std::int32_t background) {
  const bool inner = kind == BandKind::Confidence;
  return {Mixed(curve, background, inner ? 26 : 12), Mixed(curve, background, inner ? 60 : 45)};
}

std::int32_t PaperColor(const PlotPage& plot, const DeviceMetrics& metrics) {
  return metrics.BlankPaper ? kWhite : plot.PlotBackgroundColor;
}

void DrawBands(DrawingSurface& surface, const DeviceMetrics& metrics, const PlotPicture& picture,
               const PlotClass& plot) {
  std::vector<ShownBand> bands;
  for (const BandKind kind : {BandKind::Prediction, BandKind::Confidence})
    for (auto series = plot.PlotData.rbegin(); series != plot.PlotData.rend(); ++series) {
      const std::vector<BandKind> shown = series->ShownBands();
      if (std::ranges::find(shown, kind) == shown.end()) continue;
      bands.push_back({kind, ColorsOfBand(kind, series->Style().DrawColor, PaperColor(plot, metrics)),
                       BandOutline(*series, kind, picture, plot, kInchesOff * metrics.DevicePpi).Stretches()});
    }
  if (bands.empty()) return;
  const DeviceRect& frame = picture.Frame;
  const ClipRectangle clip(surface, frame.left, frame.top, frame.right, frame.bottom);
  for (const ShownBand& band : bands) Fill(surface, band, picture, plot.SwapAxis);
  for (const ShownBand& band : bands) DrawEdges(surface, band, picture, plot.SwapAxis, metrics.PenScale);
}

}  // namespace quorvex
