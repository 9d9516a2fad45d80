#pragma once

#include <vector>

#include "core/ui/ListChooser.h"
#include "usermodels/ModelFunctions.h"

namespace quorvex {

// "Model Functions": asks for a function of the equation language.
class frmFunc : public ListChooser {
 public:
  frmFunc(QWidget* parent, std::size_t independentVariables);

  const ModelFunction& Function() const { return functions_[Chosen()]; }

 private:
  const std::vector<ModelFunction> functions_;
};

}  // namespace quorvex
