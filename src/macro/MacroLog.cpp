#include "macro/MacroLog.h"

#include "macro/BatchStatus.h"

namespace quorvex {

void MacroLog::Warn(const std::string& text, std::size_t line) {
  Line("Warning: " + text);
  if (Faults != nullptr) Faults->push_back({.Line = line, .Text = text});
}

void MacroLog::Fault(const std::string& text) {
  Line(text);
  TellWithoutLog(text);
}

void MacroLog::TellWithoutLog(const std::string& text) {
  if (Message.empty() && (!enabled_ || setup_.LogSummaryOnly)) Message = text;
}

void MacroLog::Open(const std::string& path, bool goesOn, const std::string& refusal) {
  enabled_ = true;
  path_ = path;
  if (!refusal.empty()) Message = refusal;
  Check(!refusal.empty() ? kAccessError : goesOn ? file_.Continue(path) : file_.Create(path));
}

void MacroLog::Flush() {
  if (!setup_.LogSummaryOnly) Print();
  Text.clear();
}

void MacroLog::Summary(std::string_view ending) {
  Line("Log Summary:");
  for (const RunResult& result : results_)
    Line((result.Number > 0 ? std::to_string(result.Number) + ": " : "").append(result.Text));
  Asterisks();
  Line(ending);
}

void MacroLog::EndNormally() {
  Summary("Normal termination");
  if (!enabled_) return;
  Print();
  Check(file_.Close());
}

void MacroLog::EndAbnormally() {
  if (!file_.IsOpen()) return;
  if (setup_.LogSummaryOnly) Text.clear();
  Summary("Abnormal termination");
  Line("Exit Status " + std::to_string(status_));
  Print();
  Check(file_.Close());
}

void MacroLog::Print() {
  if (!enabled_) return;
  file_.Write(Text);
  Check(file_.Flush());
}

void MacroLog::Check(int error) {
  if (error == 0) return;
  if (Message.empty()) Message = "The log '" + path_ + "' cannot be written. " + FileErrorText(error);
  status_ = FileErrorStatus(kLogFile, error);
  enabled_ = false;
  file_.Close();
}

}  // namespace quorvex
