#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QMdiArea>
#include <memory>
#include <optional>

#include "Dialogs.h"
#include "Forms.h"
#include "TemporaryFolder.h"
#include "app/SettingsStore.h"
#include "app/ui/parentfrm.h"
#include "desktop/SheetView.h"
#include "desktop/quorvexWindow.h"
#include "files/ProjectFile.h"

namespace quorvex {

// The main frame with settings and folders of its own, and what a user does to it.
class Frame : public testing::Test {
 protected:
  void Start(const std::string& commandLine = "") {
    session.Preferences = LoadSettings();
    // The tip of the day would stand before the frame; a test that wants it stores so.
    if (!session.Preferences.Has("Show Tips at Startup")) session.Preferences.Set("Show Tips at Startup", "0");
    frame = std::make_unique<parentfrm>(session, commandLine, folder.Path("state"));
    frame->show();
    frame->activateWindow();
    QTest::qWait(50);
  }

  // Closes every project; changes are not wanted.
  void CloseUnsaved() {
    for (qsizetype left = Windows(); left > 0; --left) {
      if (Document().Changed) dialogs.Press(QMessageBox::No);
      if (Document().NotesChanged) dialogs.Press(QMessageBox::No);
      Trigger("mnuFileClose");
    }
    EXPECT_TRUE(frame->close());
  }
  void TearDown() override {
    if (frame != nullptr && frame->isVisible()) CloseUnsaved();
  }

  void Trigger(const char* action) { frame->findChild<QAction*>(action)->trigger(); }
  quorvexWindow& Active() { return *frame->ActiveProject(); }
  SheetView& Grid() { return Active().Grid(); }
  Project& Document() { return Active().Document(); }
  QString Status() { return frame->findChild<QLabel*>("status")->text(); }
  qsizetype Windows() { return frame->findChild<QMdiArea*>()->subWindowList().size(); }

  // Each key goes to what has the focus by then.
  void Type(const QString& text, std::optional<Qt::Key> end = Qt::Key_Return) {
    for (const QChar key : text) QTest::keyClick(frame->focusWidget(), key.toLatin1());
    if (end) QTest::keyClick(frame->focusWidget(), *end);
  }
  QLineEdit* Entry() {
    for (QLineEdit* entry : Grid().findChildren<QLineEdit*>("entry"))
      if (entry->isVisible()) return entry;
    return nullptr;
  }
  std::pair<int, int> Current() { return {Grid().currentIndex().row() + 1, Grid().currentIndex().column() + 1}; }
  QString Shown(int row, int col) { return Grid().model()->index(row - 1, col - 1).data().toString(); }

  std::string SavedProject(const char* name) {
    Project project(1, false, {});
    project.Sheet.Cells.SetGridCellNumber(1, 1, 1.5);
    project.Sheet.Cells.SetGridCellNumber(1, 2, 2.5);
    project.Notes = "first\r\nsecond";
    EXPECT_EQ(WriteProject(project, folder.Path(name)), 0);
    return folder.Path(name);
  }

  TemporaryFolder folder;
  TemporaryVariable settings{"QUORVEX_SETTINGS", folder.Path("quorvex.ini").c_str()};
  TemporaryVariable runtime{"XDG_RUNTIME_DIR", folder.Path("").c_str()};
  Session session;
  Dialogs dialogs;
  std::unique_ptr<parentfrm> frame;
};

}  // namespace quorvex
