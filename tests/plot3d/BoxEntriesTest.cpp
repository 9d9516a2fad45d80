// The properties of plots of three dimensions, where they differ from those of two.

#include <gtest/gtest.h>

#include "plot/Entries.h"
#include "plot3d/Boxes.h"
#include "plot3d/Surfaces.h"

namespace quorvex {
namespace {

PlotClass3D CloudPlot() {
  PlotClass3D plot = BarePlot3D();
  RecordingPrompter prompter;
  EXPECT_TRUE(plot.CreateGraph({.Auto = true, .AutoFormat = true}, prompter));
  return plot;
}

const Refusal kRefusals[] = {
    {{{"MinVal_textX1", "-"}, {"MaxVal_textX1", ""}}, "Please enter a valid number for X1 Min."},
    {{{"MaxVal_textX1", ""}}, "Please enter a valid number for X1 Max."},
    {{{"MinVal_textX1", "10"}, {"MajorTicks_textX1", "21"}},
     "Minimum value of X1 must be smaller than the maximum value."},
    {{{"MajorTicks_textX1", "21"}, {"MinorTicks_textX1", "21"}},
     "The number of X1 major ticks must be in the range (1 - 20)."},
    {{{"MinorTicks_textX1", "21"}, {"FormatListX1", "x"}},
     "The number of X1 minor ticks must be in the range (0 - 20)."},
    {{{"LogScale_checkX1", 1}}, "Negative or zero X1 values cannot be plotted on Log scale.", "MinVal_textX1"},
    {{{"FormatListX1", "x"}}, "Please enter a valid X1 axis label format string."},
    {{{"MinVal_textX2", ""}, {"MinVal_textY", ""}}, "Please enter a valid number for X2 Min."},
    {{{"LogScale_checkX2", 1}}, "Negative or zero X2 values cannot be plotted on Log scale.", "MinVal_textX2"},
    {{{"FormatListX2", "x"}}, "Please enter a valid X2 axis label format string."},
    {{{"MaxVal_textY", ""}, {"XPixelEvery_text", ""}}, "Please enter a valid number for Y Max."},
    {{{"MinVal_textY", "0"}, {"LogScale_checkY", 1}}, "Negative or zero Y values cannot be plotted on Log scale."},
    {{{"FormatListY", "x"}}, "Please enter a valid Y axis label format string."},
    {{{"XPixelEvery_text", ""}, {"YPixelEvery_text", ""}},
     "Please enter a valid number for the surface mesh X divisions."},
    {{{"YPixelEvery_text", ""}, {"XPixelEvery_text", "1"}},
     "Please enter a valid number for the surface mesh Y divisions."},
    {{{"XPixelEvery_text", "1"}, {"YPixelEvery_text", "1"}},
     "The number of surface mesh X divisions must be in the range (2-99)."},
    {{{"YPixelEvery_text", "100"}, {"XYAngle_text", ""}},
     "The number of surface mesh Y divisions must be in the range (2-99)."},
    {{{"XYAngle_text", "361"}, {"ZAngle_text", "181"}},
     "Please enter a valid number for the X1-X2 plane viewpoint (0 - 360)."},
    {{{"ZAngle_text", "181"}}, "Please enter a valid number for the X1-Y plane viewpoint (0 - 180)."},
    {{{"ZAngle_text", "up"}}, "Please enter a valid number for the X1-Y plane viewpoint (0 - 180)."},
    {{{"txtNumContours", "51"}}, "The number of contours must be in the range (2 - 50)."},
    {{{"cmbContourWidth", "0"}}, "The Contour Width must be in the range (1 - 5)."},
    {{{"AxisWidth_Text", "0"}}, "The Axis Width must be in the range (1 - 5)."},
    {{{"LineWidth_text", "6"}}, "The Line Width must be in the range (1 - 5)."},
};

TEST(BoxEntries, RefuseInTheOrderAndWordsOfTheProgram) {
  const PlotClass3D plot = CloudPlot();
  for (const Refusal& row : kRefusals) ExpectRefusal(plot, row);
}

TEST(BoxEntries, TurnThePlot) {
  PlotClass3D plot = CloudPlot();
  plot.UpdateViewAngle(12.25, 30);
  PlotEntries entries(plot);
  EXPECT_EQ(Texts(entries, {"XYAngle_text", "ZAngle_text"}), (std::vector<std::string>{"12.25", "30"}));
  Type(entries, {{"ZAngle_text", "90"}});
  RecordingPrompter prompter;
  EXPECT_TRUE(entries.Create(plot, prompter));
  EXPECT_EQ(plot.Angles(), (ViewAngles{12.25, 90}));
  EXPECT_EQ(plot.ZAngle, kViewPi / 2);
  const BoxView::Ends corner = {1, 1, 1};
  EXPECT_EQ(plot.View().Corner(corner).Vertical, BoxView(plot.XYAngle, plot.ZAngle).Corner(corner).Vertical);
}

TEST(BoxEntries, HaveABaseColourForAllModelsAndOneForEach) {
  PlotClass3D plot{Settings()};
  plot.PlotData.push_back(CloudSeries({{0, 2}, {0, 2}}, {0, 4}));
  for (int i = 0; i < 2; ++i) plot.PlotData.push_back(Surface("a*x1+b*x2", {0, 2, 5, false}, {0, 2, 5, false}));
  RecordingPrompter prompter;
  ASSERT_TRUE(plot.CreateGraph({.Auto = true, .Regenerate = true}, prompter));
  PlotEntries entries(plot);
  Type(entries, {{"cmdColor", 0xFF}});
  EXPECT_TRUE(entries.Create(plot, prompter));
  EXPECT_EQ(plot.PlotData[0].Style().ShadeColor, 0);
  EXPECT_EQ(plot.PlotData[1].Style().ShadeColor, 0xFF);
  EXPECT_EQ(plot.PlotData[2].Style().ShadeColor, 0xFF);

  PlotEntries each(plot);
  EXPECT_FALSE(each.Series[0].Fields.back().Applies);
  each.Series[2].Fields.back().Entry = 0xFF00;
  EXPECT_TRUE(each.Create(plot, prompter));
  EXPECT_EQ(plot.PlotData[1].Style().ShadeColor, 0xFF);
  EXPECT_EQ(plot.PlotData[2].Style().ShadeColor, 0xFF00);
}

TEST(BoxEntries, BecomeTheDefaultsOfNewPlots) {
  PlotEntries entries(CloudPlot());
  Type(entries, {{"AxisTitleFontY", ColoredFont{{"Arial", 11, true, false}, 0xFF}},
                 {"FormatListX2", "0.000"},
                 {"ckExtrapolate", 1},
                 {"ckMakeSquare", 1},
                 {"ckShadeByValue", 0},
                 {"optColorScheme", 5},
                 {"ckDisplayLine", 1},
                 {"txtNumContours", "20"},
                 {"optScale", 1},
                 {"cmdContourColor", 0x102030},
                 {"cmbContourWidth", "3"},
                 {"cmdContourStyle", 2}});
  Settings settings;
  entries.SaveDefaults(settings);
  const PlotClass3D fresh(settings);
  EXPECT_EQ(fresh.Z.AxisTitleFont, (PlotFont{"Arial", 11, true, false}));
  EXPECT_EQ(fresh.Z.AxisTitleColor, 0xFF);
  EXPECT_EQ(fresh.Y.LabelString, "0.000");
  EXPECT_TRUE(fresh.Extrapolate && fresh.Make3DSquare && fresh.DisplayContourLines && fresh.UseAxisScale);
  EXPECT_FALSE(fresh.ShadeMeshByValue);
  EXPECT_EQ(fresh.MeshColorScheme, 5);
  EXPECT_EQ(fresh.MeshContourDensity, 20);
  EXPECT_EQ(fresh.ContourPenColor, 0x102030);
  EXPECT_EQ(fresh.ContourPenWidth, 3);
  EXPECT_EQ(fresh.ContourPenStyle, 2);
  EXPECT_EQ(PlotClass(settings).Y.LabelString, "0.00") << "which is a key of its own";
}

}  // namespace
}  // namespace quorvex
