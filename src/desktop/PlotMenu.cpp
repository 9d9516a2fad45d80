// The Plot menu: windows with data and solutions of a project.

#include <QFileInfo>

#include "core/ui/BusyCursor.h"
#include "desktop/ProjectMenus.h"
#include "desktop/SheetView.h"
#include "desktop/quorvexWindow.h"
#include "files/ui/Dataplot.h"
#include "results/PlotPoints.h"
#include "results/ResultPlots.h"

namespace quorvex {
namespace {

void Open(quorvexWindow& window, Result<std::unique_ptr<PlotPage>> plot) {
  if (!plot) return window.User().Refuse(plot.error());
  auto document = NewPlotDocument(std::move(*plot), window.Preferences(), window.User());
  const QString project = QFileInfo(QString::fromStdString(window.Document().FileName)).fileName();
  if (document) ShowPlot(std::move(*document), window, project);
}

void PlotData(quorvexWindow& window) {
  window.Run([&](const SheetEdit& edit) {
    const auto data = SelectedPoints(edit.Sheet, edit.Selection, edit.User);
    if (!data) return false;
    const SolveData& points = data->Points;
    const std::vector<std::string>& titles = data->Titles;
    const Settings& settings = window.Preferences();
    Open(window, points.X.size() == 1 ? PageOf(DataPlot(points, titles[0], titles[1], settings, edit.Locale))
                                      : PageOf(ScatterPlot(points, titles, settings, edit.Locale)));
    return false;
  });
}

// A plot that one solution has for itself.
void PlotResults(quorvexWindow& window, ResultPlotKind kind, const std::vector<SolvedItem>& solutions) {
  const Project& project = window.Document();
  const auto solution = SingleSolution(kind, solutions, project.Sheet.IndependentVariables, window.User());
  if (!solution) return;
  const Result<GatheredData> data = GatherData(project.Sheet, PointOrder::OfSheet);
  if (!data) return window.User().Refuse(data.error());
  Open(window, [&] {
    const BusyCursor busy;
    return PlotOfResults(kind, *solution, *data, project.Sheet, window.Preferences(), project.Locale);
  }());
}

void PlotSolutions(quorvexWindow& window, const std::vector<SolvedItem>& solutions) {
  Prompter& user = window.User();
  const Project& project = window.Document();
  if (project.Sheet.IndependentVariables > 1) return PlotResults(window, ResultPlotKind::Model, solutions);
  const auto data = SolutionPoints(solutions, project.Sheet, user);
  if (!data) return;
  std::vector<std::string> leftOut;
  Result<PlotClass> plot = [&] {
    const BusyCursor busy;
    return SolutionsPlot(solutions, data->Points, data->Titles[0], data->Titles[1], window.Preferences(),
                         project.Locale, leftOut);
  }();
  if (!leftOut.empty()) user.Refuse(NoCurveText(leftOut));
  if (leftOut.size() < solutions.size()) Open(window, PageOf(std::move(plot)));
}

// On the solutions that are selected.
template <ResultPlotKind kind>
void PlotSelected(quorvexWindow& window) {
  if (window.Grid().CommitEntry()) PlotResults(window, kind, window.SelectedSolutions());
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
      {},
      {.Name = "mnuPlotResiduals", .Text = "Plot &Residuals", .Run = PlotSelected<ResultPlotKind::Residuals>},
      {.Name = "mnuPlotProbability",
       .Text = "Plot Residual &Probability",
       .Run = PlotSelected<ResultPlotKind::Probability>},
  };
}

}  // namespace quorvex
