#include "desktop/quorvexWindow.h"

#include <QAction>
#include <QChildEvent>
#include <QCloseEvent>
#include <QDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>
#include <cstdlib>

#include "desktop/ProjectMenus.h"
#include "desktop/SaveReport.h"
#include "desktop/SheetModel.h"
#include "desktop/SheetView.h"
#include "desktop/SolvedListPanel.h"
#include "files/FileSave.h"
#include "files/ui/Dataplot.h"
#include "results/ui/frmQuantities.h"
#include "results/ui/frmResults.h"
#include "results/ui/frmSummary.h"
#include "sheet/ColumnLayout.h"
#include "sheet/SheetStatus.h"

namespace quorvex {
namespace {

// A label that begins its mnemonic with an "&". Any other is one of a header's.
QString MenuText(const std::string& label) {
  const QString text = QString::fromStdString(label);
  const qsizetype behind = text.indexOf('&') + 1;
  return text.left(behind) + text.mid(behind).replace('&', "&&");
}

}  // namespace

quorvexWindow::quorvexWindow(Project project, Settings& settings, Prompter& user)
    : project_(std::move(project)),
      settings_(settings),
      user_(user),
      editor_(project_, settings, user_),
      dialogs_(*this),
      solver_(project_, editor_, settings, user_, dialogs_),
      model_(new SheetModel(project_, editor_.Edit, this)),
      pages_(new QTabWidget(this)),
      DataGrid(new SheetView(this)),
      hint_(new QLabel(this)),
      Notes(new QPlainTextEdit(this)),
      solutions_(new SolvedListPanel(this)) {
  setObjectName("quorvexWindow");
  LayOut();
  DataGrid->SetSheet(model_);
  Notes->setPlainText(QString::fromStdString(project_.Notes).remove('\r'));
  connect(model_, &SheetModel::Edited, this, &quorvexWindow::ShowState);
  connect(DataGrid->horizontalHeader(), &QHeaderView::sectionDoubleClicked, this, &quorvexWindow::EditHeader);
  connect(DataGrid, &SheetView::CurrentCellChanged, this, &quorvexWindow::StatusChanged);
  // The entry that a message is about may be behind the notes.
  connect(DataGrid, &SheetView::EntryRefused, this, [this] { pages_->setCurrentIndex(0); });
  connect(Notes, &QPlainTextEdit::textChanged, this, &quorvexWindow::NotesEdited);
  connect(solutions_, &SolvedListPanel::RowActivated, this, &quorvexWindow::ShowResultsOf);
  connect(solutions_, &SolvedListPanel::SortChosen, this, &quorvexWindow::SortSolutions);
  ShowState();
}

void quorvexWindow::LayOut() {
  auto* sheet = new QWidget(pages_);
  auto* column = new QVBoxLayout(sheet);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(DataGrid);
  column->addWidget(hint_);
  hint_->setObjectName("hint");
  hint_->setTextFormat(Qt::PlainText);
  hint_->setWordWrap(true);
  hint_->setMargin(6);
  Notes->setObjectName("Notes");
  Notes->setAccessibleName("Notes");
  Notes->setPlaceholderText("What these data are and where they come from.");
  Notes->setTabChangesFocus(true);
  pages_->setObjectName("pages");
  pages_->setDocumentMode(true);
  pages_->addTab(sheet, "D&ata");  // D, as O, opens a menu of the frame
  pages_->addTab(Notes, "&Notes");
  // Three fifths for the sheet, at any size, until the user moves the border.
  auto* sides = new QSplitter(this);
  sides->setObjectName("sides");
  sides->addWidget(pages_);
  sides->addWidget(solutions_);
  sides->setStretchFactor(0, 3);
  sides->setStretchFactor(1, 2);
  sides->setSizes({3000, 2000});
  sides->setCollapsible(0, false);
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->addWidget(sides);
  setFocusProxy(DataGrid);
}

QPlainTextEdit* quorvexWindow::NotesInFront() const { return pages_->currentWidget() == Notes ? Notes : nullptr; }

QString quorvexWindow::Status() const {
  const CellPlace place = DataGrid->CurrentPlace();
  return QString::fromStdString(SheetStatus(project_.Sheet, place.Row, place.Col));
}

bool quorvexWindow::FileSave() { return Save(quorvex::FileSave); }
bool quorvexWindow::FileSaveAs() { return Save(quorvex::FileSaveAs); }

bool quorvexWindow::Save(bool (*save)(Project& project, Prompter& user)) {
  if (!DataGrid->CommitEntry()) return false;
  const bool saved = save(project_, user_);
  if (saved) emit Saved();
  ShowState();
  return saved;
}

void quorvexWindow::Run(const SheetCommand& command) {
  pages_->setCurrentIndex(0);  // what changes is to be seen
  if (!DataGrid->CommitEntry()) return;
  editor_.Edit.Selection.clear();
  for (const QItemSelectionRange& range : DataGrid->selectionModel()->selection())
    editor_.Edit.Selection.push_back(
        {static_cast<std::size_t>(range.top()) + 1, static_cast<std::size_t>(range.left()) + 1,
         static_cast<std::size_t>(range.bottom()) + 1, static_cast<std::size_t>(range.right()) + 1});
  SheetEdit edit = editor_.Edit;
  // What a command tells of its change is read with the change in sight.
  edit.PushUndo = [this](const UndoLabel& label, const CellRange& extent) {
    editor_.Edit.PushUndo(label, extent);
    QMetaObject::invokeMethod(this, &quorvexWindow::Refresh, Qt::QueuedConnection);
  };
  if (command(edit)) Refresh();
}

void quorvexWindow::EditUndo(int steps) {
  pages_->setCurrentIndex(0);
  if (!DataGrid->CommitEntry()) return;
  const auto count = static_cast<std::size_t>(std::abs(steps));
  steps > 0 ? editor_.UndoNewest(count) : editor_.RedoLast(count);
  Refresh();
}

QString quorvexWindow::UndoText() const { return MenuText(editor_.Menu.UndoText); }
QString quorvexWindow::RedoText() const { return MenuText(editor_.Menu.RedoText); }

void quorvexWindow::EditHeader(int column) {
  Run([column](const SheetEdit& edit) { return quorvex::EditHeader(edit, static_cast<std::size_t>(column) + 1); });
}

void quorvexWindow::GoTo(const CellPlace& place) {
  pages_->setCurrentIndex(0);
  DataGrid->setCurrentIndex(model_->index(static_cast<int>(place.Row) - 1, static_cast<int>(place.Col) - 1));
}

void quorvexWindow::Refresh() { model_->Reload(); }

void quorvexWindow::SolveRegression() { Solve(&ProjectSolver::SolveRegression); }
void quorvexWindow::SolveInterpolation() { Solve(&ProjectSolver::SolveInterpolation); }
void quorvexWindow::SolveWhatFailed() { Solve(&ProjectSolver::SolveWhatFailed); }

void quorvexWindow::SolveSeries() {
  if (!DataGrid->CommitEntry()) return;
  solver_.SolveSeries();
  ShowState();
}

void quorvexWindow::Solve(std::optional<std::size_t> (ProjectSolver::*command)()) {
  if (!DataGrid->CommitEntry()) return;
  const std::optional<std::size_t> best = (solver_.*command)();
  ShowState();
  if (!best) return;
  solutions_->SetCurrentRow(static_cast<int>(*best));
  if (solver_.ShowsResults()) ShowResults(Solved()[*best]);
}

void quorvexWindow::ClearFits() {
  if (!DataGrid->CommitEntry()) return;
  Resort();
  if (solver_.ClearFits(SelectedSolutions())) ShowState();
}

std::vector<SolvedItem> quorvexWindow::SelectedSolutions() {
  const std::vector<SolvedItem> list = Solved();
  std::vector<SolvedItem> selected;
  for (const int row : solutions_->SelectedRows())
    if (static_cast<std::size_t>(row) < list.size()) selected.push_back(list[static_cast<std::size_t>(row)]);
  return selected;
}

void quorvexWindow::ShowSelectedResults() {
  if (const auto solution = FirstSolution(SelectedSolutions(), user_)) ShowResults(*solution);
}

// The list on the screen may be older than a model that is gone.
void quorvexWindow::ShowResultsOf(int row) {
  const std::vector<SolvedItem> list = Solved();
  if (static_cast<std::size_t>(row) < list.size()) ShowResults(list[static_cast<std::size_t>(row)]);
}

void quorvexWindow::ShowResults(const SolvedItem& solution) {
  auto* results = findChild<frmResults*>();
  if (results == nullptr) {
    results = new frmResults(project_, settings_, user_, this);
    results->setWindowFlag(Qt::Window);
    results->setAttribute(Qt::WA_DeleteOnClose);
    connect(this, &quorvexWindow::SolutionsChanged, results, [this, results] { BringUpToDate(*results); });
    connect(results, &frmResults::QuantitiesChosen, this, [this, results](ModelClass& model) {
      if (frmQuantities(results, editor_, model).exec() == QDialog::Accepted) ShowState();
    });
    connect(results, &frmResults::ReportChosen, this, [this, results](ModelClass& model, const KeptDiagnoses& known) {
      SaveReport(project_, model, known, solver_.LimitsOfLastSolve().value_or(project_.Limits), settings_, user_,
                 results);
    });
  }
  BringUpToDate(*results);
  results->Show(solution);
  results->show();
  results->raise();
  results->activateWindow();
}

void quorvexWindow::ShowSummary() {
  if (!FirstSolution(Solved(), user_)) return;
  auto* summary = findChild<frmSummary*>();
  if (summary == nullptr) {
    summary = new frmSummary(project_, settings_, user_, this);
    summary->setAttribute(Qt::WA_DeleteOnClose);
    connect(this, &quorvexWindow::SolutionsChanged, summary, &frmSummary::Refresh);
    connect(summary, &frmSummary::SortChosen, this, &quorvexWindow::SortSolutions);
  }
  summary->show();
  summary->raise();
  summary->activateWindow();
}

void quorvexWindow::BringUpToDate(frmResults& results) const {
  if (const auto& limits = solver_.LimitsOfLastSolve()) results.SetLimits(*limits);
  results.Refresh();
}

void quorvexWindow::SortSolutions(int sortIndex) {
  settings_.SetNumber("sortindex", sortIndex);
  Resort();
}

void quorvexWindow::Resort() {
  CompleteSortKeys(project_, settings_);
  solutions_->Show(Solved(), SolutionsSortedBy(), project_.Locale.DecimalSeparator);
  emit SolutionsChanged();
}

void quorvexWindow::NotesEdited() {
  project_.Notes = Notes->toPlainText().replace('\n', "\r\n").toStdString();
  project_.NotesChanged = true;
  setWindowModified(true);
  emit Changed();
}

void quorvexWindow::ShowState() {
  setWindowTitle(QFileInfo(QString::fromStdString(project_.FileName)).fileName() + "[*]");
  setWindowModified(!project_.IsSaved());
  hint_->setText(QString::fromStdString(EmptySheetHint(project_.Sheet)));
  hint_->setVisible(!hint_->text().isEmpty());
  Resort();
  emit Changed();
}

quorvexWindow* ProjectInFront(const QMdiArea& area) {
  const QMdiSubWindow* window = area.currentSubWindow();
  return window != nullptr ? qobject_cast<quorvexWindow*>(window->widget()) : nullptr;
}

void quorvexWindow::ShowInFrame() {
  if (auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget()); frame != nullptr && frame->mdiArea() != nullptr)
    frame->mdiArea()->setActiveSubWindow(frame);
}

// Windows of results and plots are on their own for the keys of the frame's menus.
void quorvexWindow::childEvent(QChildEvent* event) {
  QWidget::childEvent(event);
  auto* window = qobject_cast<QWidget*>(event->child());
  if (!event->polished() || window == nullptr || !window->isWindow() || qobject_cast<QDialog*>(window)) return;
  for (const auto& menu : {SolveMenu(), PlotMenu()})
    for (const ProjectCommand& command : menu) {
      if (!command.InItsWindows || window->findChild<QAction*>(command.Name, Qt::FindDirectChildrenOnly)) continue;
      auto* action = new QAction(command.Text, window);
      action->setObjectName(command.Name);
      action->setShortcuts({command.Keys, command.OtherKeys});
      connect(action, &QAction::triggered, this, [this, run = command.Run] {
        ShowInFrame();
        run(*this);
      });
      window->addAction(action);
    }
}

void quorvexWindow::closeEvent(QCloseEvent* event) {
  // What is asked about is to be seen.
  if (!project_.IsSaved()) ShowInFrame();
  const bool committed = DataGrid->CommitEntry(), wasSaved = project_.IsSaved();
  const bool close = committed && MayClosePlots(*this) && MayClose(project_, user_);
  if (!wasSaved && project_.IsSaved()) emit Saved();
  ShowState();
  event->setAccepted(close);
}

}  // namespace quorvex
