#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "project/Project.h"
#include "project/clsUndo.h"
#include "sheet/SheetEdit.h"

namespace quorvex {

// The Edit menu's entries for undo as they are to be shown.
struct UndoMenu {
  std::string UndoText = kCannotUndo;
  bool UndoEnabled = false;
  bool HistoryEnabled = false;
  std::string RedoText = kCannotRedo;
  bool RedoEnabled = false;

  bool operator==(const UndoMenu&) const = default;
};

// What UpdateUndoMenu is to do.
enum UndoAction : int { kResetUndo = -1, kLeaveUndo = 0, kPushUndo = 1, kPopUndo = 2 };

// A project that is being edited in a window: what its commands work on, and its undo stack, which lives as long as
// the window. Project, settings and prompter outlive it.
class ProjectEditor {
 public:
  ProjectEditor(Project& project, const Settings& settings, Prompter& user);
  ProjectEditor(const ProjectEditor&) = delete;
  ProjectEditor& operator=(const ProjectEditor&) = delete;

  // For the commands on the sheet; the window keeps Selection up to date. Its PushUndo also marks what the command is
  // about to change: the project as changed and, where that are cells, its solutions as no longer valid.
  SheetEdit Edit;
  UndoMenu Menu;

  // The single door to the undo stack. Pushes a snapshot for the operation `label`, which is about to change `range`,
  // pops one, or resets the stack, and sets Menu. Where undo fails the user is told, undo is off for this window,
  // `action` becomes kResetUndo, and the project is left alone. Where the setting allows none it is off until it does.
  // After a pop the result names the next one, and says what the windows have to bring up to date.
  UndoOutcome UpdateUndoMenu(int& action, const UndoLabel* label = nullptr, const CellRange& range = {});

  // Takes back the newest operation.
  UndoOutcome EditUndo();
  // Makes the operation again that was taken back last. Where there is none nothing happens.
  UndoOutcome EditRedo();
  // The lines of Undo History, newest first: number, tab, label. Operations that can be made again stand in front, the
  // next one last, with numbers that have a "+" before them. Empty, after a word to the user, where there are none to
  // be had.
  std::vector<std::string> UndoHistory();
  // Takes back the newest `count` operations, as chosen in Undo History.
  UndoOutcome UndoNewest(std::size_t count) { return Repeat(&ProjectEditor::EditUndo, count); }
  // Makes the last `count` of the operations again that were taken back.
  UndoOutcome RedoLast(std::size_t count) { return Repeat(&ProjectEditor::EditRedo, count); }
  // Forgets the newest snapshot, of an operation that was called off.
  void ForgetNewest();

 private:
  void Push(const UndoLabel& label, const CellRange& range);
  UndoOutcome Repeat(UndoOutcome (ProjectEditor::*step)(), std::size_t count);
  void Tell(const UndoOutcome& outcome);
  void ShowMenu(const UndoOutcome& outcome);
  void StopUndo(const std::string& cause, int& action);
  std::vector<ModelClass*> SolvedModels() const;
  void DropSolutions(const std::vector<ModelClass*>& solved);

  Project& project_;
  const Settings& settings_;
  clsUndo undo_;
  bool toldDisabled_ = false;  // that the setting allows no undo
};

// The heading over the lines of Undo History.
inline constexpr const char* kUndoHistoryHeading = "Number:     Action:";

}  // namespace quorvex
