#include "files/PlotTemplateKeys.h"

#include <algorithm>

#include "plot/PlotClass.h"
#include "plot3d/PlotClass3D.h"

namespace quorvex {
namespace {

template <typename Plot>
TemplateField<Plot> Whole() {
  return TemplateField<Plot>([](PlotPage& plot) { return std::vector<Plot*>{&static_cast<Plot&>(plot)}; });
}

// The n-th series, from 1.
TemplateField<SeriesStyle> Series(std::size_t n) {
  return TemplateField<SeriesStyle>([n](PlotPage& plot) {
    std::vector<SeriesStyle*> styles;
    if (n <= plot.PlotData.size()) styles.push_back(&plot.PlotData[n - 1].Style());
    return styles;
  });
}

TemplateField<SeriesStyle> Surfaces() {
  return TemplateField<SeriesStyle>([](PlotPage& plot) {
    std::vector<SeriesStyle*> styles;
    for (PlotSeries& series : plot.PlotData)
      if (series.Model() != nullptr) styles.push_back(&series.Style());
    return styles;
  });
}

// What both kinds of plot have in common. `key` is what the keys begin with and `words` what their prompts say of it.

void ListFont(TemplateKeyList& list, const std::string& key, const std::string& words,
              const TemplateField<PlotFont>& font, const TemplateField<std::int32_t>& color) {
  list.Text(key + "_font_name", "the " + words + " font name", font[&PlotFont::Name]);
  list.Boolean(key + "_font_bold", "Make the " + words + " font bold", font[&PlotFont::Bold]);
  list.Boolean(key + "_font_italic", "Make the " + words + " font italic", font[&PlotFont::Italic]);
  list.Number(key + "_font_height", "the " + words + " font height in points", font[&PlotFont::Size], 2, 72);
  list.Color(key + "_color", "the " + words + " color", color);
}

template <typename Axis>
void ListAxisTitle(TemplateKeyList& list, const std::string& key, const std::string& name,
                   const TemplateField<Axis>& axis) {
  list.Group(name + " Axis");
  ListFont(list, key + "_axis_title", name + " axis title", axis[&Axis::AxisTitleFont], axis[&Axis::AxisTitleColor]);
  list.Text(key + "_axis_title_text", "the " + name + " axis title", axis[&Axis::AxisTitle]);
}

void ListPlotTitle(TemplateKeyList& list) {
  const TemplateField<PlotPage> plot = Whole<PlotPage>();
  list.Group("Plot Title");
  ListFont(list, "plot_title", "plot title", plot[&PlotPage::PlotTitleFont], plot[&PlotPage::PlotTitleColor]);
  list.Text("plot_title_text", "the plot title", plot[&PlotPage::PlotTitle]);
}

template <typename Axis>
void ListAxisScale(TemplateKeyList& list, const std::string& key, const std::string& name,
                   const TemplateField<Axis>& axis) {
  list.Group(name + " Axis");
  list.Number(key + "_axis_scale_min", "the " + name + " axis minimum", axis[&Axis::Min]);
  list.Number(key + "_axis_scale_max", "the " + name + " axis maximum", axis[&Axis::Max]);
  list.Boolean(key + "_axis_scale_log", "Use a log scale on the " + name + " axis", axis[&Axis::LogScale]);
  list.Number(key + "_axis_major_ticks", "the number of " + name + " axis major ticks", axis[&Axis::NumMajorTicks], 1,
              20);
  list.Number(key + "_axis_minor_ticks", "the number of " + name + " axis minor ticks", axis[&Axis::NumMinorTicks], 0,
              20);
}

template <typename Axis>
void ListAxisNumbers(TemplateKeyList& list, const std::string& key, const std::string& name,
                     const TemplateField<Axis>& axis) {
  ListFont(list, key + "_axis_number", name + " axis number", axis[&Axis::AxisNumberFont],
           axis[&Axis::AxisNumberColor]);
  list.Text(key + "_axis_format_string", "the " + name + " axis number format", axis[&Axis::LabelString]);
}

void ListBoxLook(TemplateKeyList& list, const std::string& key, PlotBox PlotPage::*box, std::string borderTwin = "") {
  const TemplateField<PlotBox> field = Whole<PlotPage>()[box];
  list.Boolean(key + "_shadow_display", "Display the " + key + " shadow", field[&PlotBox::ShowShadow]);
  list.Number(key + "_border_type", "the " + key + " border type", field[&PlotBox::BorderType], 0, 1);
  list.Twin(std::move(borderTwin));
  list.Color(key + "_border_color", "the " + key + " border color", field[&PlotBox::BorderColor]);
  list.Number(key + "_border_width", "the " + key + " border width", field[&PlotBox::BorderWidth], 1, 5);
  list.Number(key + "_area_type", "the " + key + " area type", field[&PlotBox::AreaType], 0, 1);
  list.Color(key + "_area_color", "the " + key + " area color", field[&PlotBox::AreaColor]);
}

void ListBoxPlace(TemplateKeyList& list, const std::string& key, PlotBox PlotPage::*box) {
  list.Percent(key + "_xpos", key + " horizontal position in percent", box, &PlotBox::Left, &PlotPage::InitPlotWidth);
  list.Percent(key + "_ypos", key + " vertical position in percent", box, &PlotBox::Top, &PlotPage::InitPlotHeight);
}

void ListLegend(TemplateKeyList& list) {
  const TemplateField<PlotPage> plot = Whole<PlotPage>();
  list.Group("Legend");
  list.TwinPrefix("plot_");
  ListFont(list, "legend", "legend", plot[&PlotPage::PlotLegendFont], plot[&PlotPage::PlotLegendColor]);
  list.Boolean("legend_display", "Display the legend", plot[&PlotPage::Legend][&PlotBox::Show]);
  list.TwinPrefix("");
  ListBoxLook(list, "legend", &PlotPage::Legend);
  list.TwinPrefix("plot_");
  ListBoxPlace(list, "legend", &PlotPage::Legend);
  list.TwinPrefix("");
}

void ListFootNote(TemplateKeyList& list) {
  const TemplateField<PlotPage> plot = Whole<PlotPage>();
  list.Group("Footnote");
  ListFont(list, "footnote", "footnote", plot[&PlotPage::FootNoteFont], plot[&PlotPage::FootNoteColor]);
  list.Number("footnote_alignment", "the footnote text alignment", plot[&PlotPage::FootNoteAlign], 0, 2);
  list.Boolean("footnote_display", "Display the footnote", plot[&PlotPage::FootNote][&PlotBox::Show]);
  list.Lines("footnote_text", "the footnote text", plot[&PlotPage::FootNoteText]);
  ListBoxLook(list, "footnote", &PlotPage::FootNote, "footnote_displaybox");
  ListBoxPlace(list, "footnote", &PlotPage::FootNote);
}

void ListLines(TemplateKeyList& list, std::size_t count, bool inTwoDimensions) {
  list.Group("Lines");
  for (std::size_t n = 1; n <= count; ++n) {
    const TemplateField<SeriesStyle> style = Series(n);
    const std::string key = "linesetting_" + std::to_string(n) + "_", line = "line " + std::to_string(n);
    list.Number(key + "line_style", "the style for " + line, style[&SeriesStyle::DrawStyle], 0, 4);
    list.Color(key + "line_color", "the color for " + line, style[&SeriesStyle::DrawColor]);
    list.Number(key + "line_width", "the width for " + line, style[&SeriesStyle::DrawWidth], 1,
                inTwoDimensions ? 10 : 5);
    list.Boolean(key + "line_display", "Display " + line, style[&SeriesStyle::DisplayLine]);
    list.Boolean(key + "marker_display", "Display the markers of " + line, style[&SeriesStyle::DisplayMarker]);
    list.Number(key + "marker_style", line + " marker style", style[&SeriesStyle::MarkerStyle], 0, 9);
    if (inTwoDimensions) list.Color(key + "marker_color", line + " marker color", style[&SeriesStyle::MarkerColor]);
    list.Number(key + "marker_size", line + " marker size", style[&SeriesStyle::MarkerSize], 1, 16);
    list.Boolean(key + "errorbars_display", "Display the error bars of " + line, style[&SeriesStyle::ShowErrorBars]);
    list.Text(key + "legend_text", "the legend text for " + line, style[&SeriesStyle::LegendText]);
  }
}

// Behind all others, since older templates and plots without bands have none of them.
void ListBands(TemplateKeyList& list, std::size_t count) {
  for (std::size_t n = 1; n <= count; ++n) {
    const TemplateField<SeriesStyle> style = Series(n);
    const std::string key = "linesetting_" + std::to_string(n) + "_", line = "line " + std::to_string(n);
    const auto used = [style](PlotPage& plot) {
      const std::vector<SeriesStyle*> found = style.In(plot);
      return !found.empty() && found[0]->Bands != 0;
    };
    list.Number(key + "bands", "the bands of " + line, style[&SeriesStyle::Bands], 0, 3);
    list.WhereUsed(used);
    list.Number(key + "band_level", "the level of the bands of " + line, style[&SeriesStyle::BandLevel], 0, 3);
    list.WhereUsed(used);
  }
}

// Plots of two dimensions.

void ListFrameScale(TemplateKeyList& list, const std::string& key, const std::string& name,
                    const TemplateField<FrameAxis>& axis) {
  ListAxisScale(list, key, name, axis);
  list.Boolean(key + "_axis_major_grid", "Display the " + name + " axis major grid", axis[&FrameAxis::ShowMajorGrids]);
  list.Boolean(key + "_axis_minor_grid", "Display the " + name + " axis minor grid", axis[&FrameAxis::ShowMinorGrids]);
  list.Boolean(key + "_axis_ticks_both", "Display " + name + " axis ticks on both sides",
               axis[&FrameAxis::ShowExtraTicks]);
  ListAxisNumbers(list, key, name, axis);
}

std::vector<TemplateKey> Keys2D() {
  const TemplateField<PlotClass> plot = Whole<PlotClass>();
  TemplateKeyList list;
  list.Group("General");
  list.Color("plot_background_color", "the plot background color", plot[&PlotClass::PlotBackgroundColor]);
  list.Number("x_points_per_plot", "the number of X divisions for curves", plot[&PlotClass::PointsPerPlot], 3, 5000);
  list.Boolean("extrapolate", "Extrapolate curves beyond inputs", plot[&PlotClass::Extrapolate]);
  list.Boolean("plot_at_fitted_only", "Plot curves at fitted points only", plot[&PlotClass::PlotAtFittedOnly]);
  list.Boolean("make_square", "Make the plot square", plot[&PlotClass::Make2DSquare]);
  list.Boolean("swap_xy_axis", "Swap the X and Y axes", plot[&PlotClass::SwapAxis]);
  ListAxisTitle(list, "x", "X", plot[&PlotClass::X]);
  ListAxisTitle(list, "y", "Y", plot[&PlotClass::Y]);
  ListPlotTitle(list);
  ListFrameScale(list, "x", "X", plot[&PlotClass::X]);
  ListFrameScale(list, "y", "Y", plot[&PlotClass::Y]);
  list.Group("Ticks and Grids");
  list.Number("axis_width", "the axis width", plot[&PlotClass::AxisWidth], 1, 5);
  list.Color("tick_pen_color", "the plot tick color", plot[&PlotClass::TickPenColor]);
  list.Number("tick_pen_width_major", "the plot major tick width", plot[&PlotClass::TickPenWidthMajor], 1, 5);
  list.Twin("tick_pen_width");
  list.Number("tick_pen_width_minor", "the plot minor tick width", plot[&PlotClass::TickPenWidthMinor], 1, 5);
  list.Number("tick_pen_length", "the plot major tick length in inches", plot[&PlotClass::TickPenLength], 0.001, 0.5);
  list.Number("gridline_style_major", "the style for major grid lines", plot[&PlotClass::MajorGridLineStyle], 0, 4);
  list.Number("gridline_style_minor", "the style for minor grid lines", plot[&PlotClass::MinorGridLineStyle], 0, 4);
  ListLegend(list);
  ListFootNote(list);
  ListLines(list, 10, true);
  ListBands(list, 10);
  return list.Take();
}

// Plots of three dimensions, whose X, Y and Z the user knows as X1, X2 and Y.

void ListPlane(TemplateKeyList& list, const std::string& key, const std::string& name,
               const TemplateField<BoxPlane>& plane) {
  list.Boolean(key + "_plane_shade", "Shade the " + name + " plane", plane[&BoxPlane::Shade]);
  list.Color(key + "_plane_color", "the " + name + " plane color", plane[&BoxPlane::Color]);
}

// The axis with what it shares with the two others, whose keys and names are given in their order.
struct BoxAxisWords {
  std::string Key, Name;
  std::array<std::string, 2> OtherKeys, OtherNames;
};

void ListBoxScale(TemplateKeyList& list, const BoxAxisWords& words, const TemplateField<BoxAxis>& axis) {
  using Grids = BoxAxis::PlaneGrids;
  ListAxisScale(list, words.Key, words.Name, axis);
  const auto grid = [&](const std::string& which, std::size_t other, bool Grids::*shown) {
    const auto plane = [other](BoxAxis& each) -> Grids& { return each.Grids[other]; };
    list.Boolean(
        words.Key + "_" + words.OtherKeys[other] + "_axis_" + which + "_grid",
        "Display the " + which + " grid of the " + words.Name + " axis on its plane with " + words.OtherNames[other],
        axis[plane][shown]);
  };
  grid("major", 0, &Grids::Major);
  grid("major", 1, &Grids::Major);
  grid("minor", 0, &Grids::Minor);
  grid("minor", 1, &Grids::Minor);
  list.Color(words.Key + "_axis_tick_pen_color", "the " + words.Name + " axis tick color", axis[&BoxAxis::TickColor]);
  ListAxisNumbers(list, words.Key, words.Name, axis);
}

void ListSurface(TemplateKeyList& list, const TemplateField<PlotClass3D>& plot) {
  const TemplateField<SeriesStyle> style = Surfaces();
  list.Group("Surface");
  list.Boolean("surface_mesh_shade", "Shade the curved surface", style[&SeriesStyle::ShadeMesh]);
  list.Boolean("surface_mesh_byvalue_shade", "Shade the curved surface by value", plot[&PlotClass3D::ShadeMeshByValue]);
  list.Color("surface_mesh_base_color", "the curved surface base color", style[&SeriesStyle::ShadeColor]);
  list.Number("surface_mesh_color_scheme", "", plot[&PlotClass3D::MeshColorScheme], 0, kMeshSchemes - 1);
  list.Prompt("Enter the curved surface shading color scheme (0 - 9):");  // there are more, which it doesn't offer
  list.Boolean("surface_mesh_contour_display", "Display surface mesh contours",
               plot[&PlotClass3D::DisplayContourLines]);
  list.Number("surface_mesh_contour_density", "number of surface mesh contour divisions",
              plot[&PlotClass3D::MeshContourDensity], 2, 50);
  list.Twin("surface_mesh_contour_divisions");
  list.Color("surface_mesh_contour_color", "the surface mesh contour color", plot[&PlotClass3D::ContourPenColor]);
  list.Number("surface_mesh_contour_style", "the surface mesh contour style", plot[&PlotClass3D::ContourPenStyle], 0,
              4);
  list.Number("surface_mesh_contour_width", "the surface mesh contour width", plot[&PlotClass3D::ContourPenWidth], 1,
              5);
  list.Boolean("surface_mesh_use_axis_scale", "Scale the surface shading to the axis",
               plot[&PlotClass3D::UseAxisScale]);
  list.Color("error_above_color", "the color of error bars above the surface", plot[&PlotClass3D::ErrorColorAbove]);
  list.Color("error_below_color", "the color of error bars below the surface", plot[&PlotClass3D::ErrorColorBelow]);
}

std::vector<TemplateKey> Keys3D() {
  const TemplateField<PlotClass3D> plot = Whole<PlotClass3D>();
  TemplateKeyList list;
  list.Group("Box");
  ListPlane(list, "x1_x2", "X1-X2", plot[&PlotClass3D::BoxXY]);
  ListPlane(list, "x1_y", "X1-Y", plot[&PlotClass3D::BoxXZ]);
  ListPlane(list, "x2_y", "X2-Y", plot[&PlotClass3D::BoxYZ]);
  list.Degrees("x1_x2_view_angle", "the X1-X2 view angle in degrees", &ViewAngles::XY, &ViewAngles::Z, 360);
  list.Degrees("x1_y_view_angle", "the X1-Y view angle in degrees", &ViewAngles::Z, &ViewAngles::XY, 180);
  list.Boolean("make_square", "Make the plot square", plot[&PlotClass3D::Make3DSquare]);
  list.Group("General");
  list.Color("plot_background_color", "the plot background color", plot[&PlotClass3D::PlotBackgroundColor]);
  list.Number("x1_points_per_plot", "the number of X1 divisions for curves", plot[&PlotClass3D::XPointsPerPlot], 2, 99);
  list.Number("x2_points_per_plot", "the number of X2 divisions for curves", plot[&PlotClass3D::YPointsPerPlot], 2, 99);
  ListSurface(list, plot);
  ListAxisTitle(list, "x1", "X1", plot[&PlotClass3D::X]);
  ListAxisTitle(list, "x2", "X2", plot[&PlotClass3D::Y]);
  ListAxisTitle(list, "y", "Y", plot[&PlotClass3D::Z]);
  ListPlotTitle(list);
  ListBoxScale(list, {"x1", "X1", {"x2", "y"}, {"X2", "Y"}}, plot[&PlotClass3D::X]);
  ListBoxScale(list, {"x2", "X2", {"x1", "y"}, {"X1", "Y"}}, plot[&PlotClass3D::Y]);
  ListBoxScale(list, {"y", "Y", {"x1", "x2"}, {"X1", "X2"}}, plot[&PlotClass3D::Z]);
  ListLegend(list);
  ListFootNote(list);
  ListLines(list, 2, false);
  return list.Take();
}

}  // namespace

const TemplateKey* PlotTemplateFormat::Find(std::string_view key) const {
  const auto found =
      std::ranges::find_if(Keys, [&](const TemplateKey& each) { return each.Key == key || each.Twin == key; });
  return found != Keys.end() && !key.empty() ? &*found : nullptr;
}

std::vector<std::string> PlotTemplateFormat::Groups() const {
  std::vector<std::string> groups;
  for (const TemplateKey& key : Keys)
    if (std::ranges::find(groups, key.Group) == groups.end()) groups.push_back(key.Group);
  return groups;
}

const PlotTemplateFormat& TemplateFormat2D() {
  static const PlotTemplateFormat format = {
      "qv2",   "2D Template files (*.qv2)", "template2d", "qv3", "You cannot apply a 3D Template to a 2D Plot.",
      Keys2D()};
  return format;
}

const PlotTemplateFormat& TemplateFormat3D() {
  static const PlotTemplateFormat format = {
      "qv3",   "3D Template files (*.qv3)", "template3d", "qv2", "You cannot apply a 2D Template to a 3D Plot.",
      Keys3D()};
  return format;
}

const PlotTemplateFormat& TemplateFormatOf(const PlotPage& plot) {
  return dynamic_cast<const PlotClass3D*>(&plot) != nullptr ? TemplateFormat3D() : TemplateFormat2D();
}

}  // namespace quorvex
