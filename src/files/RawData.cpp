#include "files/RawData.h"

#include <utility>
#include <vector>

#include "import/ReadPoints.h"
#include "results/ResultPlots.h"

namespace quorvex {

Failure NoDataIn(const std::string& fileName) { return {"Error importing data from '" + fileName + "'."}; }

namespace {

PlotSeries SeriesOf(std::vector<std::vector<double>> points, const Settings& settings) {
  std::vector<double> y = std::move(points.back());
  points.pop_back();
  DataClass data;
  data.GenerateTable(std::move(points), std::move(y));
  return Markers("Raw Data", std::move(data), settings);
}

}  // namespace

Result<PlotSeries> ReadRawData(std::string_view bytes, const std::string& fileName, std::size_t variables,
                               const Settings& settings, const LocaleText& locale) {
  TextPoints points = ReadPoints(bytes, variables, locale);
  if (points.Columns.empty()) return NoDataIn(fileName);
  return SeriesOf(std::move(points.Columns), settings);
}

Result<std::unique_ptr<PlotPage>> RawDataPlot(std::string_view bytes, const std::string& fileName,
                                              const Settings& settings, const LocaleText& locale) {
  TextPoints points = ReadPoints(bytes, 1, locale);
  if (points.Columns.empty()) return NoDataIn(fileName);
  auto plot = std::make_unique<PlotClass>(settings, locale);
  plot->PlotTitle = "Plot";
  plot->X.AxisTitle = "X";
  plot->Y.AxisTitle = "Y";
  if (!points.Patterns[0].empty()) plot->X.LabelString = points.Patterns[0];
  if (!points.Patterns[1].empty()) plot->Y.LabelString = points.Patterns[1];
  plot->PlotData.push_back(SeriesOf(std::move(points.Columns), settings));
  return std::unique_ptr<PlotPage>(std::move(plot));
}

}  // namespace quorvex
