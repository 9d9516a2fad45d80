// The Data menu: what computes new values for the sheet, and import.

#include "project/ui/ImportCommands.h"
#include "project/ui/ProjectMenus.h"
#include "project/ui/quorvexWindow.h"

namespace quorvex {

std::vector<ProjectCommand> DataMenu() {
  return {
      {"mnuDataImport", "&Import Text or Spreadsheet...", QKeySequence("Ctrl+I"), ImportTextOrSpreadsheet},
      {"mnuDataImportDatabase", "Import from Data&base...", {}, ImportFromDatabase},
  };
}

}  // namespace quorvex
