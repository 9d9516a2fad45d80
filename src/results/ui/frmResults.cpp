#include "results/ui/frmResults.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTextDocumentFragment>
#include <QVBoxLayout>
#include <algorithm>

#include "core/ui/BusyCursor.h"
#include "core/ui/NamesApart.h"
#include "plot/ui/PSetup.h"
#include "plot/ui/PlotView.h"
#include "results/DataTable.h"
#include "results/PlotPoints.h"
#include "results/ResultPlots.h"
#include "results/SaveResults.h"
#include "results/ui/DiagnosisTab.h"
#include "results/ui/EvaluationPanel.h"
#include "results/ui/LimitsBar.h"
#include "results/ui/PaperJob.h"
#include "results/ui/PrintTable.h"
#include "results/ui/ResultPlot.h"
#include "results/ui/TableFormat.h"
#include "results/ui/TableView.h"

namespace quorvex {
namespace {

// Places in the row of commands.
constexpr std::size_t kFormat = 1, kPageSetup = 4, kReport = 5;

}  // namespace

frmResults::frmResults(Project& project, Settings& settings, Prompter& user, QWidget* parent)
    : QWidget(parent), project_(project), settings_(settings), user_(user) {
  setObjectName("frmResults");
  setWindowTitle("Regression Results");
  LayOut();
  Refresh();
  // All columns of Fit Information, and its frame within the screen.
  resize(QSize(940, 680).boundedTo(screen()->availableSize() * 0.95));
}

void frmResults::LayOut() {
  EqList = new NameBox(this);
  EqList->setObjectName("EqList");
  // Else the list would be as wide as the longest equation, and the window with it.
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
  panel_ = new EvaluationPanel(project_.Sheet, data_.Points, project_.Locale, user_, pages_);
  pages_->addWidget(ResultsTab);
  pages_->addWidget(panel_);
  auto* column = new QVBoxLayout(this);
  column->addLayout(top);
  column->addWidget(Commands());
  whyNoLimits_ = new QLabel(this);
  whyNoLimits_->setObjectName("whyNoLimits");
  whyNoLimits_->setTextFormat(Qt::PlainText);
  whyNoLimits_->setWordWrap(true);
  column->addWidget(whyNoLimits_);
  column->addWidget(pages_, 1);
  connect(new QShortcut(QKeySequence::Close, this), &QShortcut::activated, this, &QWidget::close);
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
  const auto plot = [&](const char* name, const QString& title, const QString& caption) {
    auto* tab = new ResultPlot(name, title, user_, settings_, ResultsTab);
    ResultsTab->addTab(tab, caption);
    return tab;
  };
  pctModel = plot("pctModel", "Model Plot", "&Model Plot");
  pctResidual = plot("pctResidual", "Residual Plot", "&Residual Plot");
  pctNormal = plot("pctNormal", "Residual Probability", "Residual Probabilit&y");
  diagnosis_ = new DiagnosisTab(settings_, project_.Locale, user_, ResultsTab);
  ResultsTab->addTab(diagnosis_, "Dia&gnosis");
  connect(diagnosis_, &DiagnosisTab::FrontChanged, this, &frmResults::EnableCommands);
  connect(diagnosis_, &DiagnosisTab::QuantitiesChosen, this, &frmResults::QuantitiesChosen);
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
                               Command("PageSetupCommand", "Page Set&up...", &frmResults::PageSetupCommand),
                               Command("ReportCommand", "Save Report...", &frmResults::ReportCommand)})
    row->addWidget(command);
  const QString report = "Save all that is known of this model as one document";
  commands_[kReport]->setToolTip(report);
  commands_[kReport]->setAccessibleDescription(report);  // all letters have gone
  row->addStretch();
  limits_ = new LimitsBar(bar);
  limits_->Chosen = [this] { LimitsChosen(); };
  row->addWidget(limits_);
  evaluation_ = new QPushButton("Eva&luation", bar);
  evaluation_->setObjectName("evaluation");
  evaluation_->setToolTip("Evaluate the equation, find its roots");
  evaluation_->setCheckable(true);
  row->addWidget(evaluation_);
  connect(evaluation_, &QPushButton::toggled, this, [this](bool on) {
    pages_->setCurrentIndex(on ? 1 : 0);
    evaluation_->setText(on ? "Close Eva&luation" : "Eva&luation");
    EnableCommands();
    if (on) panel_->FocusEntry();
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
  const std::optional<SolvedItem> shown =
      row >= 0 ? std::optional(solved_[static_cast<std::size_t>(row)]) : std::nullopt;
  circumstances_.ProjectFile = QFileInfo(QString::fromStdString(project_.FileName)).fileName().toStdString();
  DataBook->SetTable(nullptr);  // which looks into the points that go
  data_ = GatherData(project_.Sheet, PointOrder::OfSheet);
  circumstances_.Observations = data_.Points.N();
  circumstances_.MissingPoints = data_.IncompleteRows;
  circumstances_.Weighted = IsWeighted(data_.Points);
  solved_ = SolvedItems(project_, settings_.Integer("sortindex"));
  diagnosis_->Follow(solved_, GatherData(project_.Sheet).Points);
  circumstances_.Points = &data_.Points;
  FillList(shown);
}

void frmResults::FillList(const std::optional<SolvedItem>& keep) {
  {
    const QSignalBlocker quiet(EqList);
    EqList->clear();
    for (const SolvedItem& solution : solved_) EqList->addItem(QString::fromStdString(solution.Name()));
    const auto kept = keep ? std::find(solved_.begin(), solved_.end(), *keep) : solved_.end();
    if (!solved_.empty()) EqList->setCurrentIndex(kept == solved_.end() ? 0 : static_cast<int>(kept - solved_.begin()));
  }
  EqListChosen();
}

void frmResults::Show(const SolvedItem& solution) {
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
  const bool table = !Evaluating() && CurrentTable() != nullptr,
             any = Evaluating() || table || CurrentPlot() != nullptr;
  for (QPushButton* command : commands_) command->setEnabled(row >= 0 && any);
  commands_[kFormat]->setEnabled(row >= 0 && table);
  commands_[kPageSetup]->setEnabled(true);
  commands_[kReport]->setEnabled(row >= 0 && solved_[static_cast<std::size_t>(row)].Model != nullptr);
  ShowLimits();
}

LimitsChoice frmResults::Limits() const {
  LimitsChoice choice = limits_->Choice();
  choice.DerivativeMethod = settings_.DerivativeMethod;
  return choice;
}

void frmResults::LimitsChosen() {
  panel_->SetLimits(Limits());
  current_[kDataTable] = current_[kModelPlot] = false;
  ShowCurrentTab();
}

// Where they act, and why there are none where they are wanted.
void frmResults::ShowLimits() {
  const int tab = ResultsTab->currentIndex(), row = EqList->currentIndex();
  const bool surface = !Evaluating() && tab == kModelPlot && project_.Sheet.IndependentVariables > 1;
  limits_->setVisible(Evaluating() || tab == kDataTable || (tab == kModelPlot && !surface));
  std::string why;
  if (!limits_->isHidden() && row >= 0 && Limits().Any())
    if (const auto bands = BandsOf(solved_[static_cast<std::size_t>(row)], data_.Points, settings_.DerivativeMethod);
        !bands)
      why = bands.error();
  whyNoLimits_->setText(QString::fromStdString(why));
  whyNoLimits_->setVisible(!why.empty());
}

void frmResults::ShowCurrentTab() {
  const auto tab = static_cast<Tab>(ResultsTab->currentIndex());
  const int row = EqList->currentIndex();
  if (row < 0) {
    ClearTabs();
  } else if (!current_[tab]) {
    const BusyCursor busy;
    BuildTab(tab, solved_[static_cast<std::size_t>(row)]);
    current_[tab] = true;
  }
  EnableCommands();
}

void frmResults::ClearTabs() {
  for (TableView* table : {FitBook, DataBook}) table->SetTable(nullptr);
  diagnosis_->Show(nullptr, patterns_);
  for (ResultPlot* plot : {pctModel, pctResidual, pctNormal}) plot->SetPlot(Failure{"Nothing is solved."});
}

void frmResults::BuildTab(Tab tab, const SolvedItem& solution) {
  constexpr ResultPlotKind kPlots[] = {ResultPlotKind::Model, ResultPlotKind::Residuals, ResultPlotKind::Probability};
  const auto report = [&](const NumberPatterns& patterns) {
    return std::make_unique<Report>(FitInformation(solution, circumstances_, settings_, project_.Locale, patterns));
  };
  if (tab == kFitInformation)
    FitBook->SetTable(report(patterns_.Shown()), report(patterns_.InFull()));
  else if (tab == kDataTable)
    ShowDataTable(solution);
  else if (tab == kDiagnosis)
    diagnosis_->Show(&solution, patterns_);
  else {
    auto plot = PlotOfResults(kPlots[tab - kModelPlot], solution, data_, project_.Sheet, settings_, project_.Locale);
    std::vector<std::string> none;
    if (plot && tab == kModelPlot) ShowBands(**plot, Limits().Kind(), Limits().Level, none);
    static_cast<ResultPlot*>(ResultsTab->widget(tab))->SetPlot(std::move(plot));
  }
}

void frmResults::ShowDataTable(const SolvedItem& solution) {
  auto shown =
      std::make_unique<DataTable>(solution, data_, project_.Sheet, project_.Locale, patterns_.Shown(), Limits());
  auto inFull = std::make_unique<DataTable>(*shown);
  inFull->SetPatterns(patterns_.InFull());
  DataBook->SetTable(std::move(shown), std::move(inFull));
}

bool frmResults::Evaluating() const { return pages_->currentIndex() == 1; }

TableView* frmResults::CurrentTable() const {
  if (ResultsTab->currentWidget() == diagnosis_) return diagnosis_->ShowsProfile() ? nullptr : &diagnosis_->Book();
  return dynamic_cast<TableView*>(ResultsTab->currentWidget());
}

PlotView* frmResults::CurrentPlot() const {
  if (ResultsTab->currentWidget() == diagnosis_) return diagnosis_->Plot();
  const auto* plot = dynamic_cast<ResultPlot*>(ResultsTab->currentWidget());
  return plot == nullptr ? nullptr : plot->View();
}

void frmResults::SaveCommand() {
  if (Evaluating()) return panel_->Save();
  if (PlotView* plot = CurrentPlot()) return plot->SavePicture();
  if (const TableView* table = CurrentTable())
    SaveTable(*table->InFull(), table->accessibleName().toStdString(), user_);
}

void frmResults::ReportCommand() {
  const SolvedItem& solution = solved_[static_cast<std::size_t>(EqList->currentIndex())];
  emit ReportChosen(*solution.Model, diagnosis_->Kept());
}

void frmResults::FormatCommand() {
  TableFormat dialog(this, patterns_, FitBook->TableFont(), project_.Locale);
  if (dialog.exec() != QDialog::Accepted) return;
  patterns_ = dialog.Patterns();
  for (TableView* table : {FitBook, DataBook, &diagnosis_->Book()}) table->SetTableFont(dialog.Font());
  Invalidate();
}

void frmResults::PrintCommand() {
  if (!Evaluating() && CurrentPlot() != nullptr) return CurrentPlot()->Print();
  const QFont& font = Evaluating() ? panel_->Text().font() : CurrentTable()->TableFont();
  PrintOnPaper(this, font, settings_, user_, [this](QPrinter& printer, const QMargins& margins) {
    if (Evaluating()) return panel_->Text().print(&printer);
    printer.setFullPage(true);
    const TableView& table = *CurrentTable();
    PrintTable(*table.Table(), windowTitle() + " - " + EqList->currentText(), table.TableFont(), printer, margins);
  });
}

void frmResults::CopyCommand() {
  QClipboard& clipboard = *QGuiApplication::clipboard();
  if (Evaluating()) {
    QPlainTextEdit& text = panel_->Text();
    const QString selected = text.textCursor().selection().toPlainText();
    clipboard.setText(selected.isEmpty() ? text.toPlainText() : selected);
  } else if (PlotView* plot = CurrentPlot()) {
    plot->EditCopy();
  } else {
    const BusyCursor busy;
    clipboard.setMimeData(CurrentTable()->Copied());
  }
}

void frmResults::PageSetupCommand() { PSetup(settings_, project_.Locale, user_, this).exec(); }

}  // namespace quorvex
