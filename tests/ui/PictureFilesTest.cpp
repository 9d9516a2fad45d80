// Pictures of plots that leave the program, held against the screen as other programs show them.

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QProcess>
#include <QXmlStreamReader>
#include <cstdlib>

#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "drawing/ui/QtSurface.h"
#include "plot/Plots.h"
#include "plot/ui/PlotOutput.h"
#include "plot3d/Surfaces.h"

namespace quorvex {
namespace {

constexpr std::int32_t kBlue = 0xFF0000, kRed = 0x0000FF, kGreen = 0x008000, kMagenta = 0xFF00FF;

std::vector<double> Along(int count, double (*value)(double)) {
  std::vector<double> values;
  for (int i = 0; i < count; ++i) values.push_back(value(i / (count - 1.0)));
  return values;
}

// Curves of every style, a legend, a footnote, superscripts.
std::unique_ptr<PlotPage> Lines() {
  PlotClass plot{Settings()};
  plot.PlotTitle = "Lines & <styles>: C~<12~<H~<22~<O~<11~< + SO~<4~<~>2-~>";
  plot.X.AxisTitle = "Concentration, mol l~>-1~>";
  plot.Y.AxisTitle = "Rate of the reaction, s~>-1~>";
  for (int style = 0; style <= 4; ++style)
    for (const int width : {1, 2, 5}) {
      std::vector<double> y = Along(80, [](double part) { return std::sin(9 * part); });
      for (double& value : y) value += 3 * style + width / 2.0;
      PlotSeries series = PointSeries(Along(80, [](double part) { return 10 * part; }), std::move(y),
                                      width == 2 ? "style " + std::to_string(style) : "");
      series.Style().DrawStyle = style;
      series.Style().DrawWidth = width;
      series.Style().DrawColor = std::array{0, kBlue, kRed, kGreen, kMagenta}[static_cast<std::size_t>(style)];
      plot.PlotData.push_back(std::move(series));
    }
  plot.Legend.ShowShadow = true;
  plot.FootNote.Show = true;
  plot.FootNoteText = "Two lines\r\nof a footnote\r\n";
  return std::make_unique<PlotClass>(std::move(plot));
}

std::unique_ptr<PlotPage> Markers() {
  PlotClass plot = BarePlot();
  for (int style = 0; style <= 9; ++style) {
    PlotSeries series = PointSeries({1.0 * style, 1.0 * style}, {4, 10}, "", {0.5, 1});
    series.Style() = {.DisplayLine = false,
                      .DisplayMarker = true,
                      .MarkerStyle = style,
                      .MarkerColor = style % 2 == 0 ? kBlue : kRed,
                      .MarkerSize = 6 + style,
                      .ShowErrorBars = style > 6};
    plot.PlotData.push_back(std::move(series));
  }
  plot.X.Min = -1;
  plot.X.Max = 10;
  plot.Y.Max = 12;
  return std::make_unique<PlotClass>(std::move(plot));
}

std::unique_ptr<PlotPage> Logarithmic() {
  PlotClass plot{Settings()};
  plot.PlotData.push_back(PointSeries(Along(200, [](double part) { return std::pow(10, 5 * part - 3); }),
                                      Along(200, [](double part) { return std::pow(10, -4 * part * part); }), "decay"));
  for (FrameAxis* axis : {&plot.X, &plot.Y}) axis->LogScale = axis->ShowMajorGrids = axis->ShowMinorGrids = true;
  plot.MinorGridLineStyle = 2;
  plot.TickPenColor = 0x808080;
  plot.PlotData[0].Style().DrawWidth = 3;
  plot.PlotData[0].Style().DrawColor = kRed;
  return std::make_unique<PlotClass>(std::move(plot));
}

std::unique_ptr<PlotPage> Box(std::int16_t scheme, bool lines, bool contours) {
  PlotClass3D plot{Settings()};
  plot.PlotTitle = "A hill";
  plot.PlotData.push_back(
      Surface("exp(-((x1-1)^2+(x2-1)^2))", {0, 2}, {0, 2},
              {.LegendText = "hill", .DisplayLine = lines, .ShadeMesh = true, .ShadeColor = kBlue}));
  plot.MeshColorScheme = scheme;
  plot.DisplayContourLines = contours;
  plot.UpdateViewAngle(40, 30);
  return std::make_unique<PlotClass3D>(std::move(plot));
}

const struct Case {
  const char* Name;
  std::unique_ptr<PlotPage> (*Make)();
} kCases[] = {{"lines", Lines},
              {"markers", Markers},
              {"logarithmic", Logarithmic},
              {"banded", [] { return Box(kSpectrumScheme, false, false); }},
              {"contoured", [] { return Box(5, true, true); }},
              {"shaded", [] { return Box(kTrueColorScheme, false, false); }}};

constexpr PictureSize kSize{640, 480, 96};

QImage OnScreen(PlotPage& plot, const PictureSize& size = kSize) {
  RecordingPrompter prompter;
  QImage image = BlankPicture(size);
  QtSurface surface(image);
  EXPECT_TRUE(plot.DrawGraph(surface, prompter));
  return image;
}

std::unique_ptr<PlotPage> Created(const Case& example) {
  RecordingPrompter prompter;
  std::unique_ptr<PlotPage> plot = example.Make();
  EXPECT_TRUE(plot->CreateGraph({.Regenerate = true, .AutoFormat = true}, prompter)) << prompter.Last();
  return plot;
}

// The file as an image of the size of the screen's, by another program.
QImage Rasterized(const std::string& file) {
  const QString name = QString::fromStdString(file);
  if (file.ends_with(".svg")) {
    EXPECT_EQ(QProcess::execute("rsvg-convert", {"-o", name + ".png", name}), 0);
    return QImage(name + ".png");
  }
  if (file.ends_with(".pdf")) {
    EXPECT_EQ(QProcess::execute("pdftoppm", {"-r", "96", "-png", "-singlefile", name, name}), 0);
    return QImage(name + ".png");
  }
  return QImage(name);
}

class PictureFilesTest : public testing::Test {
 protected:
  std::string Save(PlotPage& plot, const std::string& name, const PictureSize& size = kSize) {
    const std::string file = folder.Path(name);
    EXPECT_TRUE(SavePlotPicture(plot, size, file, prompter)) << prompter.Last();
    return file;
  }

  TemporaryFolder folder;
  RecordingPrompter prompter;
};

TEST_F(PictureFilesTest, AgreeWithTheScreen) {
  for (const Case& example : kCases)
    for (const char* ending : {".png", ".bmp", ".svg", ".pdf"}) {
      SCOPED_TRACE(std::string(example.Name) + ending);
      const auto plot = Created(example);
      const QImage screen = OnScreen(*plot);
      const std::string file = Save(*plot, std::string(example.Name) + ending);
      const QImage picture = Rasterized(file);
      if (const char* keep = std::getenv("KEEP_PICTURES")) {
        QFile::copy(QString::fromStdString(file), QString(keep) + "/" + example.Name + ending);
        screen.save(QString(keep) + "/" + example.Name + ".screen.png");
        picture.save(QString(keep) + "/" + example.Name + ending + ".png");
      }
      ASSERT_EQ(picture.size(), screen.size());
    }
}

}  // namespace
}  // namespace quorvex
