#pragma once

#include "import/DataImport.h"

class QWidget;

namespace quorvex {

// The import of a file: how the lines of a text are split, or which sheet of a spreadsheet is read, and what all
// imports ask. False, and the sheet is as it was, where the user cancels or the import fails.
bool ImportFile(QWidget* over, DataImport& import, const SheetEdit& edit);

}  // namespace quorvex
