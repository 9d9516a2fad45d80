#pragma once

#include <memory>

#include "import/DatabaseImport.h"
#include "import/ui/ImportDialog.h"

class QComboBox;
class QLineEdit;
class QPushButton;

namespace quorvex {

// The import from a database: which one, which of its tables, and what all imports ask.
class frmDataBase : public ImportDialog {
 public:
  // The edit outlives the dialog.
  frmDataBase(const SheetEdit& edit, const DatabaseUse& use, QWidget* parent);

  // What was imported, once the dialog was accepted.
  DataImport& Import() { return *import_; }

 private:
  QLayout* SourceFields();
  void ChooseSource(int index);
  void ConnectionChanged();
  void Connect();
  void ChooseTable(int index);

  const DatabaseUse use_;
  std::unique_ptr<DatabaseImport> import_;
  QComboBox* cboSource;
  QLineEdit *txtConnect, *txtUser, *txtPassword;
  QPushButton* cmdConnect;
  QComboBox* cboTable;
};

}  // namespace quorvex
