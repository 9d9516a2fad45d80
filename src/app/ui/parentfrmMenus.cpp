// The menus, the toolbar and the help of the main frame.

#include <QApplication>
#include <QDate>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QStyle>
#include <QToolBar>
#include <algorithm>

#include "app/HelpPages.h"
#include "app/SettingsStore.h"
#include "app/ui/ExampleMenu.h"
#include "app/ui/ManualWindow.h"
#include "app/ui/PreferenceDialog.h"
#include "app/ui/WindowArrangement.h"
#include "app/ui/frmGenPref.h"
#include "app/ui/frmTip.h"
#include "app/ui/parentfrm.h"
#include "batch/ui/frmMacro.h"
#include "core/RecentFiles.h"
#include "core/Version.h"
#include "core/ui/NumberedEntry.h"
#include "core/ui/RecentMenu.h"
#include "desktop/ProjectMenus.h"
#include "desktop/SheetView.h"
#include "desktop/quorvexWindow.h"
#include "files/ui/Dataplot.h"

// The examples and the icon are part of the library of windows, which has to be told so by name.
static void LoadResources() { Q_INIT_RESOURCE(quorvex); }

namespace quorvex {

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
  MakeToolsMenu();
  MakeWindowMenu();
  MakeHelpMenu();
}

void parentfrm::MakeFileMenu() {
  QAction* fresh = NewAction("mnuFileNew", "&New", QKeySequence::New, &parentfrm::FileNew);
  QAction* kind =
      NewAction("mnuFileNewKind", "New with &Variables...", QKeySequence("Ctrl+Shift+N"), &parentfrm::FileNewKind);
  QAction* derive = NewAction("mnuFileDerive", "&Derive New Project...", {}, &parentfrm::FileDerive);
  QAction* open = NewAction("mnuFileOpen", "&Open...", QKeySequence::Open, &parentfrm::FileOpen);
  QAction* save = NewAction("mnuFileSave", "&Save", QKeySequence::Save, &parentfrm::FileSave);
  QAction* saveAs = NewAction("mnuFileSaveAs", "Save &As...", QKeySequence("Ctrl+Shift+S"), &parentfrm::FileSaveAs);
  QAction* close = NewAction("mnuFileClose", "&Close", QKeySequence("Ctrl+W"), &parentfrm::FileClose);
  close->setShortcuts({QKeySequence("Ctrl+W"), QKeySequence("Ctrl+F4")});
  auto* quit = new QAction("&Quit", this);
  quit->setObjectName("mnuFileQuit");
  quit->setShortcut(QKeySequence("Ctrl+Q"));
  connect(quit, &QAction::triggered, this, &QWidget::close);
  projectActions_ = {derive, save, saveAs, close};
  fresh->setIcon(style()->standardIcon(QStyle::SP_FileIcon));
  open->setIcon(style()->standardIcon(QStyle::SP_DialogOpenButton));
  save->setIcon(style()->standardIcon(QStyle::SP_DialogSaveButton));

  QMenu* file = menuBar()->addMenu("&File");
  file->addActions({fresh, kind, derive, open});
  auto* projects = new RecentMenu("Open &Recent", kRecentProjects, session_.Preferences, file);
  projects->setObjectName("recent");
  auto* plots = new RecentMenu("Open Recent &Plot", kRecentPlots, session_.Preferences, file);
  plots->setObjectName("recentPlots");
  for (const RecentMenu* menu : {projects, plots}) connect(menu, &RecentMenu::Chosen, this, &parentfrm::OpenFile);
  file->addSeparator();
  file->addActions({save, saveAs, close});
  file->addSeparator();
  file->addAction(quit);

  fresh->setToolTip("New project (Ctrl+N)");
  open->setToolTip("Open a project, a plot or a file of measurements (Ctrl+O)");
  save->setToolTip("Save the project (Ctrl+S)");
  toolbar_ = addToolBar("Toolbar");
  toolbar_->setObjectName("toolbar");
  toolbar_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  toolbar_->addActions({fresh, open, save});
}

// A menu of commands on the active project.
void parentfrm::AddProjectMenu(const char* name, const QString& title, const std::vector<ProjectCommand>& commands) {
  QMenu* menu = menuBar()->addMenu(title);
  menu->setObjectName(name);
  for (const ProjectCommand& command : commands) {
    if (command.Name == nullptr) {
      sheetActions_ << menu->addSeparator();
      continue;
    }
    auto* action = new QAction(command.Text, this);
    action->setObjectName(command.Name);
    action->setShortcuts({command.Keys, command.OtherKeys});
    connect(action, &QAction::triggered, this, [this, run = command.Run] {
      if (quorvexWindow* window = ActiveProject()) run(*window);
    });
    menu->addAction(action);
    if (command.OnToolbar) {
      action->setIcon(QIcon(":/quorvex.png"));  // a curve through points
      toolbar_->addAction(action);
    }
    if (command.OnSheet) {
      // Its keys act where the sheet has the focus: Delete in the list of solutions is not meant for cells.
      action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
      sheetActions_ << action;
    }
    if (command.IsChecked != nullptr) {
      action->setCheckable(true);
      connect(menu, &QMenu::aboutToShow, action, [this, action, isChecked = command.IsChecked] {
        if (const quorvexWindow* window = ActiveProject()) action->setChecked(isChecked(*window));
      });
    }
    projectActions_ << action;
  }
}

void parentfrm::MakeProjectMenus() {
  AddProjectMenu("edit", "&Edit", EditMenu());
  AddProjectMenu("format", "F&ormat", FormatMenu());
  AddProjectMenu("data", "&Data", DataMenu());
  AddProjectMenu("models", "&Models", ModelMenu());
  AddProjectMenu("solve", "&Solve", SolveMenu());
  AddProjectMenu("plot", "&Plot", PlotMenu());
}

void parentfrm::MakeToolsMenu() {
  QMenu* tools = menuBar()->addMenu("&Tools");
  tools->setObjectName("tools");
  QAction* macro = NewAction("mnuToolsMacro", "Macro &Editor...", {}, &parentfrm::MacroEditor);
  projectActions_ << macro;
  tools->addAction(macro);
  tools->addSeparator();
  tools->addAction(NewAction("mnuFilePref", "&Solver and Results...", {}, &parentfrm::FilePreferences));
  tools->addAction(NewAction("mnuGenPref", "&Preferences...", QKeySequence("Ctrl+,"), &parentfrm::GeneralPreferences));
}

void parentfrm::MacroEditor() {
  quorvexWindow* window = ActiveProject();
  if (window == nullptr) return;
  const Project& project = window->Document();
  const MacroFields fields = FieldsFor(project.Sheet.IndependentVariables, project.Sheet.HasStandardDeviation,
                                       session_.Preferences, project.Locale);
  frmMacro(this, fields, project.Models, session_.Preferences, project.Locale, user_).exec();
}

void parentfrm::FilePreferences() {
  FilePref form(this, session_, user_);
  if (form.exec() == QDialog::Accepted) PreferencesChanged(form.Stored());
}

void parentfrm::GeneralPreferences() {
  frmGenPref form(this, session_, user_);
  if (form.exec() == QDialog::Accepted) PreferencesChanged(form.Stored());
}

// What the open windows show may depend on what was chosen, such as the order of solutions.
void parentfrm::PreferencesChanged(bool stored) {
  if (!stored) keeper_.SayNoMore();
  for (quorvexWindow* project : Projects())
    if (project->Grid().CommitEntry()) project->Refresh();
  ShowActiveWindow();
}

void parentfrm::MakeWindowMenu() {
  windowMenu_ = menuBar()->addMenu("&Window");
  windowMenu_->setObjectName("windowMenu");
  connect(windowMenu_, &QMenu::aboutToShow, this, &parentfrm::FillWindowMenu);
  struct Entry {
    const char *Name, *Text;
    QKeySequence Keys;
    void (*Command)(QMdiArea& area);
  };
  const Entry entries[] = {
      {"mnuWindowCascade", "&Cascade", {}, [](QMdiArea& area) { area.cascadeSubWindows(); }},
      {"mnuWindowTile", "&Tile", {}, [](QMdiArea& area) { area.tileSubWindows(); }},
      {"mnuWindowTileHorizontally", "Tile &Horizontally", {}, TileHorizontally},
      {"mnuWindowTileVertically", "Tile &Vertically", {}, TileVertically},
      {"mnuWindowArrange", "&Arrange Icons", {}, ArrangeIcons},
      {},
      {"mnuWindowNext", "&Next", QKeySequence("Ctrl+F6"), [](QMdiArea& area) { area.activateNextSubWindow(); }},
      {"mnuWindowPrevious", "&Previous", QKeySequence("Ctrl+Shift+F6"),
       [](QMdiArea& area) { area.activatePreviousSubWindow(); }},
  };
  for (const Entry& entry : entries) {
    if (entry.Name == nullptr) {
      windowMenu_->addSeparator();
      continue;
    }
    auto* action = new QAction(entry.Text, this);
    action->setObjectName(entry.Name);
    action->setShortcut(entry.Keys);
    connect(action, &QAction::triggered, area_, [this, run = entry.Command] { run(*area_); });
    windowMenu_->addAction(action);
    projectActions_ << action;
  }
  QAction* duplicate = NewAction("mnuWindowDuplicate", "&Duplicate", {}, &parentfrm::WindowDuplicate);
  windowMenu_->addAction(duplicate);
  projectActions_ << duplicate;
  windowMenu_->addAction(NewAction("mnuWindowCloseAll", "Close A&ll", {}, &parentfrm::WindowCloseAll));
  windowMenu_->addSeparator();
}

void parentfrm::WindowCloseAll() {
  const QList<Dataplot*> plots = findChildren<Dataplot*>(Qt::FindDirectChildrenOnly);
  if (std::ranges::all_of(plots, [](Dataplot* plot) { return plot->close(); })) CloseAllForms(*area_);
}

// The projects, each followed by the windows of its results and plots, and the plots of files.
void parentfrm::FillWindowMenu() {
  // Of this menu only the entries of windows can be checked.
  for (QAction* action : windowMenu_->actions())
    if (action->isCheckable()) delete action;
  int number = 0;
  const auto add = [&](const QString& title, QWidget* window, bool current, const auto& show) {
    QAction* action = windowMenu_->addAction(NumberedEntry(++number, title));
    action->setCheckable(true);
    action->setChecked(current);
    connect(action, &QAction::triggered, window, show);
  };
  // Qt fills in this mark of a change for title bars alone.
  const auto title = [](const QWidget& window) {
    return window.windowTitle().replace("[*]", window.isWindowModified() ? "*" : "");
  };
  const auto addAbove = [&](QWidget* child, const QString& indent) {
    add(indent + title(*child), child, false, [child] {
      child->raise();
      child->activateWindow();
    });
  };
  for (QMdiSubWindow* window : area_->subWindowList()) {
    const auto* project = qobject_cast<quorvexWindow*>(window->widget());
    if (project == nullptr) continue;
    add(title(*window), window, window == area_->currentSubWindow(),
        [this, window] { area_->setActiveSubWindow(window); });
    for (QWidget* child : project->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
      if (child->isWindow() && child->isVisible()) addAbove(child, "    ");
  }
  for (QWidget* plot : findChildren<Dataplot*>(Qt::FindDirectChildrenOnly)) addAbove(plot, {});
}

void parentfrm::MakeHelpMenu() {
  QMenu* help = menuBar()->addMenu("&Help");
  QAction* manual = NewAction("mnuHelpManual", "&Manual", QKeySequence::HelpContents, &parentfrm::HelpManual);
  manual->setIcon(style()->standardIcon(QStyle::SP_DialogHelpButton));
  manual->setToolTip("The page of the manual for the window in front (F1)");
  toolbar_->addSeparator();
  toolbar_->addAction(manual);
  help->addAction(manual);
  help->addAction(NewAction("mnuHelpTip", "&Tip of the Day...", {}, &parentfrm::ShowTip));
  connect(new ExampleMenu("&Examples", help), &ExampleMenu::Chosen, this, &parentfrm::OpenExample);
  help->addSeparator();
  help->addAction(NewAction("mnuHelpAbout", "&About Quorvex", {}, &parentfrm::HelpAbout));
}

void parentfrm::HelpManual() {
  const QMdiSubWindow* active = area_->currentSubWindow();
  OpenManual(active != nullptr && active->widget() != nullptr ? active->widget() : this);
}

// The page of the window or of the part of it where the user is, or of the window that it stands over.
void parentfrm::OpenManual(const QWidget* window) {
  std::string_view found;
  for (; window != nullptr && found.empty(); window = window->parentWidget())
    found = HelpPageOf(window->objectName().toStdString());
  const QString page = found.empty() ? "index.html" : QString::fromUtf8(found.data(), qsizetype(found.size()));
  if (manual_ == nullptr) manual_ = std::make_unique<ManualWindow>();
  if (!manual_->Open(page)) user_.Refuse(kNoManual);
}

bool parentfrm::eventFilter(QObject* receiver, QEvent* event) {
  if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1) return false;
  const QWidget* window = QApplication::activeWindow();
  const auto* widget = qobject_cast<QWidget*>(receiver);
  // In the frame F1 is the key of the menu; the dialogs and windows over it have no such entry.
  if (window == nullptr || window == this || widget == nullptr || widget->window() != window) return false;
  OpenManual(widget);
  return true;
}

void parentfrm::ShowTip() { frmTip(this, session_, static_cast<std::size_t>(QDate::currentDate().dayOfYear())).exec(); }

void parentfrm::HelpAbout() {
  QMessageBox box(QMessageBox::NoIcon, "About Quorvex",
                  QString("<h3>Quorvex ") + kVersion +
                      "</h3><p>Nonlinear regression, curve fitting, interpolation and scientific plotting.</p>",
                  QMessageBox::Ok, this);
  box.setIconPixmap(QPixmap(":/quorvex.png").scaledToHeight(64, Qt::SmoothTransformation));
  box.setInformativeText(QString("The preferences are kept in %1.\nThe windows are made with Qt %2.")
                             .arg(QString::fromStdString(SettingsFileName()), qVersion()));
  box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  box.exec();
}

void parentfrm::OpenExample(const QString& example) {
  Result<Project> project = ReadExample(example, session_.Locale);
  if (!project) return user_.Refuse(project.error());
  ShowInPlaceOfFresh(std::move(*project));
}

}  // namespace quorvex
