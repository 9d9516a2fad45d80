#pragma once

#include <string>
#include <string_view>

#include "core/Result.h"

namespace quorvex {

// The message of an import that failed: which file or database, and why. Where nothing is known about that it says so
// without naming anything.
inline Failure ImportFailure(std::string_view source, std::string_view reason) {
  if (reason.empty()) return {"An unknown error occurred importing the data."};
  return {"Error importing data from '" + std::string(source) + "'. " + std::string(reason)};
}

}  // namespace quorvex
