#include "solve/ui/Interp.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace quorvex {
namespace {

class Interp : public QDialog {
 public:
  // The interpolations outlive the dialog.
  Interp(QWidget* parent, std::vector<InterpClass>& curves);

  std::vector<InterpClass*> Chosen() const;

 private:
  std::vector<InterpClass>& curves_;
  std::vector<QCheckBox*> checks_;  // one for each
  QPushButton* solve_command;
};

Interp::Interp(QWidget* parent, std::vector<InterpClass>& curves)
    : QDialog(parent), curves_(curves), solve_command(new QPushButton("&Solve", this)) {
  setObjectName("Interp");
  setWindowTitle("Interpolation");
  auto* rows = new QVBoxLayout(this);
  auto* frame = new QGroupBox("Interpolation through all points", this);
  auto* column = new QVBoxLayout(frame);
  for (const InterpClass& curve : curves_) {
    auto* check = new QCheckBox("&" + QString::fromStdString(curve.Description), frame);
    check->setObjectName("optInterp" + QString::number(curve.SolveType));
    if (curve.SolveType != kCubicSpline) check->setToolTip("For 2 to 10 points");
    column->addWidget(check);
    checks_.push_back(check);
    connect(check, &QCheckBox::toggled, this, [this] { solve_command->setEnabled(!Chosen().empty()); });
  }
  rows->addWidget(frame);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  buttons->addButton(solve_command, QDialogButtonBox::AcceptRole);
  solve_command->setObjectName("solve_command");
  solve_command->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  rows->addWidget(buttons);
  rows->setSizeConstraint(QLayout::SetFixedSize);
  if (!checks_.empty()) {
    checks_.front()->setChecked(true);
    checks_.front()->setFocus();
  }
}

std::vector<InterpClass*> Interp::Chosen() const {
  std::vector<InterpClass*> chosen;
  for (std::size_t i = 0; i < checks_.size(); ++i)
    if (checks_[i]->isChecked()) chosen.push_back(&curves_[i]);
  return chosen;
}

}  // namespace

std::vector<InterpClass*> ChooseInterpolations(QWidget* over, std::vector<InterpClass>& curves) {
  Interp dialog(over, curves);
  return dialog.exec() == QDialog::Accepted ? dialog.Chosen() : std::vector<InterpClass*>();
}

}  // namespace quorvex
