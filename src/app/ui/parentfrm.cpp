#include "app/ui/parentfrm.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMimeData>
#include <QStatusBar>
#include <QTimer>
#include <algorithm>

#include "app/CommandLine.h"
#include "app/DuplicateProject.h"
#include "app/FreshProject.h"
#include "app/OfferRecovery.h"
#include "app/SettingsStore.h"
#include "app/ui/FramePlace.h"
#include "app/ui/ManualWindow.h"
#include "app/ui/WindowArrangement.h"
#include "core/RecentFiles.h"
#include "core/ui/BusyCursor.h"
#include "core/ui/ChooseFiles.h"
#include "desktop/SheetView.h"
#include "desktop/quorvexWindow.h"
#include "files/ProjectFile.h"
#include "files/ui/Dataplot.h"
#include "import/spreadsheet/SpreadsheetImport.h"
#include "import/ui/frmImport.h"
#include "project/ui/NewProj.h"
#include "project/ui/frmDeriveWindow.h"

namespace quorvex {

parentfrm::parentfrm(Session& session, std::string commandLine, std::string stateFolder)
    : session_(session),
      commandLine_(std::move(commandLine)),
      user_(this),
      area_(new QMdiArea(this)),
      keeper_(session.Preferences, user_),
      autosave_(std::move(stateFolder), *this),
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
  user_.Folder = QString::fromStdString(session_.Preferences.Folder("projectdir"));
  MakeMenus();
  QApplication::instance()->installEventFilter(this);
  MoveToStoredPlace(*this, session_.Preferences);
  connect(area_, &QMdiArea::subWindowActivated, this, &parentfrm::ShowActiveWindow);
  ShowActiveWindow();
}

// The windows go before what they tell of their end.
parentfrm::~parentfrm() {
  disconnect(area_, nullptr, this, nullptr);
  delete area_;
}

quorvexWindow* parentfrm::ActiveProject() const { return ProjectInFront(*area_); }

std::vector<quorvexWindow*> parentfrm::Projects() const {
  std::vector<quorvexWindow*> projects;
  for (const QMdiSubWindow* window : area_->subWindowList())
    if (auto* project = qobject_cast<quorvexWindow*>(window->widget())) projects.push_back(project);
  return projects;
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
  for (const std::string& command : also_) OpenRequestedFile(QString::fromStdString(StartFileName(command)));
  // No tip comes over data that have just been imported, nor raises the frame above a plot that the user wants to see.
  const bool imported = std::ranges::any_of(Projects(), [](const quorvexWindow* window) {
    return !window->Document().HasFile && !window->Document().IsFresh();
  });
  const bool plots = !findChildren<Dataplot*>(Qt::FindDirectChildrenOnly).isEmpty();
  if (!imported && !plots && session_.Preferences.Integer("Show Tips at Startup") != 0) ShowTip();
  ShowActiveWindow();
}

void parentfrm::OfferRecovery() {
  RecoveryStore& store = autosave_.Store();
  for (const RecoveryStore::LeftBehind& left : store.Claim()) {
    if (left.IsPlot()) {
      if (auto plot = OfferPlotRecovery(store, left, session_.Preferences, session_.Locale, user_))
        autosave_.Adopt(ShowPlot(std::move(*plot), *this), left);
    } else if (auto project = quorvex::OfferRecovery(store, left, session_.Locale, user_)) {
      autosave_.Adopt(ShowProject(std::move(*project)), left);
    }
  }
}

void parentfrm::GoOnAfterFailure(const QString& what) {
  user_.Refuse(FailureText(what.toStdString(), autosave_.KeepAll()));
}

void parentfrm::closeEvent(QCloseEvent* event) {
  keeper_.Tell(StorePlace(*this, session_.Preferences));
  event->setAccepted(CloseAll());
}

// The plots of files are asked about first and stay where a project does, so that Cancel keeps them.
bool parentfrm::CloseAll() { return MayClosePlots(*this) && CloseAllForms(*area_); }

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

void parentfrm::OpenFile(const QString& fileName) { Open(fileName, NamedBy::User); }

bool parentfrm::OpenRequestedFile(const QString& fileName) {
  if (isMinimized()) showNormal();
  raise();
  activateWindow();
  return Open(fileName, NamedBy::CommandLine);
}

bool parentfrm::Open(const QString& fileName, NamedBy by) {
  const OpenAs way = HowToOpen(fileName.toStdString(), by, user_);
  if (way == OpenAs::Project) OpenProject(fileName);
  if (way == OpenAs::Plot) OpenPlotFile(fileName);
  if (way == OpenAs::Data || way == OpenAs::DataOfAKind) ImportDataFile(fileName, way == OpenAs::DataOfAKind);
  return way != OpenAs::Unknown;
}

void parentfrm::OpenPlotFile(const QString& fileName) {
  RememberFolder(fileName);
  OpenPlot(fileName, session_.Preferences, session_.Locale, user_, *this);
}

void parentfrm::OpenProject(const QString& fileName) {
  const std::string path = QFileInfo(fileName).absoluteFilePath().toStdString();
  for (const quorvexWindow* open : Projects())
    if (open->Document().FileName == path)
      return area_->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(open->parentWidget()));
  Result<Project> project = [&] {
    const BusyCursor busy;
    return ReadProject(path, session_.Locale);
  }();
  if (!project) return user_.Refuse(project.error());
  project->FileName = path;
  RememberFile(path);
  ShowInPlaceOfFresh(std::move(*project));
}

// The project comes after its data, whose import decides on its kind.
void parentfrm::ImportDataFile(const QString& fileName, bool askForKind) {
  const DataSheet none(1, false);
  Result<std::unique_ptr<DataImport>> opened = OpenImport(fileName.toStdString(), none, session_.Locale, &user_);
  if (!opened) return TellFailure(opened.error(), user_);
  DataImport& import = **opened;
  const auto preview = import.Preview(&user_);
  if (!preview) return TellFailure(preview.error(), user_);
  import.ImportText = std::to_string(import.FirstDataLine(session_.Locale));
  import.ReadHeadings(session_.Locale);
  std::optional<ProjectKind> kind = KindForColumns(import.Columns.lstColumns());
  if (askForKind) kind = AskProjectKind(this, *kind);
  if (!kind) return;
  DataSheet sheet(kind->IndependentVariables, kind->HasStandardDeviation);
  const SheetEdit into{sheet, session_.Locale, user_, {}, [](const UndoLabel&, const CellRange&) {}};
  if (!ImportFile(this, import, into, askForKind ? ForSheet::NewOfKind : ForSheet::New)) return;
  RememberFolder(fileName);
  ShowImported(sheet);
}

void parentfrm::ShowImported(const DataSheet& sheet) {
  quorvexWindow* before = ActiveProject();
  ShowFresh({sheet.IndependentVariables, sheet.HasStandardDeviation}).Run([&](const SheetEdit& edit) {
    TakeImported(sheet, edit);
    return true;
  });
  CloseIfFresh(before);
}

quorvexWindow& parentfrm::ShowProject(Project project) {
  const QMdiSubWindow* active = area_->currentSubWindow();
  const bool maximized = active == nullptr || active->isMaximized();
  auto* window = new quorvexWindow(std::move(project), session_.Preferences, user_);
  QMdiSubWindow* frame = area_->addSubWindow(window);
  frame->setAttribute(Qt::WA_DeleteOnClose);
  // The keys that close a window are those of the File menu: with two who want them, neither gets them.
  for (QAction* action : frame->systemMenu()->actions()) action->setShortcuts(QList<QKeySequence>());
  autosave_.Watch(*window);
  connect(window, &quorvexWindow::Changed, this, &parentfrm::ShowActiveWindow);
  connect(window, &quorvexWindow::StatusChanged, this, &parentfrm::ShowStatus);
  connect(window, &quorvexWindow::ImportedAsOtherKind, this, &parentfrm::ShowImported);
  connect(window, &quorvexWindow::Saved, this, [this, window] { RememberFile(window->Document().FileName); });
  window->Grid().addActions(sheetActions_);
  if (!maximized) frame->resize(area_->viewport()->size() * 0.75);
  maximized ? frame->showMaximized() : frame->show();
  window->setFocus();
  ShowActiveWindow();
  return *window;
}

std::string parentfrm::Untitled() const {
  std::vector<std::string> names;
  for (const quorvexWindow* project : Projects()) names.push_back(project->Document().FileName);
  return NextUntitled(names);
}

quorvexWindow& parentfrm::ShowFresh(const ProjectKind& kind) {
  return ShowProject(FreshProject(kind, Untitled(), session_.Preferences, session_.Locale));
}

void parentfrm::ShowInPlaceOfFresh(Project project) {
  quorvexWindow* before = ActiveProject();
  ShowProject(std::move(project));
  CloseIfFresh(before);
}

void parentfrm::CloseIfFresh(quorvexWindow* window) {
  if (window != nullptr && window->Document().IsFresh()) window->parentWidget()->close();
}

void parentfrm::FileNew() { ShowFresh(DefaultKind(session_.Preferences)); }

void parentfrm::FileNewKind() {
  if (const auto kind = AskProjectKind(this, DefaultKind(session_.Preferences))) ShowFresh(*kind);
}

void parentfrm::FileDerive() {
  quorvexWindow* window = ActiveProject();
  if (window == nullptr || !window->Grid().CommitEntry()) return;
  const DataSheet& sheet = window->Document().Sheet;
  DeriveClass derive(sheet);
  if (!ShowDeriveWindow(this, derive, sheet.HasStandardDeviation, user_)) return;
  quorvexWindow& derived = ShowFresh(derive.Kind());
  derived.Document().Sheet = derive.NewSheet();
  derived.Document().Changed = true;
  derived.Refresh();
}

void parentfrm::FileOpen() {
  QFileDialog dialog(
      this, "Open", user_.Folder,
      QString("Projects, plots and data (*.qvx *.plt %1);;Project files (*.qvx);;Plot files (*.plt);;All files (*)")
          .arg(kDataFiles));
  dialog.setFileMode(QFileDialog::ExistingFiles);
  for (const QString& file : ChosenFiles(dialog, user_)) OpenFile(file);
}

void parentfrm::FileSave() {
  if (quorvexWindow* window = ActiveProject()) window->FileSave();
}

void parentfrm::FileSaveAs() {
  if (quorvexWindow* window = ActiveProject()) window->FileSaveAs();
}

void parentfrm::WindowDuplicate() {
  quorvexWindow* window = ActiveProject();
  if (window == nullptr || !window->Grid().CommitEntry()) return;
  Result<Project> copy = [&] {
    const BusyCursor busy;
    return DuplicateProject(window->Document(), Untitled());
  }();
  if (!copy) return user_.Refuse(copy.error());
  ShowProject(std::move(*copy));
}

void parentfrm::FileClose() { area_->closeActiveSubWindow(); }

void parentfrm::RememberFolder(const QString& fileName) {
  user_.Folder = QFileInfo(fileName).absolutePath();
  session_.Preferences.Set("projectdir", user_.Folder.toStdString());
}

void parentfrm::RememberFile(const std::string& fileName) {
  RememberFolder(QString::fromStdString(fileName));
  AddRecentFile(session_.Preferences, kRecentProjects, fileName);
  keeper_.Tell(SaveChanges(session_.Preferences));
}

void parentfrm::ShowActiveWindow() {
  const quorvexWindow* window = ActiveProject();
  for (QAction* action : projectActions_) action->setEnabled(window != nullptr);
  const UndoMenu undo = window != nullptr ? window->Editor().Menu : UndoMenu();
  findChild<QAction*>("mnuEditUndo")->setEnabled(undo.UndoEnabled);
  findChild<QAction*>("mnuEditRedo")->setEnabled(undo.RedoEnabled);
  if (window != nullptr) {
    findChild<QAction*>("mnuEditUndo")->setText(window->UndoText());
    findChild<QAction*>("mnuEditRedo")->setText(window->RedoText());
  }
  findChild<QAction*>("mnuEditUndoHistory")->setEnabled(undo.HistoryEnabled);
  ShowStatus();
}

void parentfrm::ShowStatus() {
  const quorvexWindow* window = ActiveProject();
  status_->setText(window != nullptr ? window->Status() : "Open a project or begin a new one.");
}

}  // namespace quorvex
