// A plot on paper: the printer's dialog, the small window while it prints, and the preview.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QGraphicsView>
#include <QLabel>
#include <QPrintDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <memory>

#include "Accessibility.h"
#include "Dialogs.h"
#include "RecordingPrompter.h"
#include "TemporaryFolder.h"
#include "files/ui/Dataplot.h"
#include "plot/PlotClass.h"
#include "plot/ui/PlotOutput.h"
#include "plot/ui/PlotPreview.h"
#include "plot/ui/Printfrm.h"

namespace quorvex {
namespace {

constexpr const char* kNoRoom =
    "refuse: The left margin specified is more than the actual page width. Please check the margin settings in the "
    "Page Setup Dialog.";
constexpr const char* kInError =
    "refuse: An error in the current plot settings prohibits the plot from being printed in it's current state. Check "
    "the plot settings in the Graph Properties window.";

class PlotPrintTest : public testing::Test {
 protected:
  // What the window says that stands there while a page prints, which is too short for a timer to see.
  class Watcher : public QObject {
   public:
    std::vector<std::string> Said;
    Watcher() { QApplication::instance()->installEventFilter(this); }
    bool eventFilter(QObject* object, QEvent* event) override {
      if (event->type() == QEvent::Show && object->objectName() == "Printfrm") {
        EXPECT_TRUE(static_cast<QWidget*>(object)->isModal());
        Said.push_back(object->findChild<QLabel*>()->toolTip().toStdString());
      }
      return false;
    }
  };

  // Lets the dialog print into a file.
  static void PrintTo(const std::string& file, QDialog& dialog, Dialogs& dialogs) {
    auto* print = qobject_cast<QPrintDialog*>(&dialog);
    ASSERT_NE(print, nullptr);
    print->printer()->setOutputFormat(QPrinter::PdfFormat);
    print->printer()->setOutputFileName(QString::fromStdString(file));
    dialogs.Rest();  // the next window closes by itself
    print->done(QDialog::Accepted);
  }

  PlotPrintTest() {
    auto plot = std::make_unique<PlotClass>(settings);
    DataClass series;
    series.GenerateTable({{0, 5, 10}}, {0, 7, 10});
    plot->PlotData.emplace_back(std::move(series), SeriesStyle{.LegendText = "line"});
    plot->PlotBackgroundColor = 0x00FFFF;  // yellow
    EXPECT_TRUE(plot->CreateGraph({}, prompter));
    window = std::make_unique<Dataplot>(PlotDocument(std::move(plot), settings, prompter));
    window->resize(600, 450);
    window->show();
  }

  PlotPage& Plot() { return window->Plot(); }
  void Trigger(const char* name) { window->findChild<QAction*>(name)->trigger(); }

  // What the preview shows, once `change` has been at the settings.
  QImage Previewed(int* pages = nullptr) {
    PlotPreview preview(Plot(), settings, prompter, window.get());
    preview.Refresh();
    preview.show();
    QTest::qWait(20);
    if (pages != nullptr) *pages = preview.PageCount();
    return preview.findChild<QGraphicsView*>("page")->grab().toImage();
  }
  static int Count(const QImage& image, QRgb colour) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) count += image.pixel(x, y) == colour;
    return count;
  }

  Settings settings;
  RecordingPrompter prompter;
  std::unique_ptr<Dataplot> window;
  const TemporaryFolder folder;
};

TEST_F(PlotPrintTest, AsksForThePrinterAndPrintsInTheOrientationOfThePageSetup) {
  for (const int orientation : {1, 2}) {
    settings.SetNumber("plotorientation", orientation, "printsetup");
    const std::string file = folder.Path("print" + std::to_string(orientation) + ".pdf");
    Dialogs dialogs;
    dialogs.Do([&](QDialog& dialog) {
      EXPECT_EQ(static_cast<QPrintDialog&>(dialog).printer()->pageLayout().orientation(),
                orientation == 1 ? QPageLayout::Portrait : QPageLayout::Landscape);
      PrintTo(file, dialog, dialogs);
    });
    const Watcher watcher;
    Trigger("mnuPlotPrint");
    EXPECT_EQ(watcher.Said, std::vector<std::string>{"Printing page 1 of 1 on " + file});
    QFile pdf(QString::fromStdString(file));
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    EXPECT_EQ(pdf.readAll().count("/Type /Page\n"), 1);
  }
  EXPECT_TRUE(prompter.Said.empty());
  Plot().PlotCreated = false;
  Trigger("mnuPlotPrint");
  EXPECT_EQ(prompter.Last(), kInError);
}

TEST_F(PlotPrintTest, CancelsBeforeThePage) {
  QPrinter printer;
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(QString::fromStdString(folder.Path("print.pdf")));
  for (const bool byKey : {false, true}) {
    // Within the turn that the window gives the program before it prints.
    QTimer::singleShot(0, [&] {
      QWidget* waiting = QApplication::activeModalWidget();
      ASSERT_NE(waiting, nullptr);
      const AccessibilityWalk walk(*waiting);
      if (byKey)
        QTest::keyClick(waiting, Qt::Key_Escape);
      else
        waiting->findChild<QPushButton*>("cmdCancel")->click();
    });
    EXPECT_FALSE(PrintPlot(Plot(), printer, {}, prompter, window.get()));
    EXPECT_EQ(prompter.Last(), "inform: Printing has been cancelled.");
    EXPECT_FALSE(QFile::exists(printer.outputFileName()));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  }
}

TEST_F(PlotPrintTest, PreviewsThePageAsItIsPrinted) {
  constexpr QRgb kYellow = 0xFFFFFF00;
  int pages = 0;
  const QImage blank = Previewed(&pages);
  EXPECT_EQ(pages, 1);
  EXPECT_EQ(Count(blank, kYellow), 0);  // the legend's area neither
  settings.SetFlag("printbackground", true, "printsetup");
  EXPECT_GT(Count(Previewed(), kYellow), 10000);
  settings.SetFlag("printbackground", false, "printsetup");
  settings.SetNumber("mleft", 3, "printsetup");
  EXPECT_NE(Previewed(), blank);
  EXPECT_TRUE(prompter.Said.empty());

  settings.SetNumber("mleft", 300, "printsetup");
  Previewed(&pages);
  EXPECT_EQ(pages, 0);
  EXPECT_EQ(prompter.Said, std::vector<std::string>{kNoRoom});
}

TEST_F(PlotPrintTest, PrintsAndSetsThePageUpFromThePreview) {
  settings.SetNumber("mleft", 300, "printsetup");
  const std::string file = folder.Path("preview.pdf");
  Dialogs dialogs;
  dialogs.Do([&](QDialog& preview) {
    EXPECT_EQ(preview.objectName(), "PlotPreview");
    EXPECT_EQ(prompter.Last(), kNoRoom);
    const AccessibilityWalk walk(preview);
    dialogs.Do([&](QDialog& setup) {
      setup.findChild<QLineEdit*>("left")->setText("1");
      setup.accept();
    });
    preview.findChild<QPushButton*>("pageSetup")->click();
    EXPECT_EQ(static_cast<PlotPreview&>(preview).PageCount(), 1);
    EXPECT_EQ(prompter.Said.size(), 1u);
    for (const char* button : {"zoomIn", "zoomOut", "wholePage"}) preview.findChild<QPushButton*>(button)->click();
    dialogs.Do([&](QDialog& print) { PrintTo(file, print, dialogs); });
    preview.findChild<QPushButton*>("print")->click();
    EXPECT_FALSE(preview.isVisible());
  });
  Trigger("mnuPlotPrintPreview");
  EXPECT_GT(QFile(QString::fromStdString(file)).size(), 1000);
  EXPECT_EQ(prompter.Said.size(), 1u);

  Plot().PlotCreated = false;
  Trigger("mnuPlotPrintPreview");
  EXPECT_EQ(prompter.Last(), kInError);
}

}  // namespace
}  // namespace quorvex
