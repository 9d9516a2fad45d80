#pragma once

#include <optional>

#include "results/TableExport.h"

class QWidget;

namespace quorvex {

// The dialogs that ask what a data table export shall hold, frmTableType and frmTableVars, over `parent`, and the table
// that comes of it. Nothing where the user cancels or there is none.
std::optional<ExportTable> AskExportTable(QWidget* parent, const TableExport& equations, Prompter& user);

}  // namespace quorvex
