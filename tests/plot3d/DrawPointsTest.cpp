#include <gtest/gtest.h>

#include "plot3d/DrawPoints.h"
#include "plot3d/Surfaces.h"

namespace quorvex {
namespace {

using Lines = std::vector<std::string>;

PlotSeries Points3D(std::vector<double> X1, std::vector<double> X2, std::vector<double> Y,
                    std::vector<double> deviations = {}) {
  DataClass data;
  data.GenerateTable({std::move(X1), std::move(X2)}, std::move(Y));
  data.GenerateErrorTable(std::move(deviations));
  return {std::move(data)};
}

// Seen from the side: 366 + 1000 X2 to the right, and 1366 - 1000 Y down.
PlotClass3D FromTheSide() {
  PlotClass3D plot = UnitBox(kFacingX2, kFromTheSide);
  plot.ErrorColorAbove = 0x0000FF;
  plot.ErrorColorBelow = 0xFF0000;
  return plot;
}

DeviceMetrics Metrics() {
  DeviceMetrics metrics;
  metrics.DevicePpi = 96;
  return metrics;
}

// The lines of a drawing, "a blue 100 200 to 100 250" by the pen that draws each.
class LineSurface : public RecordingSurface {
 public:
  Lines Drawn;
  SurfacePen Pen;  // of the last line

  void MoveToEx(std::int32_t x, std::int32_t y) override { at_ = {x, y}; }
  void LineTo(std::int32_t x, std::int32_t y) override {
    Pen = Objects().Pen();
    std::ostringstream line;
    line << (Pen.Colour == 0x0000FF   ? "above "
             : Pen.Colour == 0xFF0000 ? "below "
                                      : "")
         << at_.x << ' ' << at_.y << " to " << x << ' ' << y;
    Drawn.push_back(line.str());
    at_ = {x, y};
  }

 private:
  DevicePoint at_;
};

TEST(DrawScatter, DrawsPointsWhereTheyStand) {
  const PlotClass3D plot = UnitBox(kThreeFourFive, kThreeFourFive);
  PlotSeries data = Points3D({0, 1, 0, 0.5}, {0, 0, 1, 0.5}, {0, 0, 0, 1});
  data.Style().MarkerStyle = 1;
  data.Style().MarkerSize = 6;  // 4 units from the middle to the edge
  for (const bool line : {false, true})
    for (const bool marker : {false, true}) {
      data.Style().DisplayLine = line;
      data.Style().DisplayMarker = marker;
      RecordingSurface surface;
      DrawScatter(surface, data, Metrics(), Thousand(plot));
      EXPECT_EQ(surface.Only({"MoveToEx", "LineTo"}),
                line ? (Lines{"MoveToEx 966 846", "LineTo 166 1206", "LineTo 1566 1326", "LineTo 866 466"}) : Lines());
      EXPECT_EQ(surface.Only({"Rectangle"}), marker
                                                 ? (Lines{"Rectangle 962 842 970 850", "Rectangle 162 1202 170 1210",
                                                          "Rectangle 1562 1322 1570 1330", "Rectangle 862 462 870 470"})
                                                 : Lines());
      EXPECT_EQ(surface.ObjectCount(), 0u);
    }
}

TEST(DrawScatter, LeavesOutPointsBeyondTheLimitsOrWithoutAPlace) {
  PlotClass3D plot = FromTheSide();
  plot.X.Min = 0.1;
  plot.X.LogScale = true;
  // The first, the second last and the last are within.
  PlotSeries data = Points3D({0.2, 0, -1, 2, 0.2, 0.2, 0.2, 0.2, 0.1, 1}, {0.5, 0, 0, 0, -0.1, 1.1, 0, 0, 0, 1},
                             {0.5, 0, 0, 0, 0, 0, -0.1, 1.1, 0, 1});
  for (const int style : {0, 2}) {
    data.Style().DrawStyle = style;
    data.Style().DisplayMarker = true;
    LineSurface surface;
    DrawScatter(surface, data, Metrics(), Thousand(plot));
    if (style == 0) {
      EXPECT_EQ(surface.Drawn, (Lines{"866 866 to 366 1366", "366 1366 to 1366 366"}));
    }
    EXPECT_FALSE(surface.Drawn.empty());
    EXPECT_EQ(surface.Only({"Ellipse"}).size(), 3u);
  }
}

TEST(DrawErrorBars3D, DrawsBothPartsInTheirColours) {
  PlotClass3D plot = FromTheSide();
  PlotSeries data = Points3D({0.5, 0.5}, {0.25, 0.75}, {0.5, 0.25}, {0.125, 0.25});
  data.Style().DrawWidth = 3;
  DeviceMetrics metrics = Metrics();
  metrics.PenScale = 2;
  LineSurface surface;
  DrawErrorBars3D(surface, data, plot, metrics, Thousand(plot));
  EXPECT_EQ(surface.Drawn, (Lines{"above 616 866 to 616 741", "above 610 741 to 622 741", "above 1116 1116 to 1116 866",
                                  "above 1110 866 to 1122 866", "below 616 866 to 616 991", "below 610 991 to 622 991",
                                  "below 1116 1116 to 1116 1366", "below 1110 1366 to 1122 1366"}));
  EXPECT_EQ(surface.Pen.Width, 6);
  EXPECT_EQ(surface.ObjectCount(), 0u);

  plot.ErrorColorStyle = 2;
  LineSurface dotted;
  DrawErrorBars3D(dotted, data, plot, metrics, Thousand(plot));
  EXPECT_GT(dotted.Drawn.size(), surface.Drawn.size());
}

TEST(DrawErrorBars3D, CutsBarsAtTheLimits) {
  PlotClass3D plot = FromTheSide();
  const struct {
    const char* what;
    double X1, X2, Y, deviation;
    Lines expected;
  } kCases[] = {
      {"above",
       0.5,
       0,
       0.75,
       0.5,
       {"above 366 616 to 366 366", "below 366 616 to 366 1116", "below 360 1116 to 372 1116"}},
      {"below",
       0.5,
       0,
       0.25,
       0.5,
       {"above 366 1116 to 366 616", "above 360 616 to 372 616", "below 366 1116 to 366 1366"}},
      {"both", 0.5, 0, 0.5, 9, {"above 366 866 to 366 366", "below 366 866 to 366 1366"}},
      {"point above", 0.5, 0, 1.5, 1, {}},
      {"point below", 0.5, 0, -0.5, 1, {}},
      {"point beside X1", 1.5, 0, 0.5, 1, {}},
      {"point beside X2", 0.5, -1, 0.5, 1, {}},
  };
  for (const auto& c : kCases) {
    LineSurface surface;
    DrawErrorBars3D(surface, Points3D({c.X1}, {c.X2}, {c.Y}, {c.deviation}), plot, Metrics(), Thousand(plot));
    EXPECT_EQ(surface.Drawn, c.expected) << c.what;
  }

  LineSurface none;
  DrawErrorBars3D(none, Points3D({0.5}, {0.5}, {0.5}), plot, Metrics(), Thousand(plot));
  EXPECT_TRUE(none.Drawn.empty()) << "no deviations";
}

TEST(DrawErrorBars3D, RunToTheLowerEndOfALogarithmicAxis) {
  PlotClass3D plot = FromTheSide();
  plot.Z.Min = 1;
  plot.Z.Max = 100;
  plot.Z.LogScale = true;
  // Down to 0 and to -40; up to 20 and 60.
  for (const double deviation : {10.0, 50.0}) {
    LineSurface surface;
    DrawErrorBars3D(surface, Points3D({0.5}, {0}, {10}, {deviation}), plot, Metrics(), Thousand(plot));
    ASSERT_EQ(surface.Drawn.size(), 3u);
    EXPECT_EQ(surface.Drawn[0], "above 366 866 to 366 " + std::to_string(deviation == 10 ? 715 : 477));
    EXPECT_EQ(surface.Drawn[2], "below 366 866 to 366 1366");
  }
}

// A model 0 * x1 + x2 + 0.25 with one input point.
PlotSeries WithInput(double X1, double X2, double Y) {
  auto model = std::make_unique<MvClass>(LocaleText());
  model->SetID("model", {"0*a*x1+x2+0.25"});
  model->SetIC(Points({{X1}, {X2}}, {Y}));
  model->SetValue(1, 1);
  model->GenerateErrorTable();
  return {std::move(model)};
}

TEST(DrawResidualBars3D, LeadFromThePointsToTheSurface) {
  const PlotClass3D plot = FromTheSide();
  const struct {
    const char* what;
    double X1, X2, Y;
    Lines expected;
  } kCases[] = {
      {"above", 0.5, 0.25, 0.75, {"above 616 616 to 616 866"}},
      {"below", 0.5, 0.25, 0.25, {"below 616 1116 to 616 866"}},
      {"on it", 0.5, 0.25, 0.5, {}},
      {"from above the box", 0.5, 0.25, 1.5, {"above 616 366 to 616 866"}},
      {"from below the box", 0.5, 0.25, -2, {"below 616 1366 to 616 866"}},
      {"to above the box", 0.5, 1, 0.75, {"below 1366 616 to 1366 366"}},
      {"above the box", 0.5, 1, 1.75, {}},
      {"from one end to the other", 0.5, 1, -1, {}},
      {"beside X1", 1.5, 0.25, 0.75, {}},
      {"beside X2", 0.5, -0.1, 0.75, {}},
  };
  for (const auto& c : kCases) {
    LineSurface surface;
    DrawResidualBars3D(surface, WithInput(c.X1, c.X2, c.Y), plot, Metrics(), Thousand(plot));
    EXPECT_EQ(surface.Drawn, c.expected) << c.what;
    EXPECT_EQ(surface.ObjectCount(), 0u);
  }
}

TEST(DrawResidualBars3D, NeedTheFittedValues) {
  const PlotClass3D plot = FromTheSide();
  RecordingSurface surface;
  DrawResidualBars3D(surface, Surface("a*x1*x2", {0, 1, 2}, {0, 1, 2}), plot, Metrics(), Thousand(plot));
  EXPECT_TRUE(surface.Only({"LineTo"}).empty());
}

}  // namespace
}  // namespace quorvex
