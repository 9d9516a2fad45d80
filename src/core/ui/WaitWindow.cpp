#include "core/ui/WaitWindow.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/LongWork.h"

namespace quorvex {

WaitWindow::WaitWindow(const QString& text, QWidget* parent)
    : QWidget(parent, Qt::Dialog), rows_(new QLabel(" ", this)), bar_(new QProgressBar(this)) {
  setObjectName("WaitWindow");
  setWindowTitle("Quorvex");
  setWindowModality(Qt::ApplicationModal);
  auto* what = new QLabel(fontMetrics().elidedText(text, Qt::ElideMiddle, 60 * fontMetrics().averageCharWidth()), this);
  what->setTextFormat(Qt::PlainText);
  what->setToolTip(text.toHtmlEscaped());
  bar_->setAccessibleName(text);
  bar_->setRange(0, 0);
  bar_->setMinimumWidth(48 * fontMetrics().averageCharWidth());
  auto* cancel = new QPushButton("&Cancel", this);
  cancel->setObjectName("cmdCancel");
  cancel->setAutoDefault(true);
  setFocus();  // no button has it, for a key that was meant for another window
  connect(cancel, &QPushButton::clicked, this, [this] { cancelled_ = true; });
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(cancel);
  auto* all = new QVBoxLayout(this);
  for (QWidget* row : {static_cast<QWidget*>(what), static_cast<QWidget*>(bar_), static_cast<QWidget*>(rows_)})
    all->addWidget(row);
  all->addLayout(buttons);
  all->setSizeConstraint(QLayout::SetFixedSize);
  since_.start();
}

bool WaitWindow::Turn(const LongWork& work) {
  constexpr int kSoon = 400;  // milliseconds; what takes less would only flash
  if (since_.elapsed() < kSoon) return true;
  constexpr int kWhole = 1000;
  if (work.Total() > 0) {
    bar_->setRange(0, kWhole);
    bar_->setValue(static_cast<int>(kWhole * (static_cast<double>(work.Done()) / static_cast<double>(work.Total()))));
  } else if (work.Done() > 0) {
    rows_->setText(QLocale().toString(static_cast<qulonglong>(work.Done())) + " rows");
  }
  if (!isVisible()) show();
  QCoreApplication::processEvents();
  return !cancelled_;
}

void WaitWindow::closeEvent(QCloseEvent* event) {
  cancelled_ = true;
  // The work has to end first; to close the window is to ask for that.
  event->ignore();
}

void WaitWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) cancelled_ = true;
}

}  // namespace quorvex
