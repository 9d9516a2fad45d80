#include "core/ui/ChooseFiles.h"

#include <QFileInfo>
#include <QLineEdit>
#include <QRegularExpression>

namespace quorvex {
namespace {

// What the dialog writes where several files are marked.
bool IsList(const QString& names) {
  static const QRegularExpression list("^\\s*(\"[^\"]+\"\\s*)+$");
  return list.match(names).hasMatch();
}

}  // namespace

QStringList ChosenFiles(QFileDialog& dialog, Prompter& user) {
  while (dialog.exec() == QDialog::Accepted) {
    const auto* typed = dialog.findChild<QLineEdit*>("fileNameEdit");
    const bool list = typed != nullptr && dialog.fileMode() == QFileDialog::ExistingFiles && IsList(typed->text());
    if (typed == nullptr || !typed->text().contains('"') || list) return dialog.selectedFiles();
    user.Refuse("The name '" + typed->text().toStdString() +
                "' cannot be taken, for double quotes mean a list of files here. Please choose a name without them.");
  }
  return {};
}

std::optional<QString> ChooseFile(QWidget* over, const QString& title, const QString& start, const QString& filter,
                                  Prompter& user, QFileDialog::AcceptMode mode) {
  const QFileInfo place(start);
  const bool folder = start.isEmpty() || place.isDir();
  QFileDialog dialog(over, title, folder ? start : place.absolutePath(), filter);
  dialog.setAcceptMode(mode);
  dialog.setFileMode(mode == QFileDialog::AcceptSave ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
  if (!folder) dialog.selectFile(place.fileName());
  const QStringList chosen = ChosenFiles(dialog, user);
  return chosen.isEmpty() ? std::nullopt : std::optional(chosen.first());
}

}  // namespace quorvex
