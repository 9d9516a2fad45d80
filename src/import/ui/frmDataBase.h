#pragma once

#include "import/DatabaseImport.h"
#include "import/ui/ForSheet.h"

class QWidget;

namespace quorvex {

// The import from a database: which one, which of its tables, and what all imports ask. False, and the sheet is as
// it was but for its kind, where the user cancels or the import fails.
bool ImportTable(QWidget* over, const SheetEdit& edit, ForSheet sheet, const DatabaseUse& use);

}  // namespace quorvex
