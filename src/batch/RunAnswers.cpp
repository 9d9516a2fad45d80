#include "batch/RunAnswers.h"

#include <optional>
#include <string>

#include "batch/BatchStatus.h"
#include "batch/WriteDelimitedOutput.h"
#include "batch/WriteProjectOutput.h"
#include "batch/WriteStructuredOutput.h"
#include "core/NumberText.h"

namespace quorvex {
namespace {

bool WritesProject(const MacroSetup& setup) { return EqualNoCase(setup.OutputFormat, "quorvex"); }

}  // namespace

std::optional<std::string> RefuseAnswers(const MacroSetup& setup, MacroFiles& files) {
  std::optional<std::string> refusal = files.RefuseInput("output", setup.OutputFile);
  // Saving a project keeps the old file under a second name, which must not fall on an input either.
  if (!refusal && WritesProject(setup)) refusal = files.RefuseInput("output", KeptName(setup.OutputFile));
  return refusal ? refusal : files.RefuseOther(Writing::Answers, setup.OutputFile);
}

int RunAnswers::Write(const MacroSetup& setup, const ModelCollection& models, const SolveData& data,
                      const SolveData& unsorted, const RunDiagnoses& diagnoses) {
  log_.Line(setup.OutputFile.empty() ? "Write failed, OutputFile not specified"
                                     : "Writing solution to " + setup.OutputFile);
  if (const std::optional<std::string> refusal = RefuseAnswers(setup, files_)) {
    log_.Fault(*refusal);
    return kAccessError;
  }
  const std::string path = files_.Place(setup.OutputFile);
  const int error = WritesProject(setup) ? WriteProjectOutput(models, unsorted, setup, locale_, path)
                                         : WriteText(setup, models, data, diagnoses, path);
  if (error == 0) files_.NoteWritten(Writing::Answers, setup.OutputFile);
  return error;
}

int RunAnswers::WriteText(const MacroSetup& setup, const ModelCollection& models, const SolveData& data,
                          const RunDiagnoses& diagnoses, const std::string& path) {
  if (const int error = file_.Create(path); error != 0) return error;
  const bool isStructured = EqualNoCase(setup.OutputFormat, "structured");
  (isStructured ? WriteStructuredOutput : WriteDelimitedOutput)(models, data, setup, diagnoses, file_.Text());
  return file_.Commit();
}

}  // namespace quorvex
