// A plot's window, used as a user does: clicks, keys, the menu.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFile>
#include <QFrame>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPrinter>
#include <QTest>
#include <functional>
#include <memory>

#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "core/NumberText.h"
#include "files/ui/Dataplot.h"
#include "plot/PlotClass.h"
#include "plot/ui/PlotView.h"

namespace quorvex {
namespace {

// y = x from 0 to 10 on a plot of both scales 0 to 10.
class PlotViewTest : public testing::Test {
 protected:
  PlotViewTest() {
    PlotClass plot{settings};
    DataClass series;
    series.GenerateTable({{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}}, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    plot.PlotData.emplace_back(std::move(series), SeriesStyle{.LegendText = "line", .DisplayMarker = true});
    EXPECT_TRUE(plot.CreateGraph({}, prompter));
    window = std::make_unique<Dataplot>(PlotDocument(std::make_unique<PlotClass>(std::move(plot)), settings, prompter));
    window->resize(600, 450);
    window->show();
    window->activateWindow();
    QTest::qWait(20);
    QObject::connect(&View(), &PlotView::Changed, [this] { ++changes; });
  }

  PlotView& View() { return window->View(); }
  PlotClass& Plot() { return static_cast<PlotClass&>(window->Plot()); }
  QAction* Action(const char* name) { return window->findChild<QAction*>(name); }

  double Units() { return View().devicePixelRatioF() * QtSurface::kUnitsPerPixel; }  // to one of the widget
  // Where values are on the widget.
  QPoint At(double x, double y) {
    const PlotPicture& shown = Plot().Shown();
    return (QPointF(shown.Horizontal.ToDevice(x), shown.Vertical.ToDevice(y)) / Units()).toPoint();
  }
  void Click(Qt::MouseButton button, QPoint at) { QTest::mouseClick(&View(), button, {}, at); }
  void Move(QPoint at, Qt::MouseButtons held = Qt::NoButton) {
    QMouseEvent event(QEvent::MouseMove, at, View().mapToGlobal(at), Qt::NoButton, held, Qt::NoModifier);
    QApplication::sendEvent(&View(), &event);
  }
  std::string Text(const char* label) { return window->findChild<QLabel*>(label)->text().toStdString(); }
  bool FrameShown() { return window->findChild<QFrame*>("xy_frame")->isVisible(); }
  QImage Painted() { return View().grab().toImage(); }
  // How many pixels of two pictures differ.
  static int Difference(const QImage& a, const QImage& b) {
    int count = 0;
    for (int y = 0; y < a.height(); ++y)
      for (int x = 0; x < a.width(); ++x) count += a.pixel(x, y) != b.pixel(x, y);
    return count;
  }

  Settings settings;
  RecordingPrompter prompter;
  std::unique_ptr<Dataplot> window;
  int changes = 0;
};

TEST_F(PlotViewTest, ZoomsIntoABoxOfTwoClicksAndBack) {
  const QImage before = Painted();
  Action("mnuPlotFormatZoom")->trigger();
  EXPECT_EQ(View().cursor().shape(), Qt::UpArrowCursor);
  EXPECT_FALSE(Action("mnuPlotFormatZoom")->isEnabled());
  Click(Qt::LeftButton, At(2, 8));
  Move(At(4, 5));
  EXPECT_GT(Difference(before, Painted()), 100);  // the rubber band
  Click(Qt::LeftButton, At(4, 5));
  // A pixel is some 0.02 of either scale.
  EXPECT_NEAR(Plot().X.Min, 2, 0.03);
  EXPECT_NEAR(Plot().X.Max, 4, 0.03);
  EXPECT_NEAR(Plot().Y.Min, 5, 0.03);
  EXPECT_NEAR(Plot().Y.Max, 8, 0.03);
  EXPECT_EQ(View().cursor().shape(), Qt::ArrowCursor);
  EXPECT_TRUE(Action("mnuPlotFormatZoom")->isEnabled());
  EXPECT_EQ(changes, 1);
  EXPECT_GT(Difference(before, Painted()), 100);
  Action("mnuPlotFormatFitAll")->trigger();
  EXPECT_EQ(Plot().X.Min, 0);
  EXPECT_EQ(Plot().Y.Max, 10);
  EXPECT_EQ(Difference(before, Painted()), 0);
}

TEST_F(PlotViewTest, CallsAModeOffByRightButtonEscapeFocusOrSize) {
  const QImage before = Painted();
  const std::function<void()> ends[] = {[&] { Click(Qt::RightButton, At(4, 5)); },
                                        [&] { Click(Qt::MiddleButton, At(4, 5)); },
                                        [&] { QTest::keyClick(&View(), Qt::Key_Escape); },
                                        [&] {
                                          QFocusEvent out(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
                                          QApplication::sendEvent(&View(), &out);
                                        },
                                        [&] {
                                          window->resize(500, 400);
                                          QTest::qWait(5);
                                          window->resize(600, 450);
                                          QTest::qWait(5);
                                        }};
  for (const auto& end : ends) {
    Action("mnuPlotFormatZoom")->trigger();
    Click(Qt::LeftButton, At(2, 8));
    Move(At(4, 5));
    end();
    EXPECT_TRUE(Action("mnuPlotFormatZoom")->isEnabled());
    EXPECT_EQ(View().cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(Difference(before, Painted()), 0);
    Action("mnuPlotShowCoords")->trigger();
    EXPECT_TRUE(FrameShown());
    EXPECT_EQ(View().cursor().shape(), Qt::CrossCursor);
    Move(At(4, 7));
    end();
    EXPECT_FALSE(FrameShown());
    EXPECT_EQ(Difference(before, Painted()), 0);
  }
  EXPECT_EQ(Plot().X.Max, 10);
  EXPECT_EQ(changes, 0);
}

TEST_F(PlotViewTest, ReadsPointerAndCurveAndGoesAlongItByArrows) {
  Action("mnuPlotShowCoords")->trigger();
  Move(At(2.5, 7.5));  // far from any point
  EXPECT_NEAR(NumericText(Text("labelX")).value_or(0), 2.5, 0.03);
  EXPECT_NEAR(NumericText(Text("labelY")).value_or(0), 7.5, 0.03);
  Move(At(8, 8) + QPoint(2, -2));
  EXPECT_EQ(Text("labelX"), "8.000000E+00");
  EXPECT_EQ(Text("labelY"), "8.000000E+00");
  for (const char* expected : {"9.000000E+00", "1.000000E+01", "1.000000E+01"}) {
    QTest::keyClick(&View(), Qt::Key_Right);
    EXPECT_EQ(Text("labelX"), expected);
  }
  QTest::keyClick(&View(), Qt::Key_Left);
  EXPECT_EQ(Text("labelY"), "9.000000E+00");
}

TEST_F(PlotViewTest, TakesTheLegendWhereItIsDropped) {
  const QImage before = Painted();
  const DeviceRect legend = Plot().Shown().Legend;
  const QPoint grab = (QPointF(legend.left, legend.top) / Units()).toPoint() + QPoint(5, 5);
  const QPoint step(legend.left > Plot().Shown().Frame.width() / 2 ? -200 : 200, 120);  // it stands in a quiet corner
  QTest::mousePress(&View(), Qt::LeftButton, {}, grab);
  Move(grab + step, Qt::LeftButton);
  EXPECT_GT(Difference(before, Painted()), 100);
  EXPECT_EQ(Plot().Shown().Legend, legend);  // nothing is drawn yet
  QTest::mouseRelease(&View(), Qt::LeftButton, {}, grab + step);
  const DeviceRect moved = Plot().Shown().Legend;
  EXPECT_NEAR(moved.left, legend.left + step.x() * Units(), 1);
  EXPECT_NEAR(moved.top, legend.top + step.y() * Units(), 1);
  EXPECT_EQ(moved.width(), legend.width());
  EXPECT_EQ(changes, 1);
}

TEST_F(PlotViewTest, OpensItsMenuOnlyBetweenModes) {
  const auto rightClick = [&] {
    Click(Qt::RightButton, {300, 200});
    QContextMenuEvent event(QContextMenuEvent::Mouse, {300, 200}, View().mapToGlobal(QPoint(300, 200)));
    QApplication::sendEvent(&View(), &event);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) return false;
    EXPECT_EQ(menu->actions(), View().actions());
    menu->close();
    return true;
  };
  EXPECT_TRUE(rightClick());
  Action("mnuPlotFormatZoom")->trigger();
  EXPECT_FALSE(rightClick());  // it ended the zoom
  EXPECT_TRUE(rightClick());
}

TEST_F(PlotViewTest, CopiesAndSavesThePictureAsShown) {
  Action("mnuPlotClipItem1")->trigger();
  EXPECT_EQ(Difference(QApplication::clipboard()->image(), View().Picture()), 0);

  Action("mnuPlotClipItem0")->trigger();
  const QMimeData* copied = QApplication::clipboard()->mimeData();
  EXPECT_FALSE(copied->hasImage());
  const QByteArray metafile = copied->data("image/x-emf");
  EXPECT_EQ(metafile.mid(40, 4), " EMF");

  const TemporaryFolder folder;
  prompter.File = folder.Path("plot.emf");
  Action("mnuPlotSave")->trigger();
  EXPECT_EQ(prompter.Last(), "inform: The file '" + *prompter.File + "' contains the Enhanced Metafile.");
  QFile emf(QString::fromStdString(*prompter.File));
  ASSERT_TRUE(emf.open(QIODevice::ReadOnly));
  EXPECT_EQ(emf.readAll(), metafile);
  prompter.File = folder.Path("missing/plot.emf");
  Action("mnuPlotSave")->trigger();
  EXPECT_EQ(prompter.Last(), "refuse: An error occurred saving the Metafile to disk. The file '" + *prompter.File +
                                 "' cannot be written. The folder does not exist.");

  prompter.File = folder.Path("plot.png");
  prompter.Text = "96";
  Action("mnuPlotSave")->trigger();
  EXPECT_EQ(prompter.Last(), "inform: The file '" + *prompter.File + "' contains the PNG picture.");
  const QImage saved(QString::fromStdString(*prompter.File));
  ASSERT_EQ(saved.size(), View().Picture().size());
  EXPECT_EQ(Difference(saved, View().Picture()), 0);

  prompter.File = folder.Path("plot.pdf");
  Action("mnuPlotSave")->trigger();
  EXPECT_EQ(prompter.Last(), "inform: The file '" + *prompter.File + "' contains the PDF document.");
  QFile pdf(QString::fromStdString(*prompter.File));
  ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
  const QByteArray content = pdf.readAll();
  EXPECT_TRUE(content.startsWith("%PDF-"));
  EXPECT_NE(content.indexOf("LiberationSans"), -1);  // letters, not pixels

  prompter.File = folder.Path("missing/plot.png");
  Action("mnuPlotSave")->trigger();
  EXPECT_EQ(prompter.Last(), "refuse: An error occurred saving the PNG picture to file. The file '" + *prompter.File +
                                 "' cannot be written. The folder does not exist.");
  Plot().PlotCreated = false;
  Action("mnuPlotClipItem0")->trigger();
  EXPECT_EQ(prompter.Last(), "refuse: Error Creating Metafile");
  EXPECT_EQ(QApplication::clipboard()->mimeData()->data("image/x-emf"), metafile);
  Action("mnuPlotSave")->trigger();
  EXPECT_EQ(prompter.Last().substr(0, 47), "refuse: An error in the current plot settings p");
}

TEST_F(PlotViewTest, SaysInItsPlaceThatThereIsNoPlot) {
  Action("mnuPlotClipItem1")->trigger();
  const QImage whole = Painted(), copied = QApplication::clipboard()->image();
  const AxisLimits limits = Plot().X.Limits();
  Plot().X.Min = -1e308;
  Plot().X.Max = 1e308;
  Plot().CreateGraph({}, prompter);
  View().Redraw();
  const QImage said = Painted();
  EXPECT_NE(said, whole);
  EXPECT_GT(Difference(said, BlankPicture({said.width(), said.height(), 96})), 100);
  EXPECT_EQ(View().accessibleDescription(), kPlotFailure);
  Action("mnuPlotClipItem1")->trigger();
  EXPECT_EQ(prompter.Last(),
            "refuse: An error in the current plot settings prohibits the plot from being copied in it's current state. "
            "Check the plot settings in the Graph Properties window.");
  EXPECT_EQ(QApplication::clipboard()->image(), copied);
  Plot().X.Take(limits);
  Plot().CreateGraph({}, prompter);
  View().Redraw();
  EXPECT_EQ(Painted(), whole);
  EXPECT_TRUE(View().accessibleDescription().startsWith("Plot in two dimensions."));
}

TEST_F(PlotViewTest, PrintsOnOnePageWithinTheMargins) {
  const TemporaryFolder folder;
  QPrinter printer;
  printer.setResolution(300);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(QString::fromStdString(folder.Path("print.pdf")));
  EXPECT_TRUE(PrintPlot(Plot(), printer, {}, prompter));
  EXPECT_TRUE(prompter.Said.empty());
  EXPECT_GT(QFile(printer.outputFileName()).size(), 1000);

  PageSetup page;
  page.Left = 30;  // inches
  printer.setOutputFileName(QString::fromStdString(folder.Path("none.pdf")));
  EXPECT_FALSE(PrintPlot(Plot(), printer, page, prompter));
  EXPECT_FALSE(QFile::exists(printer.outputFileName()));
  ASSERT_EQ(prompter.Said.size(), 2u);
  EXPECT_EQ(prompter.Said[0],
            "refuse: The left margin specified is more than the actual page width. Please check the margin settings in "
            "the Page Setup Dialog.");
  EXPECT_EQ(prompter.Last(), "refuse: An error ocurred drawing the plot to the printer.");

  printer.setOutputFileName(QString::fromStdString(folder.Path("missing/print.pdf")));
  EXPECT_FALSE(PrintPlot(Plot(), printer, {}, prompter));
  EXPECT_EQ(prompter.Last(),
            "refuse: The following printer error occurred: Error number 76: The folder does not exist.");
}

}  // namespace
}  // namespace quorvex
