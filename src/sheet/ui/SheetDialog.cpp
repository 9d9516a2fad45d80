#include "sheet/ui/SheetDialog.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

#include "core/NumberText.h"
#include "core/ui/BusyCursor.h"

namespace quorvex {

SheetDialog::SheetDialog(QWidget* parent, const char* name, const QString& title)
    : QDialog(parent), rows_(new QFormLayout) {
  setObjectName(name);
  setWindowTitle(title);
  auto* all = new QVBoxLayout(this);
  all->addLayout(rows_);
  all->setSizeConstraint(QLayout::SetMinimumSize);
}

QLineEdit* SheetDialog::AddText(QFormLayout* rows, const char* name, const QString& label, const QString& text) {
  auto* edit = new QLineEdit(text, this);
  edit->setObjectName(name);
  rows->addRow(label, edit);
  if (typed_ == nullptr) typed_ = edit;
  // A refusal leads back to the field that was typed in last, which it most likely speaks of.
  connect(edit, &QLineEdit::textEdited, this, [this, edit] { typed_ = edit; });
  return edit;
}

QComboBox* SheetDialog::AddChoice(const char* name, const QString& label, const QStringList& entries) {
  auto* choice = new QComboBox(this);
  choice->setObjectName(name);
  choice->addItems(entries);
  choice->view()->setAccessibleName(QString(label).remove('&').remove(':'));
  rows_->addRow(label, choice);
  return choice;
}

QCheckBox* SheetDialog::AddCheck(const char* name, const QString& label) {
  auto* check = new QCheckBox(label, this);
  check->setObjectName(name);
  rows_->addRow(check);
  return check;
}

void SheetDialog::AddNote(const QString& text) {
  auto* note = new QLabel(text, this);
  note->setTextFormat(Qt::PlainText);
  note->setWordWrap(true);
  rows_->addRow(note);
}

bool SheetDialog::Run(std::function<bool()> apply) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout()->addWidget(buttons);
  apply_ = std::move(apply);
  return exec() == QDialog::Accepted;
}

void SheetDialog::accept() {
  const bool done = [this] {
    const BusyCursor busy;
    return apply_();
  }();
  if (done) return QDialog::accept();
  if (typed_ == nullptr || !typed_->isVisible()) return;
  typed_->setFocus();
  typed_->selectAll();
}

QStringList ColumnNames(const DataSheet& sheet, std::size_t first, std::size_t last) {
  QStringList names;
  for (std::size_t col = first; col <= last; ++col) {
    const bool named = col <= sheet.Headers.size() && !Trim(sheet.Headers[col - 1]).empty();
    names << (named ? QString::fromStdString(sheet.Headers[col - 1]) : QString("Column %1").arg(col));
  }
  return names;
}

}  // namespace quorvex
