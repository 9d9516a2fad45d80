#include "results/AvailableGraphs.h"

#include <algorithm>
#include <utility>

#include "results/PlotPoints.h"
#include "results/ResultPlots.h"

namespace quorvex {
namespace {

// The points over some of the X's, from 1; a sheet without two of them has none to offer.
void AddData(std::vector<PlotSeries>& graphs, const DataSheet& sheet, std::vector<std::size_t> columns,
             const std::string& name, const Settings& settings) {
  columns.push_back(sheet.IndependentVariables + 1);
  const Result<SolveData> points = ColumnPoints(sheet, std::move(columns));
  if (!points) return;
  if (Result<PlotSeries> series = PointSeries(name, *points, settings)) graphs.push_back(std::move(*series));
}

}  // namespace

std::vector<PlotSeries> AvailableGraphs(Project& project, const PlotPage& plot, const Settings& settings) {
  const DataSheet& sheet = project.Sheet;
  const std::size_t variables = plot.Axes().size() - 1;
  std::vector<PlotSeries> graphs;
  if (variables == sheet.IndependentVariables) {
    AddData(graphs, sheet, variables == 1 ? std::vector<std::size_t>{1} : std::vector<std::size_t>{1, 2}, "Input Data",
            settings);
    const auto points = std::make_shared<const SolveData>(GatherData(sheet, PointOrder::OfSheet).Points);
    std::size_t number = plot.PlotData.size();
    for (const SolvedItem& solution : SolvedItems(project, settings.Integer("sortindex"))) {
      PlotSeries& graph = graphs.emplace_back(SeriesOf(solution, points, settings));
      LookLikeModel(graph.Style(), variables);
      if (variables == 1) TellApart(graph.Style(), number++);
      graph.Style().LegendText = solution.Name();
    }
  } else if (variables == 1) {
    const std::vector<std::string> titles = AxisTitles(sheet);
    for (std::size_t col = 1; col <= sheet.IndependentVariables; ++col)
      AddData(graphs, sheet, {col}, titles.back() + " over " + titles[col - 1], settings);
  }
  return graphs;
}

Result<std::vector<PlotSeries>> ChosenGraphs(const std::vector<PlotSeries>& available,
                                             std::span<const std::size_t> chosen, const PlotPage& plot) {
  if (chosen.empty()) return Failure{"Please select data from the list or press Cancel"};
  // A first table shows whether there is one; the plot makes its own.
  const std::vector<int> points(plot.Axes().size() - 1, 30);
  std::vector<PlotSeries> graphs;
  std::vector<std::string> failed;
  for (const std::size_t number : chosen) {
    PlotSeries graph = available[number];
    if (MakeTable(graph, plot, points))
      graphs.push_back(std::move(graph));
    else
      failed.push_back(graph.Style().LegendText);
  }
  if (!failed.empty()) return Failure{NoCurveText(failed)};
  return graphs;
}

}  // namespace quorvex
