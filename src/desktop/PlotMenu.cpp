// The Plot menu: windows with data and solutions of a project.

#include <QFileInfo>

#include "core/ui/BusyCursor.h"
#include "desktop/ProjectMenus.h"
#include "desktop/SheetView.h"
#include "desktop/quorvexWindow.h"
#include "files/ui/Dataplot.h"
#include "files/ui/frmPlotEquation.h"
#include "plot/ui/frmPlotInfo.h"
#include "results/AvailableGraphs.h"
#include "results/PlotPoints.h"
#include "results/ResultPlots.h"
#include "results/ui/PlotDialogs.h"

namespace quorvex {
namespace {

// Guidance once in a run, after its first plot.
void TellOfPlots(quorvexWindow& window, QWidget* plot) {
  QWidget* const frame = window.window();
  constexpr const char* kTold = "toldOfPlots";
  if (frame->property(kTold).toBool()) return;
  frame->setProperty(kTold, true);
  ShowPlotInfo(plot, window.Preferences());
}

PlotSource SourceOf(quorvexWindow& window);

// A window of its own for a new plot.
void Open(quorvexWindow& window, std::optional<PlotDocument> document) {
  if (!document) return;
  document->Project = QFileInfo(QString::fromStdString(window.Document().FileName)).fileName().toStdString();
  TellOfPlots(window, &ShowPlot(std::move(*document), window, SourceOf(window)));
}

void Open(quorvexWindow& window, std::unique_ptr<PlotPage> plot) {
  Open(window, NewPlotDocument(std::move(plot), window.Preferences(), window.User()));
}

void Open(quorvexWindow& window, Result<std::unique_ptr<PlotPage>> plot) {
  if (!plot) return window.User().Refuse(plot.error());
  Open(window, std::move(*plot));
}

// Columns that are chosen by their names.
void PlotColumns(quorvexWindow& window) {
  if (!window.Grid().CommitEntry()) return;
  const Project& project = window.Document();
  if (auto plot = ShowPlotSelect(&window, project.Sheet, window.Preferences(), project.Locale, window.User()))
    Open(window, std::move(plot));
}

// The selection, or the whole sheet, of which no plot can show more than two variables.
Result<std::unique_ptr<PlotPage>> DataPage(const DataSheet& sheet, const std::vector<CellRange>& selection,
                                           const Settings& settings, const LocaleText& locale) {
  const Result<PlotPoints> data = SelectedPoints(sheet, selection);
  if (!data) return Failure{data.error()};
  const std::vector<std::string>& titles = data->Titles;
  Result<std::unique_ptr<PlotPage>> plot = data->Points.X.size() == 1
                                               ? PageOf(DataPlot(data->Points, titles[0], titles[1], settings, locale))
                                               : PageOf(ScatterPlot(data->Points, titles, settings, locale));
  if (plot) ShowDates(**plot, sheet, data->Columns);
  return plot;
}

void PlotData(quorvexWindow& window) {
  window.Run([&](const SheetEdit& edit) {
    if (IsOneCell(edit.Selection) && edit.Sheet.IndependentVariables > kMostPlottedVariables)
      PlotColumns(window);
    else
      Open(window, DataPage(edit.Sheet, edit.Selection, window.Preferences(), edit.Locale));
    return false;
  });
}

// A plot that one solution has for itself.
void PlotResults(quorvexWindow& window, ResultPlotKind kind, const std::vector<SolvedItem>& solutions) {
  const Project& project = window.Document();
  const auto solution = SingleSolution(kind, solutions, project.Sheet.IndependentVariables, window.User());
  if (!solution) return;
  const GatheredData data = GatherData(project.Sheet, PointOrder::OfSheet);
  std::size_t scatterType = 0;
  if (kind == ResultPlotKind::Residuals && solution->Model != nullptr) {
    const auto chosen = ShowScatterType(&window, project.Sheet);
    if (!chosen) return;
    scatterType = *chosen;
  }
  auto plot = [&] {
    const BusyCursor busy;
    return PlotOfResults(kind, *solution, data, project.Sheet, window.Preferences(), project.Locale, scatterType);
  }();
  if (plot && kind == ResultPlotKind::Model) LeaveModelsOnly(**plot, window.Preferences());
  Open(window, std::move(plot));
}

void PlotSolutions(quorvexWindow& window, const std::vector<SolvedItem>& solutions) {
  Prompter& user = window.User();
  const Project& project = window.Document();
  if (project.Sheet.IndependentVariables > 1) return PlotResults(window, ResultPlotKind::Model, solutions);
  const Result<PlotPoints> data = SolutionPoints(solutions, project.Sheet);
  if (!data) return user.Refuse(data.error());
  std::vector<std::string> leftOut;
  Result<PlotClass> plot = [&] {
    const BusyCursor busy;
    return SolutionsPlot(solutions, data->Points, data->Titles[0], data->Titles[1], window.Preferences(),
                         project.Locale, leftOut);
  }();
  if (!leftOut.empty()) user.Refuse(NoCurveText(leftOut));
  if (leftOut.size() == solutions.size()) return;
  const bool tells = plot && !plot->Legend.Show;
  if (plot) ShowDates(*plot, project.Sheet, data->Columns);
  if (plot) LeaveModelsOnly(*plot, window.Preferences());
  Open(window, PageOf(std::move(plot)));
  if (tells) user.Inform(NoLegendText(solutions.size() - leftOut.size()));
}

void PlotSelectedSolutions(quorvexWindow& window) {
  if (window.Grid().CommitEntry()) PlotSolutions(window, window.SelectedSolutions());
}

void PlotInterpolations(quorvexWindow& window) {
  if (!window.Grid().CommitEntry()) return;
  const std::vector<SolvedItem> found = InterpolationsOf(window.Solved(), window.User());
  if (!found.empty()) PlotSolutions(window, found);
}

void PlotEquation(quorvexWindow& window) {
  Open(window, ShowPlotEquation(&window, window.Preferences(), window.Document().Locale, window.User()));
}

// On the solutions that are selected.
template <ResultPlotKind kind>
void PlotSelected(quorvexWindow& window) {
  if (window.Grid().CommitEntry()) PlotResults(window, kind, window.SelectedSolutions());
}

PlotSource SourceOf(quorvexWindow& window) {
  return {.Choose = [&window](QWidget* parent, const PlotPage& plot) -> std::optional<std::vector<PlotSeries>> {
            if (!window.Grid().CommitEntry()) return std::nullopt;
            return ChooseGraphs(parent, window.Document(), plot, window.Preferences(), window.User());
          },
          .Graphs =
              [&window](const PlotPage& plot) {
                if (!window.Grid().CommitEntry()) return std::vector<PlotSeries>();
                return AvailableGraphs(window.Document(), plot, window.Preferences());
              },
          .New = {{"&Data", [&window] { PlotData(window); }},
                  {"&Selected Solutions", [&window] { PlotSelectedSolutions(window); }},
                  {"&Residuals...", [&window] { PlotSelected<ResultPlotKind::Residuals>(window); }},
                  {"Residual &Probability", [&window] { PlotSelected<ResultPlotKind::Probability>(window); }}}};
}

}  // namespace

void OpenPlotOf(quorvexWindow& window, Result<std::unique_ptr<PlotPage>> plot) { Open(window, std::move(plot)); }

std::vector<ProjectCommand> PlotMenu() {
  return {
      {.Name = "mnuPlotData",
       .Text = "Plot &Data",
       .Keys = QKeySequence(Qt::Key_F7),
       .Run = PlotData,
       .InItsWindows = true},
      {.Name = "mnuPlotColumns", .Text = "Plot &Columns...", .Run = PlotColumns},
      {.Name = "mnuPlotSelected",
       .Text = "Plot &Selected Solutions",
       .Keys = QKeySequence("Shift+F7"),
       .Run = PlotSelectedSolutions,
       .InItsWindows = true},
      {.Name = "mnuPlotAll",
       .Text = "Plot &All Solutions",
       .Run =
           [](quorvexWindow& window) {
             if (window.Grid().CommitEntry()) PlotSolutions(window, window.Solved());
           }},
      {.Name = "mnuPlotInterpolations", .Text = "Plot &Interpolations", .Run = PlotInterpolations},
      {.Name = "mnuPlotModelsOnly",
       .Text = "&Models Only",
       .Run = [](quorvexWindow& window) { window.PlotModelsOnly(!window.PlotsModelsOnly()); },
       .IsChecked = [](const quorvexWindow& window) { return window.PlotsModelsOnly(); }},
      {},
      {.Name = "mnuPlotResiduals", .Text = "Plot &Residuals...", .Run = PlotSelected<ResultPlotKind::Residuals>},
      {.Name = "mnuPlotProbability",
       .Text = "Plot Residual &Probability",
       .Run = PlotSelected<ResultPlotKind::Probability>},
      {},
      {.Name = "mnuPlotNewEquation", .Text = "Plot &Equation...", .Run = PlotEquation},
  };
}

}  // namespace quorvex
