#include "solve/ui/ProgressWindow.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

namespace quorvex {
namespace {

// The same mnemonic in both, so that the key switches to and fro.
const QString kMoreDetail = QStringLiteral("More &Detail >");
const QString kLessDetail = QStringLiteral("Less &Detail <");

constexpr int kStatusCharacters = 53;  // the longest status: 50 characters and "..."

// What a label shows is a value or a name of the user's, never markup.
QLabel* NewLabel(QWidget* parent, const QString& name, const QString& text = QString()) {
  auto* label = new QLabel(text, parent);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  return label;
}

QPushButton* NewButton(QWidget* parent, const QString& name, const QString& caption) {
  auto* button = new QPushButton(caption, parent);
  button->setObjectName(name);
  button->setAutoDefault(true);  // Enter presses it where it has the focus, and only there
  return button;
}

}  // namespace

ProgressWindow::ProgressWindow(QWidget* parent, const QString& caption)
    : QWidget(parent, Qt::Dialog),
      status_label(NewLabel(this, "status_label")),
      ProgressBar1(new QProgressBar(this)),
      ConvergeLabel(NewLabel(this, "ConvergeLabel", "Converging...")),
      IterationLabel(NewLabel(this, "IterationLabel", "Iteration:")),
      ResidualLabel(NewLabel(this, "ResidualLabel", "Merit Function:")),
      DeltaLabel(NewLabel(this, "DeltaLabel", "Percent Change:")),
      cmdDetail(NewButton(this, "cmdDetail", kMoreDetail)),
      cmdPause(NewButton(this, "cmdPause", "&Pause")),
      Abort_command(NewButton(this, "Abort_command", "&Abort")),
      panel_(new QScrollArea(this)) {
  setWindowTitle(caption);
  setCursor(Qt::BusyCursor);
  setFocus();  // no button has it, for a key that was meant for another window

  ProgressBar1->setObjectName("ProgressBar1");
  ProgressBar1->setAccessibleName("Progress of the run");
  cmdDetail->setAccessibleDescription("Shows or hides the values of the model's parameters.");
  cmdPause->setToolTip("Ends the search for this model and keeps the best found so far");
  cmdPause->setAccessibleDescription(cmdPause->toolTip());
  Abort_command->setToolTip("Ends the whole run");
  Abort_command->setAccessibleDescription(Abort_command->toolTip());

  LayOut();
  // A fit tells the values only when they change. It tells them while they are hidden too, so that the panel opens with
  // those in force, even in a search that has come to a stop.
  ShowDetail = true;
  connect(cmdDetail, &QPushButton::clicked, this, &ProgressWindow::ToggleDetail);
  connect(cmdPause, &QPushButton::clicked, this, [this] { Paused = true; });
  connect(Abort_command, &QPushButton::clicked, this, [this] { Aborted = true; });
}

void ProgressWindow::LayOut() {
  auto* values = new QWidget(panel_);
  auto* column = new QVBoxLayout(values);
  column->setSpacing(0);
  for (int i = 0; i < kParameterLabels; ++i) {
    QLabel*& label = lblParam[static_cast<std::size_t>(i)];
    label = NewLabel(values, "lblParam" + QString::number(i + 1));
    label->hide();
    column->addWidget(label);
  }
  column->addStretch();
  panel_->setObjectName("panel");
  panel_->setAccessibleName("Parameters");
  panel_->setWidget(values);
  panel_->setWidgetResizable(true);
  panel_->hide();

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(cmdDetail);
  buttons->addStretch();
  buttons->addWidget(cmdPause);
  buttons->addWidget(Abort_command);

  auto* rows = new QVBoxLayout(this);
  for (QWidget* row : std::initializer_list<QWidget*>{status_label, ProgressBar1, ConvergeLabel, IterationLabel,
                                                      ResidualLabel, DeltaLabel})
    rows->addWidget(row);
  rows->addLayout(buttons);
  rows->addWidget(panel_);
  rows->setSizeConstraint(QLayout::SetFixedSize);  // as tall as what is shown

  // What comes and goes while models are solved keeps its place, so that nothing moves under the mouse.
  for (QWidget* widget : {static_cast<QWidget*>(ConvergeLabel), static_cast<QWidget*>(cmdPause)}) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
    widget->hide();
  }
  cmdDetail->setEnabled(false);
  FitToFont();
}

// Sizes that follow the font: the width holds a long status, the button its longer caption, and the panel 14
// parameters, or as many as there are. A row is 240 units of 1/1440 inch, or more where the font needs it. The panel
// takes at most half of the screen; beyond that it scrolls.
void ProgressWindow::FitToFont() {
  constexpr int kUnitsPerPixel = 15, kRow = 240 / kUnitsPerPixel, kAround = 255 / kUnitsPerPixel, kFewestRows = 14;
  const int character = fontMetrics().averageCharWidth();
  status_label->setMinimumWidth(kStatusCharacters * character);
  cmdDetail->setMinimumWidth(fontMetrics().size(Qt::TextShowMnemonic, kMoreDetail).width() + 4 * character);
  const int row = std::max(kRow, fontMetrics().height());
  for (QLabel* label : lblParam) label->setFixedHeight(row);
  QLayout& column = *panel_->widget()->layout();
  column.setContentsMargins(kAround / 2, kAround / 2, kAround / 2, 0);
  const int height = std::max(kFewestRows, parameters_) * row + kAround;
  panel_->setFixedHeight(std::min(height, screen()->availableSize().height() / 2));
}

void ProgressWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitToFont();
}

void ProgressWindow::Yield() {
  QCoreApplication::processEvents();
  sinceYield_.start();
}

void ProgressWindow::Pulse() {
  constexpr int kMostMilliseconds = 40;  // a button answers in less than what feels like a wait
  if (!sinceYield_.isValid() || sinceYield_.elapsed() > kMostMilliseconds) Yield();
}

void ProgressWindow::ShowConverging(bool running) {
  ConvergeLabel->setVisible(running);
  if (!running) return;
  cmdPause->show();
  cmdDetail->setEnabled(true);
}

// A model that is solved without iterations never yields, so each step of the bar does.
void ProgressWindow::SetProgress(int done, int of) {
  ProgressBar1->setRange(0, of);
  ProgressBar1->setValue(done);
  Yield();
}

void ProgressWindow::SetStatusLabel(const std::string& text) { status_label->setText(QString::fromStdString(text)); }
void ProgressWindow::SetIterationLabel(const std::string& text) {
  IterationLabel->setText(QString::fromStdString(text));
}
void ProgressWindow::SetResidualLabel(const std::string& text) { ResidualLabel->setText(QString::fromStdString(text)); }
void ProgressWindow::SetDeltaLabel(const std::string& text) { DeltaLabel->setText(QString::fromStdString(text)); }

void ProgressWindow::SetParameterCount(int count) {
  parameters_ = std::min(count, kParameterLabels);
  for (int i = 0; i < kParameterLabels; ++i) {
    QLabel* label = lblParam[static_cast<std::size_t>(i)];
    label->clear();
    label->setVisible(i < parameters_);
  }
  FitToFont();
}

void ProgressWindow::SetParameterLabel(int index, const std::string& text) {
  lblParam[static_cast<std::size_t>(index - 1)]->setText(QString::fromStdString(text));
}

void ProgressWindow::ToggleDetail() {
  const bool show = panel_->isHidden();
  cmdDetail->setText(show ? kLessDetail : kMoreDetail);
  panel_->setVisible(show);
}

void ProgressWindow::closeEvent(QCloseEvent* event) {
  Aborted = true;
  // The run has to end first; to close the window is to ask for that.
  event->ignore();
}

}  // namespace quorvex
