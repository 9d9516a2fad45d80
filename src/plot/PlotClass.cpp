#include "plot/PlotClass.h"

#include <cmath>

#include "plot/FrameModes.h"
#include "plot/PlotDefaults.h"

namespace quorvex {
namespace {

template <typename Io, typename Plot>
void ListDefaults(const Io& io, Plot& plot) {
  io("swapaxis", plot.SwapAxis);
  io("pointsperplot", plot.PointsPerPlot, 3, 5000);
  io("extrapolate2d", plot.Extrapolate);
  io("make2dsquare", plot.Make2DSquare);
}

}  // namespace

PlotClass::PlotClass(const Settings& settings, const LocaleText& locale) : PlotPage(settings, locale) {
  X.Read(settings, "x");
  Y.Read(settings, "y");
  ListDefaults(ReadDefaults(settings), *this);
}

void PlotClass::StoreDefaults(Settings& settings) const {
  PlotPage::StoreDefaults(settings);
  X.Store(settings, "x");
  Y.Store(settings, "y");
  ListDefaults(KeepDefaults(settings), *this);
}

std::unique_ptr<PlotModes> PlotClass::MakeModes(PlotHost& host, Prompter& prompter) {
  return std::make_unique<FrameModes>(*this, host, prompter);
}

bool PlotClass::GenerateTable(PlotSeries& series) const {
  const TableRange range{X.Min, X.Max, PlotAtFittedOnly ? kInputPoints : PointsPerPlot, X.LogScale};
  return series.GenerateTable({range}, Extrapolate);
}

std::optional<CurveHit> PlotClass::CurveIsClose(double x, double y, double tolerance) const {
  const AxisMap& mapX = SwapAxis ? Shown().Vertical : Shown().Horizontal;
  const AxisMap& mapY = SwapAxis ? Shown().Horizontal : Shown().Vertical;
  if (SwapAxis) std::swap(x, y);
  std::optional<CurveHit> hit;
  double nearest = tolerance;
  for (std::size_t s = 0; s < PlotData.size(); ++s) {
    if (!PlotData[s].Displayed()) continue;
    const SeriesTable table = PlotData[s].CopyDataTo();
    for (std::size_t i = 0; i < table.Y.size(); ++i) {
      const double dx = std::abs(x - mapX.ToDevice(table.X[i]));
      // Most points are too far away already, and need not be looked at any further.
      if (dx > nearest) continue;
      const double distance = std::max(dx, std::abs(y - mapY.ToDevice(table.Y[i])));
      if (distance > nearest || (hit && distance == nearest)) continue;
      nearest = distance;
      hit = {s, i};
    }
  }
  return hit;
}

}  // namespace quorvex
