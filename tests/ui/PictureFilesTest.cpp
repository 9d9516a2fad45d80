// Pictures of plots that leave the program, held against the screen as other programs show them.

#include <gtest/gtest.h>

#include <QImage>
#include <QMimeData>
#include <QProcess>
#include <QTest>
#include <QXmlStreamReader>

#include "EmfPlayer.h"
#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "drawing/ui/QtSurface.h"
#include "plot/Plots.h"
#include "plot/ui/PlotOutput.h"
#include "plot3d/Surfaces.h"

namespace quorvex {
namespace {

constexpr std::int32_t kBlue = 0xFF0000, kRed = 0x0000FF, kGreen = 0x008000, kMagenta = 0xFF00FF, kWhite = 0xFFFFFF;

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

std::unique_ptr<PlotPage> BoxPlot(std::int16_t scheme, bool lines, bool contours) {
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
  bool Shaded = false;
} kCases[] = {{"lines", Lines},
              {"markers", Markers},
              {"logarithmic", Logarithmic},
              {"banded", [] { return BoxPlot(kSpectrumScheme, false, false); }},
              {"contoured", [] { return BoxPlot(5, true, true); }},
              {"shaded", [] { return BoxPlot(kTrueColorScheme, false, false); }, true}};

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

std::string Read(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

// The file as an image of the size of the screen's, by another program or by one of the test's own.
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
  if (file.ends_with(".emf")) {
    const std::string bytes = Read(file);
    QImage image = BlankPicture(kSize);
    EmfPlayer(bytes, image);
    return image;
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

// How far apart two colours are, in the channel where they are farthest.
int Distance(QRgb a, QRgb b) {
  if (a == b) return 0;
  return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
}

// The share of pixels of the one whose colour the other has nowhere near them: edges are smoothed in other ways.
double ShareMissing(const QImage& from, const QImage& in) {
  constexpr int kNear = 1, kAlike = 80;
  int missing = 0;
  for (int y = kNear; y < from.height() - kNear; ++y)
    for (int x = kNear; x < from.width() - kNear; ++x) {
      int least = Distance(from.pixel(x, y), in.pixel(x, y));
      if (least <= kAlike) continue;
      for (int dy = -kNear; dy <= kNear; ++dy)
        for (int dx = -kNear; dx <= kNear; ++dx)
          least = std::min(least, Distance(from.pixel(x, y), in.pixel(x + dx, y + dy)));
      missing += least > kAlike;
    }
  return 1.0 * missing / (from.width() * from.height());
}

// Where a piece of the picture would fit the screen better if it were moved by a pixel.
std::vector<QPoint> Moved(const QImage& screen, const QImage& picture) {
  constexpr int kPiece = 24, kRim = 2;
  constexpr double kTick = 6 * 255;  // a short tick in another place
  std::vector<QPoint> moved;
  for (int top = kRim; top + kPiece + kRim <= screen.height(); top += kPiece)
    for (int left = kRim; left + kPiece + kRim <= screen.width(); left += kPiece) {
      const auto differs = [&](int dx, int dy) {
        double sum = 0;
        for (int y = top; y < top + kPiece; ++y)
          for (int x = left; x < left + kPiece; ++x) sum += Distance(screen.pixel(x, y), picture.pixel(x + dx, y + dy));
        return sum;
      };
      const double here = differs(0, 0);
      if (here <= kTick) continue;
      bool better = false;
      for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx) better = better || differs(dx, dy) < here - kTick;
      if (better) moved.push_back({left, top});
    }
  return moved;
}

std::unique_ptr<PlotPage> NetOf(const PlotPage& surface) {
  auto net = surface.Clone();
  for (PlotSeries& series : net->PlotData) {
    series.Style().ShadeMesh = false;
    series.Style().DisplayLine = true;
  }
  return net;
}

TEST_F(PictureFilesTest, AgreeWithTheScreen) {
  for (const Case& example : kCases) {
    const auto plot = Created(example), unlettered = plot->Clone();
    // Letters have widths and edges of their own.
    unlettered->PlotTitleColor = unlettered->PlotLegendColor = unlettered->FootNoteColor = kWhite;
    for (PlotAxis* axis : unlettered->Axes()) axis->AxisTitleColor = axis->AxisNumberColor = kWhite;
    const QImage screen = OnScreen(*plot), lines = OnScreen(*unlettered);
    EXPECT_FALSE(Moved(lines, lines.copy(1, 0, lines.width(), lines.height())).empty());
    for (const char* ending : {".png", ".bmp", ".svg", ".pdf", ".emf"}) {
      SCOPED_TRACE(std::string(example.Name) + ending);
      const QImage picture = Rasterized(Save(*plot, std::string(example.Name) + ending));
      ASSERT_EQ(picture.size(), screen.size());
      EXPECT_LT(ShareMissing(screen, picture), 0.01);
      EXPECT_LT(ShareMissing(picture, screen), 0.01);
      // There a shade changes in steps, and a pixel can mix two of them: the places of the surface are those of its
      // net.
      const std::string_view kind = ending;
      const bool steps = example.Shaded && (kind == ".pdf" || kind == ".emf");
      const auto placed = steps ? NetOf(*unlettered) : unlettered->Clone();
      const QImage bare = Rasterized(Save(*placed, std::string(example.Name) + ending));
      for (const QPoint& piece : Moved(steps ? OnScreen(*placed) : lines, bare))
        ADD_FAILURE() << "at " << piece.x() << ", " << piece.y();
    }
  }
}

// A time in a file would be another one a second later.
TEST_F(PictureFilesTest, AreTheSameEachTime) {
  std::map<std::string, std::string> first;
  for (const bool again : {false, true}) {
    if (again) QTest::qSleep(1100);
    for (const Case& example : kCases)
      for (const char* ending : {".png", ".svg", ".pdf"}) {
        const std::string name = std::string(example.Name) + ending, content = Read(Save(*Created(example), name));
        EXPECT_EQ(content, first.try_emplace(name, content).first->second) << name;
      }
  }
}

TEST_F(PictureFilesTest, KeepTheirInchesAtAnyResolution) {
  const auto plot = Created(kCases[0]);
  // Of the magenta lines, in square inches.
  const auto ink = [](const QImage& picture, double resolution) {
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) count += Distance(picture.pixel(x, y), qRgb(255, 0, 255)) < 128;
    return count / (resolution * resolution);
  };
  const double onScreen = ink(OnScreen(*plot), 96);
  for (const double resolution : {72, 96, 300, 600}) {
    const QImage picture(QString::fromStdString(Save(*plot, "a.png", kSize.At(resolution))));
    EXPECT_EQ(picture.size(), (QSizeF(640, 480) * resolution / 96).toSize());
    EXPECT_NEAR(picture.dotsPerMeterX() * 0.0254, resolution, 0.02);
    EXPECT_NEAR(ink(picture, resolution) / onScreen, 1, resolution < 96 ? 0.2 : 0.1)
        << resolution;  // whole pixels, of which 72 has few
  }
}

TEST_F(PictureFilesTest, TellWhatTheyShowInWordsThatHarmNobody) {
  PlotClass plot{Settings()};
  plot.PlotTitle = "a<b> & \"c\" \x01\xFF K~>2~> \xE2\x82\xAC \xF0\x9F\x98\x80";
  plot.PlotTitleFont.Name = "No'such\\\"<font>";
  plot.PlotData.push_back(PointSeries({1, 2, 3}, {2, 4, 8}, "x < y", {1, 1, 1}));
  plot.PlotData[0].Style().ShowErrorBars = true;
  plot.PlotData.emplace_back(Curve("a+b*x", {0, 1}));
  plot.X.AxisTitle = "X]]>-->";
  RecordingPrompter user;
  ASSERT_TRUE(plot.CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, user)) << user.Last();
  const std::string file = Save(plot, "a.svg");
  QXmlStreamReader xml(QString::fromStdString(Read(file)));
  std::map<QString, QString> told;
  QString labelled;
  QStringList texts;
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) continue;
    const QString name = xml.name().toString(), id = xml.attributes().value("id").toString();
    if (name == "svg") {
      EXPECT_EQ(xml.attributes().value("role").toString(), "img");
      labelled = xml.attributes().value("aria-labelledby").toString();
    }
    if (name == "title" || name == "desc") {
      EXPECT_TRUE(labelled.split(' ').contains(id));
      told[name] = xml.readElementText();
    }
    if (name == "text") texts.append(xml.readElementText());
  }
  EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
  const std::string title = "a<b> & \"c\" \xEF\xBF\xBD\xEF\xBF\xBD K2 \xE2\x82\xAC \xF0\x9F\x98\x80";
  EXPECT_EQ(told["title"].toStdString(), title);
  EXPECT_EQ(told["desc"].toStdString(),
            "Plot in two dimensions. Title: \"" + title +
                "\". X axis \"X]]>-->\": 1 to 9. Y axis: 1 to 9. Series \"x < y\": 3 points with error bars. "
                "Series: the model \"model\".");
  EXPECT_TRUE(texts.contains("X]]>-->"));
  EXPECT_EQ(
      QProcess::execute("rsvg-convert", {"-o", QString::fromStdString(file) + ".png", QString::fromStdString(file)}),
      0);
}

TEST_F(PictureFilesTest, LeaveAnOlderOneWhereTheyFail) {
  const auto plot = Created(kCases[1]);
  const struct {
    const char *name, *contained, *refused;
  } cases[] = {{"a.bmp", "Bitmap", "refuse: An error occurred saving the bitmap to file."},
               {"a.PNG", "PNG picture", "refuse: An error occurred saving the PNG picture to file."},
               {"a.Svg", "SVG picture", "refuse: An error occurred saving the SVG picture to file."},
               {"a.pdf", "PDF document", "refuse: An error occurred saving the PDF document to file."}};
  const auto broken = plot->Clone();  // of which no picture can be drawn
  broken->PlotData.push_back(PointSeries({}, {}));
  for (const auto& [name, contained, refused] : cases) {
    const std::string file = Save(*plot, name), before = Read(file);
    EXPECT_EQ(prompter.Last(), "inform: The file '" + file + "' contains the " + contained + '.');
    EXPECT_FALSE(SavePlotPicture(*broken, kSize, file, prompter));
    EXPECT_EQ(prompter.Last(), std::string("refuse: ") + kPlotFailure);
    EXPECT_TRUE(broken->PlotCreated);
    EXPECT_EQ(Read(file), before);
    EXPECT_FALSE(SavePlotPicture(*plot, kSize, folder.Path("missing/") + name, prompter));
    EXPECT_EQ(prompter.Last(), std::string(refused) + " The file '" + folder.Path("missing/") + name +
                                   "' cannot be written. The folder does not exist.");
  }
  for (const char* name : {"a", "a.jpg", "a.plt", "svg", ".", "a.svg.txt"}) {
    EXPECT_FALSE(SavePlotPicture(*plot, kSize, folder.Path(name), prompter));
    EXPECT_EQ(prompter.Last(), "refuse: The plot cannot be saved as '" + folder.Path(name) +
                                   "', for the name of a picture ends in .bmp, .emf, .svg, .pdf or .png.");
  }
  EXPECT_FALSE(SavePlotPicture(*plot, {100'000, 100'000, 96}, folder.Path("b.png"), prompter));
  EXPECT_EQ(prompter.Last(), "refuse: An error occurred saving the PNG picture to file.");
  plot->PlotCreated = false;
  EXPECT_FALSE(SavePlotPicture(*plot, kSize, folder.Path("b.svg"), prompter));
  EXPECT_EQ(prompter.Last().substr(0, 45), "refuse: An error in the current plot settings");
  EXPECT_FALSE(std::filesystem::exists(folder.Path("b.png")) || std::filesystem::exists(folder.Path("b.svg")));
}

TEST_F(PictureFilesTest, AreCopiedAsImageAndAsSvg) {
  const auto plot = Created(kCases[0]);
  const QImage screen = OnScreen(*plot);
  const auto copied = CopiedPicture(*plot, kSize, screen);
  EXPECT_EQ(copied->imageData().value<QImage>(), screen);
  EXPECT_EQ(copied->data("image/svg+xml").toStdString(), Read(Save(*plot, "a.svg")));
}

}  // namespace
}  // namespace quorvex
