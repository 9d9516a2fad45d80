#include "batch/RunWriter.h"

#include <string>
#include <string_view>

#include "batch/NamedOutputs.h"
#include "core/Files.h"
#include "macro/BatchStatus.h"

namespace quorvex {

int RunWriter::WriteFiles(RunState& state, const std::function<ReportedMacro()>& macro, std::string_view& notMade) {
  const MacroSetup& setup = state.Given.Setup;
  const ModelCollection& models = state.Given.Models;
  int error = 0;
  // The file of results may be all that is wanted.
  if (!setup.OutputFile.empty() || setup.ResultFile.empty()) {
    if (setup.UseDDE) form_.DDEText("Writing solution file '" + setup.OutputFile + " '");
    error = answers_.Write(state);
    if (error != 0 && error != kNotDrawn)
      log_.TellWithoutLog("The output file '" + setup.OutputFile + "' cannot be written. " + FileErrorText(error));
  }
  if (error != 0) return error;
  // One that fails costs none of the others.
  const auto note = [&](int failed, std::string_view why) {
    if (failed == 0) return;
    error = failed;
    notMade = why;
  };
  if (!setup.CodeFile.empty()) note(code_.Write(setup, models), "The code cannot be written.");
  if (!setup.PlotFile.empty() && !form_.Aborted)
    note(plots_.Write(setup, models, state.Unsorted), "A plot cannot be drawn.");
  if (!setup.ReportFile.empty() && !form_.Aborted)
    note(reports_.Write(setup, models, state.Unsorted, state.Diagnoses, macro()), "A report cannot be made.");
  return error;
}

bool RunWriter::Write(RunState& state, const std::function<ReportedMacro()>& macro, RunEnd& end) {
  std::string_view notMade;
  const int error = WriteFiles(state, macro, notMade);
  if (error == 0) {
    end = {kRunSuccessful, kSuccess, ""};
    return true;
  }
  end = {kRunFailed, FileErrorStatus(kOutputFile, error),
         error == kNotDrawn ? std::string(notMade) : FileErrorText(error)};
  if (!form_.Aborted) log_.Line("File Output Error: " + std::to_string(end.Status));
  log_.Asterisks();
  return false;
}

}  // namespace quorvex
