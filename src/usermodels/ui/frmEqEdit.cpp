#include "usermodels/ui/frmEqEdit.h"

#include <QDialogButtonBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include "usermodels/UserModels.h"
#include "usermodels/ui/frmCopyModel.h"
#include "usermodels/ui/frmFunc.h"
#include "usermodels/ui/frmPartial.h"
#include "usermodels/ui/frmRules.h"

namespace quorvex {
namespace {

// Texts are bytes below the windows, and characters in a box.
int Characters(const std::string& text, std::size_t bytes) {
  return static_cast<int>(QString::fromStdString(text.substr(0, bytes)).size());
}

}  // namespace

frmEqEdit::frmEqEdit(QWidget* parent, Project& project, const UserModelDraft& start, const ModelClass* edited)
    : QDialog(parent),
      project_(project),
      edited_(edited),
      user_(this),
      TxtID(new QLineEdit(this)),
      lblStatus(new QLabel(this)),
      TxtDesc(new QPlainTextEdit(this)),
      cmdAdd(new QPushButton(this)),
      cmdRemove(new QPushButton(this)) {
  setObjectName("frmEqEdit");
  setWindowTitle(edited == nullptr ? "Add User Model" : "Edit User Model");
  LayOut();
  Init(start);
}

void frmEqEdit::LayOut() {
  auto* rows = new QGridLayout;
  auto* id = new QLabel("Model &ID:", this);
  id->setBuddy(TxtID);
  id->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  TxtID->setObjectName("TxtID");
  rows->addWidget(id, 0, 0);
  rows->addWidget(TxtID, 0, 1);
  for (std::size_t n = 0; n < kMostFunctionLines; ++n) {
    const QString number = QString::number(n);
    lblFn[n] = new QLabel(n == 0 ? QString("&Y =") : "F&" + number + " =", this);
    TxtFn[n] = new QLineEdit(this);
    TxtFn[n]->setObjectName("TxtFn" + number);
    TxtFn[n]->setAccessibleName(n == 0 ? "Model, Y =" : "Supporting function F" + number + " =");
    TxtFn[n]->installEventFilter(this);
    lblFn[n]->setBuddy(TxtFn[n]);
    lblFn[n]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    connect(TxtFn[n], &QLineEdit::textChanged, this, &frmEqEdit::ShowStatus);
    rows->addWidget(lblFn[n], static_cast<int>(n) + 1, 0);
    rows->addWidget(TxtFn[n], static_cast<int>(n) + 1, 1);
  }
  lblStatus->setObjectName("lblStatus");
  lblStatus->setTextFormat(Qt::PlainText);
  lblStatus->setWordWrap(true);
  lblStatus->setMinimumHeight(2 * fontMetrics().lineSpacing());
  lblStatus->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  const int below = static_cast<int>(kMostFunctionLines) + 1;
  rows->addWidget(lblStatus, below, 1);
  auto* description = new QLabel("&Description:", this);
  description->setBuddy(TxtDesc);
  description->setAlignment(Qt::AlignRight | Qt::AlignTop);
  TxtDesc->setObjectName("TxtDesc");
  TxtDesc->setTabChangesFocus(true);
  TxtDesc->setMinimumHeight(3 * fontMetrics().lineSpacing());
  rows->addWidget(description, below + 1, 0);
  rows->addWidget(TxtDesc, below + 1, 1);
  rows->setRowStretch(below + 1, 1);

  auto* side = new QVBoxLayout;
  const struct {
    QPushButton* Button;
    const char *Name, *Caption;
    void (frmEqEdit::*Command)();
  } commands[] = {{cmdAdd, "cmdAdd", "", &frmEqEdit::cmdAdd_clicked},
                  {cmdRemove, "cmdRemove", "", &frmEqEdit::cmdRemove_clicked},
                  {new QPushButton(this), "cmdTemplate", "F&unctions...", &frmEqEdit::cmdTemplate_clicked},
                  {new QPushButton(this), "cmdCopyModel", "&Copy Model...", &frmEqEdit::cmdCopyModel_clicked},
                  {new QPushButton(this), "cmdPartial", "&Partial Derivatives...", &frmEqEdit::cmdPartial_clicked},
                  {new QPushButton(this), "cmdRules", "Ru&les...", &frmEqEdit::cmdRules_clicked}};
  for (const auto& command : commands) {
    command.Button->setObjectName(command.Name);
    command.Button->setText(command.Caption);
    command.Button->setAutoDefault(false);
    connect(command.Button, &QPushButton::clicked, this, command.Command);
    side->addWidget(command.Button);
  }
  side->addStretch();

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setObjectName("cmdOK");
  connect(buttons, &QDialogButtonBox::accepted, this, &frmEqEdit::cmdOK_clicked);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* all = new QGridLayout(this);
  all->addLayout(rows, 0, 0);
  all->addLayout(side, 0, 1);
  all->addWidget(buttons, 1, 0, 1, 2);
  all->setColumnStretch(0, 1);
  // Lines that are hidden are there all the same, so that the order of Tab is told once.
  QWidget* before = TxtID;
  for (QLineEdit* box : TxtFn) {
    setTabOrder(before, box);
    before = box;
  }
  setTabOrder(before, TxtDesc);
  before = TxtDesc;
  for (const auto& command : commands) {
    setTabOrder(before, command.Button);
    before = command.Button;
  }
  setTabOrder(before, buttons);
  resize(620, 320);
}

void frmEqEdit::Init(const UserModelDraft& draft) {
  draft_ = draft;
  count_ = draft.FunctionList.size();
  TxtID->setText(QString::fromStdString(draft.id));
  TxtDesc->setPlainText(QString::fromStdString(draft.Description).remove('\r'));
  for (std::size_t n = 0; n < kMostFunctionLines; ++n)
    TxtFn[n]->setText(n < count_ ? QString::fromStdString(draft.FunctionList[n]) : QString());
  ShowCount();
}

UserModelDraft frmEqEdit::Draft() const {
  UserModelDraft draft = draft_;
  draft.id = TxtID->text().toStdString();
  draft.Description = TxtDesc->toPlainText().replace('\n', "\r\n").toStdString();
  draft.FunctionList.clear();
  for (std::size_t n = 0; n < count_; ++n) draft.FunctionList.push_back(TxtFn[n]->text().toStdString());
  return draft;
}

void frmEqEdit::ShowCount() {
  for (std::size_t n = 0; n < kMostFunctionLines; ++n) {
    lblFn[n]->setVisible(n < count_);
    TxtFn[n]->setVisible(n < count_);
  }
  const std::size_t present = count_ - 1, most = kMostFunctionLines - 1;
  cmdAdd->setText("&Add F" + QString::number(std::min(present + 1, most)));
  cmdAdd->setEnabled(present < most);
  cmdRemove->setText("&Remove F" + QString::number(std::max<std::size_t>(present, 1)));
  cmdRemove->setEnabled(present > 0);
  line_ = std::min(line_, count_ - 1);
  ShowStatus();
  if (isVisible()) resize(size().expandedTo(sizeHint()));
}

void frmEqEdit::ShowStatus() {
  const QString status =
      QString::fromStdString(CompileStatus(Draft(), project_.Sheet.IndependentVariables, project_.Locale));
  lblStatus->setText(status);
  for (QLineEdit* box : TxtFn) box->setAccessibleDescription(status);
}

bool frmEqEdit::eventFilter(QObject* object, QEvent* event) {
  // A button takes the focus from the line that its command is meant for.
  if (event->type() == QEvent::FocusIn)
    line_ = static_cast<std::size_t>(std::ranges::find(TxtFn, object) - TxtFn.begin());
  return QDialog::eventFilter(object, event);
}

// Says what is wrong, in the box that it is about.
void frmEqEdit::Refuse(const ModelCheck& check) {
  user_.Refuse(check.Message);
  QLineEdit* box = check.Box == ModelCheck::kIdBox ? TxtID : TxtFn[static_cast<std::size_t>(check.Box)];
  box->setFocus();
  if (check.Start < 0) return;
  const std::string line = box->text().toStdString();
  const auto start = std::min(static_cast<std::size_t>(check.Start), line.size());
  const auto end = std::min(start + static_cast<std::size_t>(check.Length), line.size());
  box->setSelection(Characters(line, start), Characters(line, end) - Characters(line, start));
}

void frmEqEdit::cmdAdd_clicked() {
  ++count_;
  ShowCount();
  TxtFn[count_ - 1]->setFocus();
}

void frmEqEdit::cmdRemove_clicked() {
  --count_;
  TxtFn[count_]->clear();
  ShowCount();
  TxtFn[count_ - 1]->setFocus();
}

void frmEqEdit::cmdTemplate_clicked() {
  frmFunc form(this, project_.Sheet.IndependentVariables);
  if (form.exec() != QDialog::Accepted) return;
  QLineEdit* box = TxtFn[line_];
  const FunctionTemplate words = TemplateOf(form.Function(), box->selectedText().toStdString(), project_.Locale);
  const int at = box->hasSelectedText() ? box->selectionStart() : box->cursorPosition();
  box->insert(QString::fromStdString(words.Text));
  box->setFocus();
  box->setCursorPosition(at + Characters(words.Text, words.Caret));
}

void frmEqEdit::cmdCopyModel_clicked() {
  if (edited_ != nullptr) WarnOfCopying(user_);
  if (const ModelClass* model = ChooseModel(this, "Copy Model", ModelsToCopy(project_))) Init(CopyOf(*model));
}

void frmEqEdit::cmdPartial_clicked() {
  const ModelCheck check = CheckDefinition(Draft(), project_.Sheet.IndependentVariables, project_.Locale);
  if (check.Model == nullptr) return Refuse(check);
  frmPartial form(this, *check.Model);
  if (form.exec() != QDialog::Accepted) return;
  form.Partials().StoreIn(*check.Model);
  KeepCoefficients(*check.Model, draft_);
}

void frmEqEdit::cmdRules_clicked() {
  const ModelCheck check = CheckDefinition(Draft(), project_.Sheet.IndependentVariables, project_.Locale);
  if (check.Model == nullptr) return Refuse(check);
  if (EditRules(this, *check.Model, project_.Locale)) KeepCoefficients(*check.Model, draft_);
}

void frmEqEdit::cmdOK_clicked() {
  ModelCheck check = CheckUserModel(Draft(), project_, edited_);
  if (check.Model == nullptr) return Refuse(check);
  stored_ = &StoreUserModel(project_, std::move(check.Model), edited_);
  accept();
}

}  // namespace quorvex
