#pragma once

#include <functional>
#include <string_view>

namespace quorvex {

// Where the lines of an output go.
struct LineSink {
  // Takes a line, without its end: into a file that is being written, or a text that is kept.
  std::function<void(std::string_view)> Take;
  // Is called every few hundred points of what takes long to compute. Either may throw to end the output.
  std::function<void()> Pulse = [] {};
};

}  // namespace quorvex
