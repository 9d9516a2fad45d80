#pragma once

#include <cstddef>
#include <vector>

#include "core/Prompter.h"
#include "core/Settings.h"
#include "engine/ModelCollection.h"

namespace quorvex {

enum class ModelKind { All, PreDefined, UserDefined };

// The choice of one model to solve.
class ModelPick {
 public:
  // All three outlive the choice. `variables` is the number of independent variables of the sheet.
  ModelPick(const ModelCollection& models, std::size_t variables, Settings& settings)
      : models_(models), variables_(variables), settings_(settings) {}

  // The models of a kind, in the order of the collection.
  std::vector<ModelClass*> Listed(ModelKind kind) const;
  // The model that was chosen last time; null where there is none of that name.
  ModelClass* LastSelected() const { return models_.Find(settings_.Text("lastselectedmodel")); }

  // Takes the choice and remembers it for the next time, or refuses it. With `specify` the model starts from the
  // estimates that the user has given, else it is estimated anew.
  bool Accept(ModelClass* chosen, bool specify, Prompter& user);

  ModelClass* Chosen() const { return chosen_; }

 private:
  const ModelCollection& models_;
  const std::size_t variables_;
  Settings& settings_;
  ModelClass* chosen_ = nullptr;
};

}  // namespace quorvex
