#include <gtest/gtest.h>

#include "plot/PlotSwitches.h"
#include "plot/Plots.h"

namespace quorvex {
namespace {

PlotClass PositivePlot() {
  PlotClass plot = BarePlot();
  plot.PlotData.push_back(PointSeries({1, 50}, {2, 3}, "", {0.5, 0.5}));
  plot.PlotData.emplace_back(PointSeries({1, 50}, {2, 4}));
  RecordingPrompter prompter;
  EXPECT_TRUE(plot.CreateGraph({.Auto = true}, prompter));
  return plot;
}

// Each one changes what is drawn, says so, leaves the others alone, and gives the first drawing back.
TEST(PlotSwitches, ChangeThePictureAndChangeItBack) {
  PlotClass plot = PositivePlot();
  RecordingPrompter prompter;
  const auto drawing = [&] {
    RecordingSurface surface;
    EXPECT_TRUE(plot.DrawGraph(surface, prompter));
    return surface.Text();
  };
  const auto states = [&] {
    std::vector<bool> on;
    for (const PlotSwitch& entry : plot.Switches()) on.push_back(entry.Name != nullptr && entry.IsOn(plot));
    return on;
  };
  plot.PlotData[1].Style().LegendText = "curve";
  const std::string before = drawing();
  const std::vector<bool> off = states();
  EXPECT_EQ(off, std::vector<bool>(off.size()));
  for (std::size_t i = 0; i < off.size(); ++i) {
    const PlotSwitch& entry = plot.Switches()[i];
    if (entry.Name == nullptr) continue;
    entry.Turn(plot, true, prompter);
    std::vector<bool> one(off.size());
    one[i] = true;
    EXPECT_EQ(states(), one) << entry.Name;
    EXPECT_NE(drawing(), before) << entry.Name;
    entry.Turn(plot, false, prompter);
    EXPECT_EQ(drawing(), before) << entry.Name;
  }
  EXPECT_TRUE(prompter.Said.empty());
}

TEST(PlotSwitches, OfferErrorBarsWhereThereAreAny) {
  PlotClass plot = PositivePlot();
  const PlotSwitch& bars = plot.Switches().back();
  EXPECT_TRUE(bars.Applies(plot));
  plot.PlotData.erase(plot.PlotData.begin());
  EXPECT_FALSE(bars.Applies(plot));
}

// Bars of 3 about 1 and 9, which alone would ask for the axis from 1 to 9.
TEST(PlotSwitches, MakeRoomForErrorBarsInAnAutomaticScale) {
  const struct {
    const char* what;
    bool log, chosen;
    double min, max;
  } kCases[] = {{"linear", false, false, -2, 12}, {"logarithmic", true, false, 1, 100}, {"chosen", false, true, 0, 9}};
  for (const auto& c : kCases) {
    PlotClass plot = BarePlot();
    plot.PlotData.push_back(PointSeries({1, 2}, {1, 9}, "", {3, 3}));
    plot.Y.LogScale = c.log;
    RecordingPrompter prompter;
    ASSERT_TRUE(plot.CreateGraph({.Auto = true, .AutoFormat = true}, prompter));
    if (c.chosen) plot.Y.Min = 0;
    ASSERT_TRUE(plot.CreateGraph({}, prompter));
    const PlotSwitch& bars = plot.Switches().back();
    bars.Turn(plot, true, prompter);
    EXPECT_EQ(std::pair(plot.Y.Min, plot.Y.Max), std::pair(c.min, c.max)) << c.what;
    EXPECT_EQ(plot.Y.LogScale, c.log) << c.what;
  }
}

}  // namespace
}  // namespace quorvex
