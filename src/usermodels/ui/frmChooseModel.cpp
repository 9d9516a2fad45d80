#include "usermodels/ui/frmChooseModel.h"

#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

#include "usermodels/UserModels.h"

namespace quorvex {

frmChooseModel::frmChooseModel(QWidget* parent, const ModelClass& existing, const ModelClass& imported)
    : QDialog(parent) {
  setObjectName("frmChooseModel");
  setWindowTitle("Choose Model");
  auto* all = new QGridLayout(this);
  auto* why = new QLabel(
      "One of the models in the file you are importing has the same ID as an existing model, but the model definition "
      "is different.\nSince each model must have a unique ID, you need to choose which model you want to keep.",
      this);
  why->setWordWrap(true);
  all->addWidget(why, 0, 0, 1, 2);

  const struct {
    const ModelClass& Model;
    const char *Title, *Text, *Button, *Caption;
    void (QDialog::*End)();
  } sides[] = {{existing, "&Existing model:", "txtExisting", "cmdExisting", "&Keep Existing Model", &QDialog::reject},
               {imported, "&Imported model:", "txtImported", "cmdImported", "&Use Imported Model", &QDialog::accept}};
  for (int column = 0; const auto& side : sides) {
    auto* text = new QPlainTextEdit(QString::fromStdString(DescribeModel(side.Model)).remove('\r'), this);
    text->setObjectName(side.Text);
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* title = new QLabel(side.Title, this);
    title->setBuddy(text);
    auto* button = new QPushButton(side.Caption, this);
    button->setObjectName(side.Button);
    connect(button, &QPushButton::clicked, this, side.End);
    all->addWidget(title, 1, column);
    all->addWidget(text, 2, column);
    all->addWidget(button, 3, column);
    ++column;
  }
  resize(720, 440);
}

}  // namespace quorvex
