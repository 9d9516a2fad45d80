#include "usermodels/ui/frmRules.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace quorvex {

frmRules::frmRules(QWidget* parent, const ModelClass& model, const LocaleText& locale)
    : QDialog(parent),
      user_(this),
      edit_(model, locale, user_),
      lstVars(new QListWidget(this)),
      lstOperation(new QListWidget(this)),
      txtValue(new QLineEdit(this)) {
  setObjectName("frmRules");
  setWindowTitle("User Defined Model Rules");
  auto* lblModel = new QLabel("Model: " + QString::fromStdString(model.id), this);
  lblModel->setObjectName("lblModel");
  lblModel->setTextFormat(Qt::PlainText);
  lblModel->setWordWrap(true);
  auto* variables = new QLabel("&Variables:", this);
  variables->setBuddy(lstVars);
  auto* operations = new QLabel("O&peration:", this);
  operations->setBuddy(lstOperation);
  auto* value = new QLabel("Val&ue:", this);
  value->setBuddy(txtValue);
  auto* cmdAssign = new QPushButton("&Assign", this);
  auto* cmdDefaults = new QPushButton("&Defaults...", this);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  lstVars->setObjectName("lstVars");
  lstOperation->setObjectName("lstOperation");
  lstVars->setAccessibleName("Variables");
  lstOperation->setAccessibleName("Operation");
  txtValue->setObjectName("txtValue");
  cmdAssign->setObjectName("cmdAssign");
  cmdDefaults->setObjectName("cmdDefaults");
  for (const std::string& operation : edit_.Operations()) lstOperation->addItem(QString::fromStdString(operation));
  for (int i = 1; i <= edit_.Count(); ++i) lstVars->addItem(QString());
  lstVars->setCurrentRow(0);
  ShowRule(1);

  // Queued, so that a question comes when the click on the list is over.
  connect(lstVars, &QListWidget::currentRowChanged, this, &frmRules::VariableChosen, Qt::QueuedConnection);
  connect(cmdAssign, &QPushButton::clicked, this, &frmRules::cmdAssign_clicked);
  connect(cmdDefaults, &QPushButton::clicked, this, &frmRules::cmdDefaults_clicked);
  connect(buttons, &QDialogButtonBox::accepted, this, &frmRules::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* all = new QGridLayout(this);
  all->addWidget(lblModel, 0, 0, 1, 3);
  all->addWidget(variables, 1, 0);
  all->addWidget(lstVars, 2, 0);
  all->addWidget(operations, 1, 1, 1, 2);
  all->addWidget(lstOperation, 2, 1, 1, 2);
  all->addWidget(value, 3, 1);
  all->addWidget(txtValue, 3, 2);
  all->addWidget(cmdAssign, 4, 2);
  all->addWidget(cmdDefaults, 4, 0, Qt::AlignLeft);
  all->addWidget(buttons, 5, 0, 1, 3);
  all->setColumnStretch(0, 3);
  all->setColumnStretch(2, 2);
  resize(480, 400);
}

std::size_t frmRules::Operation() const { return static_cast<std::size_t>(lstOperation->currentRow()); }
std::string frmRules::Value() const { return txtValue->text().toStdString(); }

void frmRules::ShowLines() {
  for (int i = 1; i <= edit_.Count(); ++i) lstVars->item(i - 1)->setText(QString::fromStdString(edit_.Line(i)));
}

void frmRules::ShowRule(int i) {
  shown_ = i;
  ShowLines();
  lstOperation->setCurrentRow(static_cast<int>(edit_.Operation(i)));
  txtValue->setText(QString::fromStdString(edit_.Value(i)));
}

void frmRules::VariableChosen(int row) {
  if (row == shown_ - 1) return;
  if (edit_.Leave(shown_, Operation(), Value(), Leaving::Coefficient)) return ShowRule(row + 1);
  lstVars->setCurrentRow(shown_ - 1);
  txtValue->setFocus();
  txtValue->selectAll();
}

void frmRules::cmdAssign_clicked() {
  if (edit_.Assign(shown_, Operation(), Value())) return ShowRule(shown_);
  txtValue->setFocus();
  txtValue->selectAll();
}

void frmRules::cmdDefaults_clicked() {
  edit_.Defaults(shown_);
  ShowRule(shown_);
}

void frmRules::accept() {
  if (edit_.Leave(shown_, Operation(), Value(), Leaving::Dialog)) QDialog::accept();
}

bool EditRules(QWidget* over, ModelClass& model, const LocaleText& locale) {
  frmRules form(over, model, locale);
  return form.exec() == QDialog::Accepted && form.Rules().StoreIn(model);
}

}  // namespace quorvex
