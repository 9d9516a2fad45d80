#include "batch/NamedOutputs.h"

#include <filesystem>
#include <optional>
#include <system_error>

#include "code/CodeLanguage.h"
#include "core/Files.h"
#include "core/NumberText.h"
#include "engine/FitEach.h"
#include "macro/BatchStatus.h"
#include "plot/PictureMessages.h"
#include "report/ReportFormat.h"

namespace quorvex {
namespace {

constexpr int kBadFileName = 52;

bool IsPipeOrDevice(const std::string& path) {
  std::error_code ignored;
  const std::filesystem::file_status there = std::filesystem::status(path, ignored);
  return exists(there) && !is_regular_file(there) && !is_directory(there);
}

std::string UnknownPlot(const std::string& name) { return PlotEnding(name).empty() ? UnknownEndingText(name) : ""; }
std::string UnknownCode(const std::string& name) { return LanguageOfFile(name) ? "" : UnknownLanguageText(name); }
std::string UnknownForm(const std::string& name) { return ReportFormatOf(name) ? "" : UnknownReport(name); }

}  // namespace

const NamedOutputs kCodeOutputs{"CodeFile", &MacroSetup::CodeFile, Writing::Code, "code", UnknownCode};
const NamedOutputs kPlotOutputs{"PlotFile", &MacroSetup::PlotFile, Writing::Plot, "plot", UnknownPlot};
const NamedOutputs kReportOutputs{"ReportFile", &MacroSetup::ReportFile, Writing::Report, "report", UnknownForm};

std::span<const NamedOutputs* const> AllNamedOutputs() {
  static constexpr const NamedOutputs* kAll[] = {&kCodeOutputs, &kPlotOutputs, &kReportOutputs};
  return kAll;
}

std::string NamedOutputs::NotWrittenText(const std::string& name, const std::string& why) const {
  return "The " + std::string(Noun) + " '" + name + "' cannot be written. " + why;
}

int NamedOutputs::NameError(const std::string& name, const std::string& path, std::string& fault) const {
  fault = UnknownEnding(name);
  if (!fault.empty()) return kBadFileName;
  if (!IsPipeOrDevice(path)) return 0;
  fault = NotWrittenText(name, "It is a pipe or a device and not a file.");
  return kAccessError;
}

int NamedOutputs::Error(const std::string& name, MacroFiles& files, std::string& fault) const {
  std::optional<std::string> refusal = files.RefuseInput(std::string(Noun), name);
  if (!refusal) refusal = files.RefuseOther(Kind, name);
  if (!refusal) return NameError(name, files.Place(name), fault);
  fault = *refusal;
  return kAccessError;
}

int NamedOutputs::WriteFile(const std::string& name, const std::string& content, ReplacementFile& file,
                            std::string& fault) const {
  int error = file.Create(name);
  if (error == 0) file.Text().Write(content);
  if (error == 0) error = file.Commit();
  if (error != 0) fault = NotWrittenText(name, FileErrorText(error));
  return error;
}

bool NamedWriter::GoOn() {
  form_.Yield();
  return !form_.Aborted;
}

int NamedWriter::Abort() {
  LogAbort(log_.Text);
  return kNotDrawn;
}

int NamedWriter::Write(const MacroSetup& setup,
                       const std::function<Result<std::string>(const std::string& name)>& content,
                       const std::function<bool(const std::string& name)>& wants) {
  const std::string noun(outputs_.Noun);
  int error = 0;
  for (std::string_view names = setup.*outputs_.Names; !names.empty();) {
    const std::string name(TakeLine(names));
    if (wants && !wants(name)) continue;
    if (setup.UseDDE) form_.DDEText("Writing " + noun + " file '" + name + " '");
    log_.Line("Writing " + noun + " to " + name);
    std::string fault;
    const int failed = GoOn() ? WriteOne(name, content, fault) : kNotDrawn;
    if (!GoOn() && (failed != 0 || !names.empty())) return Abort();
    if (!fault.empty()) log_.Fault(fault);
    if (failed != 0) error = failed;
  }
  return error;
}

int NamedWriter::WriteOne(const std::string& name,
                          const std::function<Result<std::string>(const std::string& name)>& content,
                          std::string& fault) {
  if (const int refused = outputs_.Error(name, files_, fault); refused != 0) return refused;
  const Result<std::string> made = content(name);
  if (!made) {
    fault = made.error();
    return kNotDrawn;
  }
  const int error = outputs_.WriteFile(name, *made, file_, fault);
  if (error == 0) files_.NoteWritten(outputs_.Kind, name);
  return error;
}

}  // namespace quorvex
