#include "plot/PageFields.h"
#include "plot/PlotClass.h"
#include "plot/PlotSwitches.h"

namespace quorvex {
namespace {

FieldPage AxisPage(FrameAxis& axis, const std::string& name) {
  using enum FieldKind;
  return {'&' + name + " Axis",
          {ScaleGroup(axis, name, "Negative or zero values cannot be plotted on Log scale."),
           {.Title = "Grid and ticks",
            .Fields = {{.Control = "DisplayMajor_check" + name,
                        .Label = "Grid at ma&jor ticks",
                        .Kind = Flag,
                        .Place = &axis.ShowMajorGrids},
                       {.Control = "DisplayMinor_check" + name,
                        .Label = "G&rid at minor ticks",
                        .Kind = Flag,
                        .Place = &axis.ShowMinorGrids},
                       {.Control = "DisplayExtra_check" + name,
                        .Label = "Tic&ks on both sides",
                        .Kind = Flag,
                        .Place = &axis.ShowExtraTicks}}}}};
}

}  // namespace

std::vector<FieldPage> PlotClass::Fields() {
  using enum FieldKind;
  const FieldGroup curves{
      .Title = "Curves and frame",
      .Fields = {
          NumberField("PixelEvery_text", "Num&ber of curve points:", &PointsPerPlot, 3, 5000,
                      "The number of calculated points for continuous curves must be in the range of (3 - 5000)."),
          {.Control = "plotinfitted_check",
           .Label = "Curves at fitted points &only",
           .Kind = Flag,
           .Place = &PlotAtFittedOnly},
          {.Control = "ckExtrapolate",
           .Label = "Extrapolate curves to the axi&s limits",
           .Kind = Flag,
           .Place = &Extrapolate},
          {.Control = "ckMakeSquare", .Label = "S&quare frame", .Kind = Flag, .Place = &Make2DSquare},
          {.Control = "ckSwapAxis", .Label = "S&wap axes", .Kind = Flag, .Place = &SwapAxis}}};
  return {TitlePage(*this, {"X", "Y"}),
          AxisPage(X, "X"),
          AxisPage(Y, "Y"),
          SeriesPage(),
          LegendPage(*this),
          FootNotePage(*this),
          {"&Page", {curves, PenGroup(*this)}}};
}

std::vector<PropertyField> PlotClass::SeriesFields(PlotSeries& series) const {
  using enum FieldKind;
  std::vector<PropertyField> fields = LineFields(series.Style(), 10, HasErrorBars(series));
  const bool hasBands = series.MayHaveBands();
  fields.push_back({.Control = "cmboBands",
                    .Label = "Bands aro&und the curve:",
                    .Kind = Choice,
                    .Place = &series.Style().Bands,
                    .Choices = {"None", "Confidence", "Prediction", "Confidence and prediction"},
                    .Applies = hasBands});
  fields.push_back({.Control = "cmboBandLevel",
                    .Label = "T&heir level:",
                    .Kind = Choice,
                    .Place = &series.Style().BandLevel,
                    .Choices = {"68%", "90%", "95%", "99%"},
                    .Applies = hasBands});
  return fields;
}

}  // namespace quorvex
