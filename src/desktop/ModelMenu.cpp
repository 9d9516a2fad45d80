// The Models menu: the user-defined models of a project, and what a model becomes outside of it.

#include "desktop/ProjectMenus.h"
#include "desktop/SheetView.h"
#include "desktop/quorvexWindow.h"
#include "files/ui/usereq.h"
#include "results/EquationExport.h"
#include "results/ui/frmEquationText.h"
#include "results/ui/frmExcelRef.h"
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

// One of the models as the user chooses, or the only one. Null where there is none, of which the user hears in `none`,
// and where the user cancels.
ModelClass* OneOf(std::vector<ModelClass*> models, quorvexWindow& window, const char* none) {
  if (models.empty()) window.User().Refuse(none);
  if (models.size() <= 1) return models.empty() ? nullptr : models[0];
  frmCopyModel form(&window, "Choose Model", std::move(models));
  return form.exec() == QDialog::Accepted ? &form.Model() : nullptr;
}

void Rules(quorvexWindow& window) {
  ModelClass* model = OneOf(UserModels(window.Document()), window, "This project has no user defined models.");
  if (model == nullptr) return;
  frmRules form(&window, *model, window.Document().Locale);
  if (form.exec() == QDialog::Accepted && form.Rules().StoreIn(*model)) window.Document().Changed = true;
}

std::vector<ModelClass*> ModelsOf(const std::vector<SolvedItem>& list) {
  std::vector<ModelClass*> models;
  for (const SolvedItem& item : list)
    if (item.Model != nullptr) models.push_back(item.Model);
  return models;
}

// The model selected in the solved list. Where it isn't one, a solved model or, where nothing is solved, a user-defined
// one.
ModelClass* ModelToExport(quorvexWindow& window) {
  std::vector<ModelClass*> models = ModelsOf(window.SelectedSolutions());
  if (models.size() != 1) models = ModelsOf(window.Solved());
  if (models.empty()) models = UserModels(window.Document());
  return OneOf(std::move(models), window, "There is no solved model, and no user defined one, to be exported.");
}

template <ExprType Language>
void Export(quorvexWindow& window) {
  if (const ModelClass* model = ModelToExport(window)) ExportCode(*model, Language, window.User());
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
      {"mnuModelsText", "Equation &Text...", {}, EquationTextCommand},
      {"mnuModelsFormula", "Spreadsheet &Formula...", {}, SpreadsheetFormula},
  };
}

}  // namespace quorvex
