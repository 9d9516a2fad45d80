#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "core/Files.h"
#include "macro/MacroFault.h"
#include "macro/MacroSetup.h"

namespace quorvex {

// The log of a macro run: text that gathers line by line, and the file that it is printed to at fixed points. A failure
// on the file ends the log and sets the status; the run goes on.
class MacroLog {
 public:
  MacroLog(const MacroSetup& setup, int& status) : setup_(setup), status_(status) {}

  std::string Text;  // what has not been printed yet; fits append to it

  void Line(std::string_view text) { Text.append(text).append(NL); }
  // What goes on, but hardly as it was meant: a line, and kept where faults are. `line` is that of the macro.
  void Warn(const std::string& text, std::size_t line = 0);
  void Asterisks() { Line("***************************************"); }
  // A line that whoever started the program hears, too, where no log keeps it; the first one only.
  void Fault(const std::string& text);
  // The same of what the log tells in another way.
  void TellWithoutLog(const std::string& text);

  // Opens its file, anew or to go on behind what is there, or is refused for a reason. Without a call there is none.
  void Open(const std::string& path, bool goesOn, const std::string& refusal);
  bool IsEnabled() const { return enabled_; }
  // Prints what has gathered and forgets it; with LogSummaryOnly it is only forgotten.
  void Flush();

  // Notes how a run ended; its number is 0 where there is but one.
  void FinishRun(std::size_t number, std::string_view result) { results_.push_back({number, result}); }
  // The summary of the finished runs and how all of it ended, printed; the file is then closed.
  void EndNormally();
  void EndAbnormally();

  std::vector<MacroFault>* Faults = nullptr;  // where a check keeps the warnings
  std::string Message;                        // a sentence for the user that the log could not take

 private:
  void Summary(std::string_view ending);
  void Print();
  void Check(int error);

  const MacroSetup& setup_;
  int& status_;
  TextFile file_;
  std::string path_;
  bool enabled_ = false;
  // Of the finished runs; there may be a million of them, and few texts.
  struct RunResult {
    std::size_t Number;
    std::string_view Text;
  };
  std::vector<RunResult> results_;
};

}  // namespace quorvex
