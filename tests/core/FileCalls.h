#pragma once

#include <functional>
#include <string_view>
#include <utility>

namespace quorvex {

// The file calls of the whole test program go by this function while it stands: it is told the name of the call, and
// what it returns is the error that the call fails with, 0 for none.
class FileCalls {
 public:
  using Hook = std::function<int(std::string_view call)>;

  explicit FileCalls(Hook hook) { Current = std::move(hook); }
  ~FileCalls() { Current = nullptr; }
  FileCalls(const FileCalls&) = delete;
  FileCalls& operator=(const FileCalls&) = delete;

  static inline Hook Current;
};

}  // namespace quorvex
