#include "results/ResultPlots.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace quorvex {
namespace {

constexpr std::int32_t kBlue = 0xFF0000, kRed = 0x0000FF;

// Points that are shown as markers.
DataClass Markers(const std::string& legend, std::vector<double> x, std::vector<double> y, const Settings& settings) {
  DataClass data;
  data.id = data.Description = data.LegendText = legend;
  data.DisplayLine = false;
  data.DisplayMarker = true;
  data.DrawColor = data.MarkerColor = kBlue;
  data.MarkerSize = settings.Integer("discreetmarkersize");
  data.GenerateTable({std::move(x)}, std::move(y));
  return data;
}

}  // namespace

Result<PlotClass> ModelPlot(PlotSeries curve, const std::string& name, const SolveData& data, const std::string& xTitle,
                            const std::string& yTitle, const Settings& settings, const LocaleText& locale) {
  PlotClass plot(settings, locale);
  plot.PlotTitle = "Model Plot";
  plot.X.AxisTitle = xTitle;
  plot.Y.AxisTitle = yTitle;

  DataClass input = Markers("Input Data", data.X[0], data.Y, settings);
  const bool weighted = std::any_of(data.SD.begin(), data.SD.end(), [](double sd) { return sd != 1; });
  if (weighted && !input.GenerateErrorTable(data.SD)) return Failure{"An error has occurred obtaining the input data."};
  plot.PlotData.emplace_back(std::move(input));

  SeriesStyle& style = curve.Style();
  style.LegendText = "Model " + name;
  style.DisplayLine = true;
  if (style.DrawColor == 0) style.DrawColor = kRed;  // the user chose none
  const TableRange range{curve.InputXMin(), curve.InputXMax(),
                         plot.PlotAtFittedOnly ? kInputPoints : plot.PointsPerPlot};
  if (!curve.GenerateTable(range, false))
    return Failure{"An error has occurred generating equation data for equation " + name};
  plot.PlotData.push_back(std::move(curve));
  return plot;
}

Result<PlotClass> ResidualPlot(ModelClass& model, const SolveData& data, const Settings& settings,
                               const LocaleText& locale, std::span<const std::size_t> rows) {
  std::optional<std::vector<double>> residuals = model.GenerateResiduals(data);
  if (!residuals) return Failure{"An error occurred creating the Residual Scatter Plot. The plot cannot be created."};
  PlotClass plot(settings, locale);
  plot.PlotTitle = "Residual Error for Equation " + model.id;
  plot.X.AxisTitle = "Row";
  plot.Y.AxisTitle = "Residuals";
  std::vector<double> numbers(rows.begin(), rows.end());
  if (rows.empty()) {
    numbers.resize(data.N());
    std::iota(numbers.begin(), numbers.end(), 1.0);
  }
  plot.PlotData.emplace_back(Markers("Residuals", std::move(numbers), std::move(*residuals), settings));
  return plot;
}

Result<PlotClass> NormalPlot(ModelClass& model, const SolveData& data, const Settings& settings,
                             const LocaleText& locale) {
  std::optional<NormalTable> table = model.GenerateQQTable(data);
  if (!table || table->Quantiles.empty())
    return Failure{"An error occurred creating the Residual Normal Probability Plot. The plot cannot be created."};
  PlotClass plot(settings, locale);
  plot.PlotTitle = "Residual Normal Probability Plot";
  plot.X.AxisTitle = "Normal Quantiles";
  plot.Y.AxisTitle = "Normalized Residuals";

  DataClass line;
  line.id = line.Description = line.LegendText = "Reference line";
  line.DrawColor = kRed;
  const std::vector<double> ends = {table->Quantiles.front(), table->Quantiles.back()};
  line.GenerateTable({ends}, ends);
  plot.PlotData.emplace_back(Markers("Residuals", std::move(table->Quantiles), std::move(table->Sorted), settings));
  plot.PlotData.emplace_back(std::move(line));
  return plot;
}

}  // namespace quorvex
