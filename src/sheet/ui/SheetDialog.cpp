#include "sheet/ui/SheetDialog.h"

#include <QAbstractItemView>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include "core/ui/BusyCursor.h"
#include "core/ui/Controls.h"
#include "sheet/ColumnNames.h"

namespace quorvex {

SheetDialog::SheetDialog(QWidget* parent, const char* name, const QString& title)
    : QDialog(parent), rows_(new QFormLayout) {
  setObjectName(name);
  setWindowTitle(title);
  auto* all = new QVBoxLayout(this);
  all->addLayout(rows_);
  all->setSizeConstraint(QLayout::SetMinimumSize);
}

QLineEdit* SheetDialog::AddText(QFormLayout* rows, const char* name, const QString& label, const QString& text,
                                QWidget* beside) {
  auto* edit = new QLineEdit(text, this);
  edit->setObjectName(name);
  if (beside == nullptr) {
    rows->addRow(label, edit);
  } else {
    auto* row = new QHBoxLayout;
    row->addWidget(edit, 1);
    row->addWidget(beside);
    rows->addRow(LabelFor(edit, label), row);
  }
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

QButtonGroup* SheetDialog::AddOptions(const QString& name, const QString& label, const QStringList& options) {
  auto* group = new QButtonGroup(this);
  auto* row = new QHBoxLayout;
  for (const QString& text : options) {
    const int id = static_cast<int>(group->buttons().size());
    auto* option = new QRadioButton(text, this);
    option->setObjectName(name + QString::number(id));
    group->addButton(option, id);
    row->addWidget(option);
  }
  row->addStretch();
  group->button(0)->setChecked(true);
  rows_->addRow(label, row);
  return group;
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
  for (std::size_t col = first; col <= last; ++col) names << QString::fromStdString(ColumnName(sheet, col));
  return names;
}

}  // namespace quorvex
