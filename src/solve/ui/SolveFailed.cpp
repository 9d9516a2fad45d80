#include "solve/ui/SolveFailed.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "core/ui/BusyCursor.h"
#include "core/ui/Controls.h"

namespace quorvex {
namespace {

constexpr int kMostRows = 6;  // of the estimates, without scrolling
constexpr int kListRows = 7;

class SolveFailed : public QDialog {
 public:
  SolveFailed(QWidget* parent, FailedSolve& failed);

  WayOn Way = WayOn::Close;

 private:
  void LayOut();
  QLabel* NewText(const char* name);
  void AddWay(QHBoxLayout& row, const char* name, const QString& caption, WayOn way);
  void SelectChosen();
  void TakeSelection();
  void ShowFit();

  FailedSolve& failed_;
  QListWidget* failed_list;
  QLabel *message_label, *reason_label, *estimates_label;
  QTableWidget* estimate_table;
  std::vector<std::pair<QPushButton*, WayOn>> ways_;
};

SolveFailed::SolveFailed(QWidget* parent, FailedSolve& failed)
    : QDialog(parent),
      failed_(failed),
      failed_list(Named(new QListWidget(this), "failed_list")),
      message_label(NewText("message_label")),
      reason_label(NewText("reason_label")),
      estimates_label(new QLabel("The search be&gan with:", this)),
      estimate_table(Named(new QTableWidget(this), "estimate_table")) {
  setObjectName("SolveFailed");
  setWindowTitle("Quorvex");
  LayOut();
  message_label->setText(QString::fromStdString(failed_.Message()));
  for (std::size_t i = 0; i < failed_.Fits().size(); ++i) failed_list->addItem(QString::fromStdString(failed_.Name(i)));
  SelectChosen();
  ShowFit();
  connect(failed_list, &QListWidget::itemSelectionChanged, this, &SolveFailed::TakeSelection);
}

// What it shows may hold names of models, which are no markup.
QLabel* SolveFailed::NewText(const char* name) {
  auto* label = Named(new QLabel(this), name);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

void SolveFailed::LayOut() {
  auto* sign = new QLabel(this);
  const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
  sign->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(size, size));
  auto* head = new QHBoxLayout;
  head->addWidget(sign, 0, Qt::AlignTop);
  head->addWidget(message_label, 1);

  auto* list_label = LabelFor(failed_list, "&Not solved:", this);
  failed_list->setAccessibleName("Not solved");
  failed_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
  failed_list->setTextElideMode(Qt::ElideMiddle);
  failed_list->setMinimumHeight(kListRows * (fontMetrics().height() + 2));
  const bool several = failed_.Fits().size() > 1;
  list_label->setVisible(several);
  failed_list->setVisible(several);

  estimates_label->setBuddy(estimate_table);
  estimate_table->setAccessibleName("Estimates that the search began with");
  estimate_table->setColumnCount(2);
  estimate_table->setHorizontalHeaderLabels({"Coefficient", "Value"});
  estimate_table->horizontalHeader()->setAccessibleName("Column headers");
  estimate_table->horizontalHeader()->setStretchLastSection(true);
  estimate_table->horizontalHeader()->setHighlightSections(false);
  estimate_table->verticalHeader()->hide();
  estimate_table->verticalHeader()->setAccessibleName("Rows");
  estimate_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  estimate_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  estimate_table->setSelectionBehavior(QAbstractItemView::SelectRows);
  estimate_table->setTabKeyNavigation(false);

  auto* buttons = new QHBoxLayout;
  AddWay(*buttons, "cmdEstimates", "Initial &Estimates...", WayOn::InitialEstimates);
  AddWay(*buttons, "cmdLog", "View &Log", WayOn::ViewLog);
  AddWay(*buttons, "cmdHarder", "&Try Harder", WayOn::TryHarder);
  buttons->addStretch();
  AddWay(*buttons, "cmdClose", "&Close", WayOn::Close);
  ways_.back().first->setDefault(true);

  auto* rows = new QVBoxLayout(this);
  rows->addLayout(head);
  rows->addWidget(list_label);
  rows->addWidget(failed_list, 1);
  rows->addWidget(reason_label);
  rows->addWidget(estimates_label);
  rows->addWidget(estimate_table);
  rows->addLayout(buttons);
  // A sentence or two in lines of a length that reads well.
  constexpr int kLine = 72;
  setMinimumWidth(kLine * fontMetrics().averageCharWidth());
}

void SolveFailed::AddWay(QHBoxLayout& row, const char* name, const QString& caption, WayOn way) {
  auto* button = Named(new QPushButton(caption, this), name);
  row.addWidget(button);
  ways_.emplace_back(button, way);
  connect(button, &QPushButton::clicked, this, [this, way] {
    Way = way;
    accept();
  });
}

// What was chosen when the box was open last.
void SolveFailed::SelectChosen() {
  std::erase_if(failed_.Chosen, [this](std::size_t i) { return i >= failed_.Fits().size(); });
  if (failed_.Chosen.empty()) failed_.Chosen = {0};
  failed_list->setCurrentRow(static_cast<int>(failed_.Chosen.front()));
  for (const std::size_t i : failed_.Chosen) failed_list->item(static_cast<int>(i))->setSelected(true);
  (failed_list->isHidden() ? static_cast<QWidget*>(ways_.back().first) : failed_list)->setFocus();
}

void SolveFailed::TakeSelection() {
  std::vector<std::size_t> chosen;
  for (const QModelIndex& index : failed_list->selectionModel()->selectedRows())
    chosen.push_back(static_cast<std::size_t>(index.row()));
  std::ranges::sort(chosen);
  // The current one is the one that is told about.
  const auto current = std::ranges::find(chosen, static_cast<std::size_t>(failed_list->currentRow()));
  if (current != chosen.end()) std::rotate(chosen.begin(), current, current + 1);
  failed_.Chosen = std::move(chosen);
  ShowFit();
}

void SolveFailed::ShowFit() {
  const BusyCursor busy;  // a great many points take their time
  const bool any = !failed_.Chosen.empty();
  reason_label->setText(any ? QString::fromStdString(failed_.Reason(failed_.Chosen.front())) : QString());
  const auto estimates = any ? failed_.Estimates(failed_.Chosen.front()) : std::vector<EstimateText>();
  const int count = static_cast<int>(estimates.size());
  estimate_table->setRowCount(count);
  for (int row = 0; const EstimateText& estimate : estimates) {
    estimate_table->setItem(row, 0, new QTableWidgetItem(QString::fromStdString(estimate.Name)));
    estimate_table->setItem(row++, 1, new QTableWidgetItem(QString::fromStdString(estimate.Value)));
  }
  estimate_table->setFixedHeight(estimate_table->horizontalHeader()->sizeHint().height() +
                                 std::min(count, kMostRows) * estimate_table->verticalHeader()->defaultSectionSize() +
                                 2 * estimate_table->frameWidth());
  for (QWidget* widget : {static_cast<QWidget*>(estimates_label), static_cast<QWidget*>(estimate_table)})
    widget->setVisible(count > 0);
  const auto canBeTried = [this](std::size_t i) { return failed_.CanTryHarder(i); };
  const bool harder = std::ranges::any_of(failed_.Chosen, canBeTried);
  for (const auto& [button, way] : ways_) {
    if (way == WayOn::InitialEstimates) button->setEnabled(any && failed_.CanBeEstimated(failed_.Chosen.front()));
    if (way != WayOn::TryHarder) continue;
    button->setEnabled(harder);
    button->setToolTip(harder ? "Searches from many other starts, for the selected models"
                              : "It was tried already, or cannot help here");
    button->setAccessibleDescription(button->toolTip());
  }
}

}  // namespace

WayOn ShowSolveFailed(QWidget* over, FailedSolve& failed) {
  const ArrowCursor arrow;
  SolveFailed dialog(over, failed);
  dialog.exec();
  return dialog.Way;
}

}  // namespace quorvex
