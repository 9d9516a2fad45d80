// The Data menu: what computes new values for the sheet or from it, and import.

#include "analysis/ui/DataStatWindow.h"
#include "core/ui/BusyCursor.h"
#include "desktop/ImportCommands.h"
#include "desktop/ProjectMenus.h"
#include "desktop/SheetView.h"
#include "desktop/quorvexWindow.h"
#include "project/ChangeColumns.h"
#include "project/ui/NewProj.h"
#include "results/ui/frmSmooth.h"
#include "selection/ui/frmVarSelect.h"
#include "sheet/AverageReplicates.h"
#include "sheet/ui/TransformDialogs.h"

namespace quorvex {
namespace {

template <auto Show, auto... Mode>
void ShowDialog(quorvexWindow& window) {
  window.Run([&](const SheetEdit& edit) { return Show(edit, &window, Mode...); });
}

void Average(quorvexWindow& window) {
  window.Run([](const SheetEdit& edit) {
    const BusyCursor busy;
    return AverageReplicates(edit);
  });
}

void Smooth(quorvexWindow& window) {
  window.Run([&](const SheetEdit& edit) { return ShowSmooth(edit, &window, window.Preferences()); });
}

void Statistics(quorvexWindow& window) {
  if (!window.Grid().CommitEntry()) return;
  const Project& project = window.Document();
  if (auto statistics = ShowDataStat(project.Sheet, window.User()))
    (new DataStatWindow(&window, std::move(*statistics), project.Locale, window.User()))->show();
}

void VariableSelection(quorvexWindow& window) {
  if (!window.Grid().CommitEntry()) return;
  const Project& project = window.Document();
  ShowVariableSelection(&window, project.Sheet, project.Locale, window.Preferences(), window.User());
}

void Columns(quorvexWindow& window) {
  window.Run([&](const SheetEdit& edit) {
    const ProjectKind present{edit.Sheet.IndependentVariables, edit.Sheet.HasStandardDeviation};
    const auto kind = AskProjectKind(&window, present, "Columns",
                                     "Fewer variables take away the last columns X. Exchange Columns in the Edit menu "
                                     "moves another one there.");
    return kind && ChangeColumns(window.Document(), edit, *kind);
  });
}

}  // namespace

std::vector<ProjectCommand> DataMenu() {
  return {
      {"mnuDataFill", "&Fill...", QKeySequence("Ctrl+D"), ShowDialog<ShowDataSweep>},
      {"mnuDataScale", "Sca&le...", {}, ShowDialog<ShowFactor, FactorMode::Scale>},
      {"mnuDataTranslate", "&Translate...", {}, ShowDialog<ShowFactor, FactorMode::Translate>},
      {"mnuDataSort", "S&ort...", {}, ShowDialog<ShowSort>},
      {"mnuDataCombine", "&Combine Columns...", {}, ShowDialog<ShowCombine>},
      {"mnuDataZeroNegative", "Zero &Negative Data...", {}, ShowDialog<ShowZeroSelect, ZeroSign::Negative>},
      {"mnuDataZeroPositive", "Zero &Positive Data...", {}, ShowDialog<ShowZeroSelect, ZeroSign::Positive>},
      {"mnuDataAverage", "&Average Replicates", {}, Average},
      {"mnuDataSmooth", "S&mooth...", {}, Smooth},
      {"mnuDataColumns", "Col&umns...", {}, Columns},
      {},
      {"mnuDataStatistics", "&Statistics...", {}, Statistics},
      {"mnuDataVarSelect", "&Variable Selection...", {}, VariableSelection},
      {},
      {"mnuDataImport", "&Import Text or Spreadsheet...", QKeySequence("Ctrl+I"), ImportTextOrSpreadsheet},
      {"mnuDataImportDatabase", "Import from Data&base...", {}, ImportFromDatabase},
  };
}

}  // namespace quorvex
