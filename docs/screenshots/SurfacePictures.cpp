#include "SurfacePictures.h"

#include <QApplication>
#include <QPainter>
#include <cmath>
#include <memory>
#include <random>

#include "drawing/ui/QtSurface.h"
#include "engine/MvClass.h"
#include "files/ui/Dataplot.h"
#include "plot3d/PlotClass3D.h"

namespace quorvex {
namespace {

constexpr std::int32_t kBlue = 0xB40000, kSky = 0xE6A050;

struct Range {
  double Least, Most;
};

// A grid of points with the values of a function.
SolveData Grid(Range x1, Range x2, int count, double (*value)(double, double)) {
  SolveData data;
  data.X.resize(2);
  for (int i = 0; i < count; ++i)
    for (int k = 0; k < count; ++k) {
      data.X[0].push_back(x1.Least + i * (x1.Most - x1.Least) / (count - 1));
      data.X[1].push_back(x2.Least + k * (x2.Most - x2.Least) / (count - 1));
      data.Y.push_back(value(data.X[0].back(), data.X[1].back()));
    }
  data.SD.assign(data.Y.size(), 1);
  data.sig = data.SD;
  return data;
}

PlotSeries Surface(const std::string& text, const std::vector<double>& coefficients, const SolveData& input) {
  auto model = std::make_unique<MvClass>(LocaleText());
  model->SetID(text, {text});
  model->SetIC(input);
  for (int i = 1; const double value : coefficients) model->SetValue(i++, value);
  PlotSeries series(std::move(model));
  series.Style().ShadeMesh = 1;
  series.Style().ShadeColor = kSky;
  series.Style().LegendText = "Y = " + text;
  return series;
}

PlotClass3D NewPlot(const char* title) {
  PlotClass3D plot{Settings()};
  plot.PlotTitle = title;
  plot.PlotTitleFont = {"Arial", 13, true, false};
  plot.PlotBackgroundColor = 0xFFFFFF;
  return plot;
}

double Saddle(double x, double y) { return x * x - y * y; }
double Hill(double x, double y) { return std::exp(-(x * x + y * y) / 2); }
double Ripples(double x, double y) { return std::cos(1.5 * x) * std::cos(y) * std::exp(-(x * x + y * y) / 8); }

PlotClass3D SaddlePlot() {
  PlotClass3D plot = NewPlot("A saddle with contour lines");
  plot.PlotData.push_back(Surface("x1^2-x2^2", {}, Grid({-2, 2}, {-2, 2}, 9, Saddle)));
  plot.DisplayContourLines = true;
  plot.ContourPenColor = 0x505050;
  plot.MeshColorScheme = 5;
  plot.BoxXY.Shade = plot.BoxYZ.Shade = plot.BoxXZ.Shade = true;
  plot.XPointsPerPlot = plot.YPointsPerPlot = 25;
  plot.Legend.Show = false;
  return plot;
}

PlotClass3D HillPlot() {
  PlotClass3D plot = NewPlot("A Gaussian hill, its data and residuals");
  SolveData data = Grid({-3, 3}, {-3, 3}, 11, Hill);
  std::mt19937 random(1);  // the same numbers everywhere, as none of the standard distributions has
  for (double& y : data.Y) y += 0.25 * (static_cast<double>(random()) / 4294967296.0 - 0.5);
  DataClass points;
  points.GenerateTable(data.X, data.Y);
  plot.PlotData.emplace_back(std::move(points), SeriesStyle{.LegendText = "Input Data",
                                                            .DisplayLine = false,
                                                            .DisplayMarker = true,
                                                            .MarkerStyle = 6,
                                                            .MarkerColor = kBlue});
  PlotSeries surface = Surface("a*exp(-(x1^2+x2^2)/b)", {1, 2}, data);
  surface.Style().ShowErrorBars = true;
  surface.Style().DrawWidth = 1;
  surface.Style().DrawColor = 0x804000;
  plot.PlotData.push_back(std::move(surface));
  plot.ShadeMeshByValue = false;
  return plot;
}

PlotClass3D MapPlot() {
  PlotClass3D plot = NewPlot("A contour map");
  plot.PlotData.push_back(Surface("cos(1.5*x1)*cos(x2)*exp(-(x1^2+x2^2)/8)", {}, Grid({-3, 3}, {-3, 3}, 41, Ripples)));
  plot.PlotData[0].Style().DisplayLine = false;
  plot.Make3DSquare = true;
  plot.XPointsPerPlot = plot.YPointsPerPlot = 99;
  plot.MeshContourDensity = 14;
  plot.MeshColorScheme = 7;
  plot.UpdateViewAngle(0, 90);
  return plot;
}

const struct {
  const char* Name;
  PlotClass3D (*Make)();
} kPlots[] = {{"saddle", SaddlePlot}, {"contour-map", MapPlot}};

bool Draw(PlotClass3D& plot, QImage& picture, Prompter& prompter) {
  QtSurface surface(picture);
  return plot.CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, prompter) &&
         plot.DrawGraph(surface, prompter);
}

// All schemes on one page.
bool TakeSchemes(const QString& file, Prompter& prompter) {
  constexpr int kAcross = 4, kWidth = 240, kHeight = 200;
  QImage page = BlankPicture({kAcross * kWidth, (kMeshSchemes + kAcross - 1) / kAcross * kHeight});
  QPainter painter(&page);
  for (int scheme = 0; scheme < kMeshSchemes; ++scheme) {
    PlotClass3D plot = HillPlot();
    plot.PlotData.erase(plot.PlotData.begin());
    plot.PlotData[0].Style().ShowErrorBars = plot.PlotData[0].Style().DisplayLine = false;
    plot.PlotTitle = kMeshSchemeRows[static_cast<std::size_t>(scheme)].Name;
    plot.PlotTitleFont.Size = 9;
    plot.ShadeMeshByValue = true;
    plot.MeshColorScheme = static_cast<std::int16_t>(scheme);
    for (BoxAxis* axis : {&plot.X, &plot.Y, &plot.Z}) axis->AxisTitle.clear();
    QImage picture = BlankPicture({kWidth, kHeight});
    if (!Draw(plot, picture, prompter)) return false;
    painter.drawImage(scheme % kAcross * kWidth, scheme / kAcross * kHeight, picture);
  }
  painter.end();
  return page.save(file);
}

}  // namespace

bool TakeSurfaces(const QString& folder, const QStringList& endings, Prompter& prompter) {
  for (const auto& [name, make] : kPlots) {
    PlotClass3D plot = make();
    if (!plot.CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, prompter)) return false;
    for (const QString& ending : endings)
      if (!SavePlotPicture(plot, {640, 480}, (folder + '/' + name + '.' + ending).toStdString(), prompter))
        return false;
  }
  return TakeSchemes(folder + "/schemes.png", prompter);
}

bool TakeSurfaceWindow(const QString& folder, const QString& suffix, Prompter& prompter) {
  Settings settings;
  PlotClass3D plot = HillPlot();
  plot.ShadeMeshByValue = true;
  if (!plot.CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, prompter)) return false;
  Dataplot window(PlotDocument(std::make_unique<PlotClass3D>(std::move(plot)), settings, prompter));
  window.resize(700, 560);
  window.show();
  QApplication::processEvents();
  return window.grab().save(folder + "/surface-window" + suffix + ".png");
}

}  // namespace quorvex
