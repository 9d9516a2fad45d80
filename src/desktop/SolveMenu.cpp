// The Solve menu: what makes, sorts and clears the solutions of a project.

#include "desktop/ProjectMenus.h"
#include "desktop/quorvexWindow.h"

namespace quorvex {
namespace {

template <int sortIndex>
ProjectCommand SortCommand(const char* name, const QString& text) {
  return {.Name = name,
          .Text = text,
          .Run = [](quorvexWindow& window) { window.SortSolutions(sortIndex); },
          .IsChecked = [](const quorvexWindow& window) { return window.SolutionsSortedBy() == sortIndex; }};
}

}  // namespace

std::vector<ProjectCommand> SolveMenu() {
  return {
      {.Name = "mnuSolveRegression",
       .Text = "Solve &Regression...",
       .Keys = QKeySequence(Qt::Key_F5),
       .Run = [](quorvexWindow& window) { window.SolveRegression(); },
       .OnToolbar = true},
      {.Name = "mnuSolveInterpolation",
       .Text = "Solve &Interpolation...",
       .Keys = QKeySequence("Shift+F5"),
       .Run = [](quorvexWindow& window) { window.SolveInterpolation(); }},
      {.Name = "mnuSolvePrompt",
       .Text = "&Prompt for Setup",
       .Run = [](quorvexWindow& window) { window.PromptForSetup(!window.PromptsForSetup()); },
       .IsChecked = [](const quorvexWindow& window) { return window.PromptsForSetup(); }},
      {},
      {.Name = "mnuSolveResults",
       .Text = "&View Results",
       .Keys = QKeySequence("Ctrl+R"),
       .Run = [](quorvexWindow& window) { window.ShowSelectedResults(); }},
      {.Name = "mnuSolveLog",
       .Text = "View &Log",
       .Keys = QKeySequence("Ctrl+L"),
       .Run = [](quorvexWindow& window) { window.ShowLog(); }},
      {.Name = "mnuSolveClear", .Text = "&Clear Fits...", .Run = [](quorvexWindow& window) { window.ClearFits(); }},
      {.Name = "mnuResultsGroup",
       .Text = "Save as &Group File",
       .Run = [](quorvexWindow& window) { window.SaveGroup(); }},
      {},
      SortCommand<kSortByRSS>("mnuSortRSS", "Sort by R&SS"),
      SortCommand<kSortByR2>("mnuSortR2", "Sort by R^&2"),
      SortCommand<kSortByR2Adjust>("mnuSortR2Adjust", "Sort by R&a^2"),
      SortCommand<kSortByStdErr>("mnuSortStdErr", "Sort by Std&Err"),
  };
}

}  // namespace quorvex
