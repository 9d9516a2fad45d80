#include "files/ui/frmTemplateEdit.h"

#include <QFileInfo>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QToolBar>
#include <QVBoxLayout>

#include "core/ui/Controls.h"
#include "files/PlotTemplate.h"

namespace quorvex {

frmTemplateEdit::frmTemplateEdit(std::string fileName, const std::string& text, Prompter& user, QWidget* parent)
    : QDialog(parent),
      fileName_(std::move(fileName)),
      user_(user),
      text_(Named(new QPlainTextEdit(QString::fromStdString(text), this), "txtTemplate")) {
  setObjectName("frmTemplateEdit");
  setWindowTitle(QFileInfo(QString::fromStdString(fileName_)).fileName() + "[*]");
  text_->setAccessibleName(tr("Template"));
  text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  text_->setLineWrapMode(QPlainTextEdit::NoWrap);
  connect(text_, &QPlainTextEdit::modificationChanged, this, &QWidget::setWindowModified);

  auto* tools = new QToolBar(this);
  tools->setToolButtonStyle(Qt::ToolButtonTextOnly);
  const auto add = [&](const char* name, const QString& label, QKeySequence::StandardKey key, auto* receiver,
                       auto command) {
    QAction* action = tools->addAction(label, receiver, command);
    action->setObjectName(name);
    action->setShortcut(key);
    action->setToolTip(label + " (" + action->shortcut().toString(QKeySequence::NativeText) + ')');
  };
  add("mnuSave", tr("Save"), QKeySequence::Save, this, &frmTemplateEdit::Save);
  tools->addSeparator();
  add("mnuCut", tr("Cut"), QKeySequence::Cut, text_, &QPlainTextEdit::cut);
  add("mnuCopy", tr("Copy"), QKeySequence::Copy, text_, &QPlainTextEdit::copy);
  add("mnuPaste", tr("Paste"), QKeySequence::Paste, text_, &QPlainTextEdit::paste);
  tools->addSeparator();
  add("mnuClose", tr("Close"), QKeySequence::Close, this, &QDialog::reject);

  auto* column = new QVBoxLayout(this);
  column->addWidget(tools);
  column->addWidget(text_);
  text_->setFocus();
  resize(520, 480);
}

bool frmTemplateEdit::Save() {
  const bool saved = SaveTemplateText(fileName_, text_->toPlainText().replace('\n', "\r\n").toStdString(), user_);
  if (saved) text_->document()->setModified(false);
  return saved;
}

void frmTemplateEdit::reject() {
  if (isWindowModified()) {
    const auto save = user_.AskOrCancel("Save changes to template '" + fileName_ + "'?");
    if (!save || (*save && !Save())) return;
  }
  QDialog::reject();
}

void EditTemplate(const std::string& filter, Prompter& user, QWidget* parent) {
  const auto file = user.ChooseFileToOpen("Edit Template", filter);
  if (!file) return;
  if (const auto text = ReadTemplateText(*file, user)) frmTemplateEdit(*file, *text, user, parent).exec();
}

}  // namespace quorvex
