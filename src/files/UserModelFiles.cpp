#include "files/UserModelFiles.h"

#include <algorithm>

#include "core/Files.h"
#include "usermodels/UserModelDraft.h"
#include "usermodels/UserModels.h"

namespace quorvex {
namespace {

constexpr const char* kParseError = "An error occurred while parsing the models.";

// The words in which the two commands differ.
struct Words {
  const char *Verb, *One, *Many, *None;
};

constexpr Words kLoad = {"load", "1 user defined model has been read from '",
                         " user defined models have been read from '", "No user defined models added from '"};
constexpr Words kImport = {"import", "1 user defined model has been imported from '",
                           " user defined models have been imported from '", "No user defined models imported from '"};

// The content of the file that the user chooses; nothing where it can't be taken, of which the user has heard.
std::optional<UserModelFile> OpenFile(const Project& project, Prompter& user, const std::string& fileName,
                                      const Words& words) {
  UserModelFile file = ReadUserModels(fileName, project.Locale);
  if (!file.Message.empty()) user.Refuse(file.Message);
  if (!file.Message.empty() && file.Models.empty()) return std::nullopt;
  const std::size_t variables = project.Sheet.IndependentVariables;
  if (static_cast<std::size_t>(file.IndependentVariables) != variables) {
    user.Refuse(VariableMismatch(std::string("The models you are attempting to ") + words.Verb + " have ",
                                 file.IndependentVariables, variables));
    return std::nullopt;
  }
  return file;
}

void TellCount(int count, bool dropped, const std::string& fileName, const Words& words, Prompter& user) {
  std::string text = count == 1 ? words.One : count > 1 ? std::to_string(count) + words.Many : words.None;
  text += fileName + (count == 0 ? "'. " : dropped ? "'. " : "'.");
  user.Inform(text + (dropped ? kParseError : ""));
}

// The model of a record, or null. Its lines end in front of the first empty one.
std::unique_ptr<ModelClass> Compiled(UserModelDefinition definition, std::size_t variables, const LocaleText& locale) {
  definition.FunctionList.erase(std::ranges::find(definition.FunctionList, ""), definition.FunctionList.end());
  std::unique_ptr<ModelClass> model = MakeUserModel(definition, variables, locale);
  const bool tooLarge = model != nullptr && model->NumDependentVar() > kMostCoefficients;
  return tooLarge || definition.id.empty() ? nullptr : std::move(model);
}

}  // namespace

bool LoadUserModels(Project& project, Prompter& user, const FileToOpen& choose) {
  if (!user.Ask("Loading user models from a file will replace those currently in this project. Are you sure you want "
                "to continue?"))
    return false;
  const auto fileName = choose();
  if (!fileName) return false;
  const auto file = OpenFile(project, user, *fileName, kLoad);
  if (!file) return false;
  // With a copy of the ID, as the model that holds it is gone before Remove is done with it.
  for (const ModelClass* model : UserModels(project)) project.Models.Remove(std::string(model->id));
  int count = 0;
  bool dropped = false;
  for (const UserModelDefinition& definition : file->Models) {
    auto model = Compiled(definition, project.Sheet.IndependentVariables, project.Locale);
    dropped |= model == nullptr;
    if (model != nullptr && project.Models.Add(definition.id, std::move(model)) != nullptr) ++count;
  }
  project.Changed = true;
  TellCount(count, dropped, *fileName, kLoad, user);
  return true;
}

bool ImportUserModels(Project& project, Prompter& user, const FileToOpen& choose, const ModelToKeep& keepImported) {
  const auto fileName = choose();
  if (!fileName) return false;
  const auto file = OpenFile(project, user, *fileName, kImport);
  if (!file) return false;
  int count = 0;
  bool dropped = false;
  for (const UserModelDefinition& definition : file->Models) {
    auto model = Compiled(definition, project.Sheet.IndependentVariables, project.Locale);
    dropped |= model == nullptr;
    if (model == nullptr) continue;
    const ModelClass* existing = project.Models.Find(definition.id);
    if (existing == nullptr) {
      project.Models.Add(definition.id, std::move(model));
    } else if (existing->UserType && !SameDefinition(*existing, *model) && keepImported(*existing, *model)) {
      project.Models.Replace(definition.id, std::move(model));
    } else {
      continue;
    }
    ++count;
  }
  if (count > 0) project.Changed = true;
  TellCount(count, dropped, *fileName, kImport, user);
  return count > 0;
}

bool SaveUserModels(const Project& project, Prompter& user) {
  if (UserModels(project, user).empty()) return false;
  const auto fileName = user.ChooseFileToSave("Save User Models", kEquationFiles, "equ");
  if (!fileName) return false;
  const int error = WriteUserModels(*fileName, project.Sheet.IndependentVariables, project.Models, project.Locale);
  if (error != 0) user.Refuse("Error writing to '" + *fileName + "'. " + FileErrorText(error));
  return error == 0;
}

void AddUserModels(ModelCollection& models, const std::string& fileName, std::size_t independentVariables,
                   const LocaleText& locale) {
  const UserModelFile file = ReadUserModels(fileName, locale);
  if (static_cast<std::size_t>(file.IndependentVariables) != independentVariables) return;
  for (const UserModelDefinition& definition : file.Models) {
    auto model = Compiled(definition, independentVariables, locale);
    if (model == nullptr) continue;
    model->Group = "User Defined Equations";
    models.Add(definition.id, std::move(model));
  }
}

}  // namespace quorvex
