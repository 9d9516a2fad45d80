// The menus, the toolbar and the help of the main frame.

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QStyle>
#include <QToolBar>
#include <QUrl>

#include "app/RecentFiles.h"
#include "app/ui/parentfrm.h"
#include "files/ProjectFile.h"
#include "project/ui/ProjectMenus.h"
#include "project/ui/quorvexWindow.h"

// The examples and the icon are part of the library of windows, which has to be told so by name.
static void LoadResources() { Q_INIT_RESOURCE(quorvex); }

namespace quorvex {
namespace {

// A text for a menu, in which "&" stands for itself.
QString MenuText(QString text) { return text.replace('&', "&&"); }

QString Numbered(int number, const QString& text) {
  return (number < 10 ? QString("&%1  ") : QString("%1  ")).arg(number) + MenuText(text);
}

// Installed, or beside the program where it was built.
QString ManualFile() {
  const QString program = QCoreApplication::applicationDirPath();
  for (const char* folder : {"/../share/quorvex/manual", "/share/quorvex/manual"})
    if (const QFileInfo page(program + folder + "/index.html"); page.exists()) return page.canonicalFilePath();
  return {};
}

}  // namespace

QAction* parentfrm::NewAction(const char* name, const QString& text, const QKeySequence& keys,
                              void (parentfrm::*command)()) {
  auto* action = new QAction(text, this);
  action->setObjectName(name);
  action->setShortcut(keys);
  connect(action, &QAction::triggered, this, command);
  return action;
}

void parentfrm::MakeMenus() {
  LoadResources();
  QApplication::setWindowIcon(QIcon(":/quorvex.png"));
  MakeFileMenu();
  MakeProjectMenus();
  MakeWindowMenu();
  MakeHelpMenu();
}

void parentfrm::MakeFileMenu() {
  QAction* fresh = NewAction("mnuFileNew", "&New", QKeySequence::New, &parentfrm::FileNew);
  QAction* kind =
      NewAction("mnuFileNewKind", "New with &Variables...", QKeySequence("Ctrl+Shift+N"), &parentfrm::FileNewKind);
  QAction* open = NewAction("mnuFileOpen", "&Open...", QKeySequence::Open, &parentfrm::FileOpen);
  QAction* save = NewAction("mnuFileSave", "&Save", QKeySequence::Save, &parentfrm::FileSave);
  QAction* saveAs = NewAction("mnuFileSaveAs", "Save &As...", QKeySequence("Ctrl+Shift+S"), &parentfrm::FileSaveAs);
  QAction* close = NewAction("mnuFileClose", "&Close", QKeySequence("Ctrl+W"), &parentfrm::FileClose);
  auto* quit = new QAction("&Quit", this);
  quit->setObjectName("mnuFileQuit");
  quit->setShortcut(QKeySequence("Ctrl+Q"));
  connect(quit, &QAction::triggered, this, &QWidget::close);
  projectActions_ = {save, saveAs, close};
  fresh->setIcon(style()->standardIcon(QStyle::SP_FileIcon));
  open->setIcon(style()->standardIcon(QStyle::SP_DialogOpenButton));
  save->setIcon(style()->standardIcon(QStyle::SP_DialogSaveButton));

  QMenu* file = menuBar()->addMenu("&File");
  file->addActions({fresh, kind, open});
  recentMenu_ = file->addMenu("Open &Recent");
  recentMenu_->setObjectName("recent");
  connect(file, &QMenu::aboutToShow, this, &parentfrm::FillRecentMenu);
  file->addSeparator();
  file->addActions({save, saveAs, close});
  file->addSeparator();
  file->addAction(quit);
  FillRecentMenu();

  toolbar_ = addToolBar("Toolbar");
  toolbar_->setObjectName("toolbar");
  toolbar_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  toolbar_->addActions({fresh, open, save});
}

void parentfrm::FillRecentMenu() {
  recentMenu_->clear();
  int number = 0;
  for (const std::string& file : RecentFiles(session_.Preferences, kRecentProjects)) {
    const QString name = QString::fromStdString(file);
    QAction* action = recentMenu_->addAction(Numbered(++number, name));
    connect(action, &QAction::triggered, this, [this, file, name] {
      if (!QFile::exists(name)) RemoveRecentFile(session_.Preferences, kRecentProjects, file);
      OpenFile(name);
    });
  }
  recentMenu_->setEnabled(number > 0);
}

// A menu of commands on the active project.
QMenu* parentfrm::AddProjectMenu(const char* name, const QString& title, const std::vector<ProjectCommand>& commands) {
  QMenu* menu = menuBar()->addMenu(title);
  menu->setObjectName(name);
  for (const ProjectCommand& command : commands) {
    if (command.Name == nullptr) {
      menu->addSeparator();
      continue;
    }
    auto* action = new QAction(command.Text, this);
    action->setObjectName(command.Name);
    action->setShortcut(command.Keys);
    connect(action, &QAction::triggered, this, [this, run = command.Run] {
      if (quorvexWindow* window = ActiveProject()) run(*window);
    });
    menu->addAction(action);
    if (command.OnToolbar) toolbar_->addAction(action);
    if (command.IsChecked != nullptr) {
      action->setCheckable(true);
      connect(menu, &QMenu::aboutToShow, action, [this, action, isChecked = command.IsChecked] {
        if (const quorvexWindow* window = ActiveProject()) action->setChecked(isChecked(*window));
      });
    }
    projectActions_ << action;
  }
  return menu;
}

void parentfrm::MakeProjectMenus() {
  QMenu* edit = AddProjectMenu("edit", "&Edit", EditMenu());
  AddProjectMenu("data", "&Data", DataMenu());
  AddProjectMenu("solve", "&Solve", SolveMenu());
  connect(edit, &QMenu::aboutToShow, this, [this] {
    if (const quorvexWindow* window = ActiveProject()) findChild<QAction*>("mnuEditUndo")->setText(window->UndoText());
  });
}

void parentfrm::MakeWindowMenu() {
  windowMenu_ = menuBar()->addMenu("&Window");
  windowMenu_->setObjectName("windowMenu");
  connect(windowMenu_, &QMenu::aboutToShow, this, &parentfrm::FillWindowMenu);
  struct Entry {
    const char *Name, *Text;
    QKeySequence Keys;
    void (QMdiArea::*Command)();
  };
  const Entry entries[] = {
      {"mnuWindowCascade", "&Cascade", {}, &QMdiArea::cascadeSubWindows},
      {"mnuWindowTile", "&Tile", {}, &QMdiArea::tileSubWindows},
      {"mnuWindowNext", "&Next", QKeySequence("Ctrl+F6"), &QMdiArea::activateNextSubWindow},
      {"mnuWindowPrevious", "&Previous", QKeySequence("Ctrl+Shift+F6"), &QMdiArea::activatePreviousSubWindow},
  };
  for (const Entry& entry : entries) {
    auto* action = new QAction(entry.Text, this);
    action->setObjectName(entry.Name);
    action->setShortcut(entry.Keys);
    connect(action, &QAction::triggered, area_, entry.Command);
    windowMenu_->addAction(action);
    projectActions_ << action;
  }
  windowMenu_->addSeparator();
}

void parentfrm::FillWindowMenu() {
  for (QAction* action : windowMenu_->actions())
    if (action->isCheckable()) delete action;
  int number = 0;
  for (QMdiSubWindow* window : area_->subWindowList()) {
    const auto* project = qobject_cast<quorvexWindow*>(window->widget());
    if (project == nullptr) continue;
    const QString changed = window->isWindowModified() ? "*" : "";
    QAction* action = windowMenu_->addAction(Numbered(++number, window->windowTitle().replace("[*]", changed)));
    action->setCheckable(true);
    action->setChecked(window == area_->currentSubWindow());
    connect(action, &QAction::triggered, window, [this, window] { area_->setActiveSubWindow(window); });
  }
}

void parentfrm::MakeHelpMenu() {
  QMenu* help = menuBar()->addMenu("&Help");
  help->addAction(NewAction("mnuHelpManual", "&Manual", QKeySequence::HelpContents, &parentfrm::HelpManual));
  QMenu* examples = help->addMenu("&Examples");
  examples->setObjectName("examples");
  int number = 0;
  const QDir folder(":/examples");
  for (const QString& file : folder.entryList()) {
    const QString resource = folder.filePath(file);
    QAction* action = examples->addAction(Numbered(++number, QFileInfo(file).completeBaseName()));
    connect(action, &QAction::triggered, this, [this, resource] { OpenExample(resource); });
  }
  help->addSeparator();
  help->addAction(NewAction("mnuHelpAbout", "&About Quorvex", {}, &parentfrm::HelpAbout));
}

void parentfrm::HelpManual() {
  const QString page = ManualFile();
  if (page.isEmpty() || !QDesktopServices::openUrl(QUrl::fromLocalFile(page)))
    user_.Refuse("The manual cannot be shown. It belongs into the folder share/quorvex/manual.");
}

void parentfrm::HelpAbout() {
  QMessageBox::about(this, "About Quorvex",
                     "<h3>Quorvex " QUORVEX_VERSION "</h3><p>Nonlinear regression and curve fitting.</p>");
}

// An example is a project without a file, so that saving it never writes over the example.
void parentfrm::OpenExample(const QString& resource) {
  QFile file(resource);
  if (!file.open(QIODevice::ReadOnly)) return;
  const std::string name = "Untitled " + QFileInfo(resource).completeBaseName().toStdString();
  Result<Project> project = ParseProject(file.readAll().toStdString(), name, session_.Locale);
  if (!project) return user_.Refuse(project.error());
  project->FileName = name;
  quorvexWindow* before = ActiveProject();
  ShowProject(std::move(*project));
  CloseIfFresh(before);
}

}  // namespace quorvex
