#include "usermodels/UserModels.h"

#include "core/Files.h"
#include "engine/UserModel.h"
#include "usermodels/UserModelDraft.h"

namespace quorvex {

ModelClass& StoreUserModel(Project& project, std::unique_ptr<ModelClass> model, const ModelClass* edited) {
  project.Changed = true;
  if (edited == nullptr) {
    // A copy, since the model may be moved away before its ID is read.
    const std::string id = model->id;
    return *project.Models.Add(id, std::move(model));
  }
  // The formula is the same, so its fit is still right; the texts and rules are the new ones.
  if (SameDefinition(*edited, *model)) {
    const UserModelDraft draft = DraftOf(*model);
    edited->CopyFitTo(*model);
    model->Description = draft.Description;
    ApplyCoefficients(draft, *model);
  }
  return *project.Models.Replace(edited->id, std::move(model));
}

std::vector<ModelClass*> UserModels(const Project& project) {
  std::vector<ModelClass*> models;
  for (const auto& model : project.Models)
    if (model->UserType) models.push_back(model.get());
  return models;
}

std::vector<ModelClass*> UserModels(const Project& project, Prompter& user) {
  std::vector<ModelClass*> models = UserModels(project);
  if (models.empty()) user.Refuse("This project has no user defined models.");
  return models;
}

std::vector<ModelClass*> ModelsToCopy(const Project& project) {
  std::vector<ModelClass*> models = UserModels(project);
  for (const auto& model : project.Models)
    if (!model->UserType) models.push_back(model.get());
  return models;
}

void WarnOfCopying(Prompter& user) {
  user.Inform(
      "You are EDITING an existing equation (not ADDING a new equation). Copying another equation will overwrite this "
      "equation unless the changes are Cancelled in this window.");
}

bool AskToCheckRules(Prompter& user) {
  return user.Ask(
      "After modifying a user defined model, you should check to make sure the rules for the initial estimates are "
      "still valid. Would you like to examine the rules now?");
}

bool RemoveUserModel(Project& project, const ModelClass& model, Prompter& user) {
  if (!user.Ask("This action will remove the selected user defined model from this project. Are you sure you want to "
                "continue?"))
    return false;
  project.Models.Remove(std::string(model.id));
  return project.Changed = true;
}

bool RemoveAllUserModels(Project& project, Prompter& user) {
  if (!user.Ask("This action will remove all user defined models from this project. Are you sure you want to "
                "continue?"))
    return false;
  for (const ModelClass* model : UserModels(project)) project.Models.Remove(std::string(model->id));
  return project.Changed = true;
}

std::string DefinitionText(const ModelClass& model) {
  std::string text = "Y = " + model.FunctionList(0);
  for (int n = 1; n < model.FunctionCount(); ++n)
    if (!model.FunctionList(n).empty())
      text.append(NL).append("F" + std::to_string(n) + " = ").append(model.FunctionList(n));
  return text;
}

std::string DescribeModel(const ModelClass& model) {
  const std::string newLine(NL);
  std::string text = "ID: " + model.id + newLine + "Model Definition:" + newLine + DefinitionText(model);
  text += newLine + "Model Description:" + newLine + model.Description + newLine + "Rules:";
  for (int i = 1; i <= model.NumDependentVar(); ++i)
    text += newLine + "Variable " + model.Variables(i) + ", Operation = " + model.Rules(i) +
            ", Value = " + model.RuleConstant(i);
  text += newLine + "Derivatives:";
  for (int i = 1; i <= model.NumDependentVar(); ++i)
    text += newLine + "Variable " + model.Variables(i) + ", Derivative = " + model.Derivatives(i);
  return text;
}

}  // namespace quorvex
