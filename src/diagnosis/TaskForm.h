#pragma once

#include <cstddef>
#include <functional>
#include <stop_token>
#include <string>
#include <utility>

#include "engine/SolveForm.h"

namespace quorvex {

// The form of a fit on a thread beside the user's: it hears of a stop between blocks of points, and shows nothing.
class TaskForm final : public SolveForm {
 public:
  explicit TaskForm(std::stop_token stop) : stop_(std::move(stop)) {}
  void Yield() override { Pulse(); }
  void Pulse() override { Aborted = Aborted || stop_.stop_requested(); }

 private:
  std::stop_token stop_;
};

// RunParallel for fits: each task has a form of its own, and `form`, which is the user's, gets its turns on this thread
// and is shown how many of them are done. False where it is aborted.
bool RunTasks(std::size_t count, int threads, SolveForm& form, const std::string& label,
              const std::function<void(std::size_t, SolveForm&)>& task);

}  // namespace quorvex
