#pragma once

#include "plot/Plots.h"
#include "plot3d/PlotClass3D.h"

namespace quorvex {

// Points in space that are shown as markers.
inline PlotSeries CloudSeries(std::vector<std::vector<double>> x, std::vector<double> y) {
  DataClass data;
  data.GenerateTable(std::move(x), std::move(y));
  return {std::move(data), {.DisplayLine = false, .DisplayMarker = true}};
}

// A box without legend around points at X1 = 0 and 10, X2 = -2 and 2, Y = 100 and 500.
inline PlotClass3D BarePlot3D() {
  PlotClass3D plot{Settings()};
  plot.Legend.Show = false;
  plot.PlotData.push_back(CloudSeries({{0, 10}, {-2, 2}}, {100, 500}));
  return plot;
}

}  // namespace quorvex
