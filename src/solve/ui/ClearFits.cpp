#include "solve/ui/ClearFits.h"

#include <QButtonGroup>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

namespace quorvex {
namespace {

class ClearFits : public QDialog {
 public:
  // Both outlive the dialog.
  ClearFits(QWidget* parent, FitClearing& clearing, Prompter& user);

 private:
  void LayOut();
  void Accept();

  FitClearing& clearing_;
  Prompter& user_;
  QButtonGroup* optClear;
  QLineEdit* txtCutoff;
};

ClearFits::ClearFits(QWidget* parent, FitClearing& clearing, Prompter& user)
    : QDialog(parent),
      clearing_(clearing),
      user_(user),
      optClear(new QButtonGroup(this)),
      txtCutoff(new QLineEdit(this)) {
  setObjectName("ClearFits");
  setWindowTitle("Clear Fits");
  LayOut();
  optClear->button(static_cast<int>(clearing_.Option))->setChecked(true);
  optClear->checkedButton()->setFocus();
}

void ClearFits::LayOut() {
  auto* grid = new QGridLayout(this);
  const QString captions[] = {"Clear &Selected Fits",
                              QString::fromStdString(clearing_.CutoffCaption()).replace(" with", " &with"),
                              "Clear &NonLinear Fits", "Clear &Linear Fits", "Clear &All Fits"};
  for (int i = 0; i < static_cast<int>(std::size(captions)); ++i) {
    auto* option = new QRadioButton(captions[i], this);
    option->setObjectName("optClear" + QString::number(i));
    optClear->addButton(option, i);
    grid->addWidget(option, i, 0);
  }
  optClear->button(static_cast<int>(ClearOption::Selected))->setEnabled(clearing_.AnySelected());

  const int cutoff = static_cast<int>(ClearOption::BeyondCutoff);
  txtCutoff->setObjectName("txtCutoff");
  txtCutoff->setAccessibleName(QString::fromStdString(clearing_.CutoffCaption()));
  grid->addWidget(txtCutoff, cutoff, 1);
  connect(txtCutoff, &QLineEdit::textEdited, this, [this, cutoff] { optClear->button(cutoff)->setChecked(true); });

  // The ends of the list, to choose the cutoff by.
  auto* ends = new QGridLayout;
  int row = 0;
  const auto addEnd = [&](const std::string& name, const std::string& value) {
    auto* label = new QLabel(QString::fromStdString(name) + ":", this);
    auto* shown = new QLabel(QString::fromStdString(value), this);
    shown->setObjectName(row == 0 ? "lblBest" : "lblWorst");
    shown->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    shown->setTextInteractionFlags(Qt::TextSelectableByMouse);
    ends->addWidget(label, row, 0);
    ends->addWidget(shown, row++, 1);
  };
  if (!clearing_.BestValue().empty()) {
    addEnd(clearing_.BestLabel(), clearing_.BestValue());
    addEnd(clearing_.WorstLabel(), clearing_.WorstValue());
  }
  ends->setColumnStretch(1, 1);
  grid->addLayout(ends, static_cast<int>(std::size(captions)), 0, 1, 2);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &ClearFits::Accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  grid->addWidget(buttons, static_cast<int>(std::size(captions)) + 1, 0, 1, 2);
  // By the keyboard one goes from the options to the cutoff, although it stands between them.
  setTabOrder(optClear->button(static_cast<int>(ClearOption::All)), txtCutoff);
  setTabOrder(txtCutoff, buttons);
}

void ClearFits::Accept() {
  clearing_.Option = static_cast<ClearOption>(optClear->checkedId());
  clearing_.Cutoff = txtCutoff->text().toStdString();
  if (clearing_.Accept(user_)) return accept();
  txtCutoff->setFocus();
  txtCutoff->selectAll();
}

}  // namespace

bool ShowClearFits(QWidget* over, FitClearing& clearing, Prompter& user) {
  return ClearFits(over, clearing, user).exec() == QDialog::Accepted;
}

}  // namespace quorvex
