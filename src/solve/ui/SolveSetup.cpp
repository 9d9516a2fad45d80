#include "solve/ui/SolveSetup.h"

#include <QAbstractItemView>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QRadioButton>
#include <QStyle>
#include <QVBoxLayout>

#include "core/LocaleText.h"
#include "core/NumberText.h"

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
  SolveSetup(QWidget* parent, const SolveChoice& choice, char decimalSeparator, Prompter& user);

  SolveChoice Choice() const;

 private:
  void AddLoss(QVBoxLayout& rows, const SolveChoice& choice);
  void Accept();

  const char decimalSeparator_;
  Prompter& user_;
  double lossScale_ = 0;
  QButtonGroup *optSolver, *optModels;
  QCheckBox *chkHarder, *chkAbsolute, *chkDefault;
  QComboBox* cboLoss;
  QLineEdit* txtScale;
};

SolveSetup::SolveSetup(QWidget* parent, const SolveChoice& choice, char decimalSeparator, Prompter& user)
    : QDialog(parent), decimalSeparator_(decimalSeparator), user_(user) {
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
  AddLoss(*rows, choice);
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
  connect(buttons, &QDialogButtonBox::accepted, this, &SolveSetup::Accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  rows->addWidget(buttons);
  rows->setSizeConstraint(QLayout::SetFixedSize);
  optModels->checkedButton()->setFocus();
}

void SolveSetup::AddLoss(QVBoxLayout& rows, const SolveChoice& choice) {
  auto* frame = new QGroupBox("Outliers", this);
  auto* form = new QFormLayout(frame);
  cboLoss = new QComboBox(frame);
  cboLoss->setObjectName("cboLoss");
  for (const char* text : kLossTexts) cboLoss->addItem(text);
  cboLoss->setCurrentIndex(static_cast<int>(choice.Loss));
  cboLoss->setToolTip("With another choice than squares, points far off the curve count less");
  cboLoss->setAccessibleDescription(cboLoss->toolTip());
  cboLoss->view()->setAccessibleName("Losses");
  txtScale = new QLineEdit(frame);
  txtScale->setObjectName("txtScale");
  if (choice.LossScale > 0) {
    const LocaleText locale{.DecimalSeparator = decimalSeparator_};
    txtScale->setText(QString::fromStdString(LocalizeExpression(GeneralNumber(choice.LossScale), locale)));
  }
  txtScale->setPlaceholderText("found from the residuals");
  txtScale->setToolTip("The standard deviation of good residuals; empty, it is found from them");
  txtScale->setAccessibleDescription(txtScale->toolTip());
  form->addRow("&Residuals count as:", cboLoss);
  form->addRow("Scal&e:", txtScale);
  const auto enable = [this] { txtScale->setEnabled(cboLoss->currentIndex() > 0); };
  connect(cboLoss, &QComboBox::currentIndexChanged, this, enable);
  enable();
  rows.addWidget(frame);
}

void SolveSetup::Accept() {
  if (cboLoss->currentIndex() > 0) {
    const Result<double> scale = ReadLossScale(txtScale->text().toStdString(), decimalSeparator_);
    if (!scale) {
      user_.Refuse(scale.error());
      return txtScale->setFocus();
    }
    lossScale_ = *scale;
  }
  accept();
}

SolveChoice SolveSetup::Choice() const {
  return {optSolver->checkedId(),
          static_cast<ModelSelection>(optModels->checkedId()),
          chkDefault->isChecked(),
          chkHarder->isChecked(),
          chkAbsolute->isChecked(),
          static_cast<LossKind>(cboLoss->currentIndex()),
          lossScale_};
}

}  // namespace

bool ShowSolveSetup(QWidget* over, SolveChoice& choice, char decimalSeparator, Prompter& user) {
  SolveSetup dialog(over, choice, decimalSeparator, user);
  if (dialog.exec() != QDialog::Accepted) return false;
  choice = dialog.Choice();
  return true;
}

}  // namespace quorvex
