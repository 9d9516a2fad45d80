#include "results/ui/frmModelCode.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/ui/SystemClipboard.h"
#include "results/EquationExport.h"

namespace quorvex {

frmModelCode::frmModelCode(QWidget* parent, ModelClass& model, Settings& settings)
    : QDialog(parent),
      model_(model),
      settings_(settings),
      user_(this),
      cmbLanguage(new QComboBox(this)),
      txtCode(new QPlainTextEdit(this)) {
  setObjectName("frmModelCode");
  setWindowTitle("Model as Code");
  cmbLanguage->setObjectName("cmbLanguage");
  const std::span<const CodeLanguage* const> all = CodeLanguages();
  for (const CodeLanguage* each : all) {
    cmbLanguage->addItem(QString::fromUtf8(each->Name.data(), static_cast<qsizetype>(each->Name.size())));
    if (each == &ReadCodeLanguage(settings)) cmbLanguage->setCurrentIndex(cmbLanguage->count() - 1);
  }
  txtCode->setObjectName("txtCode");
  txtCode->setReadOnly(true);
  txtCode->setTabChangesFocus(true);
  txtCode->setLineWrapMode(QPlainTextEdit::NoWrap);
  txtCode->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  txtCode->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  auto* heading = new QLabel("C&ode:", this);
  heading->setBuddy(txtCode);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  auto* cmdCopy = buttons->addButton("&Copy", QDialogButtonBox::ActionRole);
  auto* cmdSave = buttons->addButton("&Save...", QDialogButtonBox::ActionRole);
  cmdCopy->setObjectName("cmdCopy");
  cmdSave->setObjectName("cmdSave");
  cmdCopy->setDefault(true);
  ShowCode();

  connect(cmbLanguage, &QComboBox::currentIndexChanged, this, &frmModelCode::ShowCode);
  connect(cmdCopy, &QPushButton::clicked, this, [this] { SystemClipboard().SetText(ModelCode(model_, Language())); });
  connect(cmdSave, &QPushButton::clicked, this, [this] { SaveCode(model_, Language(), user_); });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* language = new QFormLayout;
  language->addRow("&Language:", cmbLanguage);
  auto* column = new QVBoxLayout(this);
  column->addLayout(language);
  for (QWidget* widget : std::initializer_list<QWidget*>{heading, txtCode, buttons}) column->addWidget(widget);
  resize(640, 480);
}

const CodeLanguage& frmModelCode::Language() const {
  return *CodeLanguages()[static_cast<std::size_t>(cmbLanguage->currentIndex())];
}

void frmModelCode::ShowCode() {
  StoreCodeLanguage(settings_, Language());
  txtCode->setPlainText(QString::fromStdString(ModelCode(model_, Language())));
}

}  // namespace quorvex
