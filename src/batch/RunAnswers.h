#pragma once

#include <optional>
#include <string>

#include "batch/MacroFiles.h"
#include "batch/RunState.h"
#include "batch/cfgSolve.h"
#include "core/LocaleText.h"
#include "core/SaveFile.h"
#include "macro/MacroLog.h"
#include "macro/MacroSetup.h"

namespace quorvex {

// Why the answers may not be written over what the macro reads or writes; nothing where they may.
std::optional<std::string> RefuseAnswers(const MacroSetup& setup, MacroFiles& files);

// The output of a run, as it is to be written; empty where that is a project.
std::string OutputText(const RunState& state);

// The output files of a macro's runs.
class RunAnswers {
 public:
  RunAnswers(const LocaleText& locale, cfgSolve& form, MacroFiles& files, MacroLog& log)
      : locale_(locale), form_(form), files_(files), log_(log) {}

  // Writes the solved models in the layout that the setup asks for. Returns 0, the number of the file error, or
  // kNotDrawn where an abort ended it, which leaves what was there before.
  int Write(RunState& state);

 private:
  int WriteText(const RunState& state, const std::string& made, const std::string& path);

  const LocaleText& locale_;
  cfgSolve& form_;
  MacroFiles& files_;
  MacroLog& log_;
  ReplacementFile file_{FileCare::Answer};
};

}  // namespace quorvex
