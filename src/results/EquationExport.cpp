#include "results/EquationExport.h"

#include "core/Files.h"
#include "core/SaveFile.h"
#include "engine/WriteFunction.h"
#include "equation/ExportNotes.h"
#include "equation/GenerateExcelInfix.h"
#include "usermodels/UserModels.h"

namespace quorvex {
namespace {

constexpr const char* kSection = "TextExport";
constexpr const char* kReplaceOption = "ReplaceOption";
constexpr const char* kAppendParameters = "AppendParameters";
constexpr const char* kCodeLanguage = "CodeFile";

std::vector<ModelClass*> ModelsOf(const std::vector<SolvedItem>& list) {
  std::vector<ModelClass*> models;
  for (const SolvedItem& item : list)
    if (item.Model != nullptr) models.push_back(item.Model);
  return models;
}

}  // namespace

EquationTextOptions ReadTextOptions(const Settings& settings) {
  return {settings.Integer(kReplaceOption, kSection) != 0, settings.Integer(kAppendParameters, kSection) != 0};
}

void StoreTextOptions(Settings& settings, const EquationTextOptions& options) {
  settings.Set(kReplaceOption, options.Names ? "1" : "0", kSection);
  settings.Set(kAppendParameters, options.AppendParameters ? "1" : "0", kSection);
}

std::string EquationText(const ModelClass& model, const EquationTextOptions& options) {
  return model.GenerateTextInfix(options.Names ? 1 : 0, options.AppendParameters ? 1 : 0);
}

bool CopyExcelFormula(const ModelClass& model, std::string_view column, std::string_view row, bool XInColumns,
                      Clipboard& clipboard, Prompter& user) {
  const Result<std::string> cell = ExcelCellReference(column, row);
  const Result<std::string> formula = cell ? model.GenerateExcelInfix(*cell, XInColumns) : Failure{cell.error()};
  if (!formula) {
    user.Refuse(formula.error());
    return false;
  }
  clipboard.SetText(*formula);
  user.Inform(std::string(kExcelHelp));
  return true;
}

std::string ExcelNotes(const ModelClass& model) {
  std::string text;
  for (const std::string& note : SpreadsheetNotes(model.Compiled())) text += (text.empty() ? "" : "\n") + note;
  return text;
}

std::vector<ModelClass*> ModelsToExport(const Project& project, const std::vector<SolvedItem>& selected,
                                        const std::vector<SolvedItem>& solved, Prompter& user) {
  std::vector<ModelClass*> models = ModelsOf(selected);
  // A single selected solution is the one that is meant; otherwise the user chooses among all.
  if (models.size() != 1) models = ModelsOf(solved);
  if (models.empty()) models = UserModels(project);
  if (models.empty()) user.Refuse("There is no solved model, and no user defined one, to be exported.");
  return models;
}

const CodeLanguage& ReadCodeLanguage(const Settings& settings) {
  const CodeLanguage* last = LanguageOfFile(settings.Text(kCodeLanguage, kSection));
  return last != nullptr ? *last : *CodeLanguages().front();
}

void StoreCodeLanguage(Settings& settings, const CodeLanguage& language) {
  settings.Set(kCodeLanguage, "model." + std::string(language.Extension), kSection);
}

std::string ModelCode(ModelClass& model, const CodeLanguage& language) {
  return WriteCode(DescribeForCode(model), language, "model");
}

bool SaveCode(ModelClass& model, const CodeLanguage& language, Prompter& user) {
  const std::string ending(language.Extension);
  const auto file = user.ChooseFileToSave("Export as Code", std::string(language.Name) + " files (*." + ending + ")",
                                          ending, "model." + ending);
  if (!file) return false;
  const Result<std::string> code = CodeForFile(model, *file);
  if (!code) {
    user.Refuse(code.error());
    return false;
  }
  const int error = SaveFile(*file, *code, FileCare::Answer);
  if (error != 0) user.Refuse("Error writing to '" + *file + "'. " + FileErrorText(error));
  return error == 0;
}

bool ExportCode(const ModelClass& model, ExprType language, Prompter& user) {
  const bool basic = language == ExprType::Basic;
  const auto file = basic ? user.ChooseFileToSave("Export as BASIC", "BASIC files (*.bas)", "bas")
                          : user.ChooseFileToSave("Export as C", "C files (*.c)", "c");
  if (!file) return false;
  const int error = basic ? WriteBasicFunction(model, *file) : WriteCFunction(model, *file);
  if (error != 0) user.Refuse("Error writing to '" + *file + "'. " + FileErrorText(error));
  return error == 0;
}

}  // namespace quorvex
