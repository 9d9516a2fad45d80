#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "batch/MacroSetup.h"
#include "core/Files.h"

namespace quorvex {

// The log of a macro run: text that gathers line by line, and the file that it is printed to at fixed points. A failure
// on the file ends the log and sets the status; the run goes on.
class MacroLog {
 public:
  MacroLog(const MacroSetup& setup, int& status) : setup_(setup), status_(status) {}

  std::string Text;  // what has not been printed yet; fits append to it

  void Line(std::string_view text) { Text.append(text).append(NL); }
  void Asterisks() { Line("***************************************"); }
  // A line that whoever started the program hears, too, where no log keeps it; the first one only.
  void Fault(const std::string& text);

  // Opens the file that the setup names, if any, or is refused for a reason.
  void Open(const std::string& refusal);
  bool IsEnabled() const { return enabled_; }
  // Prints what has gathered and forgets it; with LogSummaryOnly it is only forgotten.
  void Flush();

  void FinishRun(std::string result) { results_.push_back(std::move(result)); }
  // The summary of the finished runs and how all of it ended, printed; the file is then closed.
  void EndNormally();
  void EndAbnormally();

  std::string Message;  // a sentence for the user that the log could not take

 private:
  void Summary(std::string_view ending);
  void Print();
  void Check(int error);

  const MacroSetup& setup_;
  int& status_;
  TextFile file_;
  bool enabled_ = false;
  std::vector<std::string> results_;  // of the finished runs
};

}  // namespace quorvex
