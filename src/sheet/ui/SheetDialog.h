#pragma once

#include <QDialog>
#include <QStringList>
#include <functional>

#include "sheet/SheetEdit.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QFormLayout;
class QLineEdit;

namespace quorvex {

// A dialog of one command on the sheet: rows of controls, then OK and Cancel. OK runs the command and closes the dialog
// where that was done. One that is refused leaves it open, at the text typed last, to be corrected.
class SheetDialog : public QDialog {
 public:
  SheetDialog(QWidget* parent, const char* name, const QString& title);

  // A control with its name and label, in a row of its own. A label's mnemonic is that of its control.
  QLineEdit* AddText(const char* name, const QString& label, const QString& text = {}) {
    return AddText(rows_, name, label, text);
  }
  // `beside` stands behind the text.
  QLineEdit* AddText(QFormLayout* rows, const char* name, const QString& label, const QString& text = {},
                     QWidget* beside = nullptr);
  QComboBox* AddChoice(const char* name, const QString& label, const QStringList& entries);
  QCheckBox* AddCheck(const char* name, const QString& label);
  // Options beside each other, named NAME0, NAME1 and so on, of which the first is chosen.
  QButtonGroup* AddOptions(const QString& name, const QString& label, const QStringList& options);
  void AddNote(const QString& text);
  QFormLayout* Rows() { return rows_; }

  // Shows the dialog until its command `apply`, which returns whether it was done, has run or the user cancels. Returns
  // whether it ran.
  bool Run(std::function<bool()> apply);

  void accept() override;

 private:
  QFormLayout* rows_;
  QLineEdit* typed_ = nullptr;  // to be corrected after a refusal
  std::function<bool()> apply_;
};

// How dialogs list the columns of a sheet from `first` to `last`: by their headers.
QStringList ColumnNames(const DataSheet& sheet, std::size_t first, std::size_t last);

}  // namespace quorvex
