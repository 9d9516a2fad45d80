// The window of a plot of three dimensions, used as a user does.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QSpinBox>
#include <QTest>

#include "Accessibility.h"
#include "RecordingPrompter.h"
#include "engine/MvClass.h"
#include "files/ui/Dataplot.h"
#include "plot/ui/PlotView.h"
#include "results/ResultPlots.h"

namespace quorvex {
namespace {

// The surface of a model over nine points of a square, in its window.
class PlotTurn : public testing::Test {
 protected:
  void Open(const std::string& equation = "a+x1*x2") {
    SolveData data;
    data.X = {{1, 2, 3, 1, 2, 3, 1, 2, 3}, {1, 1, 1, 2, 2, 2, 3, 3, 3}};
    data.Y = {2, 3, 4, 3.5, 5, 7, 4, 7.5, 10};
    data.SD = std::vector<double>(9, 0.5);
    MvClass model{LocaleText()};
    model.SetID(equation, {equation});
    model.SetIC(data);
    model.SetValue(1, 1);
    auto plot = PageOf(SurfacePlot(model.CopyTo(), equation, data, {"X1", "X2", "Y"}, settings));
    ASSERT_TRUE(plot);
    ASSERT_TRUE((*plot)->CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, prompter));
    window = std::make_unique<Dataplot>(PlotDocument(std::move(*plot), settings, prompter));
    window->resize(640, 480);
    window->show();
    window->activateWindow();
    QTest::qWait(20);
    QObject::connect(&View(), &PlotView::Changed, [this] { ++changes; });
  }

  PlotView& View() { return window->View(); }
  QAction* Action(const char* name) { return window->findChild<QAction*>(name); }
  QSpinBox& Box(const char* name) { return *window->findChild<QSpinBox*>(name); }
  ViewAngles Angles() { return *window->Plot().Angles(); }
  ViewAngles Shown() {
    return {static_cast<double>(Box("XYAngle").value()), static_cast<double>(Box("ZAngle").value())};
  }
  void Mouse(QEvent::Type type, QPoint at) {
    const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, View().mapToGlobal(at), button, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&View(), &event);
  }
  QImage Painted() { return View().grab().toImage(); }

  Settings settings;
  RecordingPrompter prompter;
  std::unique_ptr<Dataplot> window;
  int changes = 0;
};

TEST_F(PlotTurn, FollowsKeysAndMouseAndItsBoxesDo) {
  Open();
  EXPECT_EQ(Shown(), Angles());
  View().setFocus();
  QTest::keyClick(&View(), Qt::Key_Right);
  QTest::keyClick(&View(), Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(Angles(), (ViewAngles{145, 31}));
  EXPECT_EQ(Shown(), Angles());
  QTest::keyClick(&View(), Qt::Key_Right, Qt::ControlModifier);
  EXPECT_EQ(Angles().XY, 145) << "a command of the window";
  EXPECT_EQ(changes, 2);

  const QPoint middle = View().rect().center();
  Mouse(QEvent::MouseButtonPress, middle);
  Mouse(QEvent::MouseMove, middle + QPoint(View().width() / 12, 0));  // some 15 degrees
  EXPECT_NEAR(Angles().XY, 160, 0.5);
  EXPECT_EQ(Shown().XY, qRound(Angles().XY));
  Mouse(QEvent::MouseButtonRelease, middle);
  // The other angle, which no box can show, stays as it is.
  const double between = Angles().XY;
  ASSERT_NE(between, std::round(between));
  Box("ZAngle").setValue(60);
  EXPECT_EQ(Angles(), (ViewAngles{between, 60}));
}

TEST_F(PlotTurn, IsSetByItsBoxes) {
  Open();
  const QImage before = View().Picture();
  QSpinBox& xy = Box("XYAngle");
  xy.setFocus();
  xy.selectAll();
  QTest::keyClicks(&xy, "359");
  EXPECT_EQ(Angles(), (ViewAngles{359, 30}));
  EXPECT_NE(View().Picture(), before) << "at once";
  for (const auto& [key, angle] :
       {std::pair{Qt::Key_Up, 360.0}, {Qt::Key_Up, 1}, {Qt::Key_Down, 0}, {Qt::Key_Down, 359}}) {
    const QImage shown = View().Picture();
    QTest::keyClick(&xy, key);
    EXPECT_EQ(Angles(), (ViewAngles{angle, 30})) << "round and round";
    EXPECT_NE(View().Picture(), shown) << "no step is dead";
  }
  EXPECT_EQ(changes, 7);
  QSpinBox& z = Box("ZAngle");
  z.setValue(180);
  QTest::keyClick(&z, Qt::Key_Up);
  EXPECT_EQ(Angles(), (ViewAngles{359, 180}));
}

TEST_F(PlotTurn, BringsAnglesBackIntoTheirRange) {
  Open();
  const struct {
    const char *box, *typed;
    int shown;
  } kCases[] = {{"XYAngle", "720", 0},   {"XYAngle", "725", 5},         {"XYAngle", "-1", 359},
                {"XYAngle", "360", 360}, {"XYAngle", "-720", 0},        {"XYAngle", "361", 1},
                {"ZAngle", "181", 180},  {"ZAngle", "2000000000", 180}, {"ZAngle", "-1", 0},
                {"ZAngle", "99", 99},    {"ZAngle", "3000000000", 180}, {"ZAngle", "-", 180},
                {"ZAngle", "", 180},     {"XYAngle", "4\u00B0", 4},     {"XYAngle", "x7.5", 75}};
  for (const auto& c : kCases) {
    QSpinBox& box = Box(c.box);
    box.setFocus();
    box.selectAll();
    QTest::keyClick(&box, Qt::Key_Delete);
    for (const QChar key : QString::fromUtf8(c.typed))
      QTest::sendKeyEvent(QTest::Click, &box, Qt::Key_unknown, key, Qt::NoModifier);
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(box.value(), c.shown) << c.box << ": " << c.typed;
    EXPECT_EQ(box.text(), QString("%1\u00B0").arg(c.shown));
    EXPECT_EQ(Shown(), Angles()) << c.box << ": " << c.typed;
  }
}

TEST_F(PlotTurn, DrawsOnceForWhatComesTogether) {
  Open();
  const QImage before = Painted();
  for (int i = 0; i < 5; ++i) QTest::keyClick(&View(), Qt::Key_Left);
  EXPECT_EQ(Painted(), before);
  QTest::qWait(5);
  EXPECT_NE(Painted(), before);
  EXPECT_EQ(Painted(), View().Picture());
  EXPECT_EQ(Angles().XY, 115);
}

TEST_F(PlotTurn, GetsTheKeyboardByTab) {
  Open();
  std::vector<QWidget*> met;
  const QImage before = Painted();
  Box("XYAngle").setFocus();
  for (int i = 0; i < 3; ++i) {
    met.push_back(window->focusWidget());
    if (i < 2) QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(met, (std::vector<QWidget*>{&Box("XYAngle"), &Box("ZAngle"), &View()}));
  EXPECT_NE(Painted(), before) << "and says so";
}

TEST_F(PlotTurn, OffersWhatAPlotWithoutAFrameHas) {
  Open();
  for (const char* name : {"mnuPlotFormatZoom", "mnuPlotShowCoords", "SwapAxis"})
    EXPECT_EQ(Action(name), nullptr) << name;
  for (const char* name : {"mnuPlotFormatFitAll", "mnuPlotClipItem0", "mnuPlotClipItem1", "mnuPlotPrint"})
    EXPECT_NE(Action(name), nullptr) << name;
  const AccessibilityWalk walk(*window);
  for (const char* name : {"Plot", "X1-X2 view angle", "X1-Y view angle"}) EXPECT_TRUE(walk.Names.contains(name));
  ExpectMnemonicsDoNotMeet(window->findChild<QMenuBar*>()->actions());
}

TEST_F(PlotTurn, IsSwitchedByTheViewMenu) {
  Open();
  for (const char* name :
       {"XLogScale", "YLogScale", "ZLogScale", "Make3DSquare", "ShowXYMajorGrids", "ShowXYMinorGrids",
        "ShowXZMajorGrids", "ShowXZMinorGrids", "ShowYZMajorGrids", "ShowYZMinorGrids", "ShadePlanes", "ShadeMesh",
        "ShadeMeshByValue", "DisplayContourLines", "ShowLegend", "ShowErrorBars", "ShowResidualBars"}) {
    const QImage before = View().Picture();
    const bool on = Action(name)->isChecked();
    Action(name)->trigger();
    EXPECT_EQ(Action(name)->isChecked(), !on) << name;
    EXPECT_NE(View().Picture(), before) << name;
    Action(name)->trigger();
    EXPECT_EQ(View().Picture(), before) << name;
  }
  EXPECT_TRUE(Action("MeshColorScheme8")->isChecked());
  const QImage spectrum = View().Picture();
  for (int scheme = 0; scheme < kMeshSchemes; ++scheme) {
    const std::string name = "MeshColorScheme" + std::to_string(scheme);
    Action(name.c_str())->trigger();
    EXPECT_TRUE(Action(name.c_str())->isChecked()) << name;
    EXPECT_EQ(View().Picture() == spectrum, scheme == kSpectrumScheme) << name;
  }
  EXPECT_FALSE(Action("MeshColorScheme8")->isChecked()) << "one at a time";

  // What would not show is not offered.
  const auto offered = [&] {
    std::string names;
    for (const char* name : {"ShadeMeshByValue", "MeshColorScheme8", "DisplayContourLines", "DisplayLine"})
      if (Action(name)->isEnabled()) names += std::string(" ") + name;
    return names;
  };
  EXPECT_EQ(offered(), " ShadeMeshByValue MeshColorScheme8 DisplayContourLines");
  Action("MeshColorScheme9")->trigger();
  EXPECT_EQ(offered(), " ShadeMeshByValue MeshColorScheme8 DisplayLine");
  Action("ShadeMeshByValue")->trigger();
  EXPECT_EQ(offered(), " ShadeMeshByValue DisplayLine");
  const QImage mesh = View().Picture();
  const DeviceRect legend = window->Plot().Shown().Legend;
  Action("DisplayLine")->trigger();
  EXPECT_NE(View().Picture(), mesh);
  EXPECT_EQ(window->Plot().Shown().Legend, legend) << "a filled surface is shown without its lines";
  Action("ShadeMesh")->trigger();
  EXPECT_EQ(offered(), " DisplayLine");

  // Bars that were off while the table was made.
  Action("ShowResidualBars")->trigger();
  const QImage bare = View().Picture();
  Action("mnuPlotFormatFitAll")->trigger();
  Action("ShowResidualBars")->trigger();
  EXPECT_NE(View().Picture(), bare);

  Action("SeeFromAbove")->trigger();
  EXPECT_EQ(Angles(), (ViewAngles{180, 90}));
  EXPECT_EQ(Shown(), Angles());
  EXPECT_TRUE(prompter.Said.empty());
}

// The points are positive, and the surface is not.
TEST_F(PlotTurn, SaysOnceWhyALogarithmicAxisCannotBe) {
  Open("a*(x1-1.5)*x2");
  const QImage before = View().Picture();
  Action("ZLogScale")->trigger();
  const std::vector<std::string> said = {
      "refuse: An error occurred because a portion of the predicted curve crosses the zero axis, and cannot be plotted "
      "on log scale"};
  EXPECT_EQ(prompter.Said, said);
  EXPECT_TRUE(Action("ZLogScale")->isChecked());
  QTest::keyClick(&View(), Qt::Key_Right);
  window->resize(500, 400);
  QTest::qWait(10);
  window->resize(640, 480);
  QTest::qWait(10);
  View().Redraw();
  EXPECT_EQ(prompter.Said, said);
  Action("ZLogScale")->trigger();
  EXPECT_FALSE(Action("ZLogScale")->isChecked());
  EXPECT_EQ(View().Picture(), before);
  EXPECT_EQ(prompter.Said, said);
}

}  // namespace
}  // namespace quorvex
