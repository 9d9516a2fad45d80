#pragma once

#include <QMainWindow>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/OpenFile.h"
#include "app/ui/Autosave.h"
#include "app/ui/PreferenceKeeper.h"
#include "core/Session.h"
#include "core/ui/MessageBoxPrompter.h"
#include "project/Project.h"
#include "project/ProjectKind.h"

class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QToolBar;

namespace quorvex {

class ManualWindow;
class quorvexWindow;
struct ProjectCommand;

// The main frame: it holds any number of project windows, and the menus and the toolbar that act on the active one.
class parentfrm : public QMainWindow {
  Q_OBJECT

 public:
  // `commandLine` is what the program was started with, shown once the frame is; copies of unsaved projects are kept in
  // `stateFolder`.
  parentfrm(Session& session, std::string commandLine, std::string stateFolder);

  // More to open then, each as if it were the command line.
  void OpenAlso(std::vector<std::string> commandLines) { also_ = std::move(commandLines); }

  ~parentfrm() override;

  quorvexWindow* ActiveProject() const;

  // Opens what the file turns out to be.
  void OpenFile(const QString& fileName);
  // The same for the file of the command line or of a request, which is told about in the words for that.
  // False where it could not be told what it is.
  bool OpenRequestedFile(const QString& fileName);

  // Keeps copies of what is not saved, as happens once a minute. False where something could not be kept.
  bool KeepCopies() { return autosave_.KeepAll(); }

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
  void FileDerive();
  void FileOpen();
  void FileSave();
  void FileSaveAs();
  void FileClose();
  void WindowDuplicate();
  void WindowCloseAll();
  void MacroEditor();
  void FilePreferences();
  void GeneralPreferences();
  void ShowTip();
  void HelpManual();
  void OpenManual(const QWidget* window);
  void HelpAbout();
  void OpenExample(const QString& example);

  bool CloseAll();  // false where something stays open

  // False where it could not be told what the file is.
  bool Open(const QString& fileName, NamedBy by);
  void OpenProject(const QString& fileName);
  void OpenPlotFile(const QString& fileName);
  void ImportDataFile(const QString& fileName, bool askForKind);
  std::vector<quorvexWindow*> Projects() const;
  std::string Untitled() const;  // the name of the next project without a file
  quorvexWindow& ShowProject(Project project);
  quorvexWindow& ShowFresh(const ProjectKind& kind);
  void ShowImported(const DataSheet& sheet);  // as a project, in place of a fresh one
  void ShowInPlaceOfFresh(Project project);
  void CloseIfFresh(quorvexWindow* window);

  void PreferencesChanged(bool stored);
  void FillWindowMenu();
  void RememberFolder(const QString& fileName);
  void RememberFile(const std::string& fileName);
  void ShowActiveWindow();  // brings toolbar, menus and status bar up to date
  void ShowStatus();        // the status bar alone

  Session& session_;
  std::string commandLine_;
  std::vector<std::string> also_;
  MessageBoxPrompter user_;
  QMdiArea* area_;  // before the status bar, as a screen reader comes to them
  PreferenceKeeper keeper_;
  Autosave autosave_;
  bool shown_ = false;

  std::unique_ptr<ManualWindow> manual_;  // once it has been asked for
  QToolBar* toolbar_ = nullptr;
  QMenu* windowMenu_;
  QList<QAction*> projectActions_;  // that need a project window
  QList<QAction*> sheetActions_;    // of the context menu of its sheet
  QLabel* status_;
};

}  // namespace quorvex
