#pragma once

#include "import/ui/ImportDialog.h"

namespace quorvex {

class SpreadsheetImport;
class TextImport;

// The import of a file: how the lines of a text are split, or which sheet of a spreadsheet is read, and what all
// imports ask.
class frmImport : public ImportDialog {
 public:
  // Import and edit outlive the dialog.
  frmImport(DataImport& import, const SheetEdit& edit, QWidget* parent);

 private:
  QLayout* Delimiters(TextImport& import);
  QLayout* Sheets(SpreadsheetImport& import);
};

}  // namespace quorvex
