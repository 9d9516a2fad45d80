#include "batch/RunAnswers.h"

#include <optional>
#include <string>

#include "batch/BatchStatus.h"
#include "batch/WriteDelimitedOutput.h"
#include "batch/WriteProjectOutput.h"
#include "batch/WriteStructuredOutput.h"
#include "core/NumberText.h"

namespace quorvex {

int RunAnswers::Write(const MacroSetup& setup, const ModelCollection& models, const SolveData& data,
                      const SolveData& unsorted) {
  log_.Line(setup.OutputFile.empty() ? "Write failed, OutputFile not specified"
                                     : "Writing solution to " + setup.OutputFile);
  const bool asProject = EqualNoCase(setup.OutputFormat, "quorvex");
  std::optional<std::string> refusal = files_.RefuseInput("output", setup.OutputFile);
  // Saving a project keeps the old file under a second name, which must not fall on an input either.
  if (!refusal && asProject) refusal = files_.RefuseInput("output", KeptName(setup.OutputFile));
  if (!refusal) refusal = files_.RefuseOther(Writing::Answers, setup.OutputFile);
  if (refusal) {
    log_.Fault(*refusal);
    return kAccessError;
  }
  const int error = asProject ? WriteProjectOutput(models, unsorted, setup, locale_)
                    : EqualNoCase(setup.OutputFormat, "structured") ? WriteStructuredOutput(models, data, setup, file_)
                                                                    : WriteDelimitedOutput(models, data, setup, file_);
  if (error == 0) files_.NoteWritten(Writing::Answers, setup.OutputFile);
  return error;
}

}  // namespace quorvex
