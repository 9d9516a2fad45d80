#pragma once

#include "import/DatabaseImport.h"

class QWidget;

namespace quorvex {

// The import from a database: which one, which of its tables, and what all imports ask. False, and the sheet is as
// it was, where the user cancels or the import fails.
bool ImportTable(QWidget* over, const SheetEdit& edit, const DatabaseUse& use);

}  // namespace quorvex
