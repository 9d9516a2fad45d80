// The Format menu: how the columns are shown and what they are called.

#include "desktop/ProjectMenus.h"
#include "desktop/SheetView.h"
#include "desktop/quorvexWindow.h"
#include "sheet/ColumnLayout.h"
#include "sheet/ui/EditDialogs.h"

namespace quorvex {

namespace {

void FormatCells(quorvexWindow& window) {
  window.Run([&](const SheetEdit& edit) { return ShowFormatCells(edit, &window); });
}

}  // namespace

std::vector<ProjectCommand> FormatMenu() {
  return {
      OnSheet({"mnuFormatCells", "For&mat Cells...", QKeySequence("Ctrl+1"), FormatCells}),
      OnSheet({"mnuFormatHeader",
               "Edit &Header...",
               {},
               [](quorvexWindow& window) { window.EditHeader(window.Grid().currentIndex().column()); }}),
      {"mnuFormatDefault", "&Default Headers", {}, [](quorvexWindow& window) { window.Run(FormatDefault); }},
  };
}

}  // namespace quorvex
