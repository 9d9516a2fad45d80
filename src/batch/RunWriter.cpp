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
    if (error != 0)
      log_.TellWithoutLog("The output file '" + setup.OutputFile + "' cannot be written. " + FileErrorText(error));
  }
  if (error == 0 && !setup.CodeFile.empty()) error = code_.Write(setup, models);
  notMade = "A plot cannot be drawn.";
  if (error == 0 && !setup.PlotFile.empty()) error = plots_.Write(setup, models, state.Unsorted);
  if (error == 0 && !setup.ReportFile.empty()) {
    error = reports_.Write(setup, models, state.Unsorted, state.Diagnoses, macro());
    notMade = "A report cannot be made.";
  }
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
