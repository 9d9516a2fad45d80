#pragma once

#include <QFileDialog>
#include <QStringList>
#include <optional>

#include "core/Prompter.h"

namespace quorvex {

// The files that the user chooses in a dialog; none where they cancel. The dialog takes double quotes for the marks of
// a list of names, of which it would return other files than the one typed: a name with them is refused, and the dialog
// opens again.
QStringList ChosenFiles(QFileDialog& dialog, Prompter& user);

// One file to open, or to save into, from a dialog that begins at `start`, a folder or a file.
std::optional<QString> ChooseFile(QWidget* over, const QString& title, const QString& start, const QString& filter,
                                  Prompter& user, QFileDialog::AcceptMode mode = QFileDialog::AcceptOpen);

}  // namespace quorvex
