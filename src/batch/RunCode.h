#pragma once

#include "batch/NamedOutputs.h"
#include "engine/ModelCollection.h"

namespace quorvex {

// The best model of a macro's runs, written as code.
class RunCode {
 public:
  RunCode(cfgSolve& form, MacroFiles& files, MacroLog& log) : log_(log), writer_(kCodeOutputs, form, files, log) {}

  // Writes the files that the setup asks for, each in the language that its name ends in. Returns what NamedWriter
  // does. That no model is solved is no error.
  int Write(const MacroSetup& setup, const ModelCollection& models);

 private:
  MacroLog& log_;
  NamedWriter writer_;
};

}  // namespace quorvex
