// Redrawing a plot on a picture of 1600 by 1000 pixels, as its window does: axes, numbers, curves and surfaces.

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <cmath>
#include <cstdlib>

#include "RecordingPrompter.h"
#include "Workloads.h"
#include "drawing/ui/QtSurface.h"
#include "engine/MvClass.h"
#include "plot/PlotClass.h"
#include "plot3d/PlotClass3D.h"

namespace quorvex {
namespace {

void Redraw(benchmark::State& state, PlotPage& plot) {
  RecordingPrompter prompter;
  if (!plot.CreateGraph({.Regenerate = true}, prompter)) return state.SkipWithError("the plot cannot be created");
  constexpr int kPerMetre = 3780;  // 96 to the inch
  QImage picture(1600, 1000, QImage::Format_RGB32);
  picture.setDotsPerMeterX(kPerMetre);
  picture.setDotsPerMeterY(kPerMetre);
  for (auto _ : state) {
    QtSurface surface(picture);
    plot.RefreshPlot(surface, prompter);
  }
}

// A series of 65,536 points: a wave, or a wave in noise that goes up and down some forty times a pixel.
PlotSeries LongSeries(double noise) {
  constexpr int kPoints = 65536;
  bench::Random random(77);
  std::vector<double> x, y;
  for (int i = 0; i < kPoints; ++i) {
    x.push_back(i);
    y.push_back(std::sin(i / 3000.0) + noise * random.Normal());
  }
  DataClass series;
  series.GenerateTable({std::move(x)}, std::move(y));
  return {std::move(series), {.DrawColor = 0xB40000}};
}

void LongSeriesLine(benchmark::State& state, double noise, int width, int style) {
  PlotClass plot{Settings()};
  plot.PlotData.push_back(LongSeries(noise));
  plot.PlotData[0].Style().DrawWidth = width;
  plot.PlotData[0].Style().DrawStyle = style;
  Redraw(state, plot);
}

void LongSeriesMarkers(benchmark::State& state, int style) {
  PlotClass plot{Settings()};
  plot.PlotData.push_back(LongSeries(0.2));
  SeriesStyle& look = plot.PlotData[0].Style();
  look.DisplayLine = false;
  look.DisplayMarker = true;
  look.MarkerStyle = style;
  Redraw(state, plot);
}

// One for each built-in model of one variable, as when all of them are shown together.
void ManyCurves(benchmark::State& state, int width) {
  PlotClass plot{Settings()};
  for (int curve = 0; curve < 298; ++curve) {
    std::vector<double> x, y;
    for (int i = 0; i < 100; ++i) {
      x.push_back(0.1 * i);
      y.push_back((1 + curve * 0.01) * std::exp(-0.002 * curve * x.back()) + std::sin(x.back() + curve));
    }
    DataClass series;
    series.GenerateTable({std::move(x)}, std::move(y));
    plot.PlotData.emplace_back(std::move(series),
                               SeriesStyle{.DrawWidth = width, .DrawColor = curve * 0x00A013 & 0xFFFFFF});
  }
  Redraw(state, plot);
}

// Hills and valleys of 99 by 99 nodes, filled in one colour or by value.
void Surface(benchmark::State& state, bool byValue, std::int16_t scheme, std::int16_t bands, bool contours) {
  auto model = std::make_unique<MvClass>(LocaleText());
  model->SetID("model", {"a*sin(x1)*cos(x2/2)+b*x1"});
  model->SetIC({{{0, 5, 10}, {0, 10, 5}}, {-1, 0, 1}, {1, 1, 1}, {1, 1, 1}});
  model->SetValue(1, 1);
  model->SetValue(2, 0.1);
  PlotClass3D plot{Settings()};
  plot.XPointsPerPlot = plot.YPointsPerPlot = 99;
  plot.ShadeMeshByValue = byValue;
  plot.MeshColorScheme = scheme;
  plot.MeshContourDensity = bands;
  plot.DisplayContourLines = contours;
  plot.PlotData.emplace_back(std::move(model));
  plot.PlotData[0].Style() = {.DisplayLine = false, .ShadeMesh = 1, .ShadeColor = 0x00C8FF};
  Redraw(state, plot);
}

// 65,536 points in a box, with error bars or without.
void Scatter(benchmark::State& state, bool errorBars) {
  bench::Random random(77);
  std::vector<std::vector<double>> X(2);
  std::vector<double> Y, deviations;
  for (int i = 0; i < 65536; ++i) {
    for (std::vector<double>& x : X) x.push_back(random.Normal());
    Y.push_back(random.Normal());
    deviations.push_back(0.1);
  }
  DataClass series;
  series.GenerateTable(std::move(X), std::move(Y));
  series.GenerateErrorTable(std::move(deviations));
  PlotClass3D plot{Settings()};
  plot.PlotData.emplace_back(std::move(series),
                             SeriesStyle{.DisplayLine = false, .DisplayMarker = true, .ShowErrorBars = errorBars});
  Redraw(state, plot);
}

void EmptyPlot(benchmark::State& state) {
  PlotClass plot{Settings()};
  Redraw(state, plot);
}

BENCHMARK(EmptyPlot)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LongSeriesLine, smooth, 0, 1, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LongSeriesLine, smooth_wide, 0, 3, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LongSeriesLine, smooth_dashed, 0, 1, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LongSeriesLine, noisy, 0.2, 1, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LongSeriesLine, noisy_wide, 0.2, 3, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LongSeriesLine, noisy_dashed, 0.2, 1, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LongSeriesLine, noisy_dotted, 0.2, 1, 2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LongSeriesLine, noisy_dash_dot_dot, 0.2, 1, 4)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LongSeriesMarkers, circles, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LongSeriesMarkers, crosses, 2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LongSeriesMarkers, filled_circles, 6)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ManyCurves, thin, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ManyCurves, wide, 2)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Surface, filled, false, kSpectrumScheme, 10, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Surface, bands, true, kSpectrumScheme, 20, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Surface, contours, true, kSpectrumScheme, 20, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Surface, true_color, true, kTrueColorScheme, 20, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Scatter, points, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Scatter, error_bars, true)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvex

int main(int argc, char** argv) {
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  const QGuiApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return EXIT_SUCCESS;
}
