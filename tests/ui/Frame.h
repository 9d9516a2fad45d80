#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QDropEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMimeData>
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
#include "files/ui/Dataplot.h"

namespace quorvex {

// The main frame with settings and folders of its own, and what a user does to it.
class Frame : public testing::Test {
 protected:
  void Start(const std::string& commandLine = "") {
    session.Preferences = LoadSettings();
    // The tip of the day would stand before the frame; a test that wants it stores so.
    if (!session.Preferences.Has("Show Tips at Startup")) session.Preferences.Set("Show Tips at Startup", "0");
    // So would the guidance of the first plot before that.
    if (!session.Preferences.Has("hideplotinfo")) session.Preferences.Set("hideplotinfo", "1");
    frame = std::make_unique<parentfrm>(session, commandLine, folder.Path("state"));
    frame->show();
    frame->activateWindow();
    QTest::qWait(50);
  }

  // Closes every project and plot; changes are not wanted.
  void CloseUnsaved() {
    const auto leavePlots = [this](const QWidget& owner) {
      for (Dataplot* plot : owner.findChildren<Dataplot*>(Qt::FindDirectChildrenOnly))
        if (plot->Document().Changed()) dialogs.Press(QMessageBox::No);
    };
    for (qsizetype left = Windows(); left > 0; --left) {
      leavePlots(Active());
      if (Document().Changed) dialogs.Press(QMessageBox::No);
      if (Document().NotesChanged) dialogs.Press(QMessageBox::No);
      Trigger("mnuFileClose");
    }
    leavePlots(*frame);
    EXPECT_TRUE(frame->close());
  }
  void TearDown() override {
    if (frame != nullptr && frame->isVisible()) CloseUnsaved();
  }

  void Trigger(const char* action) { Action(action).trigger(); }
  // What the message box says that the command ends in.
  std::string SaidBy(const char* action, QMessageBox::StandardButton answer = QMessageBox::Ok) {
    dialogs.Press(answer);
    Trigger(action);
    return dialogs.Said.back();
  }
  void Drop(const std::vector<std::string>& files) {
    QMimeData data;
    QList<QUrl> urls;
    for (const std::string& file : files) urls << QUrl::fromLocalFile(QString::fromStdString(file));
    data.setUrls(urls);
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(frame.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(frame.get(), &drop);
  }
  QAction& Action(const char* name) { return *frame->findChild<QAction*>(name); }
  quorvexWindow& Active() { return *frame->ActiveProject(); }
  SheetView& Grid() { return Active().Grid(); }
  Project& Document() { return Active().Document(); }
  void Select(int top, int left, int bottom, int right,
              QItemSelectionModel::SelectionFlags how = QItemSelectionModel::ClearAndSelect) {
    const QAbstractItemModel& cells = *Grid().model();
    if (how & QItemSelectionModel::Clear)
      Grid().selectionModel()->setCurrentIndex(cells.index(top - 1, left - 1), QItemSelectionModel::NoUpdate);
    Grid().selectionModel()->select({cells.index(top - 1, left - 1), cells.index(bottom - 1, right - 1)}, how);
  }
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
