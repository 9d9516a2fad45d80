#pragma once

#include <QIcon>
#include <QKeySequence>
#include <QString>
#include <memory>
#include <vector>

#include "core/Result.h"
#include "plot/PlotPage.h"

namespace quorvex {

class quorvexWindow;

// An entry of a menu that acts on the active project window. One without a name is a separator.
struct ProjectCommand {
  const char* Name = nullptr;  // of its action
  QString Text;
  QKeySequence Keys = {};
  void (*Run)(quorvexWindow& window) = nullptr;
  bool OnToolbar = false;
  bool OnSheet = false;                                      // in the context menu of the sheet, too
  bool (*IsChecked)(const quorvexWindow& window) = nullptr;  // of an entry that shows a state
  QKeySequence OtherKeys = {};                               // that do the same
  bool InItsWindows = false;  // its keys act in the windows of results and plots of the project, too
};

// The same command, in the context menu of the sheet, too.
inline ProjectCommand OnSheet(ProjectCommand command) {
  command.OnSheet = true;
  return command;
}

// The menus, each with its entries from top to bottom.
std::vector<ProjectCommand> EditMenu();
std::vector<ProjectCommand> FormatMenu();
std::vector<ProjectCommand> DataMenu();
std::vector<ProjectCommand> ModelMenu();
std::vector<ProjectCommand> SolveMenu();
// Its windows hold copies, so they stay as they are while the project changes, and close with the project's window.
std::vector<ProjectCommand> PlotMenu();

// A window of its own for a plot of the project, or why there is none, which the user is told.
void OpenPlotOf(quorvexWindow& window, Result<std::unique_ptr<PlotPage>> plot);

}  // namespace quorvex
