#pragma once

#include <string>

#include "engine/SolveForm.h"

namespace quorvex {

// The progress of a run over several models, as a window shows it. A run without windows derives the few members it
// needs.
class SolveProgress : public SolveForm {
 public:
  virtual void Show(bool /*visible*/) {}
  virtual void SetProgress(int /*done*/, int /*of*/) {}
  virtual void SetStatusLabel(const std::string& /*text*/) {}
  // The model about to be solved has so many parameters: the details show a label for each of the first 20.
  virtual void SetParameterCount(int /*count*/) {}
};

}  // namespace quorvex
