#include "results/ui/frmResults.h"

#include <QClipboard>
#include <QComboBox>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QMimeData>
#include <QPageSetupDialog>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTextDocumentFragment>
#include <QVBoxLayout>
#include <algorithm>

#include "core/ui/BusyCursor.h"
#include "results/DataTable.h"
#include "results/SaveResults.h"
#include "results/ui/EvaluationPanel.h"
#include "results/ui/PrintTable.h"
#include "results/ui/TableFormat.h"
#include "results/ui/TableView.h"

namespace quorvex {

frmResults::frmResults(Project& project, const Settings& settings, Prompter& user, QWidget* parent)
    : QWidget(parent), project_(project), settings_(settings), user_(user) {
  setWindowTitle("Regression Results");
  LayOut();
  Refresh();
  resize(1080, 680);
}

frmResults::~frmResults() = default;

void frmResults::LayOut() {
  EqList = new QComboBox(this);
  EqList->setObjectName("EqList");
  EqList->setAccessibleName("Equation");  // else it is called by its current text
  EqList->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  EqList->setMinimumContentsLength(20);
  auto* label = new QLabel("E&quation:", this);
  label->setBuddy(EqList);
  auto* top = new QHBoxLayout;
  top->addWidget(label);
  top->addWidget(EqList, 1);
  const struct {
    const char *Text, *Tip;
  } kSteps[] = {{"&Next", "View next model"}, {"Bac&k", "View previous model"}, {"&Best", "Vew best fit model"}};
  for (std::size_t i = 0; i < cmdUpDown.size(); ++i) {
    cmdUpDown[i] = new QPushButton(kSteps[i].Text, this);
    cmdUpDown[i]->setObjectName(QString("cmdUpDown%1").arg(i));
    cmdUpDown[i]->setToolTip(kSteps[i].Tip);
    top->addWidget(cmdUpDown[i]);
  }
  connect(cmdUpDown[0], &QPushButton::clicked, this, [this] { StepTo(EqList->currentIndex() + 1); });
  connect(cmdUpDown[1], &QPushButton::clicked, this, [this] { StepTo(EqList->currentIndex() - 1); });
  connect(cmdUpDown[2], &QPushButton::clicked, this, &frmResults::ShowBest);
  connect(EqList, &QComboBox::currentIndexChanged, this, &frmResults::EqListChosen);

  pages_ = new QStackedWidget(this);
  MakeTabs();
  panel_ = new EvaluationPanel(project_.Locale, user_, pages_);
  pages_->addWidget(ResultsTab);
  pages_->addWidget(panel_);
  auto* column = new QVBoxLayout(this);
  column->addLayout(top);
  column->addWidget(Commands());
  column->addWidget(pages_, 1);
  setFocusProxy(EqList);
}

void frmResults::MakeTabs() {
  ResultsTab = new QTabWidget(pages_);
  ResultsTab->setObjectName("ResultsTab");
  FitBook = new TableView("FitBook", "Fit Information", ResultsTab);
  FitBook->setShowGrid(false);
  DataBook = new TableView("DataBook", "Data Table", ResultsTab);
  ResultsTab->addTab(FitBook, "&Fit Information");
  ResultsTab->addTab(DataBook, "&Data Table");
  connect(ResultsTab, &QTabWidget::currentChanged, this, &frmResults::ShowCurrentTab);
}

QWidget* frmResults::Commands() {
  auto* bar = new QWidget(this);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(0, 0, 0, 0);
  for (QPushButton* command : {Command("SaveCommand", "&Save...", &frmResults::SaveCommand),
                               Command("FormatCommand", "F&ormat...", &frmResults::FormatCommand),
                               Command("PrintCommand", "&Print...", &frmResults::PrintCommand),
                               Command("CopyCommand", "&Copy", &frmResults::CopyCommand),
                               Command("PageSetupCommand", "Page Set&up...", &frmResults::PageSetupCommand)})
    row->addWidget(command);
  row->addStretch();
  evaluation_ = new QPushButton("Eva&luation", bar);
  evaluation_->setObjectName("evaluation");
  evaluation_->setToolTip("Evaluate the equation, find its roots");
  evaluation_->setCheckable(true);
  row->addWidget(evaluation_);
  connect(evaluation_, &QPushButton::toggled, this, [this](bool on) {
    pages_->setCurrentIndex(on ? 1 : 0);
    evaluation_->setText(on ? "Close Eva&luation" : "Eva&luation");
    EnableCommands();
  });
  return bar;
}

QPushButton* frmResults::Command(const char* name, const QString& text, void (frmResults::*command)()) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(name);
  connect(button, &QPushButton::clicked, this, command);
  commands_.push_back(button);
  return button;
}

void frmResults::Refresh() {
  const int row = EqList->currentIndex();
  const std::optional<Solution> shown = row >= 0 ? std::optional(solved_[static_cast<std::size_t>(row)]) : std::nullopt;
  circumstances_.ProjectFile = QFileInfo(QString::fromStdString(project_.FileName)).fileName().toStdString();
  Result<ResultData> data = LoadResultData(project_.Sheet);
  DataBook->SetTable(nullptr);  // it looks into the old points
  data_ = data ? std::move(*data) : ResultData();
  circumstances_.Observations = data_.Points.N();
  circumstances_.MissingPoints = data_.MissingPoints;
  FillList(shown);
  if (!data && !solved_.empty()) user_.Refuse(data.error());
}

void frmResults::FillList(const std::optional<Solution>& keep) {
  solved_ = SolvedList(project_, settings_.Integer("sortindex"));
  {
    const QSignalBlocker quiet(EqList);
    EqList->clear();
    for (const Solution& solution : solved_) EqList->addItem(QString::fromStdString(solution.Name()));
    const auto kept = keep ? std::find(solved_.begin(), solved_.end(), *keep) : solved_.end();
    if (!solved_.empty()) EqList->setCurrentIndex(kept == solved_.end() ? 0 : static_cast<int>(kept - solved_.begin()));
  }
  EqListChosen();
}

void frmResults::Show(const Solution& solution) {
  const auto found = std::find(solved_.begin(), solved_.end(), solution);
  if (found != solved_.end()) StepTo(static_cast<int>(found - solved_.begin()));
}

void frmResults::ShowBest() { StepTo(0); }

void frmResults::StepTo(int row) {
  if (row >= 0 && row < EqList->count()) EqList->setCurrentIndex(row);
}

void frmResults::EqListChosen() {
  const int row = EqList->currentIndex();
  EqList->setToolTip(EqList->currentText());
  panel_->SetSolution(row < 0 ? nullptr : &solved_[static_cast<std::size_t>(row)]);
  Invalidate();
  EnableCommands();
}

void frmResults::Invalidate() {
  current_.fill(false);
  ShowCurrentTab();
}

void frmResults::EnableCommands() {
  const int row = EqList->currentIndex(), last = EqList->count() - 1;
  EqList->setEnabled(row >= 0);
  cmdUpDown[0]->setEnabled(row < last);
  cmdUpDown[1]->setEnabled(row > 0);
  cmdUpDown[2]->setEnabled(row > 0);
  for (QPushButton* command : commands_) command->setEnabled(row >= 0);
  if (Evaluating()) commands_[1]->setEnabled(false);  // a plain text has no format
}

void frmResults::ShowCurrentTab() {
  const auto tab = static_cast<Tab>(ResultsTab->currentIndex());
  if (current_[tab]) return;
  const BusyCursor busy;
  BuildTab(tab);
  current_[tab] = true;
}

void frmResults::BuildTab(Tab tab) {
  const int row = EqList->currentIndex();
  const Solution* solution = row < 0 ? nullptr : &solved_[static_cast<std::size_t>(row)];
  if (tab == kFitInformation)
    FitBook->SetTable(solution == nullptr ? nullptr
                                          : std::make_unique<Report>(FitInformation(
                                                *solution, circumstances_, settings_, project_.Locale, patterns_)));
  if (tab == kDataTable)
    DataBook->SetTable(solution == nullptr
                           ? nullptr
                           : std::make_unique<DataTable>(*solution, data_, project_.Sheet, project_.Locale, patterns_));
}

bool frmResults::Evaluating() const { return pages_->currentIndex() == 1; }

TableView* frmResults::CurrentTable() const { return dynamic_cast<TableView*>(ResultsTab->currentWidget()); }

void frmResults::SaveCommand() {
  if (Evaluating()) return panel_->Save();
  if (const TableView* table = CurrentTable()) {
    const std::string name = table == FitBook ? "Fit Information" : "Data Table";
    SaveTable(*table->Table(), name, user_);
  }
}

void frmResults::FormatCommand() {
  TableFormat dialog(this, patterns_, FitBook->TableFont());
  if (dialog.exec() != QDialog::Accepted) return;
  patterns_ = dialog.Patterns();
  for (TableView* table : {FitBook, DataBook}) table->SetTableFont(dialog.Font());
  Invalidate();
}

void frmResults::PrintCommand() {
  QPrintDialog dialog(&Printer(), this);
  if (dialog.exec() != QDialog::Accepted) return;
  const BusyCursor busy;
  if (Evaluating()) return panel_->Text().print(&Printer());
  if (const TableView* table = CurrentTable())
    PrintTable(*table->Table(), windowTitle() + " - " + EqList->currentText(), table->TableFont(), Printer());
}

void frmResults::CopyCommand() {
  QClipboard& clipboard = *QGuiApplication::clipboard();
  if (Evaluating()) {
    QPlainTextEdit& text = panel_->Text();
    const QString selected = text.textCursor().selection().toPlainText();
    clipboard.setText(selected.isEmpty() ? text.toPlainText() : selected);
  } else if (const TableView* table = CurrentTable()) {
    const BusyCursor busy;
    clipboard.setMimeData(table->Copied());
  }
}

void frmResults::PageSetupCommand() { QPageSetupDialog(&Printer(), this).exec(); }

QPrinter& frmResults::Printer() {
  if (!printer_) printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
  return *printer_;
}

}  // namespace quorvex
