#include "batch/RunAnswers.h"

#include <optional>
#include <string>
#include <utility>

#include "batch/NamedOutputs.h"
#include "batch/WriteDelimitedOutput.h"
#include "batch/WriteProjectOutput.h"
#include "batch/WriteStructuredOutput.h"
#include "core/NumberText.h"
#include "engine/FitEach.h"
#include "macro/BatchStatus.h"

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

namespace {

void WriteOutput(const RunState& state, const LineSink& line) {
  const MacroSetup& setup = state.Given.Setup;
  const bool isStructured = EqualNoCase(setup.OutputFormat, "structured");
  (isStructured ? WriteStructuredOutput : WriteDelimitedOutput)(state.Given.Models, state.Data, setup, state.Diagnoses,
                                                                line);
}

}  // namespace

std::string OutputText(const RunState& state) {
  if (WritesProject(state.Given.Setup)) return {};
  std::string text;
  WriteOutput(state, {.Take = [&](std::string_view line) { text.append(line).append(NL); }});
  return text;
}

int RunAnswers::Write(RunState& state) {
  const MacroSetup& setup = state.Given.Setup;
  const std::string made = std::exchange(state.Output, {});  // which is that of this run alone, written or refused
  log_.Line(setup.OutputFile.empty() ? "Write failed, OutputFile not specified"
                                     : "Writing solution to " + setup.OutputFile);
  if (const std::optional<std::string> refusal = RefuseAnswers(setup, files_)) {
    log_.Fault(*refusal);
    return kAccessError;
  }
  const std::string path = files_.Place(setup.OutputFile);
  const int error = WritesProject(setup) ? WriteProjectOutput(state.Given.Models, state.Unsorted, setup, locale_, path)
                                         : WriteText(state, made, path);
  if (error == 0) files_.NoteWritten(Writing::Answers, setup.OutputFile);
  return error;
}

int RunAnswers::WriteText(const RunState& state, const std::string& made, const std::string& path) {
  if (const int error = file_.Create(path); error != 0) return error;
  if (!made.empty()) {
    file_.Text().Write(made);
    return file_.Commit();
  }
  struct Stopped {};
  const auto pulse = [this] {
    form_.Yield();
    if (form_.Aborted) throw Stopped();
  };
  std::size_t lines = 0;
  const auto take = [&](std::string_view line) {
    if (++lines % 256 == 0) pulse();
    file_.Text().WriteLine(line);
  };
  try {
    WriteOutput(state, {take, pulse});
  } catch (const Stopped&) {
    file_.Abandon();
    LogAbort(log_.Text);
    return kNotDrawn;
  }
  return file_.Commit();
}

}  // namespace quorvex
