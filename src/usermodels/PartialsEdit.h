#pragma once

#include <memory>
#include <string>
#include <vector>

#include "core/Prompter.h"
#include "engine/ModelClass.h"
#include "usermodels/Leaving.h"

namespace quorvex {

// The partial derivatives of a user-defined model while a dialog changes them, coefficients counted from 1. The model
// has them once they are stored. `model` outlives the object.
class PartialsEdit {
 public:
  PartialsEdit(const ModelClass& model, Prompter& user);

  int Count() const { return static_cast<int>(texts_.size()); }
  const std::string& Name(int i) const { return model_.Variables(i); }
  const std::string& Text(int i) const { return texts_[static_cast<std::size_t>(i - 1)]; }

  // Commits a text: "Numerical", or an expression with the model's own variables, coefficients and functions. False,
  // after a word to the user, for any other.
  bool Commit(int i, const std::string& text);

  // The user turns to another coefficient, or closes the dialog: asks about a text that is not committed. False where
  // the dialog has to stay with the coefficient.
  bool Leave(int i, const std::string& text, Leaving what);

  // Makes all of them numerical, when the user agrees. Returns whether it did.
  bool Default();

  void StoreIn(ModelClass& model) const;

 private:
  std::string Objection(int i, const std::string& text) const;

  const ModelClass& model_;
  std::vector<std::string> texts_;
  Prompter& user_;
};

}  // namespace quorvex
