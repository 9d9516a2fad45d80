#include <gtest/gtest.h>

#include "plot/Entries.h"
#include "plot/PlotEntries.h"
#include "plot/Plots.h"

namespace quorvex {
namespace {

// Y = X from 0 to 10 on scales from 0 to 10.
PlotClass LinePlot(const LocaleText& locale = {}) {
  PlotClass plot(Settings(), locale);
  plot.PlotData.push_back(PointSeries({0, 5, 10}, {0, 5, 10}, "points", {1, 1, 1}));
  plot.PlotData.push_back(PointSeries({2, 4}, {1, 2}));
  RecordingPrompter prompter;
  EXPECT_TRUE(plot.CreateGraph({.Auto = true, .AutoFormat = true}, prompter));
  return plot;
}

const Refusal kRefusals[] = {
    {{{"MinVal_textX", ""}}, "Please enter a valid number for X Min."},
    {{{"MinVal_textX", "1 2"}, {"MaxVal_textX", "x"}}, "Please enter a valid number for X Min."},
    {{{"MaxVal_textX", "1,5"}}, "Please enter a valid number for X Max."},
    {{{"MinVal_textX", "10"}}, "Minimum value of X must be smaller than the maximum value.", "MinVal_textX"},
    {{{"MinVal_textX", "11"}}, "Minimum value of X must be smaller than the maximum value.", "MinVal_textX"},
    {{{"MajorTicks_textX", "0"}}, "The number of X major ticks must be in the range (1 - 20)."},
    {{{"MajorTicks_textX", "21"}}, "The number of X major ticks must be in the range (1 - 20)."},
    {{{"MajorTicks_textX", "4.5"}}, "The number of X major ticks must be in the range (1 - 20)."},
    {{{"MajorTicks_textX", "many"}, {"MinorTicks_textX", "-1"}},
     "The number of X major ticks must be in the range (1 - 20)."},
    {{{"MinorTicks_textX", "-1"}}, "The number of X minor ticks must be in the range (0 - 20)."},
    {{{"MinorTicks_textX", "21"}, {"FormatListX", ""}}, "The number of X minor ticks must be in the range (0 - 20)."},
    {{{"LogScale_checkX", 1}, {"FormatListX", "mm"}},
     "Negative or zero values cannot be plotted on Log scale.",
     "MinVal_textX"},
    {{{"LogScale_checkX", 1}, {"MinVal_textX", "-2"}, {"MaxVal_textX", "-1"}},
     "Negative or zero values cannot be plotted on Log scale.",
     "MinVal_textX"},
    {{{"FormatListX", "mm"}, {"MinVal_textY", ""}}, "Please enter a valid X axis label format string."},
    {{{"FormatListX", ""}}, "Please enter a valid X axis label format string."},
    {{{"MinVal_textY", "?"}, {"PixelEvery_text", "2"}}, "Please enter a valid number for Y Min."},
    {{{"MaxVal_textY", "?"}}, "Please enter a valid number for Y Max."},
    {{{"MaxVal_textY", "0"}}, "Minimum value of Y must be smaller than the maximum value.", "MinVal_textY"},
    {{{"MajorTicks_textY", "21"}}, "The number of Y major ticks must be in the range (1 - 20)."},
    {{{"MinorTicks_textY", "21"}}, "The number of Y minor ticks must be in the range (0 - 20)."},
    {{{"LogScale_checkY", 1}}, "Negative or zero values cannot be plotted on Log scale.", "MinVal_textY"},
    {{{"FormatListY", "E+"}}, "Please enter a valid Y axis label format string."},
    {{{"PixelEvery_text", "2"}, {"AxisWidth_Text", "0"}},
     "The number of calculated points for continuous curves must be in the range of (3 - 5000)."},
    {{{"PixelEvery_text", "5001"}},
     "The number of calculated points for continuous curves must be in the range of (3 - 5000)."},
    {{{"AxisWidth_Text", "6"}, {"MajorTick_Text", "0"}}, "The Axis Width must be in the range (1 - 5)."},
    {{{"MajorTick_Text", "6"}, {"MinorTick_Text", "0"}}, "The Major Tick Width must be in the range (1 - 5)."},
    {{{"MinorTick_Text", "0"}, {"TickLength_text", "1"}}, "The Minor Tick Width must be in the range (1 - 5)."},
    {{{"TickLength_text", "0.0009"}}, "The Tick Length must be in the range (0.001 - 0.5)."},
    {{{"TickLength_text", "0.51"}}, "The Tick Length must be in the range (0.001 - 0.5)."},
    {{{"txtBorderWidth", "6"}}, "The Border Width must be in the range (1 - 5)."},
    {{{"LineWidth_text", "11"}}, "The Line Width must be in the range (1 - 10)."},
    {{{"txtMarkerSize", "73"}}, "The Marker Size must be in the range (1 - 72)."},
};

TEST(PlotEntries, RefuseInTheOrderAndWordsOfTheProgram) {
  const PlotClass plot = LinePlot();
  for (const Refusal& row : kRefusals) ExpectRefusal(plot, row);
}

TEST(PlotEntries, PassAtTheEndsOfTheirRanges) {
  const PlotClass plot = LinePlot();
  for (const Typed& typed : std::vector<Typed>{{{"MajorTicks_textX", "1"}, {"MinorTicks_textX", "0"}},
                                               {{"MajorTicks_textX", "20"}, {"MinorTicks_textX", "20"}},
                                               {{"MinVal_textX", " 1E-3 "}, {"LogScale_checkX", 1}},
                                               {{"FormatListX", "General"}, {"FormatListY", "#"}},
                                               {{"PixelEvery_text", "3"}, {"AxisWidth_Text", "5"}},
                                               {{"PixelEvery_text", "5000"}, {"TickLength_text", ".001"}},
                                               {{"TickLength_text", "0.5"}, {"LineWidth_text", "10"}}}) {
    PlotEntries entries(plot);
    Type(entries, typed);
    const auto refusal = entries.Check();
    EXPECT_FALSE(refusal) << refusal->Message;
  }
}

TEST(PlotEntries, TakeNumbersInTheFormOfTheLocale) {
  PlotClass plot = LinePlot({.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'});
  PlotEntries entries(plot);
  EXPECT_EQ(std::get<std::string>(Field(entries, "TickLength_text").Entry), "0,125");
  Type(entries, {{"MinVal_textX", "0.5"}});
  EXPECT_EQ(entries.Check()->Message, "Please enter a valid number for X Min.");
  Type(entries, {{"MinVal_textX", "0,5"}, {"TickLength_text", "1"}});
  EXPECT_EQ(entries.Check()->Message, "The Tick Length must be in the range (0,001 - 0,5).");
  Type(entries, {{"TickLength_text", "0,25"}});
  RecordingPrompter prompter;
  EXPECT_TRUE(entries.Create(plot, prompter));
  EXPECT_EQ(plot.X.Min, 0.5);
  EXPECT_EQ(plot.TickPenLength, 0.25F);
}

TEST(PlotEntries, LeaveAloneWhatNobodyChanges) {
  PlotClass plot = LinePlot();
  // Digits beyond those shown, and what only a file or the program can have brought.
  plot.X.Min = 1.0 / 3;
  plot.X.Max = std::nextafter(plot.X.Min, 1);
  plot.X.NumMajorTicks = 30;
  plot.Y = {};
  plot.Y.Min = 1e-15;
  plot.Y.Max = 1e15;
  plot.Y.NumMajorTicks = 30;
  plot.Y.LogScale = true;
  plot.AxisWidth = 9;
  RecordingPrompter prompter;
  PlotEntries entries(plot);
  EXPECT_FALSE(entries.Changed());
  Type(entries, {{"PlotTitle_text", "New"}});
  EXPECT_TRUE(entries.Changed());
  ASSERT_FALSE(entries.Check());
  EXPECT_TRUE(entries.Create(plot, prompter));
  EXPECT_EQ(plot.PlotTitle, "New");
  EXPECT_EQ(plot.X.Min, 1.0 / 3);
  EXPECT_EQ(plot.X.NumMajorTicks, 30);
  EXPECT_EQ(plot.Y.NumMajorTicks, 30);
  EXPECT_EQ(plot.AxisWidth, 9);
}

TEST(PlotEntries, CountTheDecadesOfALogarithmicAxisThemselves) {
  PlotClass plot = LinePlot();
  PlotEntries entries(plot);
  Type(entries,
       {{"MinVal_textX", "0.02"}, {"MaxVal_textX", "2E30"}, {"MajorTicks_textX", "none"}, {"LogScale_checkX", 1}});
  RecordingPrompter prompter;
  ASSERT_FALSE(entries.Check());
  EXPECT_TRUE(entries.Create(plot, prompter));
  EXPECT_EQ(plot.X.Limits(), (AxisLimits{0.01, 1e31, 33, true}));
  EXPECT_EQ(plot.X.NumMinorTicks, 10);
}

TEST(PlotEntries, KeepPatternsThatFitTheScales) {
  PlotClass plot = LinePlot();
  RecordingPrompter prompter;
  PlotEntries zoom(plot);
  Type(zoom, {{"MaxVal_textX", "0.01"}});
  EXPECT_TRUE(zoom.Create(plot, prompter));
  EXPECT_EQ(plot.X.LabelString, "0.000");
  // A pattern that somebody chose stays, on every scale.
  PlotEntries chosen(plot);
  Type(chosen, {{"MaxVal_textX", "0.001"}, {"FormatListX", "0.0"}});
  EXPECT_TRUE(chosen.Create(plot, prompter));
  EXPECT_EQ(plot.X.Labels.front(), "0.0");
  PlotEntries later(plot);
  Type(later, {{"MaxVal_textX", "0.1"}});
  EXPECT_TRUE(later.Create(plot, prompter));
  EXPECT_EQ(plot.X.LabelString, "0.0");
}

TEST(PlotEntries, CalculateTheScaleOfWhatIsShown) {
  PlotClass plot = LinePlot();
  PlotEntries entries(plot);
  Type(entries, {{"MinVal_textX", "3"}, {"MajorTicks_textX", "x"}, {"LogScale_checkY", 1}});
  entries.Series[0].Fields[1].Entry = 0;  // the first one's line
  ASSERT_TRUE(entries.CalcScale());
  EXPECT_EQ(Texts(entries, {"MinVal_textX", "MaxVal_textX", "MajorTicks_textX"}),
            (std::vector<std::string>{"2", "4", "10"}));
  EXPECT_EQ(Texts(entries, {"MinVal_textY", "MaxVal_textY", "MajorTicks_textY", "MinorTicks_textY"}),
            (std::vector<std::string>{"1", "10", "1", "10"}));
  EXPECT_EQ(plot.X.Max, 10) << "in the dialog only";

  // An axis whose data cannot be on it is linear.
  PlotEntries linear(plot);
  Type(linear, {{"LogScale_checkX", 1}});
  ASSERT_TRUE(linear.CalcScale());
  EXPECT_EQ(std::get<std::int32_t>(Field(linear, "LogScale_checkX").Entry), 0);
  EXPECT_FALSE(linear.Changed());

  plot.PlotData = {};
  plot.PlotData.push_back(PointSeries({-1e300, 1e308}, {0, 1}));
  plot.PlotData.push_back(PointSeries({-1.7e308, 1}, {0, 1}));
  PlotEntries endless(plot);
  EXPECT_FALSE(endless.CalcScale());
}

TEST(PlotEntries, ShowAPreviewThatCanBeTakenBack) {
  PlotClass plot = LinePlot();
  PlotEntries entries(plot);
  Type(entries, {{"MaxVal_textX", "20"}, {"FormatListX", "0.000"}});
  EXPECT_TRUE(entries.Preview(plot));
  EXPECT_EQ(plot.X.Labels.front(), "20.000");
  Type(entries, {{"MaxVal_textX", "2"}, {"FormatListX", "0.0"}});
  EXPECT_TRUE(entries.Preview(plot));
  EXPECT_EQ(plot.X.Labels.front(), "2.0");
  Type(entries, {{"MaxVal_textX", ""}});
  EXPECT_FALSE(entries.Preview(plot));
  EXPECT_EQ(plot.X.Labels.front(), "2.0");
  // What passes, but cannot be created.
  Type(entries, {{"MinVal_textX", "-1E308"}, {"MaxVal_textX", "1E308"}});
  EXPECT_FALSE(entries.Preview(plot));
  EXPECT_TRUE(plot.PlotCreated);
  EXPECT_EQ(plot.X.Labels, LinePlot().X.Labels);
}

TEST(PlotEntries, BecomeTheDefaultsOfNewPlots) {
  const PlotClass plot = LinePlot();
  PlotEntries entries(plot);
  Type(entries, {{"PlotTitleFont", ColoredFont{{"Liberation Serif", 14.5, true, true}, 0xFF0000}},
                 {"AxisNumberFontY", ColoredFont{{"Arial", 7, false, false}, 0x10}},
                 {"FootNoteFont", ColoredFont{{"Arial", 9, false, true}, 0}},
                 {"FormatListX", "0.0E+00"},
                 {"LogScale_checkY", 1},
                 {"MinVal_textY", "1"},
                 {"PixelEvery_text", "250"},
                 {"plotinfitted_check", 1},
                 {"ckExtrapolate", 1},
                 {"ckMakeSquare", 1},
                 {"ckSwapAxis", 1},
                 {"MajorTick_Text", "3"},
                 {"MinorTick_Text", "2"},
                 {"TickLength_text", "0.3"},
                 {"TickColor_command", 0x123456},
                 {"BackGround_command", 0}});
  ASSERT_FALSE(entries.Check());
  Settings settings;
  entries.SaveDefaults(settings);
  const PlotClass fresh(settings);
  EXPECT_EQ(fresh.PlotTitleFont, (PlotFont{"Liberation Serif", 14.5, true, true}));
  EXPECT_EQ(fresh.PlotTitleColor, 0xFF0000);
  EXPECT_EQ(fresh.Y.AxisNumberFont, (PlotFont{"Arial", 7, false, false}));
  EXPECT_EQ(fresh.Y.AxisNumberColor, 0x10);
  EXPECT_EQ(fresh.FootNoteFont, (PlotFont{"Arial", 9, false, true}));
  EXPECT_EQ(fresh.X.LabelString, "0.0E+00");
  EXPECT_TRUE(fresh.Y.LogScale && !fresh.X.LogScale);
  EXPECT_EQ(fresh.PointsPerPlot, 250);
  EXPECT_TRUE(fresh.PlotAtFittedOnly && fresh.Extrapolate && fresh.Make2DSquare && fresh.SwapAxis);
  EXPECT_EQ(fresh.TickPenWidthMajor, 3);
  EXPECT_EQ(fresh.TickPenWidthMinor, 2);
  EXPECT_EQ(fresh.TickPenLength, 0.3F);
  EXPECT_EQ(settings.Text("tickpenlength"), "0.3");
  EXPECT_EQ(fresh.TickPenColor, 0x123456);
  EXPECT_EQ(fresh.PlotBackgroundColor, 0);
  EXPECT_EQ(plot.PointsPerPlot, 100) << "and the plot has nothing of it";
}

}  // namespace
}  // namespace quorvex
