#include <gtest/gtest.h>

#include "plot/PlotClass.h"
#include "plot3d/PlotClass3D.h"
#include "results/AvailableGraphs.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

using Names = std::vector<std::string>;

Names Legend(const std::vector<PlotSeries>& graphs) {
  Names names;
  for (const PlotSeries& series : graphs) names.push_back(series.Style().LegendText);
  return names;
}

TEST(AvailableGraphs, AreWhatThePlotHasAPlaceFor) {
  const Settings settings;
  const PlotClass curves(settings);
  const PlotClass3D box(settings);
  Project line = LineProject(), plane = PlaneProject(), empty(1, false, {});
  SolveModel(line, "a*x+b", 1);
  SolveModel(plane, "a+b*x1+c*x2", 1);
  plane.Sheet.Headers = {"Time", "", "Heat"};
  const struct {
    Project& Of;
    const PlotPage& Plot;
    Names Graphs;
  } cases[] = {
      {line, curves, {"Input Data", "a*x+b"}},
      {line, box, {}},
      {plane, box, {"Input Data", "a+b*x1+c*x2"}},
      {plane, curves, {"Heat over Time", "Heat over X2"}},
      {empty, curves, {}},
  };
  for (const auto& c : cases) EXPECT_EQ(Legend(AvailableGraphs(c.Of, c.Plot, settings)), c.Graphs);

  const std::vector<PlotSeries> graphs = AvailableGraphs(plane, curves, settings);
  EXPECT_EQ(graphs[1].InputXMax(), 5);
  EXPECT_EQ(graphs[1].InputYMax(), 11);
}

TEST(ChosenGraphs, HaveValuesAllOverTheirInput) {
  Project line = LineProject();
  const Settings settings;
  const PlotClass plot(settings);
  SolveModel(line, "a*x+b", 1);
  ModelClass& broken = AddModel(line, "Broken", {"a*ln(x-2)"});
  broken.SetIC(GatherData(line.Sheet).Points);
  broken.Solved = true;
  const std::vector<PlotSeries> available = AvailableGraphs(line, plot, settings);
  ASSERT_EQ(available.size(), 3U);
  const auto index = [&](const std::string& name) {
    const Names names = Legend(available);
    return static_cast<std::size_t>(std::find(names.begin(), names.end(), name) - names.begin());
  };
  const auto chosen = ChosenGraphs(available, std::vector{index("Input Data"), index("a*x+b")}, plot);
  ASSERT_TRUE(chosen);
  EXPECT_EQ(Legend(*chosen), (Names{"Input Data", "a*x+b"}));
  EXPECT_NEAR(chosen->back().CopyDataTo().Y.back(), 11.2, 1e-12);  // 2 * 5 + 1.2
  EXPECT_EQ(ChosenGraphs(available, std::vector{index("Broken")}, plot).error(),
            "An error has occurred generating equation data for equation Broken");
  EXPECT_EQ(ChosenGraphs(available, {}, plot).error(), "Please select data from the list or press Cancel");
}

}  // namespace
}  // namespace quorvex
