#include <gtest/gtest.h>

#include <cmath>

#include "RecordingPrompter.h"
#include "plot/PlotClass.h"
#include "plot3d/PlotClass3D.h"
#include "results/EquationPlot.h"

namespace quorvex {
namespace {

EquationPlot Curve(const std::string& text, EquationPlot::Range range = {"0", "4", "5"}) {
  EquationPlot plot;
  plot.Txt2D = text;
  plot.X = std::move(range);
  return plot;
}

EquationPlot Surface(const std::string& text, EquationPlot::Range x1 = {"0", "2", "3"},
                     EquationPlot::Range x2 = {"1", "4", "4"}) {
  EquationPlot plot;
  plot.ThreeD = true;
  plot.Txt3D = text;
  plot.Plane = {std::move(x1), std::move(x2)};
  return plot;
}

TEST(EquationPlot, DrawsACurveOverItsRange) {
  const auto plot = Curve("x^2-1").Make(Settings(), {});
  ASSERT_TRUE(plot) << plot.error();
  PlotPage& page = **plot;
  RecordingPrompter user;
  ASSERT_TRUE(page.CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, user)) << user.Last();
  ASSERT_EQ(page.PlotData.size(), 1U);
  const PlotSeries& series = page.PlotData[0];
  EXPECT_EQ(series.Style().LegendText, "x^2-1");
  const SeriesTable table = series.CopyDataTo();
  EXPECT_EQ((std::vector<double>{table.X.begin(), table.X.end()}), (std::vector<double>{0, 1, 2, 3, 4}));
  EXPECT_EQ((std::vector<double>{table.Y.begin(), table.Y.end()}), (std::vector<double>{-1, 0, 3, 8, 15}));
  EXPECT_EQ(series.InputYMin(), -1);
  EXPECT_EQ(series.InputYMax(), 15);
  EXPECT_EQ(page.Axes()[0]->AxisTitle + page.Axes()[1]->AxisTitle, "XY");
}

TEST(EquationPlot, DrawsASurfaceOverItsRanges) {
  Settings settings;
  settings.SetFlag("plotatfittedonly", true);  // there is nothing fitted here
  const auto plot = Surface("x1+10*x2").Make(settings, {});
  ASSERT_TRUE(plot) << plot.error();
  PlotPage& page = **plot;
  RecordingPrompter user;
  ASSERT_TRUE(page.CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, user)) << user.Last();
  const PlotSeries& series = page.PlotData[0];
  const SeriesTable table = series.CopyDataTo(2);
  EXPECT_EQ((std::vector<double>{table.X.begin(), table.X.end()}),
            (std::vector<double>{1, 2, 3, 4, 1, 2, 3, 4, 1, 2, 3, 4}));
  EXPECT_EQ((std::vector<double>{table.Y.begin(), table.Y.end()}),
            (std::vector<double>{10, 20, 30, 40, 11, 21, 31, 41, 12, 22, 32, 42}));
  EXPECT_TRUE(page.Angles());
  EXPECT_TRUE(series.Style().ShadeMesh);
}

TEST(EquationPlot, KeepsAxesLinearThatReachZero) {
  Settings settings;
  for (const char* key : {"ylogscale", "zlogscale3d"}) settings.SetFlag(key, true);
  const struct {
    EquationPlot Plot;
    bool Log;
  } cases[] = {{Surface("x1-x2"), false}, {Surface("x1+x2"), true}, {Curve("x-1"), false}, {Curve("x+1"), true}};
  for (const auto& c : cases) {
    const auto plot = c.Plot.Make(settings, {});
    ASSERT_TRUE(plot);
    RecordingPrompter user;
    EXPECT_TRUE((*plot)->CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, user));
    EXPECT_EQ((*plot)->Axes().back()->LogScale, c.Log) << c.Plot.Txt2D << c.Plot.Txt3D;
    EXPECT_TRUE(user.Said.empty()) << user.Last();
  }
}

TEST(EquationPlot, ReadsNumbersAndEquationsOfTheLocale) {
  const LocaleText comma{.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'};
  const auto plot = Curve("0,5*x", {"0,5", "1,5", "3"}).Make(Settings(), comma);
  ASSERT_TRUE(plot) << plot.error();
  EXPECT_EQ((*plot)->PlotData[0].InputXMax(), 1.5);
  EXPECT_EQ((*plot)->PlotData[0].InputYMax(), 0.75);
}

TEST(EquationPlot, SaysWhatIsWrongInOrder) {
  const auto invalid = [](const std::string& reason) {
    return "The equation you entered is not valid. " + reason + "Please check the equation syntax.";
  };
  const std::string coefficients = invalid(
      "It appears to contain variable coefficients, which cannot be assigned values when plotting an equation. ");
  const struct {
    EquationPlot Plot;
    std::string Failure;
  } cases[] = {
      {Curve("  ", {"", "", ""}), "Please enter a valid equation."},
      {Curve("x+", {"", "", ""}), "Please enter a valid value for X Min."},
      {Curve("x", {"0", "1 m", ""}), "Please enter a valid value for X Max."},
      {Curve("x", {"2", "1", "2"}), "Please enter a valid value for X Divisions (3-5000)."},
      {Curve("x", {"0", "1", "5001"}), "Please enter a valid value for X Divisions (3-5000)."},
      {Curve("x", {"0", "1", "3.5"}), "Please enter a valid value for X Divisions (3-5000)."},
      {Curve("x", {"0", "1", "3"}), ""},
      {Curve("x", {"0", "1", "5000"}), ""},
      {Curve("x", {"1", "1", "3"}), "X Max must be greater than X Min."},
      {Curve("x+"), invalid("")},
      {Curve("x+xmean"), invalid("")},
      {Curve("a*x"), coefficients},
      {Curve("2"), invalid("It does not appear to contain the independent variable X. ")},
      {Curve("ln(x-2)"), "Error evaluating equation, please check your input."},
      {Curve("x", {"-1e308", "1e308", "5"}), "Could not generate data, please check your input."},
      {Surface(""), "Please enter a valid equation."},
      {Surface("x1", {"a", "1", "3"}), "Please enter a valid value for X1 Min."},
      {Surface("x1", {"0", "1", "100"}), "Please enter a valid value for X1 Divisions (3-99)."},
      {Surface("x1", {"3", "1", "9"}), "X1 Max must be greater than X1 Min."},
      {Surface("x1", {"0", "1", "9"}, {"0", "", "9"}), "Please enter a valid value for X2 Max."},
      {Surface("x1", {"0", "1", "9"}, {"0", "1", "2"}), "Please enter a valid value for X2 Divisions (3-99)."},
      {Surface("x1", {"0", "1", "9"}, {"0", "-1", "9"}), "X2 Max must be greater than X2 Min."},
      {Surface("x1+x2", {"0", "1", "99"}, {"0", "1", "3"}), ""},
      {Surface("x1)"), invalid("")},
      {Surface("a*x1+x2"), coefficients},
      {Surface("5"), invalid("It does not appear to contain the independent variables X1 and X2. ")},
      {Surface("x1"), invalid("It does not appear to contain both independent variables X1 and X2. ")},
      {Surface("x2"), invalid("At least one of the independent variables is missing. ")},
      {Surface("x1+x2+x3"), invalid("It contains more than the two independent variables X1 and X2. ")},
      {Surface("1/x1+x2"), "Error evaluating equation, please check your input."},
  };
  for (const auto& c : cases) {
    const auto plot = c.Plot.Make(Settings(), {});
    EXPECT_EQ(plot ? "" : plot.error(), c.Failure) << c.Plot.Txt2D << c.Plot.Txt3D;
  }
}

}  // namespace
}  // namespace quorvex
