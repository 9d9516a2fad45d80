#include "plot/PlotClass.h"

#include <algorithm>
#include <cmath>

#include "plot/FrameModes.h"

namespace quorvex {

PlotClass::PlotClass(const Settings& settings, const LocaleText& locale) : PlotPage(settings, locale) {
  X.Read(settings, "x");
  Y.Read(settings, "y");
  SwapAxis = settings.Flag("swapaxis");
  PointsPerPlot = static_cast<std::int16_t>(std::clamp(settings.Integer("pointsperplot"), 3, 5000));
  Extrapolate = settings.Flag("extrapolate2d");
  Make2DSquare = settings.Flag("make2dsquare");
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
