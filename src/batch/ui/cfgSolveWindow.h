#pragma once

#include "batch/cfgSolve.h"
#include "solve/ui/ProgressWindow.h"

namespace quorvex {

// The progress form of an unattended run as a window.
class cfgSolveWindow : public ProgressWindow, public cfgSolve {
 public:
  cfgSolveWindow();

  std::string RequestWindows() override { return ""; }
  void ShowMessageBox(const std::string& text) override;
};

}  // namespace quorvex
