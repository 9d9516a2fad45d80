#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/Prompter.h"
#include "engine/ModelClass.h"
#include "project/Project.h"

namespace quorvex {

// The user-defined models of a project, in its order.
std::vector<ModelClass*> UserModels(const Project& project);
// The same for a command that needs some: refused where there are none.
std::vector<ModelClass*> UserModels(const Project& project, Prompter& user);

// What a model can be copied from: the user's own, then the built-in ones.
std::vector<ModelClass*> ModelsToCopy(const Project& project);
// Said before a copy takes the place of what the editor of an existing model holds.
void WarnOfCopying(Prompter& user);
// Whether the user wants to see the rules of a model that was edited.
bool AskToCheckRules(Prompter& user);

// Puts a model that was found right into the project, in the place of `edited` where that is one. A solution stays
// where only other things than the lines have changed.
ModelClass& StoreUserModel(Project& project, std::unique_ptr<ModelClass> model, const ModelClass* edited);

// Removes one, or all, of them, when the user agrees. Returns whether it did.
bool RemoveUserModel(Project& project, const ModelClass& model, Prompter& user);
bool RemoveAllUserModels(Project& project, Prompter& user);

// The model line and what it calls, a line each: "Y = ..." and "F1 = ...".
std::string DefinitionText(const ModelClass& model);
// Everything a model consists of, as lines for the user to read.
std::string DescribeModel(const ModelClass& model);

}  // namespace quorvex
