// The window of a plot as a document, used as a user does.

#include <QCheckBox>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProcess>
#include <QSpinBox>
#include <QToolButton>

#include "Accessibility.h"
#include "Frame.h"
#include "Paths.h"
#include "RecordingPrompter.h"
#include "app/ui/FileRequests.h"
#include "core/RecentFiles.h"
#include "files/PlotFile.h"
#include "files/ui/Dataplot.h"
#include "plot/PlotClass.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

class DataplotTest : public Frame {
 protected:
  // The window of a new plot of five points about a line.
  Dataplot& NewPlot() {
    Document() = LineProject();
    Document().Changed = false;
    Active().Refresh();
    Trigger("mnuPlotData");
    return *Active().findChildren<Dataplot*>().back();
  }
  // The same as a file.
  std::string SavedPlot(const char* name, const std::string& title = "") {
    PlotClass plot{Settings()};
    DataClass data;
    data.GenerateTable({{1, 2, 3}}, {2, 4, 8});
    plot.PlotData.emplace_back(std::move(data), SeriesStyle{.LegendText = "data"});
    plot.PlotTitle = title;
    RecordingPrompter user;
    EXPECT_TRUE(plot.CreateGraph({}, user) && SavePlot(plot, folder.Path(name), user));
    return folder.Path(name);
  }
  QList<Dataplot*> Plots() { return frame->findChildren<Dataplot*>(); }
  Dataplot* PlotCalled(const QString& title) {
    for (Dataplot* plot : Plots())
      if (plot->windowTitle() == title) return plot;
    return nullptr;
  }
  static QAction& Action(QWidget& plot, const char* name) { return In<QAction>(plot, name); }
  static QString Undo(QWidget& plot) { return Action(plot, "mnuEditUndo").text(); }
  static void Change(Dataplot& plot) { Action(plot, "SwapAxis").trigger(); }
  static PlotClass& Plot(Dataplot& window) { return static_cast<PlotClass&>(window.Plot()); }
  static QPoint At(Dataplot& plot, double x, double y) {
    const PlotPicture& shown = plot.Plot().Shown();
    const double units = plot.View().devicePixelRatioF() * QtSurface::kUnitsPerPixel;
    return (QPointF(shown.Horizontal.ToDevice(x), shown.Vertical.ToDevice(y)) / units).toPoint();
  }
};

TEST_F(DataplotTest, HasItsVerbsInMenusPopupAndBar) {
  Start();
  Dataplot& plot = NewPlot();
  const std::vector<const char*> common = {"mnuPlotNewItem0",      "mnuPlotNewItem1",
                                           "mnuPlotNewItem2",      "mnuPlotNewItem3",
                                           "mnuPlotNewEquation",   "mnuPlotOpen",
                                           "mnuPlotClose",         "mnuPlotImport",
                                           "mnuPlotExportItem0",   "mnuPlotExportItem1",
                                           "mnuPlotExportItem2",   "mnuPlotSave",
                                           "mnuPlotSaveAs",        "mnuPlotSaveCopyAs",
                                           "mnuPlotPrint",         "mnuPlotPrintSetup",
                                           "mnuPlotPrintPreview",  "mnuPlotClipItem0",
                                           "mnuPlotClipItem1",     "mnuPlotFormatFitAll",
                                           "mnuPlotTemplateEdit",  "mnuPlotFormatProperties",
                                           "mnuPlotTemplateApply", "mnuPlotTemplateSave",
                                           "mnuEditUndo",          "mnuEditRedo",
                                           "mnuPlotCalc"};
  for (const char* name : common) EXPECT_NE(plot.findChild<QAction*>(name), nullptr) << name;
  EXPECT_NE(plot.findChild<QMenu*>("mnuPlotTemplateRecent"), nullptr);
  const std::pair<const char*, const char*> buttons[] = {
      {"tbzoom", "mnuPlotFormatZoom"}, {"tbunzoom", "mnuPlotFormatFitAll"},     {"tbshowcoords", "mnuPlotShowCoords"},
      {"tbcopy", "mnuPlotClipItem1"},  {"tbformat", "mnuPlotFormatProperties"}, {"tbsave", "mnuPlotSave"},
      {"tbprint", "mnuPlotPrint"},     {"tbpagesetup", "mnuPlotPrintSetup"}};
  for (const auto& [button, verb] : buttons) {
    EXPECT_EQ(In<QToolButton>(plot, button).defaultAction(), &Action(plot, verb)) << button;
    EXPECT_TRUE(plot.View().actions().contains(&Action(plot, verb))) << "in the popup: " << verb;
  }
  ExpectMnemonicsDoNotMeet(plot.findChild<QMenuBar*>()->actions());

  Document() = PlaneProject();
  Active().Refresh();
  Trigger("mnuPlotData");
  Dataplot& box = *Active().findChildren<Dataplot*>().back();
  for (const char* name : common) EXPECT_NE(box.findChild<QAction*>(name), nullptr) << name;
  EXPECT_EQ(box.findChild<QAction*>("mnuPlotFormatZoom"), nullptr);
  dialogs.Press(QMessageBox::Ok);
  Action(box, "mnuPlotCalc").trigger();
  EXPECT_EQ(dialogs.Said.back(), "Only the 2D Data Calculator is currently implemented.");
  ExpectMnemonicsDoNotMeet(box.findChild<QMenuBar*>()->actions());
}

TEST_F(DataplotTest, TakesEveryKindOfChangeBackByKeys) {
  Start();
  Dataplot& plot = NewPlot();
  plot.resize(640, 480);
  QTest::qWait(20);
  PlotView& view = plot.View();
  const std::string more = folder.Write("more.dat", "1 20\n2 30\n");
  const std::string look = folder.Write("a.qv2", "plot_title_text = As always\n");
  const struct {
    const char* Label;
    std::function<void()> Change;
  } changes[] = {
      {"Zoom",
       [&] {
         Action(plot, "mnuPlotFormatZoom").trigger();
         QTest::mouseClick(&view, Qt::LeftButton, {}, At(plot, 2, 8));
         QTest::mouseClick(&view, Qt::LeftButton, {}, At(plot, 4, 5));
       }},
      {"Fit All", [&] { Action(plot, "mnuPlotFormatFitAll").trigger(); }},
      {"Move Legend",
       [&] {
         const DeviceRect legend = plot.Plot().Shown().Legend;
         const double units = view.devicePixelRatioF() * QtSurface::kUnitsPerPixel;
         const QPoint grab = (QPointF(legend.left, legend.top) / units).toPoint() + QPoint(4, 4);
         QTest::mousePress(&view, Qt::LeftButton, {}, grab);
         QTest::mouseRelease(&view, Qt::LeftButton, {}, grab + QPoint(legend.left / units > 200 ? -60 : 60, 40));
       }},
      {"Swap Axes", [&] { Action(plot, "SwapAxis").trigger(); }},
      {"Logarithmic X Axis", [&] { Action(plot, "XLogScale").trigger(); }},
      {"Import",
       [&] {
         dialogs.ChooseFile(more);
         Action(plot, "mnuPlotImport").trigger();
       }},
      {"Apply Template",
       [&] {
         dialogs.ChooseFile(look);
         Action(plot, "mnuPlotTemplateApply").trigger();
       }},
      {"Properties",
       [&] {
         dialogs.Do([](QDialog& form) {
           TypeInto(form, "PlotTitle_text", "By hand");
           Click(form, "OKCommand");
         });
         Action(plot, "mnuPlotFormatProperties").trigger();
       }},
  };
  std::vector<QImage> pictures = {view.Picture()};
  for (const auto& change : changes) {
    change.Change();
    EXPECT_EQ(Undo(plot), QString("&Undo ") + change.Label);
    pictures.push_back(view.Picture());
    EXPECT_NE(pictures.back(), pictures[pictures.size() - 2]) << change.Label;
    EXPECT_TRUE(plot.isWindowModified());
  }
  plot.activateWindow();
  view.setFocus();
  QTest::qWait(5);
  for (std::size_t i = pictures.size() - 1; i-- > 0;) {
    QTest::keyClick(&view, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(view.Picture(), pictures[i]) << changes[i].Label;
    EXPECT_EQ(Action(plot, "mnuEditRedo").text(), QString("&Redo ") + changes[i].Label);
  }
  EXPECT_FALSE(plot.isWindowModified());
  EXPECT_FALSE(Action(plot, "mnuEditUndo").isEnabled());
  EXPECT_EQ(Undo(plot), "Can't &Undo");
  for (std::size_t i = 1; i < pictures.size(); ++i) {
    QTest::keyClick(&view, i % 2 ? Qt::Key_Y : Qt::Key_Z,
                    i % 2 ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(view.Picture(), pictures[i]) << changes[i - 1].Label;
  }
  EXPECT_FALSE(Action(plot, "mnuEditRedo").isEnabled());

  // A click on the legend is no change, nor is a mode that is called off.
  const QPoint legend = (QPointF(plot.Plot().Shown().Legend.left, plot.Plot().Shown().Legend.top) /
                         (view.devicePixelRatioF() * QtSurface::kUnitsPerPixel))
                            .toPoint() +
                        QPoint(4, 4);
  QTest::mouseClick(&view, Qt::LeftButton, {}, legend);
  Action(plot, "mnuPlotFormatZoom").trigger();
  EXPECT_FALSE(Action(plot, "mnuEditUndo").isEnabled()) << "in between";
  EXPECT_TRUE(In<QToolButton>(plot, "tbzoom").isChecked());
  QTest::keyClick(&view, Qt::Key_Escape);
  EXPECT_TRUE(Action(plot, "mnuEditUndo").isEnabled());
  EXPECT_EQ(Undo(plot), "&Undo Properties");
  EXPECT_FALSE(In<QToolButton>(plot, "tbzoom").isChecked());
}

TEST_F(DataplotTest, TakesTurningBackAsAWhole) {
  Start();
  Document() = PlaneProject();
  Document().Changed = false;
  Active().Refresh();
  Trigger("mnuPlotData");
  Dataplot& plot = *Plots().back();
  const ViewAngles before = *plot.Plot().Angles();
  auto& box = In<QSpinBox>(plot, "XYAngle");
  EXPECT_EQ(plot.focusWidget(), &plot.View()) << "the arrow keys turn at once";
  const int shown = box.value();
  plot.activateWindow();
  plot.View().setFocus();
  QTest::qWait(5);
  for (int i = 0; i < 4; ++i) QTest::keyClick(&plot.View(), Qt::Key_Right);
  EXPECT_EQ(Undo(plot), "&Undo Turn");
  EXPECT_NE(box.value(), shown);
  QTest::keyClick(&plot.View(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(plot.Plot().Angles(), before);
  EXPECT_EQ(box.value(), shown);
  EXPECT_EQ(Undo(plot), "Can't &Undo");
}

TEST_F(DataplotTest, IsSavedByKeyAndNamedAfterItsFile) {
  Start();
  Dataplot& plot = NewPlot();
  EXPECT_EQ(plot.windowTitle(), "Plot 1 - Untitled[*]");
  Change(plot);
  plot.activateWindow();
  QTest::qWait(5);
  dialogs.ChooseFile(folder.Path("kept"));
  QTest::keyClick(&plot, Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(plot.windowTitle(), "kept.plt[*]");
  EXPECT_FALSE(plot.isWindowModified());
  EXPECT_TRUE(folder.Read("kept.plt").starts_with("\"B_HEADER\""));

  // Of the kinds of file the one that is chosen gives the ending.
  dialogs.Do([this](QDialog& dialog) {
    auto& files = static_cast<QFileDialog&>(dialog);
    emit files.filterSelected("PNG files (*.png)");
    auto& edit = In<QLineEdit>(dialog, "fileNameEdit");
    edit.setText(QString::fromStdString(folder.Path("picture")));
    QTest::keyClick(&edit, Qt::Key_Return);
  });
  dialogs.Type("192");
  dialogs.Press(QMessageBox::Ok);
  plot.activateWindow();
  QTest::qWait(5);
  QTest::keyClick(&plot, Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(dialogs.Said, Said{"The file '" + folder.Path("picture.png") + "' contains the PNG picture."});
  const QImage saved(QString::fromStdString(folder.Path("picture.png")));
  EXPECT_EQ(saved.width(), std::lround(plot.View().width() * 192.0 / plot.View().logicalDpiX()));
  EXPECT_EQ(plot.windowTitle(), "kept.plt[*]");
}

TEST_F(DataplotTest, ClosesWithItsProjectUnlessCancelled) {
  Start();
  Change(NewPlot());
  Change(NewPlot());
  QPointer<quorvexWindow> project = &Active();
  dialogs.Press(QMessageBox::No);
  dialogs.Press(QMessageBox::Cancel);
  Trigger("mnuFileClose");
  EXPECT_EQ(dialogs.Said, (Said{"Save changes to plot 'Plot 1'?", "Save changes to plot 'Plot 2'?"}));
  EXPECT_EQ(Plots().size(), 2);
  EXPECT_FALSE(project.isNull());

  dialogs.Press(QMessageBox::Cancel);
  EXPECT_FALSE(frame->close());
  EXPECT_EQ(Plots().size(), 2);

  // One by one, and the other with the project.
  dialogs.Press(QMessageBox::Yes);
  dialogs.ChooseFile(folder.Path("a.plt"));
  Action(*Plots()[0], "mnuPlotClose").trigger();
  QTest::qWait(10);
  EXPECT_EQ(Plots().size(), 1);
  EXPECT_NE(folder.Read("a.plt"), "");
  dialogs.Press(QMessageBox::No);
  Trigger("mnuFileClose");
  QTest::qWait(10);
  EXPECT_TRUE(Plots().empty());
}

TEST_F(DataplotTest, OpensFilesUnderTheFrame) {
  const std::string a = SavedPlot("a.plt", "first"), b = SavedPlot("b.plt", "second");
  Start('"' + a + '"');
  ASSERT_EQ(Plots().size(), 1);
  EXPECT_EQ(Plots()[0]->windowTitle(), "a.plt[*]");
  EXPECT_EQ(Plots()[0]->parentWidget(), frame.get());
  EXPECT_EQ(Plots()[0]->Plot().PlotTitle, "first");

  Drop({b, a});
  EXPECT_TRUE(QTest::qWaitFor([this] { return Plots().size() == 2; }));
  QTest::qWait(20);
  EXPECT_EQ(Plots().size(), 2) << "the first is shown, not opened again";
  EXPECT_EQ(RecentFiles(session.Preferences, kRecentPlots), (std::vector<std::string>{b, a}));

  auto* windows = frame->findChild<QMenu*>("windowMenu");
  emit windows->aboutToShow();
  QStringList titles;
  for (QAction* entry : windows->actions().last(2)) titles << entry->text().section("  ", 1);
  EXPECT_EQ(titles, (QStringList{"a.plt", "b.plt"}));

  // From the list of the File menu, from the window of another plot, and from that of a project's.
  PlotCalled("b.plt[*]")->close();
  QTest::qWait(10);
  auto* recent = frame->findChild<QMenu*>("recentPlots");
  emit static_cast<QMenu*>(recent->parentWidget())->aboutToShow();
  recent->actions()[0]->trigger();
  EXPECT_NE(PlotCalled("b.plt[*]"), nullptr);
  PlotCalled("b.plt[*]")->close();
  QTest::qWait(10);
  dialogs.ChooseFile(b);
  Action(*PlotCalled("a.plt[*]"), "mnuPlotOpen").trigger();
  ASSERT_NE(PlotCalled("b.plt[*]"), nullptr);
  PlotCalled("b.plt[*]")->close();
  QTest::qWait(10);
  Trigger("mnuFileNew");
  Dataplot& own = NewPlot();
  dialogs.ChooseFile(b);
  Action(own, "mnuPlotOpen").trigger();
  ASSERT_NE(PlotCalled("b.plt[*]"), nullptr);
  EXPECT_EQ(PlotCalled("b.plt[*]")->parentWidget(), frame.get());

  // The frame asks about each, and Cancel keeps them all.
  Change(*PlotCalled("a.plt[*]"));
  Change(*PlotCalled("b.plt[*]"));
  dialogs.Press(QMessageBox::No);
  dialogs.Press(QMessageBox::Cancel);
  EXPECT_FALSE(frame->close());
  EXPECT_EQ(dialogs.Said, (Said{"Save changes to plot '" + a + "'?", "Save changes to plot '" + b + "'?"}));
  EXPECT_EQ(Plots().size(), 3);
  EXPECT_TRUE(frame->isVisible());
  dialogs.Press(QMessageBox::Yes);
  dialogs.Press(QMessageBox::No);
  EXPECT_TRUE(frame->close());
  EXPECT_TRUE(static_cast<PlotClass&>(**OpenPlotFile(a, session.Preferences, {})).SwapAxis);
}

TEST_F(DataplotTest, ClosesWithAllWindows) {
  Start('"' + SavedPlot("a.plt") + '"');
  Trigger("mnuFileNew");
  Change(*Plots()[0]);
  dialogs.Press(QMessageBox::Cancel);
  Trigger("mnuWindowCloseAll");
  EXPECT_EQ(Plots().size(), 1);
  EXPECT_EQ(Windows(), 1);
  dialogs.Press(QMessageBox::No);
  Trigger("mnuWindowCloseAll");
  QTest::qWait(10);
  EXPECT_TRUE(Plots().empty());
  EXPECT_EQ(Windows(), 0);
}

TEST_F(DataplotTest, TellsWhyAFileIsNoPlot) {
  const std::string whole = SavedPlot("a.plt");
  const std::string broken = folder.Write("broken.plt", folder.Read("a.plt").substr(0, 600));
  dialogs.Press(QMessageBox::Ok);
  Start(broken);
  EXPECT_EQ(dialogs.Said.back(),
            "Error reading plot '" + broken + "'.\nThe file is incompatible or appears corrupted.");
  EXPECT_TRUE(Plots().empty());
}

TEST_F(DataplotTest, EditsTemplatesAsText) {
  const std::string file = folder.Write("a.qv2", "plot_title_text = one\r\n");
  Start();
  Dataplot& plot = NewPlot();
  dialogs.ChooseFile(file);
  dialogs.Do([&](QDialog& form) {
    auto& text = In<QPlainTextEdit>(form, "txtTemplate");
    EXPECT_EQ(text.toPlainText(), "plot_title_text = one\n");
    text.selectAll();
    Action(form, "mnuCut").trigger();
    Action(form, "mnuPaste").trigger();
    QTest::keyClicks(&text, "x_axis_title_text = two");
    EXPECT_TRUE(form.isWindowModified());
    Action(form, "mnuSave").trigger();
    EXPECT_FALSE(form.isWindowModified());
    QTest::keyClicks(&text, "!");
    dialogs.Press(QMessageBox::Cancel);
    form.close();
    EXPECT_TRUE(form.isVisible());
    dialogs.Press(QMessageBox::No);
    form.close();
  });
  Action(plot, "mnuPlotTemplateEdit").trigger();
  EXPECT_EQ(dialogs.Said, Said(2, "Save changes to template '" + file + "'?"));
  EXPECT_EQ(folder.Read("a.qv2"), "plot_title_text = one\r\nx_axis_title_text = two");

  dialogs.ChooseFile(file);
  Action(plot, "mnuPlotTemplateApply").trigger();
  EXPECT_EQ(plot.Plot().PlotTitle, "one");
  auto* recent = plot.findChild<QMenu*>("mnuPlotTemplateRecent");
  emit static_cast<QMenu*>(recent->parentWidget())->aboutToShow();
  ASSERT_EQ(recent->actions().size(), 1);
  folder.Write("a.qv2", "plot_title_text = prompt\r\nplot_background_color = prompt\r\n");
  dialogs.Do([](QDialog& form) {
    form.findChild<QLineEdit*>()->setText("asked");
    form.accept();
  });
  dialogs.Do([](QDialog& form) {
    EXPECT_EQ(form.objectName(), "frmTemplatePrompt");
    TypeInto(form, "txtPrompt", "(1, 2, 3)");
    Press(form, QDialogButtonBox::Ok);
  });
  recent->actions()[0]->trigger();
  EXPECT_EQ(plot.Plot().PlotTitle, "asked");
  EXPECT_EQ(plot.Plot().PlotBackgroundColor, 0x030201);

  // Saved are the groups that are ticked.
  dialogs.Do([](QDialog& form) {
    Click(form, "optnSelect1");
    for (auto* box : form.findChildren<QCheckBox*>()) {
      EXPECT_TRUE(box->isChecked());
      if (box->objectName() != "ckOptions0") box->click();
    }
    Press(form, QDialogButtonBox::Ok);
  });
  dialogs.ChooseFile(folder.Path("new.qv2"));
  dialogs.Press(QMessageBox::Yes);
  Action(plot, "mnuPlotTemplateSave").trigger();
  EXPECT_EQ(dialogs.Said.back(), "Do you want to make this the default template?");
  EXPECT_EQ(session.Preferences.Text("template2d"), folder.Path("new.qv2"));
  EXPECT_NE(folder.Read("new.qv2"), "");
}

TEST_F(DataplotTest, ComesBackAfterACrash) {
  const auto copies = [this](const char* state) {
    int count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path(state)))
      count += entry.path().extension() == ".plt";
    return count;
  };
  const std::string file = SavedPlot("a.plt", "first");
  Start('"' + file + '"');
  frame->KeepCopies();
  EXPECT_FALSE(std::filesystem::exists(folder.Path("state"))) << "nothing has changed";
  Trigger("mnuFileNew");
  Change(NewPlot());
  Change(*PlotCalled("a.plt[*]"));
  frame->KeepCopies();
  EXPECT_EQ(copies("state"), 2);
  std::filesystem::copy(folder.Path("state"), folder.Path("crashed"), std::filesystem::copy_options::recursive);
  // What is saved, taken back or closed needs no copy any more.
  Action(*PlotCalled("a.plt[*]"), "mnuPlotSave").trigger();
  EXPECT_EQ(copies("state"), 1);
  Action(*Active().findChild<Dataplot*>(), "mnuEditUndo").trigger();
  EXPECT_EQ(copies("state"), 0);
  Change(*Active().findChild<Dataplot*>());
  frame->KeepCopies();
  EXPECT_EQ(copies("state"), 1);
  dialogs.Press(QMessageBox::No);
  Active().findChild<Dataplot*>()->close();
  QTest::qWait(10);
  EXPECT_EQ(copies("state"), 0);
  CloseUnsaved();
  frame.reset();

  std::filesystem::remove_all(folder.Path("state"));
  std::filesystem::rename(folder.Path("crashed"), folder.Path("state"));
  dialogs.Press(QMessageBox::Yes);
  dialogs.Press(QMessageBox::Yes);
  dialogs.Said.clear();
  Start();
  std::ranges::sort(dialogs.Said);
  const auto asked = [](const std::string& name) {
    return "Quorvex ended unexpectedly while changes to the plot '" + name +
           " were not saved. Do you want to restore them?";
  };
  EXPECT_EQ(dialogs.Said, (Said{asked(file + "'"), asked("Plot 1' of the project 'Untitled'")}));
  ASSERT_EQ(Plots().size(), 2);
  ASSERT_NE(PlotCalled("a.plt[*]"), nullptr);
  Dataplot* fresh = PlotCalled("Plot 1 - Untitled[*]");
  ASSERT_NE(fresh, nullptr);
  for (Dataplot* plot : Plots()) {
    EXPECT_TRUE(plot->isWindowModified());
    EXPECT_TRUE(Plot(*plot).SwapAxis);
    EXPECT_EQ(plot->findChild<QAction*>("mnuPlotAdd"), nullptr) << "without its project";
  }
  // A number is given once.
  dialogs.ChooseFile(folder.Write("numbers.dat", "1 2\n3 4\n"));
  Action(*fresh, "mnuPlotOpen").trigger();
  ASSERT_NE(PlotCalled("Plot 2[*]"), nullptr);
  PlotCalled("Plot 2[*]")->close();

  dialogs.ChooseFile(folder.Path("kept.plt"));
  Action(*fresh, "mnuPlotSave").trigger();
  Action(*PlotCalled("a.plt[*]"), "mnuPlotSave").trigger();
  EXPECT_TRUE(static_cast<PlotClass&>(**OpenPlotFile(file, session.Preferences, {})).SwapAxis);
  EXPECT_TRUE(frame->close());
  frame.reset();
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path("state")));
}

TEST_F(DataplotTest, IsTakenFromASecondStart) {
  const std::string file = SavedPlot("a.plt", "first");
  Start();
  FileRequests requests;
  QObject::connect(&requests, &FileRequests::Requested, frame.get(), &parentfrm::OpenRequestedFile);
  ASSERT_TRUE(requests.Listen());
  for (int times = 0; times < 2; ++times) {
    QProcess second;
    second.start(QString::fromStdString(DesktopProgram()), {QString::fromStdString(file)});
    EXPECT_TRUE(QTest::qWaitFor([&] { return second.state() == QProcess::NotRunning; }, 20'000));
    EXPECT_EQ(second.exitCode(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return PlotCalled("a.plt[*]") != nullptr; }));
  }
  QTest::qWait(50);
  EXPECT_EQ(Plots().size(), 1) << "the one that is open is shown";
}

// What the program does with a plot that a file manager opens.
TEST_F(DataplotTest, IsOpenedByTheProgramItself) {
  const std::string file = SavedPlot("a.plt");
  folder.Write("quorvex.ini", "[startup]\nShow Tips at Startup=0\n");
  QProcess program;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("XDG_STATE_HOME", QString::fromStdString(folder.Path("state")));
  program.setProcessEnvironment(environment);
  program.start(QString::fromStdString(DesktopProgram()), {QString::fromStdString(file)});
  ASSERT_TRUE(program.waitForStarted());
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return folder.Read("quorvex.ini").find("RecentFile1=" + file) != std::string::npos; }, 10'000));
  program.terminate();
  EXPECT_TRUE(program.waitForFinished());
}

}  // namespace
}  // namespace quorvex
