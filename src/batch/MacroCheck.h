#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "batch/MacroRequest.h"
#include "core/Session.h"
#include "macro/MacroFault.h"

namespace quorvex {

// What a run of a macro would stumble over, found without running it: nothing is fitted, no data are read, and nothing
// is written or made, not even a log.
struct MacroCheck {
  std::vector<MacroFault> Faults;  // by line, and there by row; what no line tells comes last
  int Status = 0;                  // a BatchStatus: of the first fault that fails a run, in the order of a run
  std::size_t Runs = 0, Models = 0;

  // "Checked 8 runs of 2 models: 3 faults."
  std::string Count() const;
};

// Checks a macro file, or a part of its table. Goes over the rows once, and over each folder. Never throws.
MacroCheck CheckMacroFile(const MacroRequest& request, Session session);

// The same of a text that may become such a file.
MacroCheck CheckMacroText(std::string_view text, Session session);

}  // namespace quorvex
