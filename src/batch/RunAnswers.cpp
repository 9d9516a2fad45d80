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
  const std::string path = files_.Place(setup.OutputFile);
  const int error =
      asProject ? WriteProjectOutput(models, unsorted, setup, locale_, path) : WriteText(setup, models, data, path);
  if (error == 0) files_.NoteWritten(Writing::Answers, setup.OutputFile);
  return error;
}

int RunAnswers::WriteText(const MacroSetup& setup, const ModelCollection& models, const SolveData& data,
                          const std::string& path) {
  if (const int error = file_.Create(path); error != 0) return error;
  const bool isStructured = EqualNoCase(setup.OutputFormat, "structured");
  (isStructured ? WriteStructuredOutput : WriteDelimitedOutput)(models, data, setup, file_.Text());
  return file_.Commit();
}

}  // namespace quorvex
