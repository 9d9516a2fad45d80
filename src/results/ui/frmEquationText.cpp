#include "results/ui/frmEquationText.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/ui/SystemClipboard.h"

namespace quorvex {

frmEquationText::frmEquationText(QWidget* parent, const ModelClass& model, Settings& settings)
    : QDialog(parent),
      model_(model),
      settings_(settings),
      optValues(new QRadioButton("With the &values of the parameters", this)),
      optNames(new QRadioButton("With the &names of the parameters", this)),
      chkAppend(new QCheckBox("&Append the parameters", this)),
      txtEquation(new QPlainTextEdit(this)) {
  setObjectName("frmEquationText");
  setWindowTitle("Equation Text");
  optValues->setObjectName("optValues");
  optNames->setObjectName("optNames");
  chkAppend->setObjectName("chkAppend");
  txtEquation->setObjectName("txtEquation");
  txtEquation->setReadOnly(true);
  txtEquation->setTabChangesFocus(true);
  txtEquation->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  auto* heading = new QLabel("&Equation:", this);
  heading->setBuddy(txtEquation);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  auto* cmdCopy = buttons->addButton("&Copy", QDialogButtonBox::ActionRole);
  cmdCopy->setObjectName("cmdCopy");
  cmdCopy->setDefault(true);
  const EquationTextOptions options = ReadTextOptions(settings);
  (options.Names ? optNames : optValues)->setChecked(true);
  chkAppend->setChecked(options.AppendParameters);
  ShowText();

  connect(optNames, &QRadioButton::toggled, this, &frmEquationText::ShowText);
  connect(chkAppend, &QCheckBox::toggled, this, &frmEquationText::ShowText);
  connect(cmdCopy, &QPushButton::clicked, this,
          [this] { SystemClipboard().SetText(EquationText(model_, ReadTextOptions(settings_))); });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* all = new QVBoxLayout(this);
  for (QWidget* widget : std::initializer_list<QWidget*>{optValues, optNames, chkAppend, heading, txtEquation, buttons})
    all->addWidget(widget);
  resize(480, 320);
}

void frmEquationText::ShowText() {
  const EquationTextOptions options{optNames->isChecked(), chkAppend->isChecked()};
  StoreTextOptions(settings_, options);
  txtEquation->setPlainText(QString::fromStdString(EquationText(model_, options)).remove('\r'));
}

}  // namespace quorvex
