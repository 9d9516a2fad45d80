#include "plot/PageFields.h"
#include "plot/PlotSwitches.h"
#include "plot3d/MeshBands.h"
#include "plot3d/PlotClass3D.h"

namespace quorvex {
namespace {

using enum FieldKind;

PropertyField GridField(const std::string& control, const std::string& label, bool& place) {
  return {.Control = control, .Label = label, .Kind = Flag, .Place = &place};
}

// With the planes on which it has grids.
FieldPage AxisPage(BoxAxis& axis, const std::string& title, const std::string& name, const std::string& first,
                   const std::string& second) {
  return {title,
          {ScaleGroup(axis, name, "Negative or zero " + name + " values cannot be plotted on Log scale."),
           {.Title = first + " plane",
            .Fields = {GridField("DisplayMajor_check" + name + "1", "Grid at ma&jor ticks", axis.Grids[0].Major),
                       GridField("DisplayMinor_check" + name + "1", "G&rid at minor ticks", axis.Grids[0].Minor)}},
           {.Title = second + " plane",
            .Fields = {GridField("DisplayMajor_check" + name + "2", "&Grid at major ticks", axis.Grids[1].Major),
                       GridField("DisplayMinor_check" + name + "2", "Grid at minor tic&ks", axis.Grids[1].Minor)}},
           {.Title = "Ticks",
            .Fields = {{.Control = "TickColor_command" + name,
                        .Label = "Color of tick&s and grids:",
                        .Kind = Color,
                        .Place = &axis.TickColor}}}}};
}

PropertyField DivisionsField(const std::string& direction, const std::string& label, std::int16_t& points) {
  const std::string what = "surface mesh " + direction + " divisions";
  PropertyField field = NumberField(direction + "PixelEvery_text", label, &points, 2, 99,
                                    "The number of " + what + " must be in the range (2-99).");
  field.NotANumber = "Please enter a valid number for the " + what + ".";
  return field;
}

PropertyField AngleField(const std::string& control, const std::string& label, double& angle, int most,
                         const std::string& plane) {
  return NumberField(
      control, label, &angle, 0, most,
      "Please enter a valid number for the " + plane + " plane viewpoint (0 - " + std::to_string(most) + ").");
}

std::vector<PropertyField> PlaneFields(BoxPlane& plane, const std::string& axes, const std::string& label) {
  return {{.Control = "ShadeBox" + axes, .Label = label, .Kind = Flag, .Place = &plane.Shade},
          {.Control = "Box" + axes + "Color",
           .Label = "Color of the " + axes + " plane",
           .Kind = Color,
           .Place = &plane.Color,
           .Beside = true}};
}

FieldGroup PlaneGroup(PlotClass3D& plot) {
  FieldGroup group{.Title = "Shaded planes", .Fields = {}};
  for (auto [plane, axes, label] : {std::tuple{&plot.BoxXY, "X1-X2", "X1-X2, &bottom"},
                                    {&plot.BoxYZ, "X2-Y", "X2-Y, &side"},
                                    {&plot.BoxXZ, "X1-Y", "&X1-Y, back"}})
    for (PropertyField& field : PlaneFields(*plane, axes, label)) group.Fields.push_back(std::move(field));
  return group;
}

std::vector<const char*> SchemeNames() {
  std::vector<const char*> names;
  for (const MeshSchemeRow& row : kMeshSchemeRows) names.push_back(row.Name);
  return names;
}

// What each of the colour schemes looks like, but for the one that has no bands.
std::vector<std::vector<std::int32_t>> SchemeSwatches() {
  constexpr int kBands = 12;
  std::vector<std::vector<std::int32_t>> swatches(kMeshSchemes);
  for (int scheme = 0; scheme < kMeshSchemes; ++scheme)
    if (scheme != kTrueColorScheme) swatches[static_cast<std::size_t>(scheme)] = BandColours(kBands, scheme);
  return swatches;
}

FieldGroup ShadingGroup(PlotClass3D& plot) {
  std::vector<std::int32_t*> baseColors;
  for (PlotSeries& series : plot.PlotData)
    if (series.Model() != nullptr) baseColors.push_back(&series.Style().ShadeColor);
  return {
      .Title = "3D Surface Shading",
      .Fields =
          {{.Control = "ckShadeByValue",
            .Label = "Shade surfaces by &value",
            .Kind = Flag,
            .Place = &plot.ShadeMeshByValue},
           {.Control = "optColorScheme",
            .Label = "Color sche&me:",
            .Kind = Choice,
            .Place = &plot.MeshColorScheme,
            .Choices = SchemeNames(),
            .Swatches = SchemeSwatches()},
           {.Control = "cmdColor",
            .Label = "&Base color of True color:",
            .Kind = Color,
            .Place = baseColors,
            .Hint = "Smooth (requires true color display)"},
           {.Control = "optScale",
            .Label = "&Range of the colors:",
            .Kind = Choice,
            .Place = &plot.UseAxisScale,
            .Choices = {"Scale to Data", "Scale to Axis"}},
           RangeField("txtNumContours", "&Number of contours:", &plot.MeshContourDensity, 2, 50,
                      "The number of contours"),
           {.Control = "ckDisplayLine",
            .Label = "Show contour &lines",
            .Kind = Flag,
            .Place = &plot.DisplayContourLines},
           {.Control = "cmdContourColor", .Label = "Con&tour color:", .Kind = Color, .Place = &plot.ContourPenColor},
           {.Control = "cmdContourStyle",
            .Label = "Contour &style:",
            .Kind = LineStyle,
            .Place = &plot.ContourPenStyle},
           RangeField("cmbContourWidth", "Contour &width:", &plot.ContourPenWidth, 1, 5, "The Contour Width")},
      .Dialog = FieldGroup::DialogNames{"frmContour", "cmdShading", "S&hading and contours..."}};
}

FieldPage SurfacePage(PlotClass3D& plot) {
  const FieldGroup surfaces{.Title = "Surfaces",
                            .Fields = {DivisionsField("X", "X1 divisi&ons:", plot.XPointsPerPlot),
                                       DivisionsField("Y", "X2 d&ivisions:", plot.YPointsPerPlot),
                                       {.Control = "plotinfitted_check",
                                        .Label = "Surfaces at fitted poi&nts only",
                                        .Kind = Flag,
                                        .Place = &plot.PlotAtFittedOnly},
                                       {.Control = "ckExtrapolate",
                                        .Label = "Extrapolate surfaces to the axi&s limits",
                                        .Kind = Flag,
                                        .Place = &plot.Extrapolate}}};
  const FieldGroup bars{
      .Title = "Error and residual bars",
      .Fields = {
          {.Control = "ErrorColorAbove", .Label = "Color a&bove:", .Kind = Color, .Place = &plot.ErrorColorAbove},
          {.Control = "ErrorColorBelow", .Label = "Color belo&w:", .Kind = Color, .Place = &plot.ErrorColorBelow},
          {.Control = "ErrorColorStyle",
           .Label = "Line of the ba&rs:",
           .Kind = LineStyle,
           .Place = &plot.ErrorColorStyle}}};
  return {"S&urface", {surfaces, ShadingGroup(plot), bars}};
}

}  // namespace

std::vector<FieldPage> PlotClass3D::Fields() {
  const FieldGroup view{
      .Title = "View",
      .Fields = {AngleField("XYAngle_text", "X1-X2 vie&w angle:", xyDegrees_, 360, "X1-X2"),
                 AngleField("ZAngle_text", "X1-Y view angle (&0 to 180):", zDegrees_, 180, "X1-Y"),
                 {.Control = "ckMakeSquare", .Label = "S&quare picture", .Kind = Flag, .Place = &Make3DSquare}}};
  return {TitlePage(*this, {"X1", "X2", "Y"}),
          AxisPage(X, "X&1 Axis", "X1", "X1-X2", "X1-Y"),
          AxisPage(Y, "X&2 Axis", "X2", "X1-X2", "X2-Y"),
          AxisPage(Z, "&Y Axis", "Y", "X1-Y", "X2-Y"),
          SurfacePage(*this),
          SeriesPage(),
          LegendPage(*this),
          FootNotePage(*this),
          {"&Page", {view, PlaneGroup(*this), PenGroup(*this)}}};
}

std::vector<PropertyField> PlotClass3D::SeriesFields(PlotSeries& series) const {
  SeriesStyle& style = series.Style();
  const bool isModel = series.Model() != nullptr;
  std::vector<PropertyField> fields = LineFields(style, 5, isModel || HasErrorBars(series));
  fields.push_back({.Control = "ShadeMesh",
                    .Label = "S&hade the surface",
                    .Kind = Flag,
                    .Place = &style.ShadeMesh,
                    .Applies = isModel});
  fields.push_back({.Control = "ShadeColor",
                    .Label = "Surface color",
                    .Kind = Color,
                    .Place = &style.ShadeColor,
                    .Beside = true,
                    .Applies = isModel});
  return fields;
}

}  // namespace quorvex
