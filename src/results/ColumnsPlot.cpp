#include "results/ColumnsPlot.h"

#include "results/PlotPoints.h"
#include "results/ResultPlots.h"
#include "sheet/ColumnNames.h"

namespace quorvex {

Result<PlotClass> ColumnsPlot::Make(const DataSheet& sheet, const Settings& settings, const LocaleText& locale) const {
  if (!Vertical) return Failure{"Please select which data column to plot on the vertical plot axis."};
  if (Horizontal.empty()) return Failure{"Please select at least one data column to plot on the horizontal plot axis."};
  const auto title = [&](std::size_t col) { return col == kRowNumbers ? kRowTitle : ColumnTitle(sheet, col, "X"); };
  const auto name = [&](std::size_t col) { return col == kRowNumbers ? kRowTitle : ColumnName(sheet, col); };
  const bool several = Horizontal.size() > 1;
  PlotClass plot(settings, locale);
  plot.PlotTitle = "Plot";
  plot.X.AxisTitle = several ? "X" : title(Horizontal[0]);
  plot.Y.AxisTitle = ColumnTitle(sheet, *Vertical, "Y");
  ShowDates(plot, sheet, {Horizontal[0], *Vertical});
  for (const std::size_t col : Horizontal) {
    const Result<SolveData> points = ColumnPoints(sheet, {col, *Vertical});
    if (!points) return Failure{points.error()};
    Result<PlotSeries> series = PointSeries(several ? name(col) : "Input Data", *points, settings);
    if (!series) return Failure{series.error()};
    SeriesStyle& style = series->Style();
    style.DisplayLine = Type != PlotType::Markers;
    style.DisplayMarker = Type != PlotType::Lines;
    if (several) TellApart(style, plot.PlotData.size());
    plot.PlotData.push_back(std::move(*series));
  }
  return plot;
}

}  // namespace quorvex
