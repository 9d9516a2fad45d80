#include "project/ui/NewProj.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QSpinBox>

#include "core/SolveData.h"

namespace quorvex {

NewProj::NewProj(QWidget* parent, int independentVariables, bool hasStandardDeviation)
    : QDialog(parent), txtVariables(new QSpinBox(this)), chkStDev(new QCheckBox("&Standard deviation of Y", this)) {
  setObjectName("NewProj");
  setWindowTitle("New Project");
  txtVariables->setObjectName("txtVariables");
  txtVariables->setRange(1, kMostIndependentVariables);
  txtVariables->setValue(independentVariables);
  txtVariables->setAccessibleName("Independent variables");
  chkStDev->setObjectName("chkStDev");
  chkStDev->setChecked(hasStandardDeviation);
  chkStDev->setToolTip("A column behind Y that weighs each point by how well it is known");
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* rows = new QFormLayout(this);
  rows->addRow("&Independent variables (X):", txtVariables);
  rows->addRow(chkStDev);
  rows->addRow(buttons);
}

std::size_t NewProj::IndependentVariables() const { return static_cast<std::size_t>(txtVariables->value()); }
bool NewProj::HasStandardDeviation() const { return chkStDev->isChecked(); }

}  // namespace quorvex
