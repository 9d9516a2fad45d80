#pragma once

#include "import/DataImport.h"
#include "import/ui/ForSheet.h"

class QWidget;

namespace quorvex {

// The import of a file: how the lines of a text are split, or which sheet of a spreadsheet is read, and what all
// imports ask. False, and the sheet is as it was but for its kind, where the user cancels or the import fails.
bool ImportFile(QWidget* over, DataImport& import, const SheetEdit& edit, ForSheet sheet);

}  // namespace quorvex
