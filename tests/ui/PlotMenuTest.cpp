// The Plot menu and the windows that it opens, used as a user does.

#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QTableView>

#include "Accessibility.h"
#include "Frame.h"
#include "files/ui/Dataplot.h"
#include "results/SolvedProject.h"

namespace quorvex {
namespace {

class PlotMenuTest : public Frame {
 protected:
  // Five points about a line, and these models of the catalogue solved.
  void Open(const std::vector<const char*>& models, bool hasStandardDeviation = false) {
    Start();
    Document() =
        hasStandardDeviation ? ProjectOf({{1, 2, 3, 4, 5}, {3, 5, 8, 9, 11}, {1, 2, 1, 2, 1}}, true) : LineProject();
    Solve(models);
  }
  // The same about a plane.
  void OpenPlane(const std::vector<const char*>& models) {
    Start();
    Document() = PlaneProject();
    Solve(models);
  }
  void Solve(const std::vector<const char*>& models) {
    for (const char* name : models) SolveModel(Document(), name, 1);
    Active().Refresh();
  }
  QList<Dataplot*> Plots() { return Active().findChildren<Dataplot*>(); }
  static QStringList Legend(Dataplot& window) {
    QStringList texts;
    for (const PlotSeries& series : window.Plot().PlotData) texts << QString::fromStdString(series.Style().LegendText);
    return texts;
  }
};

TEST_F(PlotMenuTest, ShowsDataThatOutliveTheirSheet) {
  Open({}, true);
  Trigger("mnuPlotData");
  ASSERT_EQ(Plots().size(), 1);
  QPointer<Dataplot> plot = Plots()[0];
  EXPECT_TRUE(plot->isVisible());
  EXPECT_EQ(plot->windowTitle(), "Plot 1 - Untitled[*]");
  EXPECT_EQ(Legend(*plot), QStringList{"Input Data"});
  EXPECT_TRUE(plot->findChild<QAction*>("ShowErrorBars")->isChecked());

  Trigger("mnuEditSelectAll");
  EXPECT_EQ(SaidBy("mnuPlotData"), "The currently selected range contains more than two columns.");
  Select(1, 1, 3, 2);
  Trigger("mnuPlotData");
  ASSERT_EQ(Plots().size(), 2);
  EXPECT_EQ(Plots()[1]->windowTitle(), "Plot 2 - Untitled[*]");
  EXPECT_EQ(Plots()[1]->Plot().PlotData[0].NumTablePoints(), 3U);

  // The Window menu has the plots behind their project.
  auto* windows = frame->findChild<QMenu*>("windowMenu");
  emit windows->aboutToShow();
  const QList<QAction*> entries = windows->actions().last(3);
  EXPECT_TRUE(entries[0]->text().contains("Untitled") && entries[0]->isChecked());
  EXPECT_TRUE(entries[1]->text().endsWith("Plot 1 - Untitled"));
  EXPECT_TRUE(entries[2]->text().endsWith("Plot 2 - Untitled"));
  entries[1]->trigger();

  Document().Sheet.Cells.GridClearRange({1, 1, 5, 3});
  Active().Refresh();
  plot->View().Redraw();
  EXPECT_EQ(plot->Plot().PlotData[0].NumTablePoints(), 5U);
  Grid().setCurrentIndex(Grid().model()->index(0, 0));
  EXPECT_EQ(SaidBy("mnuPlotData"), "You need at least 2 data points in order to create a plot.");

  // A window closes by itself, and with its project.
  QPointer<Dataplot> other = Plots()[1];
  other->findChild<QAction*>("mnuPlotClose")->trigger();
  QTest::qWait(10);
  EXPECT_TRUE(other.isNull());
  EXPECT_FALSE(plot.isNull());
  Document().Changed = false;
  Trigger("mnuFileClose");
  QTest::qWait(10);
  EXPECT_TRUE(plot.isNull());
}

TEST_F(PlotMenuTest, ShowsSelectedOrAllSolutions) {
  Open({"a*x+b", "a+b/x", "a*x^2+b*x+c"});
  auto& list = *Active().findChild<QTableView*>("SolvedList");
  ASSERT_EQ(list.model()->rowCount(), 3);
  list.selectRow(1);
  Trigger("mnuPlotSelected");
  ASSERT_EQ(Plots().size(), 1);
  EXPECT_EQ(Legend(*Plots()[0]), (QStringList{"Input Data", "a*x+b"}));
  Trigger("mnuPlotAll");
  ASSERT_EQ(Plots().size(), 2);
  EXPECT_EQ(Legend(*Plots()[1]), (QStringList{"Input Data", "a*x^2+b*x+c", "a*x+b", "a+b/x"}));
  EXPECT_TRUE(dialogs.Said.empty());

  // The solutions go, the curves stay.
  const double before = Plots()[1]->Plot().PlotData[2].CopyDataTo().Y.back();
  Document().Models = ModelCollection();
  Active().Refresh();
  Plots()[1]->View().ZoomOut();
  EXPECT_EQ(Plots()[1]->Plot().PlotData[2].CopyDataTo().Y.back(), before);
  for (const char* command : {"mnuPlotSelected", "mnuPlotAll"}) {
    EXPECT_EQ(SaidBy(command), "There are no regression models to plot.");
  }
}

TEST_F(PlotMenuTest, ShowsPointsAndOneSurfaceOfTwoVariables) {
  OpenPlane({"a+b*x1+c*x2", "a+b*x1+c/x2"});
  Trigger("mnuPlotData");
  ASSERT_EQ(Plots().size(), 1);
  EXPECT_EQ(Legend(*Plots()[0]), QStringList{"Input Data"});
  EXPECT_TRUE(Plots()[0]->Plot().Angles());
  EXPECT_EQ(Plots()[0]->findChild<QAction*>("ShadeMesh"), nullptr) << "no surface";
  Select(1, 1, 5, 2);
  Trigger("mnuPlotData");
  ASSERT_EQ(Plots().size(), 2);
  EXPECT_FALSE(Plots()[1]->Plot().Angles());

  auto& list = *Active().findChild<QTableView*>("SolvedList");
  list.selectRow(1);
  Trigger("mnuPlotSelected");
  ASSERT_EQ(Plots().size(), 3);
  EXPECT_EQ(Legend(*Plots()[2]), (QStringList{"Input Data", "Model " + list.model()->index(1, 1).data().toString()}));
  EXPECT_TRUE(Plots()[2]->Plot().Angles());
  constexpr const char* kOne =
      "Only one model at a time can be displayed on a 3D plot. Please select a single model from the Available "
      "Solutions list.";
  EXPECT_EQ(SaidBy("mnuPlotAll"), kOne);
  list.selectAll();
  EXPECT_EQ(SaidBy("mnuPlotSelected"), kOne);

  Document().Sheet.Cells.GridClearRange({2, 1, 5, 3});
  Grid().setCurrentIndex(Grid().model()->index(0, 0));
  EXPECT_EQ(SaidBy("mnuPlotData"), "You need at least 2 data points in order to create a plot.");
  list.selectRow(0);
  EXPECT_EQ(SaidBy("mnuPlotSelected"), "You need at least 2 data points in order to create a plot.");
}

TEST_F(PlotMenuTest, ShowsResidualsOfOneSolution) {
  OpenPlane({"a+b*x1+c*x2", "a+b*x1+c/x2"});
  auto& list = *Active().findChild<QTableView*>("SolvedList");
  list.selectRow(1);
  const std::string name = list.model()->index(1, 1).data().toString().toStdString();
  Trigger("mnuPlotResiduals");
  Trigger("mnuPlotProbability");
  ASSERT_EQ(Plots().size(), 2);
  EXPECT_EQ(Plots()[0]->Plot().PlotTitle, "Residual Error for Equation " + name);
  EXPECT_EQ(Legend(*Plots()[0]), QStringList{"Residuals"});
  EXPECT_EQ(Plots()[1]->Plot().PlotTitle, "Residual Normal Probability Plot");
  EXPECT_NE(Plots()[1]->findChild<QAction*>("mnuPlotFormatZoom"), nullptr);
  list.selectAll();
  EXPECT_EQ(SaidBy("mnuPlotProbability"),
            "Only one model at a time can be displayed on a Normal Residual plot. Please select a single model from "
            "the Available Solutions list.");
  Document().Models = ModelCollection();
  Active().Refresh();
  EXPECT_EQ(SaidBy("mnuPlotResiduals"), "There are no regression models to plot.");
}

TEST_F(PlotMenuTest, TurnsSwitchesByTheViewMenu) {
  Open({"a*x+b"});
  Trigger("mnuPlotAll");
  ASSERT_EQ(Plots().size(), 1);
  Dataplot& plot = *Plots()[0];
  const auto action = [&](const char* name) { return plot.findChild<QAction*>(name); };
  EXPECT_EQ(action("ShowErrorBars"), nullptr) << "no deviations";
  EXPECT_TRUE(action("ShowLegend")->isChecked());
  for (const char* name : {"XLogScale", "YLogScale", "SwapAxis", "Make2DSquare", "ShowXMajorGrids", "ShowXMinorGrids",
                           "ShowYMajorGrids", "ShowYMinorGrids", "ShowExtraXTicks", "ShowExtraYTicks", "ShowLegend"}) {
    const QImage before = plot.View().Picture();
    const bool on = action(name)->isChecked();
    action(name)->trigger();
    EXPECT_EQ(action(name)->isChecked(), !on) << name;
    EXPECT_NE(plot.View().Picture(), before) << name;
    action(name)->trigger();
    EXPECT_EQ(plot.View().Picture(), before) << name;
  }
  // What has no place on a logarithmic axis leaves it linear, and the entry says so.
  plot.Plot().PlotData[0] = [] {
    DataClass data;
    data.GenerateTable({{-1, 2}}, {3, 4});
    return data;
  }();
  action("XLogScale")->trigger();
  EXPECT_FALSE(action("XLogScale")->isChecked());

  // While the user zooms nothing else is at hand.
  action("mnuPlotFormatZoom")->trigger();
  EXPECT_FALSE(action("SwapAxis")->isEnabled());
  QTest::keyClick(&plot.View(), Qt::Key_Escape);
  EXPECT_TRUE(action("SwapAxis")->isEnabled());

  EXPECT_TRUE(AccessibilityWalk(plot).Names.contains("Plot"));
  ExpectMnemonicsDoNotMeet(plot.findChild<QMenuBar*>()->actions());
}

}  // namespace
}  // namespace quorvex
