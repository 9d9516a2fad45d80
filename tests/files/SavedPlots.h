#pragma once

#include <memory>
#include <string>
#include <vector>

#include "engine/Points.h"
#include "engine/UserModel.h"
#include "equation/Catalogue.h"
#include "plot/PlotClass.h"
#include "plot3d/PlotClass3D.h"

namespace quorvex {

// Gives each field of a plot a value of its own, so that two that change places show.
inline void FillIn(PlotPage& plot) {
  int number = 0;
  const auto font = [&](PlotFont& field, std::int32_t& color) {
    field = {"Font" + std::to_string(++number), number + 4.5, number % 2 == 0, number % 2 == 1};
    color = 0x010203 * number;
  };
  for (PlotAxis* axis : plot.Axes()) {
    font(axis->AxisTitleFont, axis->AxisTitleColor);
    font(axis->AxisNumberFont, axis->AxisNumberColor);
    axis->AxisTitle = "Axis ~>" + std::to_string(number) + "~>, \"in\" mm";
    axis->LabelString = "0.0##" + std::string(static_cast<std::size_t>(number), '#');
    axis->NumMajorTicks = static_cast<std::int16_t>(number + 3);
    axis->NumMinorTicks = static_cast<std::int16_t>(number + 1);
    axis->Min = -0.5 * number;
    axis->Max = 3 + number / 3.0;
  }
  font(plot.PlotLegendFont, plot.PlotLegendColor);
  font(plot.PlotTitleFont, plot.PlotTitleColor);
  font(plot.FootNoteFont, plot.FootNoteColor);
  plot.PlotTitle = "A title\r\nof \xC3\xA4 plot";
  plot.PlotBackgroundColor = 0xF0FFFF;
  for (PlotBox* box : {&plot.Legend, &plot.FootNote}) {
    box->Show = box->ShowShadow = true;
    box->BorderWidth = box == &plot.Legend ? 2 : 3;
    box->BorderColor = 0x112233 * box->BorderWidth;
    box->AreaColor = 0x0A0B0C * box->BorderWidth;
    box->AreaType = 1;
    box->Top = 10.1F * static_cast<float>(box->BorderWidth);
    box->Left = 30.3F * static_cast<float>(box->BorderWidth);
  }
  plot.FootNoteText = "First line\r\nsecond, \"quoted\"";
  plot.FootNoteAlign = 1;
  plot.TickPenWidthMajor = 4;
  plot.TickPenColor = 0x806040;
  plot.TickPenLength = 0.1F;
  plot.Extrapolate = true;
  plot.InitPlotWidth = 640;
  plot.InitPlotHeight = 480;
}

inline SeriesStyle Style(const std::string& legend, int number) {
  return {.LegendText = legend,
          .DisplayLine = true,
          .DisplayMarker = true,
          .DrawStyle = 1 + number % 4,
          .DrawWidth = 2 + number,
          .DrawColor = 0x100000 + number,
          .MarkerStyle = 1 + number,
          .MarkerColor = 0x002000 + number,
          .MarkerSize = 6 + number,
          .ShowErrorBars = true,
          .ShadeMesh = true,
          .ShadeColor = 0x000030 + number};
}

// As if it were solved with these points.
inline PlotSeries Solved(std::unique_ptr<ModelClass> model, const SolveData& points, const SeriesStyle& style) {
  model->SetIC(points);
  for (int i = 1; i <= model->NumDependentVar(); ++i) {
    model->SetValue(i, i / 3.0);
    model->SetCovariance(i, i * 0.25);
  }
  model->Solved = model->ErrorInfo = true;
  model->Description = "Model \"" + model->id + "\"";
  PlotSeries series(std::move(model));
  series.Style() = style;
  return series;
}

inline std::unique_ptr<ModelClass> BuiltIn(const std::string& id, int variables, const LocaleText& locale) {
  auto model = NewModelFor(static_cast<std::size_t>(variables), locale);
  model->SetBuiltIn(*LookupBuiltInModel(id, variables));
  return model;
}

// The style of a series in space, where markers have the colour of lines.
inline SeriesStyle InSpace(SeriesStyle style) {
  style.MarkerColor = style.DrawColor;
  return style;
}

inline PlotSeries DataSeries(const SolveData& points, const std::vector<double>& deviations, const SeriesStyle& style) {
  DataClass data;
  data.id = "data";
  data.Description = "Some data";
  data.GenerateTable(points.X, points.Y);
  data.GenerateErrorTable(deviations);
  return {std::move(data), style};
}

// A plot of two dimensions with a series of each kind.
inline std::unique_ptr<PlotClass> FullPlot2D(const LocaleText& locale = {}) {
  auto plot = std::make_unique<PlotClass>(Settings(), locale);
  FillIn(*plot);
  plot->X.ShowMajorGrids = plot->X.ShowExtraTicks = plot->Y.ShowMinorGrids = true;
  plot->X.Min = 0.125;
  plot->Y.LogScale = true;
  plot->Y.Min = 0.1;
  plot->TickPenWidthMinor = 3;
  plot->AxisWidth = 5;
  plot->MajorGridLineStyle = 2;
  plot->MinorGridLineStyle = 4;
  plot->PointsPerPlot = 17;
  plot->SwapAxis = plot->Make2DSquare = true;

  const SolveData points = Points({{0.25, 1, 1.5, 3}}, {1, 2.5, 1.0 / 3, 4});
  plot->PlotData.push_back(DataSeries(points, {0.1, 0.2, 0.3, 0.4}, Style("Data", 0)));
  plot->PlotData.push_back(DataSeries(points, {}, Style("", 1)));
  plot->PlotData.push_back(Solved(BuiltIn("a*x+b", 1, locale), points, Style("Line", 2)));
  plot->PlotData.push_back(Solved(
      CompileModel("Mine", {LocalizeExpression("a*f1+0.5+xmean", locale), LocalizeExpression("x^max(0.5,b)", locale)},
                   1, locale),
      points, Style("Mine", 3)));
  InterpClass spline;
  std::string log;
  spline.Fit(points, log);
  plot->PlotData.emplace_back(std::move(spline));
  plot->PlotData.back().Style() = Style("Spline", 4);
  return plot;
}

// One of three dimensions.
inline std::unique_ptr<PlotClass3D> FullPlot3D(const LocaleText& locale = {}) {
  auto plot = std::make_unique<PlotClass3D>(Settings(), locale);
  FillIn(*plot);
  plot->X.Grids = {{{true, false}, {false, true}}};
  plot->Y.Grids = {{{false, true}, {true, false}}};
  plot->Z.Grids = {{{true, true}, {false, false}}};
  for (int number = 1; BoxAxis * axis : {&plot->X, &plot->Y, &plot->Z}) axis->TickColor = 0x000700 + number++;
  plot->XPointsPerPlot = 7;
  plot->YPointsPerPlot = 9;
  plot->TickPenstyle = 3;
  plot->UpdateViewAngle(123.25, 40.5);
  plot->BoxXY = {true, 0x00C0C1};
  plot->BoxYZ = {false, 0x00C0C2};
  plot->BoxXZ = {true, 0x00C0C3};
  plot->MeshColorScheme = 5;
  plot->DisplayContourLines = plot->UseAxisScale = plot->Make3DSquare = true;
  plot->MeshContourDensity = 12;
  plot->ContourPenColor = 0x0000D1;
  plot->ContourPenWidth = 2;
  plot->ContourPenStyle = 3;
  plot->ErrorColorAbove = 0x0000E1;
  plot->ErrorColorBelow = 0x0000E2;
  plot->ErrorColorStyle = 1;

  const SolveData points = Points({{0.25, 1, 1.5, 3}, {-1, 0.5, 2, 1}}, {1, 2.5, 1.0 / 3, 4});
  plot->PlotData.push_back(DataSeries(points, {0.1, 0.2, 0.3, 0.4}, InSpace(Style("Data", 0))));
  plot->PlotData.push_back(Solved(CompileModel("Mine", {LocalizeExpression("a*x1+b*x2*x2+0.5", locale)}, 2, locale),
                                  points, InSpace(Style("Surface", 1))));
  plot->PlotData.push_back(Solved(BuiltIn("a+b*x1+c*x2", 2, locale), points, InSpace(Style("Plane", 2))));
  return plot;
}

}  // namespace quorvex
