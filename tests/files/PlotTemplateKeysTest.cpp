#include <gtest/gtest.h>

#include <map>
#include <set>

#include "Golden.h"
#include "Paths.h"
#include "core/Files.h"
#include "files/Templates.h"

namespace quorvex {
namespace {

TEST(PlotTemplateKeys, HasALineForEachFieldAndReadsBackToTheSame) {
  PlotClass flat = TenLines();
  ExpectGolden("Template.qv2", Saved(DistinctPlot()));
  Apply(flat, Saved(DistinctPlot()));
  EXPECT_EQ(Saved(flat), Saved(DistinctPlot()));

  PlotClass3D solid = Landscape();
  ExpectGolden("Template.qv3", Saved(DistinctBox()));
  Apply(solid, Saved(DistinctBox()));
  EXPECT_EQ(Saved(solid), Saved(DistinctBox()));
}

TEST(PlotTemplateKeys, KnowsEachKeyByOneNameOrTwo) {
  const struct {
    const PlotTemplateFormat& Format;
    std::size_t Keys, Twins;
  } kCases[] = {{TemplateFormat2D(), 189 + 20, 10}, {TemplateFormat3D(), 134 - 8 + 2 * 9, 10}};
  for (const auto& c : kCases) {
    std::set<std::string> keys, twins;
    for (const TemplateKey& key : c.Format.Keys) {
      keys.insert(key.Key);
      if (!key.Twin.empty()) twins.insert(key.Twin);
    }
    EXPECT_EQ(c.Format.Keys.size(), c.Keys);
    EXPECT_EQ(keys.size(), c.Keys);
    EXPECT_EQ(twins.size(), c.Twins);
    for (const std::string& twin : twins) EXPECT_FALSE(keys.contains(twin)) << twin;
  }
}

// A value that is none of the field's so far.
std::string OtherValue(const TemplateKey& key, const std::string& present) {
  switch (key.Kind) {
    case TemplateKind::Boolean:
      return present == "true" ? "false" : "true";
    case TemplateKind::Color:
      return "(12, 34, 56)";
    case TemplateKind::Text:
      return "other = text";
    default:
      break;
  }
  const double least = key.Least.value_or(-0.05);
  return ShortestNumber(present == ShortestNumber(least) ? least + 1 : least);
}

template <typename Plot>
void ExpectEachKeyByItself(Plot plot) {
  const std::string fresh = Saved(plot);
  for (const TemplateKey& key : TemplateFormatOf(plot).Keys) {
    if (key.WhereUsed) continue;
    SCOPED_TRACE(key.Key);
    const std::string present = ValueOf(plot, key.Key), other = OtherValue(key, present);
    const std::string before = "\n" + key.Key + " = " + present + "\r", after = "\n" + key.Key + " = " + other + "\r";
    std::string expected = "\n" + fresh;
    expected.replace(expected.find(before), before.size(), after);
    for (const std::string& name : {key.Key, key.Twin}) {
      if (name.empty()) continue;
      Apply(plot, name + " = " + other);
      EXPECT_EQ("\n" + Saved(plot), expected);
      Apply(plot, fresh);
      EXPECT_EQ(Saved(plot), fresh);
    }
  }
}

TEST(PlotTemplateKeys, HasBandsWhereTheyAre) {
  PlotClass plot = TenLines(), other = TenLines();
  const std::string fresh = Saved(plot);
  EXPECT_EQ(fresh.find("band"), std::string::npos);
  plot.PlotData[1].Style().Bands = 3;
  plot.PlotData[1].Style().BandLevel = 1;
  EXPECT_EQ(Saved(plot), fresh + "linesetting_2_bands = 3\r\nlinesetting_2_band_level = 1\r\n");
  Apply(other, Saved(plot));
  EXPECT_EQ(Saved(other), Saved(plot));
  Apply(other, "linesetting_2_bands = 4\nlinesetting_2_band_level = -1");
  EXPECT_EQ(Saved(other), Saved(plot));
  Apply(other, "linesetting_2_bands = 0");
  EXPECT_EQ(Saved(other), fresh);
}

TEST(PlotTemplateKeys, SetsWhatItsOneLineSaysAndNothingElse) {
  ExpectEachKeyByItself(DistinctPlot());
  ExpectEachKeyByItself(DistinctBox());
}

// The fields that Booleans are of.
using Flags = std::map<std::string, const bool*>;

void AddFont(Flags& flags, const std::string& key, const PlotFont& font) {
  flags[key + "_font_bold"] = &font.Bold;
  flags[key + "_font_italic"] = &font.Italic;
}

void AddAxis(Flags& flags, const std::string& key, const PlotAxis& axis) {
  AddFont(flags, key + "_axis_title", axis.AxisTitleFont);
  AddFont(flags, key + "_axis_number", axis.AxisNumberFont);
  flags[key + "_axis_scale_log"] = &axis.LogScale;
}

Flags PageFlags(const PlotPage& plot, std::size_t lines) {
  Flags flags = {{"legend_display", &plot.Legend.Show},
                 {"legend_shadow_display", &plot.Legend.ShowShadow},
                 {"footnote_display", &plot.FootNote.Show},
                 {"footnote_shadow_display", &plot.FootNote.ShowShadow}};
  AddFont(flags, "plot_title", plot.PlotTitleFont);
  AddFont(flags, "legend", plot.PlotLegendFont);
  AddFont(flags, "footnote", plot.FootNoteFont);
  for (std::size_t i = 0; i < lines; ++i) {
    const std::string line = "linesetting_" + std::to_string(i + 1);
    flags[line + "_line_display"] = &plot.PlotData[i].Style().DisplayLine;
    flags[line + "_marker_display"] = &plot.PlotData[i].Style().DisplayMarker;
    flags[line + "_errorbars_display"] = &plot.PlotData[i].Style().ShowErrorBars;
  }
  return flags;
}

Flags FlagsOf(const PlotClass& plot) {
  Flags flags = PageFlags(plot, 10);
  flags.insert({{"extrapolate", &plot.Extrapolate},
                {"plot_at_fitted_only", &plot.PlotAtFittedOnly},
                {"make_square", &plot.Make2DSquare},
                {"swap_xy_axis", &plot.SwapAxis}});
  for (const FrameAxis* axis : {&plot.X, &plot.Y}) {
    const std::string key = axis == &plot.X ? "x" : "y";
    AddAxis(flags, key, *axis);
    flags[key + "_axis_major_grid"] = &axis->ShowMajorGrids;
    flags[key + "_axis_minor_grid"] = &axis->ShowMinorGrids;
    flags[key + "_axis_ticks_both"] = &axis->ShowExtraTicks;
  }
  return flags;
}

Flags FlagsOf(const PlotClass3D& plot) {
  Flags flags = PageFlags(plot, 2);
  flags.insert({{"x1_x2_plane_shade", &plot.BoxXY.Shade},
                {"x1_y_plane_shade", &plot.BoxXZ.Shade},
                {"x2_y_plane_shade", &plot.BoxYZ.Shade},
                {"make_square", &plot.Make3DSquare},
                {"surface_mesh_byvalue_shade", &plot.ShadeMeshByValue},
                {"surface_mesh_contour_display", &plot.DisplayContourLines},
                {"surface_mesh_use_axis_scale", &plot.UseAxisScale},
                {"x1_x2_axis_major_grid", &plot.X.Grids[0].Major},
                {"x1_x2_axis_minor_grid", &plot.X.Grids[0].Minor},
                {"x1_y_axis_major_grid", &plot.X.Grids[1].Major},
                {"x1_y_axis_minor_grid", &plot.X.Grids[1].Minor},
                {"x2_x1_axis_major_grid", &plot.Y.Grids[0].Major},
                {"x2_x1_axis_minor_grid", &plot.Y.Grids[0].Minor},
                {"x2_y_axis_major_grid", &plot.Y.Grids[1].Major},
                {"x2_y_axis_minor_grid", &plot.Y.Grids[1].Minor},
                {"y_x1_axis_major_grid", &plot.Z.Grids[0].Major},
                {"y_x1_axis_minor_grid", &plot.Z.Grids[0].Minor},
                {"y_x2_axis_major_grid", &plot.Z.Grids[1].Major},
                {"y_x2_axis_minor_grid", &plot.Z.Grids[1].Minor}});
  AddAxis(flags, "x1", plot.X);
  AddAxis(flags, "x2", plot.Y);
  AddAxis(flags, "y", plot.Z);
  return flags;
}

template <typename Plot>
void ExpectFlags(Plot plot) {
  const Flags flags = FlagsOf(plot);
  for (const TemplateKey& key : TemplateFormatOf(plot).Keys) {
    if (key.Kind != TemplateKind::Boolean || key.Key == "surface_mesh_shade") continue;
    ASSERT_TRUE(flags.contains(key.Key)) << key.Key;
    Apply(plot, key.Key + " = false");
    EXPECT_FALSE(*flags.at(key.Key)) << key.Key;
    Apply(plot, key.Key + " = true");
    EXPECT_TRUE(*flags.at(key.Key)) << key.Key;
  }
}

TEST(PlotTemplateKeys, TurnsOnAndOffWhatEachOfItsBooleansNames) {
  ExpectFlags(DistinctPlot());
  ExpectFlags(DistinctBox());
}

TEST(PlotTemplateKeys, ShadesTheSurfaceAndLeavesItsPointsAlone) {
  PlotClass3D plot = Landscape();
  Apply(plot, "surface_mesh_shade = yes\nsurface_mesh_base_color = (1, 2, 3)");
  EXPECT_NE(plot.PlotData[0].Style().ShadeMesh, 0);
  EXPECT_EQ(plot.PlotData[0].Style().ShadeColor, 0x030201);
  EXPECT_EQ(plot.PlotData[1].Style(), Landscape().PlotData[1].Style());
}

TEST(PlotTemplateKeys, HoldsEachNumberWithinItsRange) {
  const struct {
    const char* Key;
    double Least, Most;
    int Dimensions = 2;
  } kRanges[] = {{"x_points_per_plot", 3, 5000},
                 {"x_axis_title_font_height", 2, 72},
                 {"y_axis_major_ticks", 1, 20},
                 {"y_axis_minor_ticks", 0, 20},
                 {"axis_width", 1, 5},
                 {"tick_pen_width_major", 1, 5},
                 {"tick_pen_width_minor", 1, 5},
                 {"tick_pen_length", 0.001, 0.5},
                 {"gridline_style_major", 0, 4},
                 {"gridline_style_minor", 0, 4},
                 {"legend_border_type", 0, 1},
                 {"legend_border_width", 1, 5},
                 {"legend_area_type", 0, 1},
                 {"footnote_alignment", 0, 2},
                 {"linesetting_10_line_style", 0, 4},
                 {"linesetting_10_line_width", 1, 10},
                 {"linesetting_10_marker_style", 0, 9},
                 {"linesetting_10_marker_size", 1, 16},
                 {"linesetting_2_line_width", 1, 5, 3},
                 {"x1_points_per_plot", 2, 99, 3},
                 {"x2_points_per_plot", 2, 99, 3},
                 {"x1_x2_view_angle", 0, 360, 3},
                 {"x1_y_view_angle", 0, 180, 3},
                 {"surface_mesh_color_scheme", 0, 13, 3},
                 {"surface_mesh_contour_density", 2, 50, 3},
                 {"surface_mesh_contour_style", 0, 4, 3},
                 {"surface_mesh_contour_width", 1, 5, 3}};
  PlotClass flat = DistinctPlot();
  PlotClass3D solid = DistinctBox();
  for (const auto& c : kRanges) {
    PlotPage& plot = c.Dimensions == 2 ? static_cast<PlotPage&>(flat) : solid;
    for (const double limit : {c.Least, c.Most}) {
      SCOPED_TRACE(c.Key);
      const std::string key = c.Key, text = ShortestNumber(limit);
      Apply(plot, key + " = " + text);
      EXPECT_EQ(ValueOf(plot, key), text);
      Apply(plot, key + " = " + ShortestNumber(limit == c.Least ? limit - 1 : limit + 1));
      EXPECT_EQ(ValueOf(plot, key), text);
    }
  }
}

TEST(PlotTemplateKeys, AsksInWords) {
  const struct {
    const char *Key, *Prompt;
    int Dimensions = 2;
  } kPrompts[] = {
      {"plot_background_color", "Enter the plot background color (R,G,B):"},
      {"x_points_per_plot", "Enter the number of X divisions for curves (3 - 5000):"},
      {"extrapolate", "Extrapolate curves beyond inputs? (true or false):"},
      {"x_axis_title_font_height", "Enter the X axis title font height in points (2 - 72):"},
      {"x_axis_major_ticks", "Enter the number of X axis major ticks (1 - 20):"},
      {"x_axis_minor_ticks", "Enter the number of X axis minor ticks (0 - 20):"},
      {"tick_pen_width_major", "Enter the plot major tick width (1 - 5):"},
      {"gridline_style_major", "Enter the style for major grid lines (0 - 4):"},
      {"linesetting_1_line_width", "Enter the width for line 1 (1 - 10):"},
      {"linesetting_1_marker_style", "Enter line 1 marker style (0 - 9):"},
      {"linesetting_1_marker_size", "Enter line 1 marker size (1 - 16):"},
      {"legend_xpos", "Enter legend horizontal position in percent (0 - 100):"},
      {"footnote_alignment", "Enter the footnote text alignment (0 - 2):"},
      {"x1_x2_view_angle", "Enter the X1-X2 view angle in degrees (0 - 360):", 3},
      {"x1_y_view_angle", "Enter the X1-Y view angle in degrees (0 - 180):", 3},
      {"x1_points_per_plot", "Enter the number of X1 divisions for curves (2 - 99):", 3},
      {"surface_mesh_color_scheme", "Enter the curved surface shading color scheme (0 - 9):", 3},
      {"surface_mesh_contour_divisions", "Enter number of surface mesh contour divisions (2 - 50):", 3},
      {"linesetting_2_line_width", "Enter the width for line 2 (1 - 5):", 3},
      {"tick_pen_length", "Enter the plot major tick length in inches (0.001 - 0.5):"},
      {"x_axis_scale_min", "Enter the X axis minimum:"},
      {"legend_display", "Display the legend? (true or false):"},
      {"plot_title_text", "Enter the plot title:"},
  };
  for (const auto& c : kPrompts) {
    const TemplateKey* key = (c.Dimensions == 2 ? TemplateFormat2D() : TemplateFormat3D()).Find(c.Key);
    ASSERT_NE(key, nullptr) << c.Key;
    EXPECT_EQ(key->Prompt, c.Prompt);
  }
}

std::string ValueInManual(const TemplateKey& key) {
  const std::string range =
      key.Least && key.Most ? ", " + GeneralNumber(*key.Least) + " to " + GeneralNumber(*key.Most) : "";
  switch (key.Kind) {
    case TemplateKind::Whole:
      return "whole number" + range;
    case TemplateKind::Real:
      return "number" + range;
    case TemplateKind::Boolean:
      return "true or false";
    case TemplateKind::Color:
      return "colour";
    case TemplateKind::Text:
      return "text";
    case TemplateKind::Percent:
      return "percent" + range;
    case TemplateKind::Degrees:
      return "degrees" + range;
  }
  return "";
}

// The keys as the manual lists them, those of the first line for all.
std::string TableInManual(const PlotTemplateFormat& format) {
  std::string table = "| Key | Value | Group | Question |\n|---|---|---|---|\n";
  for (const TemplateKey& key : format.Keys) {
    std::string name = key.Key, prompt = key.Prompt;
    if (key.Group == "Lines") {
      if (!name.starts_with("linesetting_1_")) continue;
      name.replace(name.find('1'), 1, "n");
      prompt.replace(prompt.find("line 1") + 5, 1, "n");
    }
    table += "| `" + name + "`" + (key.Twin.empty() ? "" : ", `" + key.Twin + "`") + " | " + ValueInManual(key) +
             " | " + key.Group + " | " + prompt + " |\n";
  }
  return table;
}

TEST(PlotTemplateKeys, AreToldInTheManual) {
  WholeFile file;
  ASSERT_EQ(file.Read(TestData("../../docs/templates.md")), 0);
  for (const PlotTemplateFormat* format : {&TemplateFormat2D(), &TemplateFormat3D()}) {
    const std::string table = TableInManual(*format);
    EXPECT_NE(file.Text().find(table), std::string_view::npos) << "docs/templates.md lacks this table:\n" << table;
  }
}

}  // namespace
}  // namespace quorvex
