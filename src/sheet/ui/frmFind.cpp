#include "sheet/ui/frmFind.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>

namespace quorvex {

frmFind::frmFind(QWidget* parent)
    : QDialog(parent),
      rows_(new QFormLayout(this)),
      txtFindWhat(new QLineEdit(this)),
      txtReplaceWith(new QLineEdit(this)),
      cmbSearchBy(new QComboBox(this)),
      ckMatchCells(new QCheckBox("&Match entire cells", this)),
      ckSelection(new QCheckBox("&All in the selection only", this)) {
  setObjectName("frmFind");
  setWindowTitle("Find");
  txtFindWhat->setObjectName("txtFindWhat");
  txtReplaceWith->setObjectName("txtReplaceWith");
  ckMatchCells->setObjectName("ckMatchCells");
  ckSelection->setObjectName("ckSelection");
  cmbSearchBy->setObjectName("cmbSearchBy");
  cmbSearchBy->addItems({"By Rows", "By Columns"});  // in the order of SearchOrder
  cmbSearchBy->view()->setAccessibleName("Search");
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  QPushButton* next = buttons->addButton("Find &Next", QDialogButtonBox::ActionRole);
  next->setObjectName("cmdFindNext");
  next->setDefault(true);
  next->setEnabled(false);
  connect(next, &QPushButton::clicked, this, &frmFind::FindNext);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  const auto addReplacer = [&](const char* name, const QString& text, void (frmFind::*pressed)()) {
    QPushButton* button = buttons->addButton(text, QDialogButtonBox::ActionRole);
    button->setObjectName(name);
    button->setEnabled(false);
    connect(button, &QPushButton::clicked, this, pressed);
    replacers_.push_back(button);
  };
  addReplacer("cmdReplace", "&Replace", &frmFind::Replace);
  addReplacer("cmdReplaceAll", "Replace A&ll", &frmFind::ReplaceAll);
  connect(txtFindWhat, &QLineEdit::textChanged, next, [this, next](const QString& text) {
    next->setEnabled(!text.isEmpty());
    for (QPushButton* button : replacers_) button->setEnabled(!text.isEmpty());
  });

  rows_->addRow("Find &what:", txtFindWhat);
  rows_->addRow("Replace w&ith:", txtReplaceWith);
  rows_->addRow("&Search:", cmbSearchBy);
  rows_->addRow(ckMatchCells);
  rows_->addRow(ckSelection);
  rows_->addRow(buttons);
}

ReplaceCells frmFind::Replacement() const { return {Wanted(), txtReplaceWith->text().toStdString()}; }

bool frmFind::InSelection() const { return ckSelection->isChecked(); }

FindCell frmFind::Wanted() const {
  return {txtFindWhat->text().toStdString(), ckMatchCells->isChecked(),
          static_cast<SearchOrder>(cmbSearchBy->currentIndex())};
}

void frmFind::Open(bool replacing) {
  setWindowTitle(replacing ? "Replace" : "Find");
  rows_->setRowVisible(txtReplaceWith, replacing);
  rows_->setRowVisible(ckSelection, replacing);
  for (QPushButton* button : replacers_) button->setVisible(replacing);
  adjustSize();
  show();
  raise();
  activateWindow();
  txtFindWhat->setFocus();
  txtFindWhat->selectAll();
}

}  // namespace quorvex
