#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/LocaleText.h"
#include "engine/ModelClass.h"
#include "engine/UserModel.h"
#include "project/Project.h"

namespace quorvex {

// A user-defined model as it stands in the editor, with or without sense.
struct UserModelDraft {
  std::string id, Description;
  std::vector<std::string> FunctionList = {""};  // the model line, then the supporting functions that are shown

  // Rules, derivatives and bounds by the coefficient's name in lower case. A coefficient that the text lost keeps its
  // own until the end, so that a typing error on the way costs nothing.
  std::map<std::string, UserModelDefinition::Coefficient> Coefficients;
};

UserModelDraft DraftOf(const ModelClass& model);
// The same as a start for a new model, under an ID that says so.
UserModelDraft CopyOf(const ModelClass& model);

// Rules, derivatives and bounds, by name: into the draft, and from it into a model where the draft has them.
void KeepCoefficients(const ModelClass& model, UserModelDraft& draft);
void ApplyCoefficients(const UserModelDraft& draft, ModelClass& model);

// The answer to a draft: its model, or the message and the box of the editor that it is about.
struct ModelCheck {
  static constexpr int kIdBox = -1;

  std::unique_ptr<ModelClass> Model;  // null where the draft is refused
  std::string Message;
  int Box = 0;     // kIdBox, or the number of the line
  int Start = -1;  // the bytes of the line that are wrong, from 0; -1 where it is no particular place
  int Length = -1;
};

// Whether the lines are there and make a model for data with that many independent variables.
ModelCheck CheckDefinition(const UserModelDraft& draft, std::size_t independentVariables, const LocaleText& locale);

// The same with an ID of its own, for a model of the project that is new, or is to take the place of `edited`.
ModelCheck CheckUserModel(const UserModelDraft& draft, const Project& project, const ModelClass* edited);

// A short line for the time of typing: whether the lines make a model so far, and its coefficients.
std::string CompileStatus(const UserModelDraft& draft, std::size_t independentVariables, const LocaleText& locale);

// "... has 1 independent variable, and the current project has 2", where `subject` is the part in front.
std::string VariableMismatch(const std::string& subject, int variables, std::size_t projectVariables);

}  // namespace quorvex
