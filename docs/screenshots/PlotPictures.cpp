// Draws the pictures of docs/plots.md:
//   plot_pictures FOLDER SUFFIX [dark]
// The plots, once, and their window, in each scale (QT_SCALE_FACTOR) and palette. And the plots alone as files of a
// kind, each beside its PNG file, for a look at what other programs make of them:
//   plot_pictures FOLDER as ENDING

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPainter>
#include <array>
#include <cmath>
#include <iostream>
#include <memory>
#include <numbers>

#include "DarkPalette.h"
#include "SurfacePictures.h"
#include "app/ui/ContrastStyle.h"
#include "core/ui/MessageBoxPrompter.h"
#include "drawing/ui/QtSurface.h"
#include "files/ui/Dataplot.h"
#include "results/PlotPoints.h"
#include "results/ResultPlots.h"
#include "sheet/ComputeWeights.h"
#include "solve/SolvedList.h"

namespace quorvex {
namespace {

constexpr std::int32_t kBlack = 0, kBlue = 0xB40000, kRed = 0x1E1EC8, kGreen = 0x288C14, kOrange = 0x147DF0,
                       kViolet = 0x96328C, kPaper = 0xE6FAFF;

// Where there is nobody to press OK.
class ErrorPrompter : public MessageBoxPrompter {
 public:
  ErrorPrompter() : MessageBoxPrompter(nullptr) {}
  void Refuse(const std::string& text) override { std::cerr << text << '\n'; }
  void Inform(const std::string&) override {}
};

PlotSeries Series(int count, double (*x)(double), double (*y)(double), std::int32_t colour, const std::string& legend) {
  std::vector<double> xs, ys;
  for (int i = 0; i < count; ++i) {
    const double part = count > 1 ? i / (count - 1.0) : 0;
    xs.push_back(x(part));
    ys.push_back(y(part));
  }
  DataClass series;
  series.GenerateTable({std::move(xs)}, std::move(ys));
  return {std::move(series), {.LegendText = legend, .DrawColor = colour, .MarkerColor = colour}};
}

PlotSeries Markers(PlotSeries series, int style, int size = 7) {
  SeriesStyle& look = series.Style();
  look.DisplayLine = false;
  look.DisplayMarker = true;
  look.MarkerStyle = style;
  look.MarkerSize = size;
  return series;
}

PlotSeries Line(PlotSeries series, int style, int width) {
  series.Style().DrawStyle = style;
  series.Style().DrawWidth = width;
  return series;
}

double Ten(double part) { return 10 * part; }

PlotClass NewPlot(const char* title, const char* x, const char* y) {
  PlotClass plot{Settings{}};
  plot.PlotTitle = title;
  plot.PlotTitleFont = {"Arial", 13, true, false};
  plot.X.AxisTitle = x;
  plot.Y.AxisTitle = y;
  plot.PlotBackgroundColor = 0xFFFFFF;
  return plot;
}

PlotClass LineStyles() {
  PlotClass plot = NewPlot("Line styles, widths 1, 2, 3, 5 and 8", "X", "Y");
  double level = 0;
  for (const int width : {1, 2, 3, 5, 8})
    for (int style = 0; style <= 4; ++style) {
      std::vector<double> xs, ys;
      for (int i = 0; i <= 60; ++i) {
        xs.push_back(i / 6.0);
        ys.push_back(level + 0.7 * std::sin(i / 6.0));
      }
      DataClass series;
      series.GenerateTable({std::move(xs)}, std::move(ys));
      const auto number = static_cast<std::size_t>(style);
      const char* legend = width == 3 ? std::array{"solid", "dash", "dot", "dash-dot", "dash-dot-dot"}[number] : "";
      const std::int32_t colour = std::array{kBlack, kBlue, kRed, kGreen, kViolet}[number];
      plot.PlotData.push_back(Line({std::move(series), {.LegendText = legend, .DrawColor = colour}}, style, width));
      level += style < 4 ? 0.8 + 0.15 * width : 2.5;
    }
  plot.X.Min = 0;
  plot.X.Max = 10;
  plot.Y.Min = -5;
  plot.Y.Max = 55;  // room for the legend
  plot.Y.NumMajorTicks = 12;
  return plot;
}

PlotClass MarkerStyles() {
  PlotClass plot = NewPlot("Markers 0 to 9, sizes 4, 7, 10 and 14 points", "Style", "Size in points");
  for (int style = 0; style <= 9; ++style)
    for (const int size : {4, 7, 10, 14}) {
      DataClass series;
      series.GenerateTable({{1.0 * style}}, {1.0 * size});
      plot.PlotData.push_back(Markers({std::move(series), {.MarkerColor = style < 6 ? kBlue : kRed}}, style, size));
    }
  plot.X.Min = -1;
  plot.X.Max = 10;
  plot.X.NumMajorTicks = 11;
  plot.X.NumMinorTicks = 0;
  plot.Y.Min = 0;
  plot.Y.Max = 16;
  plot.Y.NumMajorTicks = 8;
  plot.Y.NumMinorTicks = 2;
  return plot;
}

PlotClass SwappedAxes() {
  PlotClass plot = NewPlot("Axes swapped: depth runs upward", "Depth, m", "Temperature, ~>o~>C");
  plot.SwapAxis = true;
  const auto temperature = [](double part) { return 4 + 14 / (1 + std::exp(12 * (0.6 - part))); };
  plot.PlotData.emplace_back(Line(Series(
                                      100, [](double part) { return -50 + 50 * part; }, temperature, kGreen, "T(z)"),
                                  0, 2));
  plot.PlotData.emplace_back(Markers(Series(
                                         11, [](double part) { return -50 + 50 * part; }, temperature, kGreen, "probe"),
                                     1));
  return plot;
}

PlotClass SquareFrame() {
  PlotClass plot = NewPlot("A square frame", "x", "y");
  plot.Make2DSquare = true;
  constexpr double kTurn = 2 * std::numbers::pi;
  plot.PlotData.emplace_back(Line(Series(
                                      400, [](double part) { return std::sin(3 * kTurn * part); },
                                      [](double part) { return std::cos(2 * kTurn * part + 0.5); }, kViolet, "3 : 2"),
                                  0, 2));
  plot.PlotData.emplace_back(Line(Series(
                                      200, [](double part) { return std::sin(kTurn * part); },
                                      [](double part) { return std::cos(kTurn * part); }, kOrange, "circle"),
                                  1, 2));
  plot.AxisWidth = 2;
  plot.Legend.Show = false;
  return plot;
}

PlotClass Scripts() {
  PlotClass plot = NewPlot("C~<12~<H~<22~<O~<11~< + SO~<4~<~>2-~>: k~<max~<~>(2)~> over 1/T~>2~>",
                           "\u03D1~>-2~>, 10~>-6~> K~>-2~>, f\u00FCr \u03B1-Fe~<2~<O~<3~<",
                           "k~<max~<~>(2)~>, \u00B5m~>3~> mol~>-1~> s~>-1~>");
  plot.PlotTitleFont.Size = 16;
  for (PlotAxis* axis : {&plot.X, &plot.Y}) axis->AxisTitleFont.Size = 13;
  plot.PlotData.emplace_back(
      Line(Series(
               50, Ten, [](double part) { return std::exp(-2 * part); }, kBlue, "e~>-2x~> with x~<i~<~>2~> = i"),
           3, 2));
  return plot;
}

PlotClass SlantedNumbers() {
  PlotClass plot = NewPlot("Numbers that would crowd the axis slant", "Time, s", "Counts");
  plot.PlotData.emplace_back(Series(
      120, [](double part) { return 1e6 + 1e6 * part; }, [](double part) { return 900 * part * (1 - part); }, kRed,
      "counter"));
  plot.X.LabelString = "0.00000E+00";
  return plot;
}

PlotClass Boxes() {
  PlotClass plot = NewPlot("Legend and footnote with shadow", "Time, h", "Activity, kBq");
  const char* names[] = {"~>131~>I", "~>99m~>Tc", "~>18~>F", "~>11~>C"};
  const std::int32_t colours[] = {kBlue, kRed, kGreen, kViolet};
  double (*curves[])(double) = {
      [](double part) { return 90 * std::exp(-0.1 * part); }, [](double part) { return 80 * std::exp(-1.2 * part); },
      [](double part) { return 70 * std::exp(-4 * part); }, [](double part) { return 60 * std::exp(-20 * part); }};
  for (int i = 0; i < 4; ++i) {
    plot.PlotData.push_back(Line(Series(25, Ten, curves[i], colours[i], names[i]), i + 1, i + 1));
    SeriesStyle& look = plot.PlotData.back().Style();
    look.DisplayMarker = i % 2 == 0;
    look.MarkerStyle = 6 + i;
    look.MarkerSize = 6;
  }
  plot.FootNote.Show = true;
  plot.FootNoteText = "Activities at the time of calibration.\r\nDecay corrected to the start.";
  for (PlotBox* box : {&plot.Legend, &plot.FootNote}) {
    box->ShowShadow = true;
    box->AreaType = 1;
    box->AreaColor = kPaper;
  }
  plot.FootNote.BorderWidth = 2;
  plot.FootNote.BorderColor = kBlue;
  plot.InitPlotWidth = 640;
  plot.InitPlotHeight = 440;
  plot.Legend.Left = 470;
  plot.Legend.Top = 150;
  plot.FootNote.Left = 330;
  plot.FootNote.Top = 60;
  return plot;
}

const struct {
  const char* Name;
  PlotClass (*Make)();
} kPlots[] = {{"line-styles", LineStyles},
              {"markers", MarkerStyles},
              {"swapped-axes", SwappedAxes},
              {"square", SquareFrame},
              {"scripts", Scripts},
              {"slanted", SlantedNumbers},
              {"boxes", Boxes}};

bool TakePlots(const QString& folder, const QStringList& endings, Prompter& prompter) {
  for (const auto& [name, make] : kPlots) {
    PlotClass plot = make();
    if (!plot.CreateGraph({}, prompter)) return false;
    for (const QString& ending : endings)
      if (!SavePlotPicture(plot, {640, 440}, (folder + '/' + name + '.' + ending).toStdString(), prompter))
        return false;
  }
  return true;
}

// The window while the coordinates of a point are read.
bool TakeWindow(const QString& folder, const QString& suffix, Prompter& prompter) {
  Settings settings;
  PlotClass plot = Boxes();
  if (!plot.CreateGraph({}, prompter)) return false;
  Dataplot window(PlotDocument(std::make_unique<PlotClass>(std::move(plot)), settings, prompter));
  window.resize(640, 480);
  window.show();
  QApplication::processEvents();
  window.findChild<QAction*>("mnuPlotShowCoords")->trigger();
  const SeriesTable table = window.Plot().PlotData[2].CopyDataTo();
  const PlotPicture& shown = window.Plot().Shown();
  const QPointF at = QPointF(shown.Horizontal.ToDevice(table.X[6]), shown.Vertical.ToDevice(table.Y[6])) /
                     (window.View().devicePixelRatioF() * QtSurface::kUnitsPerPixel);
  QMouseEvent move(QEvent::MouseMove, at, at, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(&window.View(), &move);
  window.grab().save(folder + "/window" + suffix + ".png");
  return true;
}

// Data with error bars and the curves of several solutions, as the Plot menu shows them, and the menu for the axes.
bool TakeSolutions(const QString& folder, const QString& suffix, Prompter& prompter) {
  // Optical density over concentration in an assay of DNase: means of eleven runs and their standard deviations.
  constexpr double kAssay[][3] = {{0.04882812, 0.05331818, 0.02756358}, {0.1953125, 0.1509545, 0.02429085},
                                  {0.390625, 0.2397273, 0.02628268},    {0.78125, 0.4067727, 0.02755243},
                                  {1.5625, 0.6663182, 0.03057604},      {3.125, 1.037727, 0.03789985},
                                  {6.25, 1.428591, 0.06917036},         {12.5, 1.769864, 0.08462258}};
  Settings settings;
  Project project = NewProject(1, true, {});
  for (std::size_t row = 0; const auto& point : kAssay) {
    ++row;
    for (std::size_t col = 1; col <= 3; ++col) project.Sheet.Cells.SetGridCellNumber(row, col, point[col - 1]);
  }
  project.Sheet.Headers = {"Concentration", "Optical density", "SD"};
  const auto points = SheetPoints(project.Sheet);
  if (!points) return false;
  SolveData data = points->Points;
  data.sig = ComputeWeights(data.SD);
  std::string log;
  SolveForm form;
  for (const char* name : {"a*x+b", "a*x^2+b*x+c", "First order logarithm", "Second order logarithm"}) {
    ModelClass* model = project.Models.Find(name);
    if (model == nullptr) return false;
    model->SolveType = 1;  // linear
    if (!model->Fit(data, settings, log, form)) return false;
  }
  std::vector<std::string> left;
  Result<PlotClass> plot = SolutionsPlot(SolvedItems(project, kSortByRSS), data, points->Titles[0], points->Titles[1],
                                         settings, project.Locale, left);
  if (!plot || !plot->CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, prompter)) return false;
  Dataplot window(PlotDocument(std::make_unique<PlotClass>(std::move(*plot)), settings, prompter));
  window.resize(760, 520);
  window.show();
  QApplication::processEvents();
  for (const char* name : {"ShowXMajorGrids", "ShowYMajorGrids"}) window.findChild<QAction*>(name)->trigger();
  window.grab().save(folder + "/solutions" + suffix + ".png");

  auto* bar = window.findChild<QMenuBar*>();
  QAction* view = bar->actions().last();
  bar->setActiveAction(view);
  QApplication::processEvents();
  QPixmap picture = window.grab();
  QPainter(&picture).drawPixmap(bar->actionGeometry(view).bottomLeft(), view->menu()->grab());
  picture.save(folder + "/view-menu" + suffix + ".png");
  view->menu()->close();
  return true;
}

}  // namespace
}  // namespace quorvex

int main(int argc, char** argv) {
  using namespace quorvex;
  const QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 3) return EXIT_FAILURE;
  QApplication::setStyle(new ContrastStyle);
  const bool dark = arguments.contains("dark");
  if (dark) QApplication::setPalette(DarkPalette());
  ErrorPrompter prompter;
  const QString &folder = arguments[1], &suffix = arguments[2];
  const bool otherFiles = suffix == "as" && arguments.size() > 3;
  const QStringList endings = otherFiles ? QStringList{"png", arguments[3]} : QStringList{"png"};
  if (!dark && !(TakePlots(folder, endings, prompter) && TakeSurfaces(folder, endings, prompter))) return EXIT_FAILURE;
  if (otherFiles) return EXIT_SUCCESS;
  return TakeWindow(folder, suffix, prompter) && TakeSolutions(folder, suffix, prompter) &&
                 TakeSurfaceWindow(folder, suffix, prompter)
             ? EXIT_SUCCESS
             : EXIT_FAILURE;
}
