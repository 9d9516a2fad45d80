#include <gtest/gtest.h>

#include "core/Files.h"
#include "files/Templates.h"

namespace quorvex {
namespace {

TEST(ParseTemplateLine, TakesWhatHasAKeyAndAValue) {
  const struct {
    const char *Line, *Key, *Value;  // no key: nothing is taken
  } kLines[] = {{"extrapolate = true", "extrapolate", "true"},
                {"  Plot_Title_Text=a = b ", "plot_title_text", "a = b"},
                {"a = prompt", "a", "prompt"},
                {"a = Nullify", "a", "Nullify"},
                {"a = NULL", nullptr, nullptr},
                {"a = null  ", nullptr, nullptr},
                {"plot_title_text =   ", nullptr, nullptr},
                {"plot_title_text = E=", nullptr, nullptr},
                {" = a", nullptr, nullptr},
                {"plot_title_text", nullptr, nullptr},
                {"=", nullptr, nullptr},
                {"", nullptr, nullptr}};
  for (const auto& c : kLines) {
    SCOPED_TRACE(c.Line);
    const auto read = ParseTemplateLine(c.Line);
    ASSERT_EQ(bool(read), c.Key != nullptr);
    if (!read) continue;
    EXPECT_EQ(read->Key, c.Key);
    EXPECT_EQ(read->Value, c.Value);
  }
}

TEST(PlotTemplate, TakesBooleansAndColoursInSeveralForms) {
  for (const char* text : {"true", "YES", "t", "Y"}) EXPECT_TRUE(ParseTemplateBoolean(text)) << text;
  for (const char* text : {"1", "-1", "on", "ye", "false", "true."}) EXPECT_FALSE(ParseTemplateBoolean(text)) << text;

  EXPECT_EQ(ColorToText(0x030201), "(1, 2, 3)");
  EXPECT_EQ(ColorToText(-1), "(255, 255, 255)");
  EXPECT_EQ(TextToColor("(255, 128,0)"), 0x0080FF);
  EXPECT_EQ(TextToColor(" 1,2 , 3 "), 0x030201);
  for (const char* text : {"", "red", "1,2", "1,2,3,4", "(1, 2, 256)", "(1, 2, -1)", "(1, , 3)", "(1, 2, 3", "()"})
    EXPECT_FALSE(TextToColor(text)) << text;
  PlotClass plot{Settings()};
  plot.PlotBackgroundColor = 5;
  Apply(plot, "plot_background_color = red");
  EXPECT_EQ(plot.PlotBackgroundColor, 5);
}

TEST(CheckTemplateRange, KeepsTheFieldWhereTheTextIsNoneOfItsValues) {
  const struct {
    const char* Text;
    int Whole;
    double Real;
  } kCases[] = {{"3", 3, 3},         {"5000", 5000, 5000}, {"2", 7, 7},     {"5001", 7, 7},
                {"5000.5", 5000, 7}, {" 1E2 ", 100, 100},  {"4.5", 4, 4.5}, {"1e10", 7, 7},
                {"-3", 7, 7},        {"seven", 7, 7},      {"", 7, 7},      {"4,5", 7, 7},
                {"nan", 7, 7},       {"1e999", 7, 7},      {"0x10", 7, 7},  {"2.9999", 3, 7}};
  for (const auto& c : kCases) {
    EXPECT_EQ(CheckTemplateRange<std::int32_t>(c.Text, 7, 3, 5000), c.Whole) << c.Text;
    EXPECT_EQ(CheckTemplateRange<std::int16_t>(c.Text, 7, 3, 5000), c.Whole) << c.Text;
    EXPECT_EQ(CheckTemplateRange<double>(c.Text, 7, 3, 5000), c.Real) << c.Text;
    EXPECT_EQ(CheckTemplateRange<float>(c.Text, 7, 3, 5000), static_cast<float>(c.Real)) << c.Text;
  }
  EXPECT_EQ(CheckTemplateRange<double>("-1e300", 7, {}, {}), -1e300);
  EXPECT_EQ(CheckTemplateRange<double>("1e300", 7, 0, {}), 1e300);
}

TEST(PlotTemplate, PlacesBoxesByWholePercentThatLeaveThemInSight) {
  const struct {
    const char* Text;
    float Left;
  } kCases[] = {{"100", 760}, {"95", 760}, {"96", 760},    {"12.9", 96}, {"0", 0},
                {"-5", 0},    {"left", 0}, {"1e300", 760}, {"50", 400}};
  PlotClass plot = DistinctPlot();
  for (const auto& c : kCases) {
    Apply(plot, std::string("legend_xpos = ") + c.Text + "\nfootnote_xpos = " + c.Text);
    EXPECT_EQ(plot.Legend.Left, c.Left) << c.Text;
    EXPECT_EQ(plot.FootNote.Left, c.Left) << c.Text;
  }
  // One next to the corner is not one that nobody has placed.
  plot.Legend.Left = 2;
  EXPECT_EQ(ValueOf(plot, "legend_xpos"), "1");

  // Before the first drawing there is no size to take a part of.
  PlotClass fresh{Settings()};
  EXPECT_EQ(ValueOf(fresh, "legend_ypos"), "0");
  fresh.PlotData.push_back(PointSeries({0, 10}, {0, 10}, "points"));
  Apply(fresh, "legend_xpos = 25\nlegend_ypos = 50");
  RecordingPrompter prompter;
  RecordingSurface surface(800, 600);
  EXPECT_TRUE(fresh.CreateGraph({}, prompter));
  fresh.RefreshPlot(surface, prompter);
  EXPECT_EQ(fresh.Shown().Legend.left, 200);
  EXPECT_EQ(fresh.Shown().Legend.top, 300);
}

TEST(PlotTemplate, NeverWritesATextThatReadsBackAsSomethingElse) {
  const struct {
    const char *Text, *Written;
  } kTexts[] = {{"a = b", "a = b"},
                {"plot_title_text = x", "plot_title_text = x"},
                {"  centred ", "centred"},
                {"= x", "= x"},
                {"µ in \"m²\"", "µ in \"m²\""},
                {"C:\\new", "C:\\new"},
                {"", "null"},
                {"   ", "null"},
                {"Null", "null"},
                {"prompt", "null"},
                {" PROMPT ", "null"},
                {"E =", "null"},
                {"two\r\nlines", "null"},
                {"two\nlines", "null"}};
  for (const auto& c : kTexts) {
    PlotClass plot{Settings()}, other{Settings()};
    plot.PlotTitle = c.Text;
    other.PlotTitle = "other";
    EXPECT_EQ(ValueOf(plot, "plot_title_text"), c.Written);
    Apply(other, Saved(plot));
    EXPECT_EQ(other.PlotTitle, std::string_view(c.Written) == "null" ? "other" : c.Written);
  }
  PlotClass plot{Settings()};
  plot.PlotTitle = std::string(4096, 'x');
  EXPECT_EQ(ValueOf(plot, "plot_title_text"), plot.PlotTitle);
  Apply(plot, "plot_title_text = " + std::string(4097, 'y'));
  EXPECT_EQ(plot.PlotTitle[0], 'x');
  plot.PlotTitle += 'x';
  EXPECT_EQ(ValueOf(plot, "plot_title_text"), "null");
}

TEST(PlotTemplate, KeepsTheLinesOfAFootnote) {
  const struct {
    const char *Text, *Written;
  } kTexts[] = {{"first\r\nsecond\r\n\r\nfourth", "first\\nsecond\\n\\nfourth"},
                {"first\rsecond", "first\\nsecond"},
                {"first\nsecond", "first\\nsecond"},
                {"C:\\new\\data", "C:\\\\new\\\\data"},
                {"\\\\n\\", "\\\\\\\\n\\\\"},
                {"E =\r\nm", "E =\\nm"},
                {"\r\n", "\\n"},
                {"null\r\n", "null\\n"}};
  for (const auto& c : kTexts) {
    PlotClass plot{Settings()}, other{Settings()};
    plot.FootNoteText = c.Text;
    EXPECT_EQ(ValueOf(plot, "footnote_text"), c.Written);
    Apply(other, Saved(plot));
    std::string lines;  // as they are drawn
    for (std::string_view rest = c.Text; !rest.empty();) lines.append(TakeLine(rest)).append("|");
    std::string read;
    for (std::string_view rest = other.FootNoteText; !rest.empty();) read.append(TakeLine(rest)).append("|");
    EXPECT_EQ(read, lines);
  }
  PlotClass plot{Settings()};
  Apply(plot, "footnote_text = C:\\data\\x \\");
  EXPECT_EQ(plot.FootNoteText, "C:\\data\\x \\");
}

TEST(PlotTemplate, SetsTheLinesThatThePlotHas) {
  PlotClass plot{Settings()};
  for (int i = 0; i < 3; ++i) plot.PlotData.push_back(PointSeries({1, 2}, {1, 2}));
  Apply(plot, Saved(DistinctPlot()) + "linesetting_0_line_width = 9\nlinesetting_11_line_width = 9\n");
  ASSERT_EQ(plot.PlotData.size(), 3u);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(plot.PlotData[i].Style(), DistinctPlot().PlotData[i].Style());
  EXPECT_EQ(ValueOf(plot, "linesetting_3_line_width"), "3");
  EXPECT_EQ(ValueOf(plot, "linesetting_4_line_width"), "null");

  PlotClass3D box = BarePlot3D();
  EXPECT_EQ(ValueOf(box, "surface_mesh_base_color"), "null");
  const SeriesStyle before = box.PlotData[0].Style();
  Apply(box, "surface_mesh_base_color = (1, 2, 3)\nlinesetting_1_marker_color = (1, 2, 3)");
  EXPECT_EQ(box.PlotData[0].Style(), before);
}

TEST(PlotTemplate, LeavesOutWhatIsNotSelected) {
  const PlotClass plot = DistinctPlot();
  const std::vector<std::string> groups = TemplateFormat2D().Groups();
  EXPECT_EQ(groups, (std::vector<std::string>{"General", "X Axis", "Y Axis", "Plot Title", "Ticks and Grids", "Legend",
                                              "Footnote", "Lines"}));
  for (const std::string& group : groups) {
    PlotClass other = TenLines();
    const std::string fresh = Saved(other), text = TemplateText(plot, {group});
    Apply(other, text);
    for (const TemplateKey& key : TemplateFormat2D().Keys) {
      if (key.WhereUsed) continue;
      EXPECT_NE(text.find(key.Key + " = "), std::string::npos);
      if (key.Group == group)
        EXPECT_EQ(ValueOf(other, key.Key), ValueOf(plot, key.Key));
      else
        EXPECT_NE(fresh.find(key.Key + " = " + ValueOf(other, key.Key) + "\r\n"), std::string::npos) << key.Key;
    }
  }
}

TEST(PlotTemplate, OffersWhatThePlotHasAndTakesWhatIsTyped) {
  PlotClass plot = DistinctPlot();
  Typist user;
  user.Typed = {{"Enter the plot background color (R,G,B):", "1, 2, 3"},
                {"Enter the plot title:", "null"},
                {"Enter the X axis title:", ""},
                {"Enter the axis width (1 - 5):", "6"},
                {"Enter the footnote text:", "a\\nb"}};
  ApplyTemplateText(plot,
                    "plot_background_color = prompt\nplot_title_text = Prompt\nx_axis_title_text = PROMPT\naxis_width "
                    "= prompt\nfootnote_text = prompt\nfootnote_font_name = prompt\nlinesetting_11_line_width = "
                    "prompt\nlegend_xpos = prompt",
                    &user);
  EXPECT_EQ(user.Said,
            (std::vector<std::string>{"text: Enter the plot background color (R,G,B):|(3, 2, 1)",
                                      "text: Enter the plot title:|plot title", "text: Enter the X axis title:|X title",
                                      "text: Enter the axis width (1 - 5):|2",
                                      "text: Enter the footnote text:|first \\\\ second\\nthird",
                                      "text: Enter the footnote font name:|footnote font",
                                      "text: Enter legend horizontal position in percent (0 - 100):|20"}));
  EXPECT_EQ(user.Colors, std::vector<std::string>{"Enter the plot background color (R,G,B):"});
  EXPECT_EQ(plot.PlotBackgroundColor, 0x030201);
  EXPECT_EQ(plot.PlotTitle, "null");
  EXPECT_EQ(plot.X.AxisTitle, "");
  EXPECT_EQ(plot.AxisWidth, 2);
  EXPECT_EQ(plot.FootNoteText, "a\r\nb");
  EXPECT_EQ(plot.FootNoteFont.Name, "footnote font");  // cancelled
  EXPECT_EQ(plot.Legend.Left, 160);
}

TEST(PlotTemplate, OffersTheOtherAngleForEachOfTheView) {
  PlotClass3D plot = Landscape();
  plot.UpdateViewAngle(40, 50);
  Typist user;
  user.Typed = {{"Enter the X1-X2 view angle in degrees (0 - 360):", "300"},
                {"Enter the X1-Y view angle in degrees (0 - 180):", "60.5"}};
  ApplyTemplateText(plot, "x1_x2_view_angle = prompt", &user);
  EXPECT_EQ(user.Last(), "text: Enter the X1-X2 view angle in degrees (0 - 360):|50");
  EXPECT_EQ(plot.Angles(), (ViewAngles{300, 50}));
  EXPECT_NEAR(plot.XYAngle, 300 * 3.14159265358979 / 180, 1e-15);
  ApplyTemplateText(plot, "x1_y_view_angle = prompt", &user);
  EXPECT_EQ(user.Last(), "text: Enter the X1-Y view angle in degrees (0 - 180):|300");
  EXPECT_EQ(plot.Angles(), (ViewAngles{300, 60.5}));
}

TEST(PlotTemplate, IsTheSameInAnyLocale) {
  PlotClass plot = DistinctPlot();
  plot.Locale = {.DecimalSeparator = ',', .ListSeparator = ';', .ThousandSeparator = '.'};
  EXPECT_EQ(Saved(plot), Saved(DistinctPlot()));
}

// Draws the plot as its window would.
template <typename Plot>
void Draw(Plot& plot) {
  RecordingPrompter prompter;
  RecordingSurface surface;
  if (!plot.CreateGraph({.Regenerate = true}, prompter)) return;
  plot.RefreshPlot(surface, prompter);
  for (const PlotAxis* axis : plot.Axes()) {
    EXPECT_LT(axis->Min, axis->Max);
    EXPECT_GE(axis->NumMajorTicks, 1);
  }
  EXPECT_LT(surface.Calls.size(), 200000u);
  EXPECT_EQ(surface.ObjectCount(), 0u);
}

TEST(PlotTemplate, LeavesAPlotThatCanBeDrawn) {
  const char* const kTexts[] = {
      "@_axis_scale_min = 3\n@_axis_scale_max = -3",
      "@_axis_scale_min = -5\n@_axis_scale_max = 0.001\n@_axis_scale_log = true",
      "@_axis_scale_min = 0.001\n@_axis_scale_max = -5\n@_axis_scale_log = true",
      "@_axis_scale_min = 5e-324\n@_axis_scale_max = 1e308\n@_axis_scale_log = true",
      "@_axis_scale_min = -1e308\n@_axis_scale_max = 1.7e308",
      "@_axis_scale_min = 1e308\n@_axis_scale_max = 1.7e308",
      "@_axis_scale_min = 1\n@_axis_scale_max = 1.0000000000000002",
      "@_axis_scale_min = 1e-300\n@_axis_scale_max = 1e-299\n@_axis_format_string = 0.0######E+000",
      "@_axis_scale_min = 1\n@_axis_scale_max = 2\n@_axis_format_string = x",
  };
  for (const std::string text : kTexts)
    for (const char* axis : {"x", "y", "x1", "x2"}) {
      SCOPED_TRACE(axis + text);
      std::string own = text;
      for (std::size_t at; (at = own.find('@')) != std::string::npos;) own.replace(at, 1, axis);
      PlotClass flat{Settings()};
      flat.PlotData.push_back(PointSeries({1, 2, 3}, {1, 2, 3}, "points"));
      flat.PlotData.push_back(Curve("a+b*x", {1, 2}));
      PlotClass3D solid = Landscape();
      for (PlotPage* plot : std::initializer_list<PlotPage*>{&flat, &solid}) {
        Draw(*plot);
        Apply(*plot, own);
        Draw(*plot);
      }
    }
}

}  // namespace
}  // namespace quorvex
