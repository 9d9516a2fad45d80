// From a sheet to plots, their templates and their files, and back from these in a process that knows nothing else.

#include <QProcess>

#include "Frame.h"
#include "PictureOfPlotFile.h"
#include "Properties.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

class PlotRound : public Frame, public testing::WithParamInterface<const char*> {
 protected:
  PlotRound() : locale_("LC_ALL", GetParam()) { session.Locale = ReadUserLocale(); }

  // What a command of the Plot menu opens.
  Dataplot& NewPlot(const char* command) {
    Trigger(command);
    return *Active().findChildren<Dataplot*>().back();
  }
  static void Do(Dataplot& plot, const char* command) { In<QAction>(plot, command).trigger(); }

  // The user's changes, by the names of controls; "|" stands for the decimal separator.
  void Edit(Dataplot& plot, const std::vector<std::pair<const char*, std::string>>& entries) {
    dialogs.Do([&](QDialog& form) {
      for (auto [control, text] : entries) {
        std::ranges::replace(text, '|', session.Locale.DecimalSeparator);
        Set(In(form, control), text);
      }
      Click(form, "OKCommand");
    });
    Do(plot, "mnuPlotFormatProperties");
  }
  // From one plot to another, by a file.
  void TakeTheLook(Dataplot& from, Dataplot& to, const std::string& file) {
    dialogs.Do([](QDialog& form) { Press(form, QDialogButtonBox::Ok); });
    dialogs.ChooseFile(file);
    dialogs.Press(QMessageBox::No);  // it is not for new plots
    Do(from, "mnuPlotTemplateSave");
    dialogs.ChooseFile(file);
    Do(to, "mnuPlotTemplateApply");
  }
  void ExpectTheSameInANewProcess(Dataplot& plot, const std::string& name) {
    const std::string file = folder.Path(name + ".plt");
    const QString picture = QString::fromStdString(folder.Path(name + ".png"));
    const QImage shown = ShownBy(plot);
    dialogs.ChooseFile(file);
    Do(plot, "mnuPlotSave");
    EXPECT_EQ(plot.windowTitle().toStdString(), name + ".plt[*]");
    QProcess process;
    process.start(QApplication::applicationFilePath(), {kPictureOfPlotFile, QString::fromStdString(file), picture});
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    const QImage again(picture);
    ASSERT_EQ(again.size(), shown.size());
    EXPECT_EQ(again.convertToFormat(QImage::Format_RGB32), shown) << name;
  }

 private:
  TemporaryVariable locale_;
};

TEST_P(PlotRound, OfPlotsInTwoDimensionsEndsWithTheSamePictures) {
  Start();
  Document() = LineProject(session.Locale);
  for (const char* model : {"a*x+b", "a*x^2+b*x+c"}) SolveModel(Document(), model, 1);
  Document().Changed = false;
  Active().Refresh();
  Select(1, 1, 4, 2);
  Dataplot& points = NewPlot("mnuPlotData");
  EXPECT_EQ(points.Plot().PlotData[0].NumTablePoints(), 4u);
  Dataplot& curves = NewPlot("mnuPlotAll");
  const QImage before = ShownBy(curves);
  Edit(points, {{"PlotTitle_text", "H\u00F6he ~>2~> von ~<alles~<, genau"},
                {"MinVal_textX", "0|25"},
                {"MaxVal_textX", "1|5E+1"},
                {"AxisTitle_textY", "A title that is longer than its axis has room for, by far, on any page"}});
  TakeTheLook(points, curves, folder.Path("look.qv2"));
  EXPECT_EQ(curves.Plot().PlotTitle, points.Plot().PlotTitle);
  EXPECT_EQ(curves.Plot().Axes()[0]->Min, 0.25);
  EXPECT_NE(ShownBy(curves), before);
  ExpectTheSameInANewProcess(points, "points");
  ExpectTheSameInANewProcess(curves, "curves");
}

TEST_P(PlotRound, OfPlotsInThreeDimensionsEndsWithTheSamePictures) {
  Start();
  Document() = PlaneProject(session.Locale);
  SolveModel(Document(), "a+b*x1+c*x2", 1);
  Document().Changed = false;
  Active().Refresh();
  Dataplot& points = NewPlot("mnuPlotData");
  Active().findChild<QAbstractItemView*>("SolvedList")->selectAll();
  Dataplot& surface = NewPlot("mnuPlotSelected");
  const QImage before = ShownBy(surface);
  Edit(points, {{"PlotTitle_text", "Fl\u00E4che"}, {"MaxVal_textX1", "7|5"}, {"XYAngle_text", "200|5"}});
  TakeTheLook(points, surface, folder.Path("look.qv3"));
  EXPECT_EQ(surface.Plot().Angles()->XY, 200.5);
  EXPECT_NE(ShownBy(surface), before);
  ExpectTheSameInANewProcess(points, "points");
  ExpectTheSameInANewProcess(surface, "surface");
}

INSTANTIATE_TEST_SUITE_P(InLocales, PlotRound, testing::Values("C", "de_DE.UTF-8"), [](const auto& locale) {
  return std::string(locale.param).substr(0, locale.param[0] == 'C' ? 1 : 2);
});

}  // namespace
}  // namespace quorvex
