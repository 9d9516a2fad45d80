#include "results/ui/reginit.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSplitter>
#include <QTableWidget>
#include <algorithm>

#include "core/NumberText.h"
#include "plot/ui/PlotView.h"
#include "results/PlotPoints.h"
#include "results/ResultPlots.h"
#include "results/ui/ResultPlot.h"
#include "sheet/CellEntry.h"
#include "solve/GatherData.h"

namespace quorvex {
namespace {

enum Column { kName, kType, kInitial, kFinal, kSteps, kColumns };
constexpr int kMostScrollSteps = 100;

}  // namespace

reginit::reginit(QWidget* parent, Project& project, ProjectEditor& editor, ModelClass& model, SolveData points,
                 Settings& settings)
    : QDialog(parent),
      project_(project),
      editor_(editor),
      model_(model),
      data_(std::move(points)),
      settings_(settings),
      RangeGrid(new QTableWidget(this)),
      adjusted_(new QLabel(this)),
      HscrAjust(new QScrollBar(Qt::Horizontal, this)),
      XYScroll(new QScrollBar(Qt::Horizontal, this)),
      ZScroll(new QScrollBar(Qt::Vertical, this)),
      drpPercent(new QComboBox(this)),
      recalc_command(new QPushButton("&Redraw", this)),
      cmdSaveRules(new QPushButton("Save as R&ules", this)),
      preview_(new ResultPlot("preview", "Preview", editor.Edit.User, settings, this)) {
  setObjectName("reginit");
  setWindowTitle("Initial Estimates");
  LayOut();
  Fill(FirstEstimates(model_, data_, project_.Locale));
  connect(RangeGrid, &QTableWidget::currentCellChanged, this, [this](int row) { SelectRow(row); });
  connect(HscrAjust, &QScrollBar::valueChanged, this, &reginit::Scroll);
  connect(drpPercent, &QComboBox::currentIndexChanged, this, [this] { SelectRow(RangeGrid->currentRow()); });
  connect(recalc_command, &QPushButton::clicked, this, &reginit::Recalculate);
  connect(cmdSaveRules, &QPushButton::clicked, this, &reginit::SaveRules);
  RangeGrid->setCurrentCell(0, kInitial);
  SelectRow(0);
  Recalculate();
}

void reginit::LayOut() {
  RangeGrid->setObjectName("RangeGrid");
  RangeGrid->setAccessibleName("Coefficients");
  RangeGrid->setColumnCount(kColumns);
  RangeGrid->setHorizontalHeaderLabels({"Variable", "Type", "Initial Value", "Final Value", "Steps"});
  RangeGrid->horizontalHeader()->setAccessibleName("Column headers");
  // The numbers get what room there is.
  for (const int column : {kInitial, kFinal})
    RangeGrid->horizontalHeader()->setSectionResizeMode(column, QHeaderView::Stretch);
  RangeGrid->verticalHeader()->hide();
  RangeGrid->verticalHeader()->setAccessibleName("Rows");
  RangeGrid->setSelectionMode(QAbstractItemView::SingleSelection);
  RangeGrid->setEditTriggers(QAbstractItemView::AllEditTriggers);
  RangeGrid->setTabKeyNavigation(false);
  // Else the right arrow would go left: Qt thinks of upright bars, where down is more.
  for (QScrollBar* bar : {HscrAjust, XYScroll}) bar->setInvertedControls(false);
  adjusted_->setBuddy(HscrAjust);
  HscrAjust->setObjectName("HscrAjust");
  HscrAjust->setFocusPolicy(Qt::StrongFocus);
  HscrAjust->setRange(-kMostScrollSteps, kMostScrollSteps);
  drpPercent->setObjectName("drpPercent");
  drpPercent->setAccessibleName("Step of the scroll bar");
  drpPercent->view()->setAccessibleName("Steps of the scroll bar");
  drpPercent->addItems({"+1%", "+5%", "+10%", "+50%", "+100%"});
  recalc_command->setObjectName("recalc_command");
  cmdSaveRules->setObjectName("cmdSaveRules");
  recalc_command->setAutoDefault(false);
  cmdSaveRules->setAutoDefault(false);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &reginit::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &reginit::reject);

  // A single "&" in the model's name would be taken for a mnemonic.
  auto* model = new QLabel("&Model: " + QString::fromStdString(model_.id).replace('&', "&&"), this);
  model->setBuddy(RangeGrid);
  auto* adjust = new QHBoxLayout;
  adjust->addWidget(adjusted_);
  adjust->addWidget(HscrAjust, 1);
  adjust->addWidget(drpPercent);
  auto* commands = new QHBoxLayout;
  commands->addWidget(recalc_command);
  commands->addWidget(cmdSaveRules);
  commands->addStretch();

  auto* estimates = new QWidget(this);
  auto* column = new QVBoxLayout(estimates);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(model);
  column->addWidget(RangeGrid, 1);
  column->addLayout(adjust);
  column->addLayout(commands);
  auto* parts = new QSplitter(this);
  parts->setChildrenCollapsible(false);
  parts->addWidget(estimates);
  parts->addWidget(Preview());
  for (const int part : {0, 1}) parts->setStretchFactor(part, 1);
  auto* all = new QVBoxLayout(this);
  all->addWidget(parts, 1);
  all->addWidget(buttons);
  const int width = fontMetrics().averageCharWidth();
  parts->setSizes({90 * width, 90 * width});
  resize(QSize(185 * width, 70 * width).boundedTo(screen()->availableSize() * 0.95));
}

QWidget* reginit::Preview() {
  auto* part = new QWidget(this);
  auto* cells = new QGridLayout(part);
  cells->setContentsMargins(0, 0, 0, 0);
  cells->setSpacing(0);
  cells->addWidget(preview_, 0, 0);
  cells->addWidget(XYScroll, 1, 0);
  cells->addWidget(ZScroll, 0, 1);
  XYScroll->setObjectName("XYScroll");
  XYScroll->setAccessibleName("X1-X2 view angle of the preview");
  XYScroll->setRange(0, 360);
  ZScroll->setObjectName("ZScroll");
  ZScroll->setAccessibleName("X1-Y view angle of the preview");
  ZScroll->setRange(0, 180);
  for (QScrollBar* bar : {XYScroll, ZScroll}) {
    bar->setFocusPolicy(Qt::StrongFocus);
    bar->setPageStep(15);
    bar->setVisible(data_.X.size() == 2);
  }
  return part;
}

void reginit::ShowAngles() {
  const PlotView* view = preview_->View();
  const auto angles = view != nullptr ? view->Angles() : std::nullopt;
  const QSignalBlocker quietXY(XYScroll), quietZ(ZScroll);
  for (QScrollBar* bar : {XYScroll, ZScroll}) bar->setEnabled(angles.has_value());
  if (!angles) return;
  XYScroll->setValue(qRound(angles->XY));
  ZScroll->setValue(qRound(angles->Z));
}

void reginit::Fill(const std::vector<EstimateRow>& rows) {
  RangeGrid->setRowCount(static_cast<int>(rows.size()));
  for (int r = 0; const EstimateRow& row : rows) {
    const std::string* const texts[] = {&row.Name, nullptr, &row.Initial, &row.Final, &row.Steps};
    for (int c = 0; c < kColumns; ++c)
      if (texts[c] != nullptr) RangeGrid->setItem(r, c, new QTableWidgetItem(QString::fromStdString(*texts[c])));
    RangeGrid->item(r, kName)->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    auto* type = new QComboBox(RangeGrid);
    for (const char* text : kEstimateTypes) type->addItem(text);
    type->setCurrentIndex(static_cast<int>(row.Type));
    type->setAccessibleName("Type of " + QString::fromStdString(row.Name));
    type->view()->setAccessibleName("Types");
    RangeGrid->setItem(r, kType, new QTableWidgetItem);
    RangeGrid->setCellWidget(r, kType, type);
    connect(type, &QComboBox::currentIndexChanged, this, [this, r] { ShowType(r); });
    ShowType(r++);
  }
  RangeGrid->resizeColumnsToContents();
  RangeGrid->setColumnWidth(kSteps, fontMetrics().averageCharWidth() * 9);
}

EstimateType reginit::TypeOf(int row) const {
  return static_cast<EstimateType>(static_cast<QComboBox*>(RangeGrid->cellWidget(row, kType))->currentIndex());
}

void reginit::ShowType(int row) {
  const bool range = TypeOf(row) == EstimateType::Range;
  // What a screen reader says of the cell under the list.
  RangeGrid->item(row, kType)->setData(Qt::AccessibleTextRole, kEstimateTypes[static_cast<std::size_t>(TypeOf(row))]);
  for (const int column : {kFinal, kSteps}) {
    QTableWidgetItem* item = RangeGrid->item(row, column);
    item->setFlags(range ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable : Qt::NoItemFlags);
    if (!range) item->setText("");
  }
}

std::vector<EstimateRow> reginit::Rows() const {
  std::vector<EstimateRow> rows;
  for (int r = 0; r < RangeGrid->rowCount(); ++r) {
    const auto text = [&](int column) { return RangeGrid->item(r, column)->text().toStdString(); };
    rows.push_back({text(kName), TypeOf(r), text(kInitial), text(kFinal), text(kSteps)});
  }
  return rows;
}

void reginit::GoTo(int row, int column) {
  RangeGrid->setFocus();
  RangeGrid->setCurrentCell(row, column);
}

// The scroll bar stands in its middle for the value that the coefficient has now.
void reginit::SelectRow(int row) {
  const EstimateRow selected = Rows()[static_cast<std::size_t>(std::max(row, 0))];
  adjusted_->setText("&Adjust " + QString::fromStdString(selected.Name).replace('&', "&&") + ":");
  HscrAjust->setAccessibleName("Adjust " + QString::fromStdString(selected.Name));
  const std::optional<double> value = NumericText(selected.Initial, project_.Locale.DecimalSeparator);
  HscrAjust->setEnabled(value.has_value());
  base_ = value.value_or(0);
  const QSignalBlocker quiet(HscrAjust);
  HscrAjust->setValue(0);
}

void reginit::Scroll(int steps) {
  const double percent = QLocale::c().toDouble(drpPercent->currentText().mid(1).chopped(1));
  RangeGrid->item(std::max(RangeGrid->currentRow(), 0), kInitial)
      ->setText(QString::fromStdString(MovedEstimate(base_, steps, percent, project_.Locale)));
  Recalculate();
}

bool reginit::Refused(const std::optional<EstimateRefusal>& refusal) {
  if (!refusal) return false;
  editor_.Edit.User.Refuse(refusal->Message);
  if (refusal->Column > 0) GoTo(static_cast<int>(refusal->Row), refusal->Column - 1);
  return true;
}

void reginit::Recalculate() {
  const std::vector<EstimateRow> rows = Rows();
  if (Refused(CheckInitialValues(rows, project_.Locale))) return;
  preview_->SetPlot(EstimatePreview(model_, InitialValues(rows, project_.Locale), data_, AxisTitles(project_.Sheet),
                                    settings_, project_.Locale));
  if (PlotView* view = preview_->View(); view != nullptr && view->Angles()) {
    connect(XYScroll, &QScrollBar::valueChanged, view, &PlotView::SetXYAngle);
    connect(ZScroll, &QScrollBar::valueChanged, view, &PlotView::SetZAngle);
    connect(view, &PlotView::Changed, this, &reginit::ShowAngles);
  }
  ShowAngles();
}

void reginit::SaveRules() { quorvex::SaveRules(project_, model_, Rows(), editor_.Edit.User); }

void reginit::accept() {
  const std::vector<EstimateRow> rows = Rows();
  if (!Refused(CheckEstimates(rows, project_.Locale)) && SetEstimates(project_, editor_, model_, rows))
    QDialog::accept();
}

void SpecifyEstimates(QWidget* over, Project& project, ProjectEditor& editor, ModelClass& model, Settings& settings) {
  reginit(over, project, editor, model, GatherData(project.Sheet).Points, settings).exec();
}

}  // namespace quorvex
