#include "files/RawData.h"

#include <utility>
#include <vector>

#include "import/ReadPoints.h"
#include "results/ResultPlots.h"

namespace quorvex {

Failure NoDataIn(const std::string& fileName) { return {"Error importing data from '" + fileName + "'."}; }

Result<PlotSeries> ReadRawData(std::string_view bytes, const std::string& fileName, std::size_t variables,
                               const Settings& settings, const LocaleText& locale) {
  std::vector<std::vector<double>> points = ReadPoints(bytes, variables, locale);
  if (points.empty()) return NoDataIn(fileName);
  std::vector<double> y = std::move(points.back());
  points.pop_back();
  DataClass data;
  data.GenerateTable(std::move(points), std::move(y));
  return Markers("Raw Data", std::move(data), settings);
}

Result<std::unique_ptr<PlotPage>> RawDataPlot(std::string_view bytes, const std::string& fileName,
                                              const Settings& settings, const LocaleText& locale) {
  Result<PlotSeries> series = ReadRawData(bytes, fileName, 1, settings, locale);
  if (!series) return Failure{series.error()};
  auto plot = std::make_unique<PlotClass>(settings, locale);
  plot->PlotTitle = "Plot";
  plot->X.AxisTitle = "X";
  plot->Y.AxisTitle = "Y";
  plot->PlotData.push_back(std::move(*series));
  return std::unique_ptr<PlotPage>(std::move(plot));
}

}  // namespace quorvex
