#pragma once

#include <optional>
#include <string>

#include "core/NumberText.h"

namespace quorvex {

// A macro to be run, as the command line asks for it. The name counts in lower case, and as it was typed where there is
// such a file.
struct MacroRequest {
  MacroRequest(const std::string& typed) : FileName(ToLower(typed)), TypedName(typed) {}

  std::string FileName, TypedName;
  std::optional<std::string> Part;  // of its table, such as "2/4"; see RunPart
  bool Missing = false;             // passes over the rows whose answers are there
};

}  // namespace quorvex
