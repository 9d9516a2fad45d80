// The Plot menu: windows with data and solutions of a project.

#include <QFileInfo>

#include "core/ui/BusyCursor.h"
#include "desktop/ProjectMenus.h"
#include "desktop/SheetView.h"
#include "desktop/quorvexWindow.h"
#include "plot/ui/PlotWindow.h"
#include "results/PlotPoints.h"
#include "results/ResultPlots.h"

namespace quorvex {
namespace {

void Open(quorvexWindow& window, Result<PlotClass> plot) {
  if (!plot) return window.User().Refuse(plot.error());
  if (!plot->CreateGraph({.Auto = true, .Regenerate = true, .AutoFormat = true}, window.User())) return;
  constexpr const char* kOpened = "plots";  // so far, of this project
  const int number = window.property(kOpened).toInt() + 1;
  window.setProperty(kOpened, number);
  auto* shown =
      new PlotWindow(std::make_unique<PlotClass>(std::move(*plot)), window.User(), window.Preferences(), &window);
  shown->setAttribute(Qt::WA_DeleteOnClose);
  shown->setWindowTitle(QString("Plot %1 - %2")
                            .arg(number)
                            .arg(QFileInfo(QString::fromStdString(window.Document().FileName)).fileName()));
  shown->show();
  shown->raise();
  shown->activateWindow();
}

void PlotData(quorvexWindow& window) {
  window.Run([&](const SheetEdit& edit) {
    if (const auto data = SelectedPoints(edit.Sheet, edit.Selection, edit.User))
      Open(window, DataPlot(data->Points, data->XTitle, data->YTitle, window.Preferences(), edit.Locale));
    return false;
  });
}

void PlotSolutions(quorvexWindow& window, const std::vector<SolvedItem>& solutions) {
  Prompter& user = window.User();
  const Project& project = window.Document();
  const auto data = SolutionPoints(solutions, project.Sheet, user);
  if (!data) return;
  std::vector<std::string> leftOut;
  Result<PlotClass> plot = [&] {
    const BusyCursor busy;
    return SolutionsPlot(solutions, data->Points, data->XTitle, data->YTitle, window.Preferences(), project.Locale,
                         leftOut);
  }();
  if (!leftOut.empty()) user.Refuse(NoCurveText(leftOut));
  if (leftOut.size() < solutions.size()) Open(window, std::move(plot));
}

}  // namespace

std::vector<ProjectCommand> PlotMenu() {
  return {
      {.Name = "mnuPlotData", .Text = "Plot &Data", .Keys = QKeySequence(Qt::Key_F7), .Run = PlotData},
      {.Name = "mnuPlotSelected",
       .Text = "Plot &Selected Solutions",
       .Keys = QKeySequence("Shift+F7"),
       .Run =
           [](quorvexWindow& window) {
             if (window.Grid().CommitEntry()) PlotSolutions(window, window.SelectedSolutions());
           }},
      {.Name = "mnuPlotAll",
       .Text = "Plot &All Solutions",
       .Run =
           [](quorvexWindow& window) {
             if (window.Grid().CommitEntry()) PlotSolutions(window, window.Solved());
           }},
  };
}

}  // namespace quorvex
