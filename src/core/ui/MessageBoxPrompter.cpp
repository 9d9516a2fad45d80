#include "core/ui/MessageBoxPrompter.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QRegularExpression>
#include <QWindow>

#include "core/ui/BusyCursor.h"
#include "core/ui/ChooseFiles.h"
#include "core/ui/WaitWindow.h"
#include "core/ui/frmTemplatePrompt.h"

namespace quorvex {
namespace {

int Show(QWidget* over, QMessageBox::Icon icon, const std::string& text, QMessageBox::StandardButtons buttons) {
  const ArrowCursor arrow;
  QMessageBox box(icon, "Quorvex", QString::fromStdString(text).remove('\r'), buttons, over);
  box.setTextFormat(Qt::PlainText);  // names of files and models are no markup
  return box.exec();
}

}  // namespace

MessageBoxPrompter::MessageBoxPrompter(QWidget* parent) : parent_(parent) {
  QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, &watch_, [this] {
    QWidget* window = QApplication::activeWindow();
    while (window != nullptr && window->isModal() && window->parentWidget() != nullptr)
      window = window->parentWidget()->window();
    if (window != nullptr) worked_ = window;
  });
}

// Not what is active now: behind a dialog that has just closed nothing is, for a moment.
QWidget* MessageBoxPrompter::Over() const {
  if (QWidget* dialog = QApplication::activeModalWidget()) return dialog;
  return worked_ != nullptr && worked_->isVisible() ? worked_.data() : parent_;
}

void MessageBoxPrompter::Refuse(const std::string& text) { Show(Over(), QMessageBox::Critical, text, QMessageBox::Ok); }

void MessageBoxPrompter::Inform(const std::string& text) {
  Show(Over(), QMessageBox::Information, text, QMessageBox::Ok);
}

bool MessageBoxPrompter::Ask(const std::string& text) {
  return Show(Over(), QMessageBox::Question, text, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

std::optional<bool> MessageBoxPrompter::AskOrCancel(const std::string& text) {
  const int answer =
      Show(Over(), QMessageBox::Question, text, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
  return answer == QMessageBox::Cancel ? std::nullopt : std::optional(answer == QMessageBox::Yes);
}

std::optional<std::string> MessageBoxPrompter::AskText(const std::string& text, const std::string& initial) {
  QInputDialog dialog(Over());
  dialog.setWindowTitle("Quorvex");
  // A label takes text that looks like markup for markup.
  dialog.setLabelText(Qt::convertFromPlainText(QString::fromStdString(text)));
  dialog.setTextValue(QString::fromStdString(initial));
  return dialog.exec() == QDialog::Accepted ? std::optional(dialog.textValue().toStdString()) : std::nullopt;
}

std::optional<std::string> MessageBoxPrompter::AskColor(const std::string& text, const std::string& initial) {
  frmTemplatePrompt dialog(text, initial, Over());
  return dialog.exec() == QDialog::Accepted ? std::optional(dialog.Text()) : std::nullopt;
}

std::optional<std::string> MessageBoxPrompter::ChooseFileToSave(const std::string& title, const std::string& filter,
                                                                const std::string& extension, const std::string& name) {
  QFileDialog dialog(Over(), QString::fromStdString(title), Folder, QString::fromStdString(filter));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(QString::fromStdString(extension));
  // Of several kinds of file the one chosen gives the name its ending.
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& chosen) {
    static const QRegularExpression kFirstEnding("\\*\\.(\\w+)");
    if (const auto ending = kFirstEnding.match(chosen); ending.hasMatch()) dialog.setDefaultSuffix(ending.captured(1));
  });
  for (const QString& kind : dialog.nameFilters())
    if (kind.contains("(*." + dialog.defaultSuffix() + ')')) dialog.selectNameFilter(kind);
  if (!name.empty()) dialog.selectFile(QString::fromStdString(name));
  return RunDialog(dialog);
}

std::optional<std::string> MessageBoxPrompter::ChooseFileToOpen(const std::string& title, const std::string& filter) {
  QFileDialog dialog(Over(), QString::fromStdString(title), Folder, QString::fromStdString(filter));
  dialog.setFileMode(QFileDialog::ExistingFile);
  return RunDialog(dialog);
}

std::optional<std::string> MessageBoxPrompter::RunDialog(QFileDialog& dialog) {
  const QStringList chosen = ChosenFiles(dialog, *this);
  return chosen.isEmpty() ? std::nullopt : std::optional(chosen.first().toStdString());
}

bool MessageBoxPrompter::Wait(const std::string& text, const std::function<void(const LongWork&)>& work) {
  QWidget* const dialog = QApplication::activeModalWidget();
  WaitWindow window(QString::fromStdString(text), dialog ? dialog : parent_);
  const BusyCursor busy;
  return RunBeside(work, [&](const LongWork& state) { return window.Turn(state); });
}

}  // namespace quorvex
