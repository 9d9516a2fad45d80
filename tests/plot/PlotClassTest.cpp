#include <gtest/gtest.h>

#include "engine/InterpClass.h"
#include "plot/PlotClass.h"
#include "plot/Plots.h"

namespace quorvex {
namespace {

constexpr const char* kRefusal = "refuse: An error occurred creating the plot with the current data and plot settings.";

TEST(PlotClass, BeginsWithTheSettings) {
  const PlotClass fresh{Settings()};
  EXPECT_EQ(fresh.X.LabelString, "0.00");
  EXPECT_EQ(fresh.PointsPerPlot, 100);
  EXPECT_EQ(fresh.PlotBackgroundColor, 0xFFFFFF);
  EXPECT_EQ(fresh.TickPenLength, 0.125F);
  EXPECT_EQ(fresh.PlotTitleFont.Name, "Arial");
  EXPECT_TRUE(fresh.Legend.Show);
  EXPECT_FALSE(fresh.FootNote.Show);
  EXPECT_FALSE(fresh.PlotCreated);

  Settings settings;
  for (const auto& [key, text] : {std::pair{"xaxistitlefontname", "Liberation Serif"},
                                  {"xaxistitlefontbold", "true"},
                                  {"xaxistitlefontheight", "13.5"},
                                  {"xaxistitlecolor", "255"},
                                  {"yaxisnumberfontitalic", "true"},
                                  {"plotbackgroundcolor", "0"},
                                  {"ylogscale", "true"},
                                  {"swapaxis", "true"},
                                  {"pointsperplot", "90000"},
                                  {"ylabelstring", "0.0E+00"},
                                  {"tickpenlength", "0.25"}})
    settings.Set(key, text);
  const PlotClass plot(settings);
  EXPECT_EQ(plot.X.AxisTitleFont, (PlotFont{"Liberation Serif", 13.5, true, false}));
  EXPECT_EQ(plot.X.AxisTitleColor, 255);
  EXPECT_EQ(plot.Y.AxisNumberFont, (PlotFont{"Arial", 8, false, true}));
  EXPECT_EQ(plot.PlotBackgroundColor, 0);  // black, by choice
  EXPECT_EQ(plot.Legend.AreaColor, 0);
  EXPECT_TRUE(plot.Y.LogScale && !plot.X.LogScale && plot.SwapAxis);
  EXPECT_EQ(plot.PointsPerPlot, 5000);
  EXPECT_EQ(plot.Y.LabelString, "0.0E+00");
  EXPECT_EQ(plot.TickPenLength, 0.25F);
}

TEST(CreateGraph, ResolvesTheScales) {
  const struct {
    const char* what;
    bool automatic, xLog;
    double xMin, xMax, yMin, yMax;  // as the user set them
    std::vector<double> x, y;       // the data
    AxisLimits X, Y;
    int xMinor;
  } kCases[] = {
      {"automatic", true, false, 0, 0, 0, 0, {0, 2.1}, {5, 5}, {0, 2.5, 5}, {4, 6, 10}, 5},
      {"by hand, ticks and all", false, false, 0.25, 0.5, 1, 7, {0, 2}, {0, 2}, {0.25, 0.5, 10}, {1, 7, 10}, 5},
      {"equal limits turn both automatic", false, false, 3, 3, 1, 7, {0, 1}, {0, 2.1}, {0, 1, 10}, {0, 2.5, 5}, 5},
      {"logarithmic", true, true, 0, 0, 0, 0, {2, 500}, {0, 1}, {1, 1000, 3, true}, {0, 1, 10}, 10},
      {"negative data fall back", true, true, 0, 0, 0, 0, {-1, 0}, {0, 1}, {-1, 0, 10}, {0, 1, 10}, 5},
      {"by hand, rounded to decades", false, true, 3, 40, 2, 4, {1, 9}, {0, 1}, {1, 100, 2, true}, {2, 4, 10}, 10},
      {"a limit of 0 is the data's", false, true, 0, 40, 2, 4, {7, 9}, {0, 1}, {1, 100, 2, true}, {2, 4, 10}, 10},
      {"and linear where that fails", false, true, -2, 8, 2, 4, {-1, 9}, {0, 1}, {-1, 8, 9}, {2, 4, 10}, 10},
  };
  for (const auto& c : kCases) {
    PlotClass plot = BarePlot();
    plot.X.LogScale = c.xLog;
    plot.X.Min = c.xMin;
    plot.X.Max = c.xMax;
    plot.Y.Min = c.yMin;
    plot.Y.Max = c.yMax;
    plot.PlotData.emplace_back(PointSeries(c.x, c.y));
    RecordingPrompter prompter;
    EXPECT_TRUE(plot.CreateGraph({.Auto = c.automatic}, prompter)) << c.what;
    EXPECT_EQ(plot.X.Limits(), c.X) << c.what;
    EXPECT_EQ(plot.Y.Limits(), c.Y) << c.what;
    EXPECT_EQ(plot.X.NumMinorTicks, c.xMinor) << c.what;
    EXPECT_EQ(plot.X.Labels.size(), static_cast<std::size_t>(c.X.Ticks) + 1) << c.what;
    EXPECT_TRUE(prompter.Said.empty()) << c.what;
  }
}

TEST(CreateGraph, TakesItsLimitsFromWhatIsDisplayed) {
  PlotClass plot = BarePlot();
  RecordingPrompter prompter;
  EXPECT_TRUE(plot.CreateGraph({.Auto = true}, prompter));
  EXPECT_EQ(plot.X.Limits(), (AxisLimits{-1, 1, 10}));  // nothing displayed

  plot.PlotData.emplace_back(PointSeries({2, 3}, {0, 1}));
  plot.PlotData.emplace_back(PointSeries({10, 11.5}, {-4, 0}));
  plot.PlotData.emplace_back(PointSeries({100, 200}, {100, 200}));
  plot.PlotData[1].Style().DisplayLine = false;
  plot.PlotData[1].Style().DisplayMarker = true;
  plot.PlotData[2].Style().DisplayLine = false;  // shows neither
  const std::optional<std::vector<AxisLimits>> scales = plot.SuggestScale({true, false});
  EXPECT_EQ(scales, (std::vector<AxisLimits>{{1, 100, 2, true}, {-4, 1, 10}}));
  EXPECT_EQ(plot.X.Limits(), (AxisLimits{-1, 1, 10})) << "a suggestion changes nothing";
  plot.ClearGraph();
  EXPECT_TRUE(plot.PlotData.empty());
}

TEST(CreateGraph, MakesTheTablesOfCurves) {
  InterpClass spline;
  std::string log;
  ASSERT_TRUE(spline.Fit(Points({{1, 2, 4}}, {1, 0, 3}), log));
  PlotClass plot = BarePlot();
  plot.PlotData.emplace_back(spline);
  plot.PlotData.emplace_back(Curve("a*x", {2}));
  plot.PointsPerPlot = 21;
  RecordingPrompter prompter;

  ASSERT_TRUE(plot.CreateGraph({.Auto = true}, prompter));
  EXPECT_EQ(plot.PlotData[1].NumTablePoints(), 0U) << "not asked for";
  ASSERT_TRUE(plot.CreateGraph({.Auto = true, .Regenerate = true}, prompter));
  EXPECT_EQ(plot.PlotData[0].NumTablePoints(), 21U);
  EXPECT_EQ(plot.PlotData[1].CopyDataTo().X.back(), 9);  // the input ends before the axis does

  plot.Extrapolate = true;
  plot.ClearGraph();
  plot.PlotData.emplace_back(Curve("a*x", {2}));
  ASSERT_TRUE(plot.CreateGraph({.Regenerate = true}, prompter));
  EXPECT_EQ(plot.PlotData[0].CopyDataTo().X.front(), plot.X.Min);

  plot.PlotAtFittedOnly = true;
  ASSERT_TRUE(plot.CreateGraph({.Regenerate = true}, prompter));
  EXPECT_EQ(plot.PlotData[0].NumTablePoints(), 9U);
  EXPECT_TRUE(prompter.Said.empty());
}

TEST(CreateGraph, SaysWhenThePlotCannotBe) {
  RecordingPrompter prompter;
  PlotClass broken = BarePlot();
  broken.PlotData.emplace_back(Curve("a*ln(x-5)", {1}));  // no value for x <= 5
  EXPECT_FALSE(broken.CreateGraph({.Auto = true, .Regenerate = true}, prompter));
  EXPECT_FALSE(broken.PlotCreated);
  EXPECT_EQ(prompter.Said, std::vector<std::string>{kRefusal});
  RecordingSurface surface;
  EXPECT_FALSE(broken.DrawGraph(surface, prompter));
  EXPECT_TRUE(surface.Calls.empty());

  PlotClass endless = BarePlot();
  endless.X.Min = -1.7e308;
  endless.X.Max = 1.7e308;
  endless.Y.Max = 1;
  EXPECT_FALSE(endless.CreateGraph({}, prompter));
}

TEST(SetLogScale, TakesTheScalesAnewAndGoesBack) {
  PlotClass plot = BarePlot();
  plot.PlotData.emplace_back(PointSeries({3, 250}, {-1, 1}));
  RecordingPrompter prompter;
  ASSERT_TRUE(plot.CreateGraph({.Auto = true, .AutoFormat = true}, prompter));
  EXPECT_TRUE(plot.SetLogScale(plot.X, true, prompter));
  EXPECT_EQ(plot.X.Limits(), (AxisLimits{1, 1000, 3, true}));
  EXPECT_EQ(plot.X.NumMinorTicks, 10);
  EXPECT_EQ(plot.X.Labels.front(), "1.0E+03");
  EXPECT_TRUE(plot.SetLogScale(plot.X, false, prompter));
  EXPECT_EQ(plot.X.Limits(), (AxisLimits{0, 250, 5, false}));
  EXPECT_EQ(plot.X.NumMinorTicks, 5);
  EXPECT_EQ(plot.X.Labels.front(), "250.0");
  EXPECT_TRUE(prompter.Said.empty());
  plot.Y.Max = 7;
  EXPECT_FALSE(plot.SetLogScale(plot.Y, true, prompter));
  EXPECT_EQ(plot.Y.Limits(), (AxisLimits{-1, 7, 10})) << "no place for what is negative";
  EXPECT_EQ(prompter.Last(), "refuse: Negative or zero values cannot be plotted on Log scale.");
}

TEST(CreateGraph, WritesLabelsInTheLocalesForm) {
  PlotClass plot(Settings(), {.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'});
  plot.PlotData.emplace_back(PointSeries({0, 1}, {0, 1}));
  RecordingPrompter prompter;
  plot.CreateGraph({.Auto = true}, prompter);
  EXPECT_EQ(plot.X.Labels[1], "0,90");
}

TEST(CurveIsClose, FindsTheNearestPoint) {
  PlotClass plot = BarePlot();
  plot.PlotData.emplace_back(PointSeries({0, 0.5, 1}, {0, 0.5, 1}));
  for (int i = 0; i < 2; ++i) plot.PlotData.emplace_back(PointSeries({0, 0.51, 1}, {1, 0.5, 0}));  // the first is told
  RecordingPrompter prompter;
  for (const bool swap : {false, true}) {
    plot.SwapAxis = swap;
    ASSERT_TRUE(plot.CreateGraph({.Auto = true}, prompter));
    RecordingSurface window(800, 700);
    plot.RefreshPlot(window, prompter);
    const DeviceRect& frame = plot.Shown().Frame;
    const double middleX = (frame.left + frame.right) / 2.0, middleY = (frame.top + frame.bottom) / 2.0;
    const auto at = [&](double alongX, double alongY) {  // in units from the middle, along the data's axes
      return swap ? plot.CurveIsClose(middleX + alongY, middleY - alongX, 4)
                  : plot.CurveIsClose(middleX + alongX, middleY - alongY, 4);
    };
    for (const auto& [alongX, series] : {std::pair{0.0, 0U}, {7.0, 1U}}) {
      const std::optional<CurveHit> hit = at(alongX, 1);
      ASSERT_TRUE(hit) << swap;
      EXPECT_EQ(hit->Series, series);
      EXPECT_EQ(hit->Point, 1U);
    }
    EXPECT_FALSE(at(0, 6));
    EXPECT_FALSE(at(-20, 0));
    plot.PlotData[0].Style().DisplayLine = false;
    EXPECT_FALSE(at(-3, 0)) << "not displayed";
    plot.PlotData[0].Style().DisplayLine = true;
  }
}

// Scales that nobody chose have no ticks between rows; a zoom may.
TEST(CreateGraph, CountsRowsInWholeNumbers) {
  const struct {
    double first, last;
    const char* title;
    std::vector<std::string> labels;
  } kCases[] = {
      {1, 5, kRowTitle, {"5", "4", "3", "2", "1"}},
      {1, 5, "Time", {"5.0", "4.5", "4.0", "3.5", "3.0", "2.5", "2.0", "1.5", "1.0"}},
      {0, 40, kRowTitle, {"40", "35", "30", "25", "20", "15", "10", "5", "0"}},
      {1, 1.5, kRowTitle, {"1.50", "1.45", "1.40", "1.35", "1.30", "1.25", "1.20", "1.15", "1.10", "1.05", "1.00"}}};
  for (const auto& c : kCases) {
    PlotClass plot = BarePlot();
    RecordingPrompter prompter;
    plot.X.AxisTitle = c.title;
    plot.PlotData.emplace_back(PointSeries({c.first, c.last}, {0, 1}, "points"));
    ASSERT_TRUE(plot.CreateGraph({.Auto = true, .AutoFormat = true}, prompter));
    EXPECT_EQ(plot.X.Labels, c.labels) << c.title << c.first << c.last;
    EXPECT_TRUE(plot.AutoFormatted());
    EXPECT_EQ(plot.SuggestScale({false, false})->front(), plot.X.Limits());
    plot.X.Max = plot.X.Min + plot.X.NumMajorTicks / 2.0;
    ASSERT_TRUE(plot.CreateGraph({.AutoFormat = true}, prompter));
    EXPECT_EQ(plot.X.Labels[1].size() > 2, true) << "halves need their decimals";
  }
}

}  // namespace
}  // namespace quorvex
