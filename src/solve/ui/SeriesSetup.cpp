#include "solve/ui/SeriesSetup.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>

#include "core/ui/Controls.h"
#include "import/ui/ReadingControls.h"

namespace quorvex {
namespace {

class SeriesSetup : public QDialog {
 public:
  SeriesSetup(QWidget* parent, SeriesPick& pick, Prompter& user);

  std::optional<SeriesData> Series;

 private:
  void LayOut();
  void Reload();
  void BeginAt(int line);
  void ShowColumns();
  void ShowState();
  void TickAll(bool tick);
  void Accept();

  SeriesPick& pick_;
  Prompter& user_;
  ReadingControls reading_;
  QSpinBox* UpDnStartRow;
  QComboBox *cboX, *cboSD;
  QListWidget* lstColumns;
  QPushButton *cmdAll, *cmdNone;
  QLabel *lblCount, *lblTexts;
  QCheckBox* ckTextMissing;
  QPushButton* cmdOK;
};

QComboBox* NewCombo(QWidget* parent, const char* name, const QString& accessibleName) {
  auto* combo = Named(new QComboBox(parent), name);
  combo->setAccessibleName(accessibleName);
  combo->view()->setAccessibleName(accessibleName);
  combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  combo->setMinimumContentsLength(24);
  return combo;
}

SeriesSetup::SeriesSetup(QWidget* parent, SeriesPick& pick, Prompter& user)
    : QDialog(parent),
      pick_(pick),
      user_(user),
      reading_(pick.Import(), user, [this] { Reload(); }),
      UpDnStartRow(Named(new QSpinBox(this), "UpDnStartRow")),
      cboX(NewCombo(this, "cboX", "X")),
      cboSD(NewCombo(this, "cboSD", "Standard deviations")),
      lstColumns(Named(new QListWidget(this), "lstColumns")),
      cmdAll(Named(new QPushButton("Tick &All", this), "cmdAll")),
      cmdNone(Named(new QPushButton("Tick &None", this), "cmdNone")),
      lblCount(Named(new QLabel(this), "lblCount")),
      lblTexts(Named(new QLabel(this), "lblTexts")),
      ckTextMissing(Named(new QCheckBox("&Leave out cells that are no numbers", this), "ckTextMissing")),
      cmdOK(nullptr) {
  setObjectName("SeriesSetup");
  setWindowTitle("Series");
  LayOut();
  ShowColumns();
  connect(UpDnStartRow, &QSpinBox::valueChanged, this, &SeriesSetup::BeginAt);
  connect(cboX, &QComboBox::activated, this, [this](int index) {
    pick_.X = static_cast<std::size_t>(index) + 1;
    ShowColumns();
  });
  connect(cboSD, &QComboBox::activated, this, [this](int index) {
    pick_.SD = static_cast<std::size_t>(index);
    ShowColumns();
  });
  connect(lstColumns, &QListWidget::itemChanged, this, [this](const QListWidgetItem* item) {
    pick_.IsY[static_cast<std::size_t>(lstColumns->row(item))] = item->checkState() == Qt::Checked;
    ShowState();
  });
  connect(cmdAll, &QPushButton::clicked, this, [this] { TickAll(true); });
  connect(cmdNone, &QPushButton::clicked, this, [this] { TickAll(false); });
  connect(ckTextMissing, &QCheckBox::toggled, this, [this](bool checked) { pick_.TextMissing = checked; });
  lstColumns->setFocus();
}

void SeriesSetup::LayOut() {
  UpDnStartRow->setRange(1, 1'000'000);
  UpDnStartRow->setAccessibleName("First line of data");
  lstColumns->setAccessibleName("Columns of Y");
  lstColumns->setMinimumHeight(10 * fontMetrics().height());
  lblTexts->setTextFormat(Qt::PlainText);
  lblTexts->setWordWrap(true);
  auto* rows = new QVBoxLayout(this);
  rows->addLayout(reading_.Layout());
  auto* form = new QFormLayout;
  form->addRow("&First line of data:", UpDnStartRow);
  form->addRow(pick_.Variables() == 1 ? QString("&X:") : QString("&X1 to X%1, beginning with:").arg(pick_.Variables()),
               cboX);
  form->addRow("Standard &deviations of all:", cboSD);
  rows->addLayout(form);
  auto* head = new QHBoxLayout;
  head->addWidget(LabelFor(lstColumns, "Columns of &Y, each of which is solved by itself:", this));
  head->addStretch();
  head->addWidget(lblCount);
  rows->addLayout(head);
  rows->addWidget(lstColumns, 1);
  auto* ticks = new QHBoxLayout;
  ticks->addWidget(cmdAll);
  ticks->addWidget(cmdNone);
  ticks->addStretch();
  rows->addLayout(ticks);
  rows->addWidget(lblTexts);
  rows->addWidget(ckTextMissing);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  cmdOK = buttons->button(QDialogButtonBox::Ok);
  cmdOK->setText("&Models...");
  cmdOK->setObjectName("cmdOK");
  connect(buttons, &QDialogButtonBox::accepted, this, &SeriesSetup::Accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  rows->addWidget(buttons);
  for (QPushButton* button : {cmdAll, cmdNone}) button->setAutoDefault(false);
  cmdOK->setDefault(true);
}

void SeriesSetup::Reload() {
  if (pick_.Reload(user_)) ShowColumns();
}

void SeriesSetup::BeginAt(int line) {
  pick_.BeginAt(static_cast<std::size_t>(line));
  ShowColumns();
}

void SeriesSetup::ShowColumns() {
  const QSignalBlocker quietList(lstColumns), quietLine(UpDnStartRow);
  UpDnStartRow->setValue(static_cast<int>(pick_.FirstLine()));
  const int current = std::max(lstColumns->currentRow(), 0);
  lstColumns->clear();
  cboX->clear();
  cboSD->clear();
  cboSD->addItem("None");
  std::size_t column = 0;
  for (const std::string& name : pick_.Columns()) {
    const QString text = QString::fromStdString(name);
    ++column;
    if (column + pick_.Variables() <= pick_.Columns().size() + 1) cboX->addItem(text);
    cboSD->addItem(text);
    auto* item = new QListWidgetItem(text, lstColumns);
    const bool mayBe = pick_.MayBeY(column);
    item->setFlags(mayBe ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable : Qt::NoItemFlags);
    item->setCheckState(mayBe && pick_.IsY[column - 1] ? Qt::Checked : Qt::Unchecked);
  }
  cboX->setCurrentIndex(static_cast<int>(pick_.X) - 1);
  cboSD->setCurrentIndex(static_cast<int>(pick_.SD));
  int row = std::min(current, lstColumns->count() - 1);
  while (row >= 0 && row + 1 < lstColumns->count() && lstColumns->item(row)->flags() == Qt::NoItemFlags) ++row;
  lstColumns->setCurrentRow(row);
  ShowState();
}

void SeriesSetup::ShowState() {
  std::size_t ticked = 0;
  for (std::size_t column = 1; column <= pick_.IsY.size(); ++column)
    if (pick_.IsY[column - 1] && pick_.MayBeY(column)) ++ticked;
  lblCount->setText(QString::number(ticked) + " ticked");
  const std::string texts = pick_.TextSentence();
  lblTexts->setText(QString::fromStdString(texts));
  lblTexts->setVisible(!texts.empty());
  ckTextMissing->setEnabled(!texts.empty());
}

void SeriesSetup::TickAll(bool tick) {
  pick_.IsY.assign(pick_.IsY.size(), tick);
  ShowColumns();
}

void SeriesSetup::Accept() {
  Series = pick_.Accept(user_);
  if (Series) accept();
}

}  // namespace

std::optional<SeriesData> ShowSeriesSetup(QWidget* over, SeriesPick& pick, Prompter& user) {
  if (!pick.Reload(user)) return std::nullopt;
  SeriesSetup setup(over, pick, user);
  setup.exec();
  return std::move(setup.Series);
}

}  // namespace quorvex
