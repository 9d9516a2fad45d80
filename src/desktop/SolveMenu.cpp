// The Solve menu: what makes, sorts and clears the solutions of a project.

#include "core/ui/SystemClipboard.h"
#include "desktop/ProjectMenus.h"
#include "desktop/SheetView.h"
#include "desktop/quorvexWindow.h"
#include "results/TableExport.h"
#include "results/ui/TableExportDialogs.h"
#include "results/ui/frmTableExport.h"
#include "sheet/ui/EditDialogs.h"

namespace quorvex {
namespace {

template <int sortIndex>
ProjectCommand SortCommand(const char* name, const QString& text) {
  return {.Name = name,
          .Text = text,
          .Run = [](quorvexWindow& window) { window.SortSolutions(sortIndex); },
          .IsChecked = [](const quorvexWindow& window) { return window.SolutionsSortedBy() == sortIndex; }};
}

// The numbers go to the sheet by way of the clipboard, on which they stay where the sheet is not the place for them.
void PasteIntoSheet(quorvexWindow& window, const std::string& tabSeparated) {
  window.activateWindow();
  window.Run([&](const SheetEdit& edit) {
    SystemClipboard clipboard;
    clipboard.SetCells(tabSeparated);
    return ShowPasteSpecial(edit, &window, clipboard);
  });
}

void ExportDataTable(quorvexWindow& window) {
  if (!window.Grid().CommitEntry()) return;
  const Project& project = window.Document();
  const auto equations =
      TableExport::Begin(window.Solved(), window.SelectedSolutions(), project.Sheet, project.Locale, window.User());
  const auto table = equations ? AskExportTable(&window, *equations, window.User()) : std::nullopt;
  if (!table) return;
  auto* form = new frmTableExport(*table, window.Preferences(), project.Locale, window.User(), &window);
  form->setAttribute(Qt::WA_DeleteOnClose);
  QObject::connect(form, &frmTableExport::SheetChosen, &window,
                   [&window](const std::string& cells) { PasteIntoSheet(window, cells); });
  form->show();
}

}  // namespace

std::vector<ProjectCommand> SolveMenu() {
  return {
      {.Name = "mnuSolveRegression",
       .Text = "Solve &Regression...",
       .Keys = QKeySequence(Qt::Key_F5),
       .Run = [](quorvexWindow& window) { window.SolveRegression(); },
       .OnToolbar = true,
       .InItsWindows = true},
      {.Name = "mnuSolveInterpolation",
       .Text = "Solve &Interpolation...",
       .Keys = QKeySequence("Shift+F5"),
       .Run = [](quorvexWindow& window) { window.SolveInterpolation(); },
       .InItsWindows = true},
      {.Name = "mnuSolveSeries",
       .Text = "S&olve Series...",
       .Run = [](quorvexWindow& window) { window.SolveSeries(); }},
      {.Name = "mnuSolvePrompt",
       .Text = "&Prompt for Setup",
       .Run = [](quorvexWindow& window) { window.PromptForSetup(!window.PromptsForSetup()); },
       .IsChecked = [](const quorvexWindow& window) { return window.PromptsForSetup(); }},
      {},
      {.Name = "mnuSolveResults",
       .Text = "&View Results",
       .Keys = QKeySequence("Ctrl+R"),
       .Run = [](quorvexWindow& window) { window.ShowSelectedResults(); },
       .InItsWindows = true},
      {.Name = "mnuResultsSummary",
       .Text = "S&ummary Results",
       .Run = [](quorvexWindow& window) { window.ShowSummary(); }},
      {.Name = "mnuResultsTableExport", .Text = "&Data Table Export...", .Run = ExportDataTable},
      {.Name = "mnuSolveLog",
       .Text = "View &Log",
       .Keys = QKeySequence("Ctrl+L"),
       .Run = [](quorvexWindow& window) { window.ShowLog(); },
       .InItsWindows = true},
      {.Name = "mnuSolveFailed",
       .Text = "&What Failed...",
       .Run = [](quorvexWindow& window) { window.SolveWhatFailed(); }},
      {.Name = "mnuSolveClear", .Text = "&Clear Fits...", .Run = [](quorvexWindow& window) { window.ClearFits(); }},
      {.Name = "mnuResultsGroup",
       .Text = "Save as &Group File",
       .Run = [](quorvexWindow& window) { window.SaveGroup(); }},
      {},
      SortCommand<kSortByRSS>("mnuSortRSS", "Sort by R&SS"),
      SortCommand<kSortByR2>("mnuSortR2", "Sort by R^&2"),
      SortCommand<kSortByR2Adjust>("mnuSortR2Adjust", "Sort by R&a^2"),
      SortCommand<kSortByStdErr>("mnuSortStdErr", "Sort by Std&Err"),
      SortCommand<kSortByAICc>("mnuSortAICc", "Sor&t by AICc"),
      SortCommand<kSortByBIC>("mnuSortBIC", "Sort by &BIC"),
      SortCommand<kSortByCV>("mnuSortCV", "Sort b&y CV"),
  };
}

}  // namespace quorvex
