// The Edit menu: undo, the clipboard, rows and ranges of the sheet, and what is looked for in it.

#include <QAction>
#include <QMdiArea>
#include <QPlainTextEdit>

#include "core/ui/BusyCursor.h"
#include "core/ui/SystemClipboard.h"
#include "desktop/ProjectMenus.h"
#include "desktop/SheetView.h"
#include "desktop/quorvexWindow.h"
#include "project/ui/frmUndoHistory.h"
#include "sheet/ColumnLayout.h"
#include "sheet/EditCommands.h"
#include "sheet/ui/EditDialogs.h"
#include "sheet/ui/frmFind.h"

namespace quorvex {
namespace {

template <auto Command>
void Run(quorvexWindow& window) {
  window.Run([](const SheetEdit& edit) {
    const BusyCursor busy;
    return Command(edit);
  });
}

// What a text has, too, is done to the notes where they are in front.
template <auto Command, auto OnNotes>
void RunWithClipboard(quorvexWindow& window) {
  if (QPlainTextEdit* notes = window.NotesInFront()) return (notes->*OnNotes)();
  window.Run([](const SheetEdit& edit) {
    const BusyCursor busy;
    SystemClipboard clipboard;
    return Command(edit, clipboard);
  });
}

void CopySheet(quorvexWindow& window) {
  window.Run([](const SheetEdit& edit) {
    const BusyCursor busy;
    SystemClipboard clipboard;
    CopyGrid(edit, clipboard);
    return false;
  });
}

void Clear(quorvexWindow& window) {
  if (QPlainTextEdit* notes = window.NotesInFront()) return notes->textCursor().removeSelectedText();
  Run<ClearSelection>(window);
}

void SelectAll(quorvexWindow& window) {
  if (QPlainTextEdit* notes = window.NotesInFront()) return notes->selectAll();
  window.Grid().SelectAll();
}

template <auto Show>
void ShowWithClipboard(quorvexWindow& window) {
  window.Run([&](const SheetEdit& edit) {
    SystemClipboard clipboard;
    return Show(edit, &window, clipboard);
  });
}

void UndoHistory(quorvexWindow& window) {
  if (!window.Grid().CommitEntry()) return;
  const std::vector<std::string> lines = window.Editor().UndoHistory();
  if (lines.empty()) return;
  if (const auto steps = ChooseUndo(&window, lines)) window.EditUndo(*steps);
}

// One dialog for all sheets of the main window: its buttons act on the sheet in front.
void ReplaceNext(quorvexWindow& window, const frmFind& form) {
  std::optional<CellPlace> next;
  window.Run([&](const SheetEdit& edit) {
    next = form.Replacement().ReplaceNext(edit, window.Grid().CurrentPlace());
    return true;
  });
  if (next) window.GoTo(*next);
}

void ReplaceAll(quorvexWindow& window, const frmFind& form) {
  window.Run([&](const SheetEdit& edit) { return form.Replacement().ReplaceAll(edit, form.InSelection()); });
}

template <bool replacing>
void Find(quorvexWindow& window) {
  QWidget* const frame = window.window();
  auto* form = frame->findChild<frmFind*>();
  if (form == nullptr) {
    form = new frmFind(frame);
    QObject::connect(form, &frmFind::FindNext, frame->findChild<QAction*>("mnuEditFindNext"), &QAction::trigger);
    QObject::connect(form, &frmFind::Replace, form, [frame, form] {
      if (quorvexWindow* front = ProjectInFront(*frame->findChild<QMdiArea*>())) ReplaceNext(*front, *form);
    });
    QObject::connect(form, &frmFind::ReplaceAll, form, [frame, form] {
      if (quorvexWindow* front = ProjectInFront(*frame->findChild<QMdiArea*>())) ReplaceAll(*front, *form);
    });
  }
  form->Open(replacing);
}

void FindNext(quorvexWindow& window) {
  const auto* form = window.window()->findChild<frmFind*>();
  if (form == nullptr || form->Wanted().FindWhat.empty()) return Find<false>(window);
  if (!window.Grid().CommitEntry()) return;
  const Project& project = window.Document();
  const auto found =
      form->Wanted().FindNext(project.Sheet, window.Grid().CurrentPlace(), project.Locale, window.User());
  if (found) window.GoTo(*found);
}

void GoTo(quorvexWindow& window) {
  if (!window.Grid().CommitEntry()) return;
  if (const auto place = ShowGoto(window.Document().Sheet, &window, window.User())) window.GoTo(*place);
}

}  // namespace

std::vector<ProjectCommand> EditMenu() {
  return {
      {"mnuEditUndo", QString::fromStdString(kCannotUndo), QKeySequence::Undo,
       [](quorvexWindow& window) { window.EditUndo(1); }},
      {.Name = "mnuEditRedo",
       .Text = QString::fromStdString(kCannotRedo),
       .Keys = QKeySequence("Ctrl+Shift+Z"),
       .Run = [](quorvexWindow& window) { window.EditUndo(-1); },
       .OtherKeys = QKeySequence("Ctrl+Y")},
      {"mnuEditUndoHistory", "Undo &History...", {}, UndoHistory},
      {},
      OnSheet({"mnuEditCut", "Cu&t", QKeySequence::Cut, RunWithClipboard<EditCut, &QPlainTextEdit::cut>}),
      OnSheet({"mnuEditCopy", "&Copy", QKeySequence::Copy, RunWithClipboard<EditCopy, &QPlainTextEdit::copy>}),
      OnSheet({"mnuEditPaste", "&Paste", QKeySequence::Paste, RunWithClipboard<EditPaste, &QPlainTextEdit::paste>}),
      OnSheet({"mnuEditPasteSpecial", "Paste Specia&l...", QKeySequence("Ctrl+Shift+V"),
               ShowWithClipboard<ShowPasteSpecial>}),
      {"mnuEditCopySpecial", "Cop&y Special...", QKeySequence("Ctrl+Shift+C"), ShowWithClipboard<ShowCopySpecial>},
      {"mnuEditCopySheet", "Copy &Whole Sheet", {}, CopySheet},
      {"mnuEditSelectAll", "Select &All", QKeySequence::SelectAll, SelectAll},
      {},
      OnSheet({"mnuEditClear", "Clear Selecti&on", QKeySequence::Delete, Clear}),
      {"mnuEditClearSheet", "Clear &Sheet...", {}, Run<ClearGrid>},
      {},
      OnSheet({"mnuEditInsert", "&Insert Rows", QKeySequence("Ctrl++"), Run<InsertRows>}),
      OnSheet({"mnuEditDelete", "&Delete Rows", QKeySequence("Ctrl+-"), Run<DeleteSelection>}),
      {"mnuEditDeleteIncomplete", "Delete Inco&mplete Rows", {}, Run<DeleteIncompleteRows>},
      {"mnuEditExchange", "E&xchange Columns...", {}, Run<mnuEditExchange>},
      {},
      {"mnuEditFind", "&Find...", QKeySequence("Ctrl+F"), Find<false>},
      {"mnuEditFindNext", "Find &Next", QKeySequence("F3"), FindNext},
      {"mnuEditReplace", "R&eplace...", QKeySequence("Ctrl+H"), Find<true>},
      {"mnuEditGoto", "&Go To...", QKeySequence("Ctrl+G"), GoTo},
  };
}

}  // namespace quorvex
