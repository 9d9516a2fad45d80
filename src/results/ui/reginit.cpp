#include "results/ui/reginit.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <algorithm>
#include <functional>

#include "core/NumberText.h"
#include "plot/ui/PlotView.h"
#include "results/PlotPoints.h"
#include "results/ResultPlots.h"
#include "results/ui/ResultPlot.h"
#include "sheet/CellEntry.h"
#include "solve/GatherData.h"

namespace quorvex {
namespace {

enum Column { kName, kType, kInitial, kFinal, kSteps, kMinimum, kMaximum, kColumns };
constexpr int kMostScrollSteps = 100;
constexpr int kTypingPause = 150;  // milliseconds in which the next digit may follow

// Cells that hand over each letter as it is typed, and the keys that their dialog has a use for.
class EstimateDelegate : public QStyledItemDelegate {
 public:
  using Key = std::function<bool(const QModelIndex& cell, int key)>;  // whether it was taken
  EstimateDelegate(QObject* parent, Key key) : QStyledItemDelegate(parent), key_(std::move(key)) {}

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
    cell_ = index;
    if (auto* line = qobject_cast<QLineEdit*>(editor))
      connect(line, &QLineEdit::textEdited, this,
              [self = const_cast<EstimateDelegate*>(this), line] { emit self->commitData(line); });
    return editor;
  }
  // What comes back of each letter leaves the caret where it is.
  void setEditorData(QWidget* editor, const QModelIndex& index) const override {
    auto* line = qobject_cast<QLineEdit*>(editor);
    if (line == nullptr || line->text() != index.data(Qt::EditRole).toString())
      QStyledItemDelegate::setEditorData(editor, index);
  }

 protected:
  bool eventFilter(QObject* editor, QEvent* event) override {
    if (event->type() == QEvent::KeyPress && cell_.isValid()) {
      const int key = static_cast<QKeyEvent*>(event)->key();
      if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
        auto* line = static_cast<QWidget*>(editor);
        emit commitData(line);
        emit closeEditor(line, NoHint);
        return key_(cell_, key);
      }
      if (key_(cell_, key)) return true;
    }
    return QStyledItemDelegate::eventFilter(editor, event);
  }

 private:
  Key key_;
  mutable QPersistentModelIndex cell_;  // that is edited
};

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
      note_(new QLabel(this)),
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
  typed_.setSingleShot(true);
  typed_.setInterval(kTypingPause);
  connect(&typed_, &QTimer::timeout, this, &reginit::FollowTyping);
  connect(RangeGrid, &QTableWidget::itemChanged, this, [this](const QTableWidgetItem* item) {
    if (item->column() == kInitial) ValueTyped(item->row());
  });
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
  RangeGrid->setHorizontalHeaderLabels(
      {"Variable", "Type", "Initial Value", "Final Value", "Steps", "Minimum", "Maximum"});
  RangeGrid->horizontalHeader()->setAccessibleName("Column headers");
  // The numbers get what room there is.
  for (const int column : {kInitial, kFinal, kMinimum, kMaximum})
    RangeGrid->horizontalHeader()->setSectionResizeMode(column, QHeaderView::Stretch);
  RangeGrid->setWordWrap(false);  // a number is no words, though a decimal comma ends one
  RangeGrid->verticalHeader()->hide();
  RangeGrid->verticalHeader()->setAccessibleName("Rows");
  RangeGrid->setSelectionMode(QAbstractItemView::SingleSelection);
  RangeGrid->setEditTriggers(QAbstractItemView::AllEditTriggers);
  RangeGrid->setTabKeyNavigation(false);
  RangeGrid->installEventFilter(this);
  RangeGrid->setItemDelegate(
      new EstimateDelegate(this, [this](const QModelIndex& cell, int key) { return TakeKey(cell.column(), key); }));
  RangeGrid->setToolTip("Up and Down change an initial value by the step below");
  note_->setObjectName("note");
  note_->setTextFormat(Qt::PlainText);
  note_->setWordWrap(true);
  note_->hide();
  QSizePolicy place = note_->sizePolicy();
  place.setRetainSizeWhenHidden(true);  // so that nothing moves while a number is half typed
  note_->setSizePolicy(place);
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
  column->addWidget(note_);
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
  parts->setSizes({140 * width, 70 * width});
  resize(QSize(215 * width, 70 * width).boundedTo(screen()->availableSize() * 0.95));
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
    const std::string* const texts[] = {&row.Name,  nullptr,      &row.Initial, &row.Final,
                                        &row.Steps, &row.Minimum, &row.Maximum};
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
  // The eye goes from the values to the types, and on to the bar.
  QWidget* before = RangeGrid;
  for (int r = 0; r < RangeGrid->rowCount(); ++r) {
    setTabOrder(before, RangeGrid->cellWidget(r, kType));
    before = RangeGrid->cellWidget(r, kType);
  }
  for (QWidget* next : std::initializer_list<QWidget*>{HscrAjust, drpPercent, recalc_command, cmdSaveRules, preview_}) {
    setTabOrder(before, next);
    before = next;
  }
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
    rows.push_back(
        {text(kName), TypeOf(r), text(kInitial), text(kFinal), text(kSteps), text(kMinimum), text(kMaximum)});
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
  {
    // The bar keeps the value from which it moves.
    const QSignalBlocker quiet(RangeGrid);
    const int row = std::max(RangeGrid->currentRow(), 0);
    const EstimateRow selected = Rows()[static_cast<std::size_t>(row)];
    RangeGrid->item(row, kInitial)
        ->setText(QString::fromStdString(MovedEstimate(selected, base_, steps, percent, project_.Locale)));
  }
  Recalculate();
}

void reginit::ValueTyped(int row) {
  if (row == std::max(RangeGrid->currentRow(), 0)) SelectRow(row);
  typed_.start();
}

// A value that is half typed is not refused: the line under the grid says what the preview waits for.
void reginit::FollowTyping() {
  const std::vector<EstimateRow> rows = Rows();
  const auto refusal = CheckInitialValues(rows, project_.Locale);
  if (!refusal) return ShowPreview(rows);
  note_->setText(QString::fromStdString("The preview shows the values before. " + refusal->Message));
  note_->show();
}

bool reginit::TakeKey(int column, int key) {
  const bool up = key == Qt::Key_Up, forward = key == Qt::Key_Tab;
  if (forward || key == Qt::Key_Backtab) {
    LeaveCell(forward);
  } else if ((up || key == Qt::Key_Down) && column == kInitial && HscrAjust->isEnabled()) {
    HscrAjust->setValue(HscrAjust->value() + (up ? 1 : -1));
  } else {
    return false;
  }
  return true;
}

// The same keys where no cell is open.
bool reginit::eventFilter(QObject* grid, QEvent* event) {
  if (grid == RangeGrid && event->type() == QEvent::KeyPress &&
      TakeKey(RangeGrid->currentColumn(), static_cast<QKeyEvent*>(event)->key()))
    return true;
  return QDialog::eventFilter(grid, event);
}

void reginit::LeaveCell(bool forward) {
  const int cells = RangeGrid->rowCount() * kColumns, step = forward ? 1 : -1;
  RangeGrid->setFocus();
  for (int cell = RangeGrid->currentRow() * kColumns + RangeGrid->currentColumn() + step; cell >= 0 && cell < cells;
       cell += step) {
    const QTableWidgetItem* item = RangeGrid->item(cell / kColumns, cell % kColumns);
    if (cell % kColumns == kType || !(item->flags() & Qt::ItemIsEditable)) continue;
    return RangeGrid->setCurrentCell(cell / kColumns, cell % kColumns);
  }
  focusNextPrevChild(forward);
}

bool reginit::Refused(const std::optional<EstimateRefusal>& refusal) {
  if (!refusal) return false;
  editor_.Edit.User.Refuse(refusal->Message);
  if (refusal->Column > 0) GoTo(static_cast<int>(refusal->Row), refusal->Column - 1);
  return true;
}

void reginit::Recalculate() {
  const std::vector<EstimateRow> rows = Rows();
  if (!Refused(CheckInitialValues(rows, project_.Locale))) ShowPreview(rows);
}

void reginit::ShowPreview(const std::vector<EstimateRow>& rows) {
  typed_.stop();
  note_->hide();
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

bool SpecifyEstimates(QWidget* over, Project& project, ProjectEditor& editor, ModelClass& model, Settings& settings) {
  return reginit(over, project, editor, model, GatherData(project.Sheet).Points, settings).exec() == QDialog::Accepted;
}

}  // namespace quorvex
