#include "solve/ui/SolveSetup.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QStyle>
#include <QVBoxLayout>

namespace quorvex {
namespace {

struct Option {
  const char *Name, *Text;
};

// A frame of options; the number of an option is its place.
QButtonGroup* AddFrame(QVBoxLayout& rows, const QString& title, std::initializer_list<Option> options, int checked) {
  auto* frame = new QGroupBox(title, rows.parentWidget());
  auto* column = new QVBoxLayout(frame);
  auto* group = new QButtonGroup(frame);
  for (const Option& option : options) {
    auto* button = new QRadioButton(option.Text, frame);
    button->setObjectName(option.Name);
    group->addButton(button, static_cast<int>(group->buttons().size()));
    column->addWidget(button);
  }
  group->button(checked)->setChecked(true);
  rows.addWidget(frame);
  return group;
}

class SolveSetup : public QDialog {
 public:
  SolveSetup(QWidget* parent, const SolveChoice& choice);

  SolveChoice Choice() const;

 private:
  QButtonGroup *optSolver, *optModels;
  QCheckBox *chkHarder, *chkAbsolute, *chkDefault;
};

SolveSetup::SolveSetup(QWidget* parent, const SolveChoice& choice) : QDialog(parent) {
  setObjectName("SolveSetup");
  setWindowTitle("Solution Setup");
  auto* rows = new QVBoxLayout(this);
  optSolver =
      AddFrame(*rows, "Solver Selection", {{"optNonLinear", "&NonLinear"}, {"optLinear", "&Linear"}}, choice.SolveType);
  chkHarder = new QCheckBox("&Try Harder", this);
  chkHarder->setObjectName("chkHarder");
  chkHarder->setChecked(choice.TryHarder);
  chkHarder->setToolTip("Searches from many starts and keeps the best, which takes longer");
  chkHarder->setAccessibleDescription(chkHarder->toolTip());
  // It stands with the solver that it belongs to; the other one has no search.
  const auto enable = [this] { chkHarder->setEnabled(optSolver->checkedId() == 0); };
  auto* indented = new QHBoxLayout;
  indented->addSpacing(style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth) +
                       style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing));
  indented->addWidget(chkHarder);
  static_cast<QVBoxLayout*>(optSolver->button(0)->parentWidget()->layout())->insertLayout(1, indented);
  connect(optSolver, &QButtonGroup::idToggled, this, enable);
  enable();
  optModels = AddFrame(*rows, "Model Selection",
                       {{"optSingle", "&Single Model"},
                        {"optGroups", "&Groups"},
                        {"optAll", "&All Models"},
                        {"optLast", "Last Sol&ved Models"}},
                       static_cast<int>(choice.Models));
  chkAbsolute = new QCheckBox("Take standard deviations at their &word (absolute errors)", this);
  chkAbsolute->setObjectName("chkAbsolute");
  chkAbsolute->setChecked(choice.AbsoluteDeviations);
  chkAbsolute->setToolTip("Else they tell ratios, and the scatter of the points says how large errors are");
  chkAbsolute->setAccessibleDescription(chkAbsolute->toolTip());
  rows->addWidget(chkAbsolute);
  chkDefault = new QCheckBox("&Use this setting as default (don't display this dialog)", this);
  chkDefault->setObjectName("chkDefault");
  chkDefault->setToolTip("The Solve menu brings the dialog back");
  rows->addWidget(chkDefault);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  rows->addWidget(buttons);
  rows->setSizeConstraint(QLayout::SetFixedSize);
  optModels->checkedButton()->setFocus();
}

SolveChoice SolveSetup::Choice() const {
  return {optSolver->checkedId(), static_cast<ModelSelection>(optModels->checkedId()), chkDefault->isChecked(),
          chkHarder->isChecked(), chkAbsolute->isChecked()};
}

}  // namespace

bool ShowSolveSetup(QWidget* over, SolveChoice& choice) {
  SolveSetup dialog(over, choice);
  if (dialog.exec() != QDialog::Accepted) return false;
  choice = dialog.Choice();
  return true;
}

}  // namespace quorvex
