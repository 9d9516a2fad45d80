#include "plot/ui/Printfrm.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace quorvex {

Printfrm::Printfrm(QWidget* parent) : QDialog(parent), what_(new QLabel(this)) {
  setObjectName("Printfrm");
  setWindowTitle("Quorvex");
  setModal(true);
  what_->setTextFormat(Qt::PlainText);
  what_->setMinimumWidth(48 * fontMetrics().averageCharWidth());
  auto* buttons = new QDialogButtonBox(this);
  buttons->addButton("&Cancel", QDialogButtonBox::RejectRole)->setObjectName("cmdCancel");
  connect(buttons, &QDialogButtonBox::rejected, this, &Printfrm::reject);
  auto* rows = new QVBoxLayout(this);
  rows->addWidget(what_);
  rows->addWidget(buttons);
  rows->setSizeConstraint(QLayout::SetFixedSize);
}

bool Printfrm::Show(const std::string& text) {
  const QString line = QString::fromStdString(text);
  what_->setText(fontMetrics().elidedText(line, Qt::ElideRight, 80 * fontMetrics().averageCharWidth()));
  what_->setToolTip(line.toHtmlEscaped());
  setAccessibleName(line);
  show();
  QCoreApplication::processEvents();
  return !cancelled_;
}

}  // namespace quorvex
