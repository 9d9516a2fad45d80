// The Edit menu: rows and ranges of the sheet, the clipboard, undo.

#include "core/ui/SystemClipboard.h"
#include "project/ui/ProjectMenus.h"
#include "project/ui/quorvexWindow.h"
#include "sheet/EditCommands.h"

namespace quorvex {
namespace {

template <auto Command>
void Run(quorvexWindow& window) {
  window.Run([](const SheetEdit& edit) { return Command(edit); });
}

template <auto Command>
void RunWithClipboard(quorvexWindow& window) {
  SystemClipboard clipboard;
  window.Run([&](const SheetEdit& edit) { return Command(edit, clipboard); });
}

}  // namespace

std::vector<ProjectCommand> EditMenu() {
  return {
      {"mnuEditUndo", QString::fromStdString(kCannotUndo), QKeySequence::Undo,
       [](quorvexWindow& window) { window.EditUndo(); }},
      {},
      {"mnuEditCut", "Cu&t", QKeySequence::Cut, RunWithClipboard<EditCut>},
      {"mnuEditCopy", "&Copy", QKeySequence::Copy, RunWithClipboard<EditCopy>},
      {"mnuEditPaste", "&Paste", QKeySequence::Paste, RunWithClipboard<EditPaste>},
      {},
      {"mnuEditClear", "Cl&ear Selection", QKeySequence::Delete, Run<ClearSelection>},
      {"mnuEditClearSheet", "Clear &Sheet...", {}, Run<ClearGrid>},
      {},
      {"mnuEditInsert", "&Insert Rows", QKeySequence("Ctrl++"), Run<InsertRows>},
      {"mnuEditDelete", "&Delete Rows", QKeySequence("Ctrl+-"), Run<DeleteSelection>},
      {"mnuEditDeleteIncomplete", "Delete Inc&omplete Rows", {}, Run<DeleteIncompleteRows>},
  };
}

}  // namespace quorvex
