#include "usermodels/ui/frmPartial.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace quorvex {

frmPartial::frmPartial(QWidget* parent, const ModelClass& model)
    : QDialog(parent),
      user_(this),
      edit_(model, user_),
      lstVars(new QListWidget(this)),
      lblPartial(new QLabel(this)),
      txtPartial(new QLineEdit(this)) {
  setObjectName("frmPartial");
  setWindowTitle("Partial Derivatives");
  auto* lblModel = new QLabel("Y = " + QString::fromStdString(model.FunctionList(0)), this);
  lblModel->setTextFormat(Qt::PlainText);
  lblModel->setWordWrap(true);
  auto* variables = new QLabel("&Variables:", this);
  variables->setBuddy(lstVars);
  lblPartial->setObjectName("lblPartial");
  lblPartial->setBuddy(txtPartial);
  auto* hint = new QLabel(
      "\"Numerical\" leaves a derivative to the program. Typed expressions are used where every variable has one.",
      this);
  hint->setWordWrap(true);
  auto* cmdDefault = new QPushButton("&Default...", this);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  lstVars->setObjectName("lstVars");
  lstVars->setAccessibleName("Variables");
  txtPartial->setObjectName("txtPartial");
  cmdDefault->setObjectName("cmdDefault");
  for (int i = 1; i <= edit_.Count(); ++i) lstVars->addItem(QString::fromStdString(edit_.Name(i)));
  lstVars->setCurrentRow(0);
  ShowText(1);

  // Queued, so that a question comes when the click on the list is over.
  connect(lstVars, &QListWidget::currentRowChanged, this, &frmPartial::VariableChosen, Qt::QueuedConnection);
  connect(cmdDefault, &QPushButton::clicked, this, &frmPartial::cmdDefault_clicked);
  connect(buttons, &QDialogButtonBox::accepted, this, &frmPartial::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* all = new QGridLayout(this);
  all->addWidget(lblModel, 0, 0, 1, 2);
  all->addWidget(variables, 1, 0);
  all->addWidget(lstVars, 2, 0, 4, 1);
  all->addWidget(lblPartial, 2, 1);
  all->addWidget(txtPartial, 3, 1);
  all->addWidget(hint, 4, 1);
  all->addWidget(cmdDefault, 5, 1, Qt::AlignLeft | Qt::AlignBottom);
  all->addWidget(buttons, 6, 0, 1, 2);
  all->setColumnStretch(1, 1);
  all->setRowStretch(5, 1);
  lstVars->setMaximumWidth(160);
  resize(520, 300);
}

void frmPartial::ShowText(int i) {
  shown_ = i;
  lblPartial->setText("&Partial derivative of '" + QString::fromStdString(edit_.Name(i)) + "'");
  txtPartial->setText(QString::fromStdString(edit_.Text(i)));
}

void frmPartial::VariableChosen(int row) {
  if (row == shown_ - 1) return;
  if (edit_.Leave(shown_, txtPartial->text().toStdString(), Leaving::Coefficient)) return ShowText(row + 1);
  lstVars->setCurrentRow(shown_ - 1);
  Stay();
}

void frmPartial::cmdDefault_clicked() {
  if (edit_.Default()) ShowText(shown_);
}

void frmPartial::accept() {
  if (edit_.Leave(shown_, txtPartial->text().toStdString(), Leaving::Dialog)) return QDialog::accept();
  Stay();
}

void frmPartial::Stay() {
  txtPartial->setFocus();
  txtPartial->selectAll();
}

}  // namespace quorvex
