#pragma once

#include <QWidget>
#include <functional>
#include <string>

#include "core/Prompter.h"
#include "project/Project.h"
#include "project/ProjectEditor.h"
#include "sheet/FindCell.h"

class QLabel;
class QPlainTextEdit;
class QTabWidget;

namespace quorvex {

class SheetModel;
class SheetView;

// A command on the sheet, which returns whether it changed it.
using SheetCommand = std::function<bool(const SheetEdit& edit)>;

// The window of one project: its data sheet and its notes.
class quorvexWindow : public QWidget {
  Q_OBJECT

 public:
  // Settings and prompter outlive the window.
  quorvexWindow(Project project, Settings& settings, Prompter& user);

  Project& Document() { return project_; }
  SheetView& Grid() { return *DataGrid; }
  QPlainTextEdit* NotesInFront() const;  // null where the sheet is
  ProjectEditor& Editor() { return editor_; }
  const ProjectEditor& Editor() const { return editor_; }
  Settings& Preferences() { return settings_; }
  Prompter& User() { return user_; }

  // A new project that nothing was done to.
  bool IsFresh() const;

  // The cell that is current and how far the sheet is filled, for the status bar.
  QString Status() const;

  // The commands. An entry that is still open in the sheet is taken first; one that is refused stops the command.
  bool FileSave();
  bool FileSaveAs();

  // A command on the cells that are selected; shows what it changed.
  void Run(const SheetCommand& command);
  // Takes back the newest operations.
  void EditUndo(std::size_t count);
  // The text of Undo in the Edit menu.
  QString UndoText() const;
  // Asks for the header of a column, counted from 0.
  void EditHeader(int column);
  void GoTo(const CellPlace& place);

  // Shows a project that something other than typing has changed.
  void Refresh();

 signals:
  void Changed();        // the project, or whether it is saved
  void StatusChanged();  // the text of the status bar

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void LayOut();
  void NotesEdited();
  void ShowState();

  Project project_;
  Settings& settings_;
  Prompter& user_;
  ProjectEditor editor_;
  SheetModel* model_;
  QTabWidget* pages_;
  SheetView* DataGrid;
  QLabel* hint_;
  QPlainTextEdit* Notes;
};

}  // namespace quorvex
