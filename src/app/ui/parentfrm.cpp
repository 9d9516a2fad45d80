#include "app/ui/parentfrm.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <algorithm>

#include "app/CommandLine.h"
#include "app/Preferences.h"
#include "app/RecentFiles.h"
#include "app/SettingsStore.h"
#include "app/ui/WindowArrangement.h"
#include "core/ui/BusyCursor.h"
#include "desktop/ImportCommands.h"
#include "desktop/SheetView.h"
#include "desktop/quorvexWindow.h"
#include "files/DetectFileType.h"
#include "files/ProjectFile.h"
#include "files/UserModelFiles.h"
#include "import/spreadsheet/SpreadsheetImport.h"
#include "project/ui/NewProj.h"

namespace quorvex {
namespace {

constexpr int kUnitsPerPixel = 15;  // window units are 1/1440 inch
constexpr int kAutosaveInterval = 60'000;

// A window's number in the store of unsaved projects, and whether it changed since it was last kept there.
constexpr const char* kNumber = "number";
constexpr const char* kUnkept = "unkept";

}  // namespace

parentfrm::parentfrm(Session& session, std::string commandLine, std::string stateFolder)
    : session_(session),
      commandLine_(std::move(commandLine)),
      user_(this),
      recovery_(std::move(stateFolder)),
      area_(new QMdiArea(this)),
      status_(new QLabel(this)) {
  setWindowTitle("Quorvex");
  setObjectName("parentfrm");
  setAcceptDrops(true);
  setCentralWidget(area_);
  area_->setObjectName("windows");
  area_->setAccessibleName("Windows");
  area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area_->setBackground(palette().brush(QPalette::Mid));
  status_->setObjectName("status");
  status_->setTextFormat(Qt::PlainText);
  statusBar()->addWidget(status_);
  const QString folder = QString::fromStdString(session_.Preferences.Text("projectdir"));
  if (folder != "0") user_.Folder = folder;
  MakeMenus();
  QApplication::instance()->installEventFilter(this);
  MoveToStoredPlace();
  connect(area_, &QMdiArea::subWindowActivated, this, &parentfrm::ShowActiveWindow);
  connect(&autosave_, &QTimer::timeout, this, &parentfrm::Autosave);
  autosave_.start(kAutosaveInterval);
  storing_.setSingleShot(true);
  connect(&storing_, &QTimer::timeout, this, &parentfrm::StoreChoices);
  connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, [this] {
    constexpr int kDelay = 500;  // several that change together are stored together
    if (!session_.Preferences.Changes().empty() && !toldNotStored_ && !storing_.isActive()) storing_.start(kDelay);
  });
  ShowActiveWindow();
}

// The windows go before what they tell of their end.
parentfrm::~parentfrm() {
  disconnect(area_, nullptr, this, nullptr);
  delete area_;
}

quorvexWindow* parentfrm::ActiveProject() const {
  const QMdiSubWindow* window = area_->currentSubWindow();
  return window != nullptr ? qobject_cast<quorvexWindow*>(window->widget()) : nullptr;
}

void parentfrm::MoveToStoredPlace() {
  const QRect screen = this->screen()->availableGeometry();
  const FrameGeometry stored =
      StartupGeometry(session_.Preferences, screen.height() * kUnitsPerPixel, screen.width() * kUnitsPerPixel);
  const auto pixels = [](double units) { return static_cast<int>(std::clamp(units / kUnitsPerPixel, -1e6, 1e6)); };
  resize(pixels(stored.Width), pixels(stored.Height));
  // A screen may be gone since; the title bar must be within reach.
  const QRect all = this->screen()->availableVirtualGeometry();
  constexpr int kReach = 100;
  move(std::clamp(pixels(stored.Left), all.left() + kReach - width(), all.right() - kReach),
       std::clamp(pixels(stored.Top), all.top(), all.bottom() - kReach));
}

int parentfrm::StorePlace() {
  const QRect place = isMaximized() || isMinimized() ? normalGeometry() : QRect(pos(), size());
  const auto units = [](int pixels) { return double{1} * pixels * kUnitsPerPixel; };
  const int error = SaveStartupSettings(
      session_.Preferences, {units(place.x()), units(place.y()), units(place.height()), units(place.width())});
  return error != 0 ? error : SaveChanges(session_.Preferences);
}

// What was chosen in passing, such as the order of solutions. A dialog that is open stores its own, and says so.
void parentfrm::StoreChoices() {
  if (QApplication::activeModalWidget() == nullptr) TellOnceWhetherStored(SaveChanges(session_.Preferences));
}

// Nobody wants to be told at each file that is opened.
void parentfrm::TellOnceWhetherStored(int error) {
  if (error == 0 || toldNotStored_) return;
  toldNotStored_ = true;
  TellWhetherStored(error, user_);
}

void parentfrm::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  if (shown_) return;
  shown_ = true;
  QTimer::singleShot(0, this, &parentfrm::FirstShowing);  // its messages come over a frame that is there
}

void parentfrm::FirstShowing() {
  OfferRecovery();
  if (commandLine_.empty()) {
    if (ActiveProject() == nullptr) FileNew();
  } else if (!OpenRequestedFile(QString::fromStdString(StartFileName(commandLine_)))) {
    return;
  }
  if (session_.Preferences.Integer("Show Tips at Startup") != 0) ShowTip();
  ShowActiveWindow();
}

void parentfrm::OfferRecovery() {
  for (const RecoveryStore::LeftBehind& left : recovery_.Claim()) {
    if (!user_.Ask("Quorvex ended unexpectedly while changes to the project '" + left.FileName +
                   "' were not saved. Do you want to restore them?")) {
      if (user_.Ask("The changes to the project '" + left.FileName + "' were kept on " + left.Made +
                    ". Do you want to delete them? If not, you will be asked again at the next start."))
        recovery_.Discard(left);
      continue;
    }
    Result<Project> project = RecoveryStore::Read(left, session_.Locale);
    if (!project) {
      user_.Refuse(project.error());
      continue;  // the copy stays, for whoever can read it
    }
    ShowProject(std::move(*project));
    recovery_.Adopt(windows_, left);
    Autosave();
  }
}

bool parentfrm::Autosave() {
  bool all = true;
  for (QMdiSubWindow* window : area_->subWindowList()) {
    auto* project = qobject_cast<quorvexWindow*>(window->widget());
    if (project == nullptr || !window->property(kUnkept).toBool()) continue;
    if (project->Solver().Running()) {
      all = false;
      continue;
    }
    const std::size_t number = window->property(kNumber).toULongLong();
    const Project& document = project->Document();
    if (!document.Changed && !document.NotesChanged) {
      recovery_.Forget(number);
    } else if (recovery_.Keep(number, document) != 0) {
      statusBar()->showMessage("The changes could not be kept for the case of a crash.", kAutosaveInterval);
      all = false;
      continue;
    }
    window->setProperty(kUnkept, false);
  }
  return all;
}

void parentfrm::GoOnAfterFailure(const QString& what) {
  const char* kept = Autosave()
                         ? " What is not saved was copied aside, and is offered at the next start if Quorvex ends."
                         : " Not all of what is not saved could be copied aside.";
  user_.Refuse(what.toStdString() + " The command did not come to its end." + kept);
}

void parentfrm::closeEvent(QCloseEvent* event) {
  TellOnceWhetherStored(StorePlace());
  event->setAccepted(CloseAllForms(*area_));
}

void parentfrm::dragEnterEvent(QDragEnterEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); }))
    event->acceptProposedAction();
}

void parentfrm::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  QStringList files;
  for (const QUrl& url : event->mimeData()->urls())
    if (url.isLocalFile()) files << url.toLocalFile();
  // The drag ends first: where it came from waits for it, and a message may be shown for long.
  QTimer::singleShot(0, this, [this, files] {
    for (const QString& file : files) OpenFile(file);
  });
}

void parentfrm::OpenFile(const QString& fileName) { Dispatch(fileName, false); }

bool parentfrm::OpenRequestedFile(const QString& fileName) {
  if (isMinimized()) showNormal();
  raise();
  activateWindow();
  return Dispatch(fileName, true);
}

bool parentfrm::Dispatch(const QString& fileName, bool requested) {
  const std::string name = fileName.toStdString();
  // A pipe or a device may have no end, and a pipe that nobody writes to none yet.
  const QFileInfo info(fileName);
  const bool endless = info.exists() && !info.isFile();
  const std::optional<FileType> type = endless ? std::nullopt : DetectFileType(name);
  if (!type) {
    user_.Refuse("Could not obtain file description for '" + name + "'.");
    return false;
  }
  if (type->Kind == "plot") {
    user_.Refuse("'" + name + "' is a Quorvex Plot file. This version does not open plots.");
    return true;
  }
  if (type->Kind == "regression") return OpenProject(fileName), true;
  if (requested) {
    user_.Refuse("The command line argument file name '" + name +
                 "' does not have a Quorvex extension. Please specify a new project type, then the file can be "
                 "imported.");
  }
  return ImportDataFile(fileName), true;
}

void parentfrm::OpenProject(const QString& fileName) {
  const QString path = QFileInfo(fileName).absoluteFilePath();
  for (QMdiSubWindow* window : area_->subWindowList()) {
    auto* open = qobject_cast<quorvexWindow*>(window->widget());
    if (open == nullptr || open->Document().FileName != path.toStdString()) continue;
    area_->setActiveSubWindow(window);
    return;
  }
  quorvexWindow* before = ActiveProject();
  Result<Project> project = [&] {
    const BusyCursor busy;
    return ReadProject(path.toStdString(), session_.Locale);
  }();
  if (!project) return user_.Refuse(project.error());
  project->FileName = path.toStdString();
  RememberFile(project->FileName);
  ShowProject(std::move(*project));
  CloseIfFresh(before);
}

// The project is there before its data, behind the dialog, and gone again where there are none.
void parentfrm::ImportDataFile(const QString& fileName) {
  const DataSheet none(1, false);
  const auto refuse = [this](const std::string& why) {
    if (!why.empty()) user_.Refuse(why);
  };
  Result<std::unique_ptr<DataImport>> opened = OpenImport(fileName.toStdString(), none, session_.Locale, &user_);
  if (!opened) return refuse(opened.error());
  DataImport& import = **opened;
  if (const auto preview = import.Preview(&user_); !preview) return refuse(preview.error());
  const auto columns = static_cast<int>(import.Columns.lstColumns().size());
  NewProj form(this, std::clamp(columns - 1, 1, kMostIndependentVariables), false);
  if (form.exec() != QDialog::Accepted) return;
  quorvexWindow* before = ActiveProject();
  quorvexWindow* window = ShowProject(EmptyProject(form.IndependentVariables(), form.HasStandardDeviation()));
  import.Columns = ColumnAssignment(window->Document().Sheet);
  if (!ImportInto(*window, import)) {
    window->parentWidget()->close();
    return;
  }
  RememberFolder(fileName);
  CloseIfFresh(before);
}

Project parentfrm::EmptyProject(std::size_t independentVariables, bool hasStandardDeviation) {
  Project project = NewProject(independentVariables, hasStandardDeviation, session_.Locale);
  project.FileName = NextUntitled();
  const Settings& settings = session_.Preferences;
  if (settings.Integer("loadusermodels") != 0)
    AddUserModels(project.Models, settings.Text("usermodelfile"), independentVariables, session_.Locale);
  project.Limits = {settings.ResidualTolerance, settings.MaxIterations, settings.DivIterations};
  return project;
}

std::string parentfrm::NextUntitled() const {
  const QList<QMdiSubWindow*> windows = area_->subWindowList();
  for (int i = 1;; ++i) {
    const std::string name = i == 1 ? "Untitled" : "Untitled " + std::to_string(i);
    const auto bears = [&](const QMdiSubWindow* window) {
      auto* project = qobject_cast<quorvexWindow*>(window->widget());
      return project != nullptr && project->Document().FileName == name;
    };
    if (std::none_of(windows.begin(), windows.end(), bears)) return name;
  }
}

quorvexWindow* parentfrm::ShowProject(Project project) {
  const QMdiSubWindow* active = area_->currentSubWindow();
  const bool maximized = active == nullptr || active->isMaximized();
  const bool changed = project.Changed;
  auto* window = new quorvexWindow(std::move(project), session_.Preferences, user_);
  QMdiSubWindow* frame = area_->addSubWindow(window);
  frame->setAttribute(Qt::WA_DeleteOnClose);
  // The keys that close a window are those of the File menu: with two who want them, neither gets them.
  for (QAction* action : frame->systemMenu()->actions()) action->setShortcuts(QList<QKeySequence>());
  frame->setProperty(kNumber, QVariant::fromValue<qulonglong>(++windows_));
  frame->setProperty(kUnkept, changed);
  connect(window, &quorvexWindow::Changed, frame, [this, frame] {
    frame->setProperty(kUnkept, true);
    ShowActiveWindow();
  });
  // Until the solve ends nothing can be kept, however long it runs.
  connect(window, &quorvexWindow::SolveBegins, this, &parentfrm::Autosave);
  connect(window, &quorvexWindow::StatusChanged, this, &parentfrm::ShowStatus);
  connect(window, &quorvexWindow::Saved, this, [this, window, number = windows_] {
    recovery_.Forget(number);
    RememberFile(window->Document().FileName);
  });
  connect(frame, &QObject::destroyed, this, [this, number = windows_] { recovery_.Forget(number); });
  window->Grid().addActions(sheetActions_);
  if (!maximized) frame->resize(area_->viewport()->size() * 0.75);
  maximized ? frame->showMaximized() : frame->show();
  window->setFocus();
  ShowActiveWindow();
  return window;
}

void parentfrm::CloseIfFresh(quorvexWindow* window) {
  if (window != nullptr && window->IsFresh()) window->parentWidget()->close();
}

void parentfrm::FileNew() {
  const Settings& settings = session_.Preferences;
  const int variables = std::clamp(settings.Integer("default_numiv"), 1, kMostIndependentVariables);
  ShowProject(EmptyProject(static_cast<std::size_t>(variables), settings.Flag("default_showsdev")));
}

void parentfrm::FileNewKind() {
  const Settings& settings = session_.Preferences;
  NewProj form(this, settings.Integer("default_numiv"), settings.Flag("default_showsdev"));
  if (form.exec() != QDialog::Accepted) return;
  ShowProject(EmptyProject(form.IndependentVariables(), form.HasStandardDeviation()));
}

void parentfrm::FileOpen() {
  const QStringList files = QFileDialog::getOpenFileNames(
      this, "Open", user_.Folder,
      QString("Projects and data (*.qvx %1);;Project files (*.qvx);;All files (*)").arg(kDataFiles));
  for (const QString& file : files) OpenFile(file);
}

void parentfrm::FileSave() {
  if (quorvexWindow* window = ActiveProject()) window->FileSave();
}

void parentfrm::FileSaveAs() {
  if (quorvexWindow* window = ActiveProject()) window->FileSaveAs();
}

void parentfrm::FileClose() { area_->closeActiveSubWindow(); }

void parentfrm::RememberFolder(const QString& fileName) {
  user_.Folder = QFileInfo(fileName).absolutePath();
  session_.Preferences.Set("projectdir", user_.Folder.toStdString());
}

void parentfrm::RememberFile(const std::string& fileName) {
  RememberFolder(QString::fromStdString(fileName));
  const int error = AddRecentFile(session_.Preferences, kRecentProjects, fileName);
  constexpr std::string_view kKeys[] = {"projectdir"};
  TellOnceWhetherStored(error != 0 ? error : SaveSettings(session_.Preferences, "startup", kKeys));
}

void parentfrm::ShowActiveWindow() {
  const quorvexWindow* window = ActiveProject();
  for (QAction* action : projectActions_) action->setEnabled(window != nullptr);
  const UndoMenu undo = window != nullptr ? window->Editor().Menu : UndoMenu();
  auto* newest = findChild<QAction*>("mnuEditUndo");
  newest->setEnabled(undo.UndoEnabled);
  if (window != nullptr) newest->setText(window->UndoText());
  findChild<QAction*>("mnuEditUndoHistory")->setEnabled(undo.HistoryEnabled);
  ShowStatus();
}

void parentfrm::ShowStatus() {
  const quorvexWindow* window = ActiveProject();
  status_->setText(window != nullptr ? window->Status() : "Open a project or begin a new one.");
}

}  // namespace quorvex
