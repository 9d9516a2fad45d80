#pragma once

#include <QMainWindow>
#include <QTimer>
#include <string>
#include <string_view>
#include <vector>

#include "app/RecoveryStore.h"
#include "core/Session.h"
#include "core/ui/MessageBoxPrompter.h"
#include "project/Project.h"

class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QToolBar;

namespace quorvex {

class quorvexWindow;
struct ProjectCommand;

// The main frame: it holds any number of project windows, and the menus and the toolbar that act on the active one.
class parentfrm : public QMainWindow {
  Q_OBJECT

 public:
  // `commandLine` is what the program was started with, shown once the frame is; copies of unsaved projects are kept in
  // `stateFolder`.
  parentfrm(Session& session, std::string commandLine, std::string stateFolder);

  ~parentfrm() override;

  quorvexWindow* ActiveProject() const;

  // Opens what the file turns out to be.
  void OpenFile(const QString& fileName);
  // The same for the file of the command line or of a request, which is told about in the words for that.
  // False where it could not be told what it is.
  bool OpenRequestedFile(const QString& fileName);

  // Keeps a copy of each project that changed since the last time. Runs once a minute. False where one could not be
  // kept, or is at work.
  bool Autosave();

  // Keeps copies of what is not saved, then tells what happened.
  void GoOnAfterFailure(const QString& what);

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  bool eventFilter(QObject* receiver, QEvent* event) override;  // F1 in other windows than the frame

 private:
  void MakeMenus();
  void MakeFileMenu();
  void MakeProjectMenus();
  void AddProjectMenu(const char* name, const QString& title, const std::vector<ProjectCommand>& commands);
  void MakeToolsMenu();
  void MakeWindowMenu();
  void MakeHelpMenu();
  QAction* NewAction(const char* name, const QString& text, const QKeySequence& keys, void (parentfrm::*command)());

  void FirstShowing();
  void OfferRecovery();

  void FileNew();
  void FileNewKind();
  void FileOpen();
  void FileSave();
  void FileSaveAs();
  void FileClose();
  void MacroEditor();
  void FilePreferences();
  void GeneralPreferences();
  void ShowTip();
  void HelpManual();
  void OpenManual(const QWidget* window);
  void HelpAbout();
  void OpenExample(const QString& resource);

  bool Dispatch(const QString& fileName, bool requested);
  void OpenProject(const QString& fileName);
  void ImportDataFile(const QString& fileName);
  bool AskKind(std::size_t& independentVariables, bool& hasStandardDeviation);
  quorvexWindow* ShowProject(Project project);
  Project EmptyProject(std::size_t independentVariables, bool hasStandardDeviation);
  std::string NextUntitled() const;
  void CloseIfFresh(quorvexWindow* window);

  void PreferencesChanged(bool stored);
  void FillRecentMenu(QMenu& menu, std::string_view section);
  void FillWindowMenu();
  void RememberFolder(const QString& fileName);
  void RememberFile(const std::string& fileName);
  void ShowActiveWindow();  // brings toolbar, menus and status bar up to date
  void ShowStatus();        // the status bar alone

  void MoveToStoredPlace();
  int StorePlace();  // returns 0 or the file error's number
  void StoreChoices();
  void TellOnceWhetherStored(int error);

  Session& session_;
  std::string commandLine_;
  MessageBoxPrompter user_;
  RecoveryStore recovery_;
  QTimer autosave_, storing_;
  bool shown_ = false;
  bool toldNotStored_ = false;
  std::size_t windows_ = 0;  // opened so far

  QMdiArea* area_;
  QToolBar* toolbar_ = nullptr;
  QMenu *recentMenu_, *recentPlotMenu_, *windowMenu_;
  QList<QAction*> projectActions_;  // that need a project window
  QList<QAction*> sheetActions_;    // of the context menu of its sheet
  QLabel* status_;
};

}  // namespace quorvex
