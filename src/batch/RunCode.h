#pragma once

#include <optional>
#include <string>

#include "batch/MacroFiles.h"
#include "core/SaveFile.h"
#include "engine/ModelCollection.h"
#include "macro/MacroLog.h"
#include "macro/MacroSetup.h"

namespace quorvex {

// The best model of a macro's runs, written as code.
class RunCode {
 public:
  RunCode(MacroFiles& files, MacroLog& log) : files_(files), log_(log) {}

  // Writes the files that the setup asks for, each in the language that its name ends in. Returns 0, or the number of
  // the file error of the last one that could not be written; the others are there. That no model is solved is no
  // error.
  int Write(const MacroSetup& setup, const ModelCollection& models);

 private:
  int WriteOne(const std::string& name, ModelClass& model, std::string& fault);

  MacroFiles& files_;
  MacroLog& log_;
  ReplacementFile file_{FileCare::Answer};
};

// Why code may not be written over what the macro reads or writes; nothing where it may.
std::optional<std::string> RefuseCode(const std::string& name, MacroFiles& files);

// Why code can't have that name: it ends in no language, or it is a pipe or a device. Returns 0 or the number of the
// file error, and a sentence in `fault`.
int CodeNameError(const std::string& name, const std::string& path, std::string& fault);

// Why code can't be written, in a sentence.
std::string CodeFaultText(const std::string& name, int error);

}  // namespace quorvex
