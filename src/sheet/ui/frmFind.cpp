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
      txtFindWhat(new QLineEdit(this)),
      cmbSearchBy(new QComboBox(this)),
      ckMatchCells(new QCheckBox("&Match entire cells", this)) {
  setObjectName("frmFind");
  setWindowTitle("Find");
  txtFindWhat->setObjectName("txtFindWhat");
  ckMatchCells->setObjectName("ckMatchCells");
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
  connect(txtFindWhat, &QLineEdit::textChanged, next,
          [next](const QString& text) { next->setEnabled(!text.isEmpty()); });

  auto* rows = new QFormLayout(this);
  rows->addRow("Find &what:", txtFindWhat);
  rows->addRow("&Search:", cmbSearchBy);
  rows->addRow(ckMatchCells);
  rows->addRow(buttons);
}

FindCell frmFind::Wanted() const {
  return {txtFindWhat->text().toStdString(), ckMatchCells->isChecked(),
          static_cast<SearchOrder>(cmbSearchBy->currentIndex())};
}

void frmFind::Open() {
  show();
  raise();
  activateWindow();
  txtFindWhat->setFocus();
  txtFindWhat->selectAll();
}

}  // namespace quorvex
