#pragma once

#include <QWidget>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/Prompter.h"
#include "desktop/SolveDialogs.h"
#include "project/Project.h"
#include "project/ProjectEditor.h"
#include "sheet/FindCell.h"
#include "solve/ProjectSolver.h"

class QLabel;
class QMdiArea;
class QPlainTextEdit;
class QTabWidget;

namespace quorvex {

class SheetModel;
class SheetView;
class SolvedListPanel;
class frmResults;

// A command on the sheet, which returns whether it changed it.
using SheetCommand = std::function<bool(const SheetEdit& edit)>;

// The window of one project: its data sheet, its notes and its solutions.
class quorvexWindow : public QWidget {
  Q_OBJECT

 public:
  // Settings and prompter outlive the window.
  quorvexWindow(Project project, Settings& settings, Prompter& user);

  Project& Document() { return project_; }
  const Project& Document() const { return project_; }
  SheetView& Grid() { return *DataGrid; }
  QPlainTextEdit* NotesInFront() const;  // null where the sheet is
  ProjectEditor& Editor() { return editor_; }
  const ProjectEditor& Editor() const { return editor_; }
  Settings& Preferences() { return settings_; }
  Prompter& User() { return user_; }

  // The cell that is current and how far the sheet is filled, for the status bar.
  QString Status() const;

  // The commands. An entry that is still open in the sheet is taken first; one that is refused stops the command.
  // Return whether the project was saved.
  bool FileSave();
  bool FileSaveAs();

  // A command on the cells that are selected; shows what it changed.
  void Run(const SheetCommand& command);
  // Takes back so many of the newest operations; below 0, makes so many again that were taken back.
  void EditUndo(int steps);
  // The texts of Undo and Redo in the Edit menu.
  QString UndoText() const;
  QString RedoText() const;
  // Asks for the header of a column, counted from 0.
  void EditHeader(int column);
  void GoTo(const CellPlace& place);

  // Shows a project that something other than typing has changed, its solutions included.
  void Refresh();

  // The commands of the Solve menu.
  void SolveRegression();
  void SolveInterpolation();
  void SolveSeries();
  void SolveWhatFailed();
  void ClearFits();
  void ShowLog() { solver_.ShowLog(); }
  void ShowSelectedResults();
  void SaveGroup() { solver_.SaveGroup(); }
  void SortSolutions(int sortIndex);
  int SolutionsSortedBy() const { return settings_.Integer("sortindex"); }
  void PromptForSetup(bool prompt) { settings_.SetFlag("promptforsetup", prompt); }
  bool PromptsForSetup() const { return settings_.Flag("promptforsetup"); }
  void PlotModelsOnly(bool only) { settings_.SetFlag("plotmodelsonly", only); }  // without the input data
  bool PlotsModelsOnly() const { return settings_.Flag("plotmodelsonly"); }

  // The solved list as it is shown, sorted anew by the key in force.
  std::vector<SolvedItem> Solved() { return SolvedItems(project_, SolutionsSortedBy()); }
  std::vector<SolvedItem> SelectedSolutions();
  void Resort();
  // Shows an entry of the solved list in the project's results window, which follows the project and closes with it.
  void ShowResults(const SolvedItem& solution);
  // Shows all solved models in the project's window for that, which follows the project and closes with it, too.
  void ShowSummary();
  // What the last solve left behind: its log, its limits, the rows it left out.
  const ProjectSolver& Solver() const { return solver_; }

 signals:
  void SolveBegins();                                // the project is as it was before
  void SolutionsChanged();                           // or their order, or what they rest upon
  void Changed();                                    // the project, or whether it is saved
  void Saved();                                      // the project, into its file
  void ImportedAsOtherKind(const DataSheet& sheet);  // a fresh project, which is to give way to one of that kind
  void StatusChanged();                              // the text of the status bar and nothing else

 protected:
  void closeEvent(QCloseEvent* event) override;
  void childEvent(QChildEvent* event) override;

 private:
  void LayOut();
  void NotesEdited();
  void ShowState();
  void ShowInFrame();  // in front of other projects
  bool Save(bool (*save)(Project& project, Prompter& user));
  void ShowResultsOf(int row);
  void BringUpToDate(frmResults& results) const;
  void Solve(std::optional<std::size_t> (ProjectSolver::*command)());

  Project project_;
  Settings& settings_;
  Prompter& user_;
  ProjectEditor editor_;
  SolveDialogs dialogs_;
  ProjectSolver solver_;
  SheetModel* model_;
  QTabWidget* pages_;
  SheetView* DataGrid;
  QLabel* hint_;
  QPlainTextEdit* Notes;
  SolvedListPanel* solutions_;
};

// The project in front of the windows of a frame; null where there is none or a window of another kind is.
quorvexWindow* ProjectInFront(const QMdiArea& area);

}  // namespace quorvex
