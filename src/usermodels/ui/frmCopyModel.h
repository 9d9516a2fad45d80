#pragma once

#include <vector>

#include "core/ui/ListChooser.h"
#include "engine/ModelClass.h"

namespace quorvex {

// Asks for one of some models, at least one, by ID and description.
class frmCopyModel : public ListChooser {
 public:
  frmCopyModel(QWidget* parent, const QString& title, std::vector<ModelClass*> models);

  ModelClass& Model() const { return *models_[Chosen()]; }

 private:
  const std::vector<ModelClass*> models_;
};

// The model that was chosen, null where the user cancels.
ModelClass* ChooseModel(QWidget* over, const QString& title, std::vector<ModelClass*> models);

}  // namespace quorvex
