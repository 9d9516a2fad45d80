#include <gtest/gtest.h>

#include "engine/MvClass.h"
#include "plot/PlotSeries.h"
#include "plot/Plots.h"

namespace quorvex {
namespace {

// y = x1 + 10*x2 over four points, one of them measured twice.
PlotSeries Surface() {
  auto model = std::make_unique<MvClass>(LocaleText());
  model->SetID("model", {"a*x1+b*x2"});
  model->SetIC(Points({{1, 2, 4, 4}, {30, 20, 20, 20}}, {302, 200, 205, 203}));
  model->SetValue(2, 10);
  return {std::move(model)};
}

PlotSeries Spline() {
  InterpClass spline;
  std::string log;
  EXPECT_TRUE(spline.Fit(Points({{1, 2, 4}}, {1, 0, 3}), log));
  return {spline};
}

PlotSeries Scatter() {
  DataClass data;
  data.GenerateTable({{1, 3}, {7, -8}}, {5, 6});
  return {std::move(data)};
}

TEST(PlotSeries, HasTheLimitsAndPointsOfEachVariable) {
  PlotSeries surface = Surface();
  ASSERT_TRUE(surface.GenerateTable({{}, {}}, false));
  const PlotSeries scatter = Scatter(), spline = Spline();
  const struct {
    const PlotSeries& series;
    int variable;
    double min, max;
  } kCases[] = {{surface, 1, 1, 4}, {surface, 2, 20, 30}, {scatter, 1, 1, 3}, {scatter, 2, -8, 7}, {spline, 1, 1, 4}};
  for (const auto& c : kCases) {
    EXPECT_EQ(c.series.InputXMin(c.variable), c.min);
    EXPECT_EQ(c.series.InputXMax(c.variable), c.max);
  }
  EXPECT_EQ(scatter.CopyDataTo(2).X[1], -8);
  EXPECT_EQ(surface.CopyDataTo(1).X[1], 1);
  EXPECT_EQ(surface.CopyDataTo(2).X[1], 30);
  EXPECT_EQ(surface.CopyDataTo(2).Y[1], 301);
}

TEST(PlotSeries, MakesTheTableThatFitsThePlot) {
  struct {
    PlotSeries series;
    std::size_t before, inPlane, inSpace;  // points: of its own, and after a table over one variable and over two
  } cases[] = {{Scatter(), 2, 2, 2}, {Spline(), 0, 5, 5}, {Curve("a*x", {2}), 0, 5, 5}, {Surface(), 0, 0, 15}};
  const TableRange range{2, 3, 5};
  for (auto& [series, before, inPlane, inSpace] : cases) {
    EXPECT_EQ(series.NumTablePoints(), before);
    EXPECT_TRUE(series.GenerateTable({range}, true));
    EXPECT_EQ(series.NumTablePoints(), inPlane);
    EXPECT_TRUE(series.GenerateTable({range, {20, 30, 3}}, true));
    EXPECT_EQ(series.NumTablePoints(), inSpace);
  }
}

TEST(PlotSeries, LeadsFromTheInputToTheFittedValues) {
  PlotSeries surface = Surface();
  EXPECT_TRUE(surface.Model()->FittedData().empty());
  ASSERT_TRUE(surface.GenerateErrorTable());
  EXPECT_EQ(surface.Model()->InputX(3, 2), 20);
  EXPECT_EQ(surface.Model()->InputY(3), 205);
  EXPECT_EQ(surface.Model()->FittedData()[2], 204);
  EXPECT_EQ(surface.Model()->FittedData()[3], 204);
  EXPECT_TRUE(Scatter().GenerateErrorTable()) << "nothing to be made";
}

}  // namespace
}  // namespace quorvex
