#pragma once

#include <stdexcept>
#include <string>

namespace quorvex {

// What must hold for any input. The exception ends a fuzzer's run and fails a test that replays its input.
inline void Require(bool holds, const std::string& what) {
  if (!holds) throw std::logic_error(what);
}

}  // namespace quorvex
