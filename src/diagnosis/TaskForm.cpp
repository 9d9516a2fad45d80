#include "diagnosis/TaskForm.h"

#include "core/ParallelRuns.h"

namespace quorvex {

bool RunTasks(std::size_t count, int threads, SolveForm& form, const std::string& label,
              const std::function<void(std::size_t, SolveForm&)>& task) {
  const auto inItsForm = [&](std::size_t i, std::stop_token stop) {
    TaskForm own(std::move(stop));
    task(i, own);
  };
  return RunParallel(count, threads, inItsForm, [&](std::size_t done) {
    form.ShowWork(label, done, count);
    form.Yield();
    return !form.Aborted;
  });
}

}  // namespace quorvex
