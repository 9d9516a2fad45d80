#include "solve/ModelPick.h"

#include <string>

namespace quorvex {

std::vector<ModelClass*> ModelPick::Listed(ModelKind kind) const {
  std::vector<ModelClass*> listed;
  for (const auto& model : models_)
    if (kind == ModelKind::All || model->UserType == (kind == ModelKind::UserDefined)) listed.push_back(model.get());
  return listed;
}

bool ModelPick::Accept(ModelClass* chosen, bool specify, Prompter& user) {
  if (chosen == nullptr) {
    user.Refuse("Please select a model to solve.");
    return false;
  }
  if (static_cast<std::size_t>(chosen->NumIndependentVar()) != variables_) {
    user.Refuse("The equation you selected has " + std::to_string(chosen->NumIndependentVar()) +
                " independent variables and the current spreadsheet has " + std::to_string(variables_) +
                " independent variables. Please select a different model to solve.");
    return false;
  }
  settings_.Set("lastselectedmodel", chosen->id);
  chosen->SpecifyIC = specify;
  if (!specify) chosen->SpecifyICComplete = false;
  chosen_ = chosen;
  return true;
}

}  // namespace quorvex
