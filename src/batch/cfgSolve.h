#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "engine/SolveProgress.h"

namespace quorvex {

// The progress form of an unattended run, and the run's one outlet to whoever started it. A run without windows derives
// the few members it needs.
class cfgSolve : public virtual SolveProgress {
 public:
  // Called once the macro is read and before the log is opened, when the macro asks for the progress form or message
  // boxes: a program without windows hands the run over here, and does not come back, or says in one sentence why the
  // run goes on without them. Empty where the windows are at hand.
  virtual std::string RequestWindows() = 0;

  // The status text that a process waiting on this run reads, one at a time: a line on standard output, flushed, since
  // a parent process reads the pipe while the run goes on.
  virtual void DDEText(std::string_view text);

  virtual void ShowMessageBox(const std::string& /*text*/) {}

  // A long text is cut for the label, which has one line.
  void ShowStatus(const std::string& text);
  void ShowWork(const std::string& what, std::size_t done, std::size_t of) override;
};

}  // namespace quorvex
