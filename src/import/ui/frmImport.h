#pragma once

#include "import/DataImport.h"

class QWidget;

namespace quorvex {

// The import of a file: how the lines of a text are split, or which sheet of a spreadsheet is read, and what all
// imports ask. False, and the sheet is as it was, where the user cancels or the import fails.
bool ImportFile(QWidget* over, DataImport& import, const SheetEdit& edit);

// The same for the sheet of a project that is yet to be made: how many variables it has, and whether a standard
// deviation, can be changed in the dialog. Where nobody has chosen it yet, a change of the reading proposes it anew.
bool ImportNewSheet(QWidget* over, DataImport& import, const SheetEdit& edit, bool kindChosen);

}  // namespace quorvex
