// The Models menu: the user-defined models of a project, and what a model becomes outside of it.

#include "desktop/ProjectMenus.h"
#include "desktop/SheetView.h"
#include "desktop/quorvexWindow.h"
#include "equation/CodeLibrary.h"
#include "files/ui/usereq.h"
#include "results/EquationExport.h"
#include "results/ui/frmEquationText.h"
#include "results/ui/frmExcelRef.h"
#include "results/ui/frmModelCode.h"
#include "usermodels/UserModels.h"
#include "usermodels/ui/frmCopyModel.h"
#include "usermodels/ui/frmRules.h"

namespace quorvex {
namespace {

// A command that may change the models of the project.
template <auto Command>
void Change(quorvexWindow& window) {
  if (!window.Grid().CommitEntry()) return;
  Command(window);
  window.Refresh();
}

void UserModelList(quorvexWindow& window) { ShowUserModels(&window, window.Document(), window.Preferences()); }

void Load(quorvexWindow& window) { LoadUserModels(&window, window.Document(), window.Preferences(), window.User()); }

void Import(quorvexWindow& window) {
  ImportUserModels(&window, window.Document(), window.Preferences(), window.User());
}

void Save(quorvexWindow& window) { SaveUserModels(window.Document(), window.User()); }

// One of the models as the user chooses, or the only one. Null where there is none, and where the user cancels.
ModelClass* OneOf(const std::vector<ModelClass*>& models, quorvexWindow& window) {
  if (models.size() <= 1) return models.empty() ? nullptr : models[0];
  return ChooseModel(&window, "Choose Model", models);
}

void Rules(quorvexWindow& window) {
  Project& project = window.Document();
  ModelClass* model = OneOf(UserModels(project, window.User()), window);
  if (model != nullptr && EditRules(&window, *model, project.Locale)) project.Changed = true;
}

ModelClass* ModelToExport(quorvexWindow& window) {
  return OneOf(ModelsToExport(window.Document(), window.SelectedSolutions(), window.Solved(), window.User()), window);
}

template <ExprType Language>
void Export(quorvexWindow& window) {
  if (const ModelClass* model = ModelToExport(window)) ExportCode(*model, Language, window.User());
}

void CodeCommand(quorvexWindow& window) {
  if (ModelClass* model = ModelToExport(window)) frmModelCode(&window, *model, window.Preferences()).exec();
}

void EquationTextCommand(quorvexWindow& window) {
  if (const ModelClass* model = ModelToExport(window)) frmEquationText(&window, *model, window.Preferences()).exec();
}

void SpreadsheetFormula(quorvexWindow& window) {
  if (const ModelClass* model = ModelToExport(window)) frmExcelRef(&window, *model).exec();
}

}  // namespace

std::vector<ProjectCommand> ModelMenu() {
  return {
      {"mnuModelsUser", "&User Models...", QKeySequence("Ctrl+U"), Change<UserModelList>},
      {"mnuModelsLoad", "&Load User Models...", {}, Change<Load>},
      {"mnuModelsImport", "&Import User Models...", {}, Change<Import>},
      {"mnuModelsSave", "&Save User Models...", {}, Save},
      {"mnuModelsRules", "&Rules...", {}, Change<Rules>},
      {},
      {"mnuModelsBasic", "Export as &BASIC...", {}, Export<ExprType::Basic>},
      {"mnuModelsC", "Export as &C...", {}, Export<ExprType::C>},
      {"mnuModelsCode", "&Export as Code...", {}, CodeCommand},
      {"mnuModelsText", "Equation &Text...", {}, EquationTextCommand},
      {"mnuModelsFormula", "Spreadsheet &Formula...", {}, SpreadsheetFormula},
  };
}

}  // namespace quorvex
