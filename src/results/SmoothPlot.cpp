#include "results/SmoothPlot.h"

#include "results/PlotPoints.h"
#include "results/ResultPlots.h"

namespace quorvex {

PlotClass SmoothPlot(std::span<const double> x, std::span<const double> y, std::span<const double> smooth,
                     const DataSheet& sheet, const Settings& settings, const LocaleText& locale) {
  constexpr const char* kCurve = "Lowess Smooth";
  const auto points = [&](std::span<const double> values) {
    DataClass data;
    data.GenerateTable({{x.begin(), x.end()}}, {values.begin(), values.end()});
    return data;
  };
  PlotClass plot(settings, locale);
  plot.PlotTitle = kCurve;
  const std::vector<std::string> titles = AxisTitles(sheet);
  for (std::size_t axis = 0; axis < titles.size(); ++axis) plot.Axes()[axis]->AxisTitle = titles[axis];
  plot.PlotData.push_back(Markers("Input Data", points(y), settings));
  if (smooth.empty()) return plot;
  DataClass curve = points(smooth);
  curve.id = curve.Description = kCurve;
  SeriesStyle style{.LegendText = kCurve};
  LookLikeModel(style, 1);
  plot.PlotData.emplace_back(std::move(curve), style);
  return plot;
}

}  // namespace quorvex
