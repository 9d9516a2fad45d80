#include <gtest/gtest.h>

#include "results/ColumnsPlot.h"
#include "results/PlotPoints.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

// Three X's and Y with deviations; the third row lacks X2, the fourth has nothing but X1.
Project Measurements() {
  Project project = ProjectOf({{1, 2, 3, 4}, {10, 20, 0, 0}, {5, 6, 7, 0}, {30, 20, 10, 0}, {0.5, 1, 2, 0}}, true);
  for (const auto& [row, col] : {std::pair{3, 2}, {4, 2}, {4, 3}, {4, 4}, {4, 5}})
    project.Sheet.Cells.ClearCell(static_cast<std::size_t>(row), static_cast<std::size_t>(col));
  project.Sheet.Headers = {"Time", "", "Depth", "Heat", "SD"};
  return project;
}

std::string Points(const PlotSeries& series) {
  std::string text = series.Style().LegendText + ":";
  const SeriesTable table = series.CopyDataTo();
  for (std::size_t i = 0; i < table.Y.size(); ++i)
    text += ' ' + std::to_string(static_cast<int>(table.X[i])) + '/' + std::to_string(static_cast<int>(table.Y[i]));
  return text;
}

TEST(ColumnsPlot, HasASeriesForEachHorizontalColumn) {
  const struct {
    std::vector<std::size_t> Horizontal;
    std::size_t Vertical;
    const char *XTitle, *YTitle;
    std::vector<std::string> Series;
    bool ErrorBars;
  } cases[] = {
      {{1}, 4, "Time", "Heat", {"Input Data: 1/30 2/20 3/10"}, true},
      {{2}, 4, "X", "Heat", {"Input Data: 10/30 20/20"}, true},
      {{1}, 2, "Time", "Y", {"Input Data: 1/10 2/20"}, false},
      {{kRowNumbers}, 3, "Row", "Depth", {"Input Data: 1/5 2/6 3/7"}, false},
      {{1, 2, 3}, 4, "X", "Heat", {"Time: 1/30 2/20 3/10", "Column 2: 10/30 20/20", "Depth: 5/30 6/20 7/10"}, true},
  };
  const Project project = Measurements();
  for (const auto& c : cases) {
    const Result<PlotClass> plot = ColumnsPlot{c.Vertical, c.Horizontal}.Make(project.Sheet, Settings());
    ASSERT_TRUE(plot) << plot.error();
    EXPECT_EQ(plot->PlotTitle, "Plot");
    EXPECT_EQ(plot->X.AxisTitle, c.XTitle);
    EXPECT_EQ(plot->Y.AxisTitle, c.YTitle);
    std::vector<std::string> series;
    for (const PlotSeries& one : plot->PlotData) {
      series.push_back(Points(one));
      EXPECT_EQ(one.Style().ShowErrorBars, c.ErrorBars);
    }
    EXPECT_EQ(series, c.Series);
  }
}

TEST(ColumnsPlot, ShowsMarkersAndLinesAsChosen) {
  const struct {
    PlotType Type;
    bool Line, Marker;
  } cases[] = {
      {PlotType::Markers, false, true}, {PlotType::Lines, true, false}, {PlotType::LinesAndMarkers, true, true}};
  for (const auto& c : cases) {
    const Result<PlotClass> plot = ColumnsPlot{4, {1, 3}, c.Type}.Make(Measurements().Sheet, Settings());
    ASSERT_TRUE(plot);
    for (const PlotSeries& series : plot->PlotData) {
      EXPECT_EQ(series.Style().DisplayLine, c.Line);
      EXPECT_EQ(series.Style().DisplayMarker, c.Marker);
    }
    EXPECT_NE(plot->PlotData[0].Style().DrawColor, plot->PlotData[1].Style().DrawColor);
  }
}

TEST(ColumnsPlot, SaysWhatIsMissing) {
  Project project = Measurements(), huge = LineProject();
  huge = ProjectOf({{1, 2}, {1e308, 1e308}, {1e308, 1e308}}, true);
  const struct {
    const Project& Of;
    ColumnsPlot Chosen;
    const char* Failure;
  } cases[] = {
      {project, {std::nullopt, {}}, "Please select which data column to plot on the vertical plot axis."},
      {project, {std::nullopt, {1}}, "Please select which data column to plot on the vertical plot axis."},
      {project, {4, {}}, "Please select at least one data column to plot on the horizontal plot axis."},
      {huge, {2, {1}}, "An error has occurred obtaining the input data."},
      {Project(1, false, {}), {2, {1}}, "You need at least 2 data points in order to create a plot."},
  };
  for (const auto& c : cases) EXPECT_EQ(c.Chosen.Make(c.Of.Sheet, Settings()).error(), c.Failure);
}

}  // namespace
}  // namespace quorvex
