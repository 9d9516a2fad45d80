// The Plot menu and the windows that it opens, used as a user does.

#include <QComboBox>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QTableView>

#include "Accessibility.h"
#include "Frame.h"
#include "files/ui/Dataplot.h"
#include "plot/ui/frmPlotInfo.h"
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
  static void Inspect(QDialog& form) {
    AccessibilityWalk{form};
    ExpectMnemonicsDoNotMeet(form);
    EXPECT_NE(form.focusWidget(), nullptr);
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
  EXPECT_EQ(SaidBy("mnuPlotData"),
            "Invalid range selection. The currently selected range contains more than two columns.");
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

TEST_F(PlotMenuTest, ShowsModelsOnlyWhereAsked) {
  Open({"a*x+b", "a+b/x"});
  Trigger("mnuPlotModelsOnly");
  EXPECT_TRUE(session.Preferences.Flag("plotmodelsonly"));
  emit frame->findChild<QMenu*>("plot")->aboutToShow();
  EXPECT_TRUE(Action("mnuPlotModelsOnly").isChecked());
  Trigger("mnuPlotAll");
  ASSERT_EQ(Plots().size(), 1);
  EXPECT_EQ(Legend(*Plots()[0]), (QStringList{"a*x+b", "a+b/x"}));
  Document() = PlaneProject();
  Solve({"a+b*x1+c*x2"});
  Trigger("mnuPlotAll");
  ASSERT_EQ(Plots().size(), 2);
  EXPECT_EQ(Legend(*Plots()[1]), QStringList{"Model a+b*x1+c*x2"});
  EXPECT_FALSE(Plots()[1]->Plot().PlotData[0].Style().ShowErrorBars);
  Trigger("mnuPlotData");
  EXPECT_EQ(Legend(*Plots()[2]), QStringList{"Input Data"});
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
  dialogs.Do([](QDialog& form) { form.reject(); });
  Trigger("mnuPlotResiduals");
  EXPECT_TRUE(Plots().isEmpty());
  dialogs.Do([](QDialog& form) {
    EXPECT_EQ(form.objectName(), "frmScatterType");
    Inspect(form);
    auto& types = In<QComboBox>(form, "cmbScatterType");
    EXPECT_EQ(types.currentText(), "Row");
    types.setCurrentText("Calculated Y");
    Press(form, QDialogButtonBox::Ok);
  });
  Trigger("mnuPlotResiduals");
  Trigger("mnuPlotProbability");
  ASSERT_EQ(Plots().size(), 2);
  EXPECT_EQ(Plots()[0]->Plot().Axes()[0]->AxisTitle, "Calculated Y");
  EXPECT_EQ(Plots()[0]->Plot().PlotTitle, "Residual Error for Equation " + name);
  EXPECT_EQ(Legend(*Plots()[0]), (QStringList{"Residuals", ""}));
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

TEST_F(PlotMenuTest, ShowsColumnsThatAreChosenByName) {
  Start();
  Document() = ProjectOf({{1, 2, 3}, {4, 5, 7}, {6, 9, 8}, {10, 20, 40}});
  Document().Sheet.Headers = {"Time", "Depth", "", "Heat"};
  Active().Refresh();
  dialogs.Do([this](QDialog& form) {
    EXPECT_EQ(form.objectName(), "frmPlotSelect");
    Inspect(form);
    EXPECT_EQ(Rows(List(form, "lstX")), (QStringList{"Row", "Time", "Depth", "Column 3", "Heat"}));
    EXPECT_EQ(Rows(List(form, "lstY")), (QStringList{"Time", "Depth", "Column 3", "Heat"}));
    List(form, "lstY").clearSelection();
    dialogs.Press(QMessageBox::Ok);
    Press(form, QDialogButtonBox::Ok);
    List(form, "lstX").clearSelection();
    Choose(List(form, "lstY"), "Heat");
    dialogs.Press(QMessageBox::Ok);
    Press(form, QDialogButtonBox::Ok);
    for (const int row : {1, 2}) List(form, "lstX").item(row)->setSelected(true);
    Click(form, "optnPlotType1");
    Press(form, QDialogButtonBox::Ok);
  });
  Trigger("mnuPlotData");  // of more variables than a plot shows
  EXPECT_EQ(dialogs.Said, (Said{"Please select which data column to plot on the vertical plot axis.",
                                "Please select at least one data column to plot on the horizontal plot axis."}));
  ASSERT_EQ(Plots().size(), 1);
  EXPECT_EQ(Legend(*Plots()[0]), (QStringList{"Time", "Depth"}));
  EXPECT_TRUE(Plots()[0]->Plot().PlotData[1].Style().DisplayLine);
  EXPECT_EQ(Plots()[0]->Plot().Axes()[1]->AxisTitle, "Heat");

  dialogs.Do([](QDialog& form) { Press(form, QDialogButtonBox::Cancel); });
  Trigger("mnuPlotColumns");
  EXPECT_EQ(Plots().size(), 1);
}

TEST_F(PlotMenuTest, ShowsInterpolations) {
  Open({"a*x+b"});
  EXPECT_EQ(SaidBy("mnuPlotInterpolations"), "There are no interpolation models to plot.");
  std::string log;
  ASSERT_TRUE(Document().Interpolations[0].Fit(GatherData(Document().Sheet).Points, log));
  Document().Interpolations[0].Solved = true;
  Active().Refresh();
  Trigger("mnuPlotInterpolations");
  ASSERT_EQ(Plots().size(), 1);
  EXPECT_EQ(Legend(*Plots()[0]), (QStringList{"Input Data", "Cubic Spline"}));
}

TEST_F(PlotMenuTest, ShowsAnEquation) {
  Start();
  dialogs.Do([this](QDialog& form) {
    EXPECT_EQ(form.objectName(), "frmPlotEquation");
    EXPECT_EQ(form.windowTitle(), "Plot Equation");
    Inspect(form);
    EXPECT_EQ(form.focusWidget(), &LineBox(form, "txt2D"));
    dialogs.Press(QMessageBox::Ok);
    Press(form, QDialogButtonBox::Ok);
    EXPECT_EQ(form.focusWidget(), &LineBox(form, "txt2D"));
    TypeInto(form, "txt2D", "sin(x)");
    TypeInto(form, "txtXMax", "6");
    TypeInto(form, "txtXDivisions", "7");
    Press(form, QDialogButtonBox::Ok);
  });
  Trigger("mnuPlotNewEquation");
  EXPECT_EQ(dialogs.Said, Said{"Please enter a valid equation."});
  ASSERT_EQ(Plots().size(), 1);
  EXPECT_EQ(Legend(*Plots()[0]), QStringList{"sin(x)"});
  EXPECT_EQ(Plots()[0]->Plot().PlotData[0].NumTablePoints(), 7U);

  dialogs.Do([](QDialog& form) {
    Click(form, "optnType1");
    Inspect(form);
    TypeInto(form, "txt3D", "x1*x2");
    TypeInto(form, "txtX1Min", "-1");
    TypeInto(form, "txtX2Max", "5");
    TypeInto(form, "txtX1Divisions", "4");
    TypeInto(form, "txtX2Divisions", "3");
    Press(form, QDialogButtonBox::Ok);
  });
  Trigger("mnuPlotNewEquation");
  ASSERT_EQ(Plots().size(), 2);
  const PlotSeries& surface = Plots()[1]->Plot().PlotData[0];
  EXPECT_EQ(surface.NumTablePoints(), 12U);
  EXPECT_EQ(surface.InputYMin(), -5);
  EXPECT_EQ(surface.InputXMax(2), 5);
}

TEST_F(PlotMenuTest, GivesAnEquationTheTemplateThatIsChosen) {
  const std::string usual = folder.Write("usual.qv2", "plot_title_text = As always\nx_axis_title_text = Time\n");
  const std::string chosen = folder.Write("chosen.qv2", "plot_title_text = Chosen\n");
  const std::string solid = folder.Write("solid.qv3", "plot_title_text = Solid\n");
  folder.Write("quorvex.ini", "[startup]\ntemplate2d=" + usual + "\n");
  Start();
  const auto begin = [this](QDialog& form, const std::string& file, const char* button) {
    dialogs.ChooseFile(file);
    Click(form, button);
  };
  dialogs.Do([&](QDialog& form) {
    EXPECT_EQ(LineBox(form, "txtTemplate2D").placeholderText(), "usual.qv2");
    TypeInto(form, "txt2D", "x");
    Press(form, QDialogButtonBox::Ok);
  });
  Trigger("mnuPlotNewEquation");
  dialogs.Do([&](QDialog& form) {
    TypeInto(form, "txt2D", "x");
    begin(form, solid, "cmdTemplate2D");
    dialogs.Press(QMessageBox::Ok);
    Press(form, QDialogButtonBox::Ok);
    EXPECT_TRUE(form.isVisible());
    begin(form, chosen, "cmdTemplate2D");
    Press(form, QDialogButtonBox::Ok);
  });
  Trigger("mnuPlotNewEquation");
  EXPECT_EQ(dialogs.Said, Said{"You cannot apply a 3D Template to a 2D Plot."});
  dialogs.Do([&](QDialog& form) {
    Click(form, "optnType1");
    TypeInto(form, "txt3D", "x1+x2");
    begin(form, solid, "cmdTemplate3D");
    Press(form, QDialogButtonBox::Ok);
  });
  Trigger("mnuPlotNewEquation");
  ASSERT_EQ(Plots().size(), 3);
  const auto titles = [this](int plot) {
    return Plots()[plot]->Plot().PlotTitle + ", " + Plots()[plot]->Plot().Axes()[0]->AxisTitle;
  };
  EXPECT_EQ(titles(0), "As always, Time");
  EXPECT_EQ(titles(1), "Chosen, X");
  EXPECT_EQ(titles(2), "Solid, X1");
}

TEST_F(PlotMenuTest, GivesDataOfTheProjectToAPlotThatIsOpen) {
  Open({"a*x+b"});
  Trigger("mnuPlotData");
  ASSERT_EQ(Plots().size(), 1);
  Dataplot& plot = *Plots()[0];
  auto& add = *plot.findChild<QAction*>("mnuPlotAdd");
  EXPECT_TRUE(plot.View().actions().contains(&add));
  dialogs.Do([this](QDialog& form) {
    EXPECT_EQ(form.objectName(), "GraphList");
    Inspect(form);
    EXPECT_EQ(Rows(List(form, "lstGraphs")), (QStringList{"Input Data", "a*x+b"}));
    dialogs.Press(QMessageBox::Ok);
    Press(form, QDialogButtonBox::Ok);
    Choose(List(form, "lstGraphs"), "a*x+b");
    Press(form, QDialogButtonBox::Ok);
  });
  const QImage before = plot.View().Picture();
  add.trigger();
  EXPECT_EQ(dialogs.Said, Said{"Please select data from the list or press Cancel"});
  EXPECT_EQ(Legend(plot), (QStringList{"Input Data", "a*x+b"}));
  const QImage after = plot.View().Picture();
  EXPECT_NE(after, before);
  auto& undo = *plot.findChild<QAction*>("mnuEditUndo");
  EXPECT_EQ(undo.text(), "&Undo Add from Project");
  undo.trigger();
  EXPECT_EQ(plot.View().Picture(), before);
  plot.findChild<QAction*>("mnuEditRedo")->trigger();
  EXPECT_EQ(plot.View().Picture(), after);
  dialogs.Do([](QDialog& form) { form.reject(); });
  add.trigger();
  EXPECT_EQ(Legend(plot).size(), 2);

  // What it holds stays, whatever the project has by then.
  Document() = PlaneProject();
  Document().Sheet.Cells.GridClearRange({1, 1, 5, 3});
  Active().Refresh();
  dialogs.Press(QMessageBox::Ok);
  add.trigger();
  EXPECT_EQ(dialogs.Said.back(), "The project has no data or solutions that this plot can show.");
  EXPECT_EQ(plot.View().Picture(), after);
}

TEST_F(PlotMenuTest, MakesNewPlotsFromTheWindowOfAPlot) {
  Open({"a*x+b"});
  Active().findChild<QTableView*>("SolvedList")->selectRow(0);
  Trigger("mnuPlotData");
  ASSERT_EQ(Plots().size(), 1);
  const struct {
    const char* entry;
    QStringList legend;
  } kWays[] = {{"mnuPlotNewItem0", {"Input Data"}},
               {"mnuPlotNewItem1", {"Input Data", "a*x+b"}},
               {"mnuPlotNewItem2", {"Residuals", ""}},
               {"mnuPlotNewItem3", {"Residuals", "Reference line"}},
               {"mnuPlotNewEquation", {"x^2"}}};
  dialogs.Do([](QDialog& form) { Press(form, QDialogButtonBox::Ok); });  // of the residuals
  dialogs.Do([](QDialog& form) {
    TypeInto(form, "txt2D", "x^2");
    Press(form, QDialogButtonBox::Ok);
  });
  // Each from the window of the plot before it.
  for (int made = 1; const auto& [entry, legend] : kWays) {
    Plots().back()->findChild<QAction*>(entry)->trigger();
    ASSERT_EQ(Plots().size(), ++made) << entry;
    EXPECT_EQ(Legend(*Plots().back()), legend) << entry;
    EXPECT_EQ(Plots().back()->windowTitle(), QString("Plot %1 - Untitled[*]").arg(made));
  }

  // A plot from a file has no project, and so equations alone.
  dialogs.ChooseFile(folder.Path("a.plt"));
  Plots()[0]->findChild<QAction*>("mnuPlotSave")->trigger();
  Plots()[0]->close();
  QTest::qWait(10);
  dialogs.ChooseFile(folder.Path("a.plt"));
  Trigger("mnuFileOpen");
  const auto opened = [this] { return frame->findChildren<Dataplot*>(Qt::FindDirectChildrenOnly); };
  ASSERT_EQ(opened().size(), 1);
  EXPECT_EQ(opened()[0]->findChild<QAction*>("mnuPlotNewItem0"), nullptr);
  dialogs.Do([](QDialog& form) {
    TypeInto(form, "txt2D", "1/(1+x)");
    Press(form, QDialogButtonBox::Ok);
  });
  opened()[0]->findChild<QAction*>("mnuPlotNewEquation")->trigger();
  ASSERT_EQ(opened().size(), 2);
  EXPECT_EQ(Legend(*opened()[1]), QStringList{"1/(1+x)"});
  EXPECT_EQ(opened()[1]->windowTitle(), "Plot 1[*]");
}

TEST_F(PlotMenuTest, TellsOfPlotWindowsUntilToldNotTo) {
  Start();
  Settings& preferences = Active().Preferences();
  preferences.Set("hideplotinfo", "0");
  Document() = LineProject();
  Active().Refresh();
  dialogs.Do([](QDialog& form) {
    EXPECT_EQ(form.objectName(), "frmPlotInfo");
    Inspect(form);
    Press(form, QDialogButtonBox::Ok);
  });
  Trigger("mnuPlotData");
  Trigger("mnuPlotData");  // once in a run
  EXPECT_EQ(Plots().size(), 2);
  EXPECT_EQ(preferences.Integer("hideplotinfo"), 0);

  dialogs.Do([](QDialog& form) {
    Click(form, "hideplotinfo");
    form.reject();
  });
  ShowPlotInfo(Plots()[0], preferences);
  EXPECT_EQ(preferences.Text("hideplotinfo"), "1");
  ShowPlotInfo(Plots()[0], preferences);
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
  dialogs.Press(QMessageBox::Ok);
  action("XLogScale")->trigger();
  EXPECT_EQ(dialogs.Said.back(), "Negative or zero values cannot be plotted on Log scale.");
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
