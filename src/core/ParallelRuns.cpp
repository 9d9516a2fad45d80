#include "core/ParallelRuns.h"

#include <sched.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace quorvex {
namespace {

constexpr int kMostThreads = 1024;

// What the threads of one run share.
struct Run {
  std::atomic<std::size_t> Next = 0, Done = 0;
  std::stop_source Stop;
  std::mutex Lock;
  std::condition_variable Ended;
  std::size_t AtWork = 0;
  std::exception_ptr Fault;  // of the first task by number that has one, as far as they were begun
  std::size_t FaultOf = 0;
};

void Work(Run& run, std::size_t count, const std::function<void(std::size_t, std::stop_token)>& task) {
  for (std::size_t i = run.Next++; i < count && !run.Stop.stop_requested(); i = run.Next++) {
    try {
      task(i, run.Stop.get_token());
      ++run.Done;
    } catch (...) {
      const std::lock_guard lock(run.Lock);
      if (!run.Fault || i < run.FaultOf) {
        run.Fault = std::current_exception();
        run.FaultOf = i;
      }
      run.Stop.request_stop();
    }
  }
  const std::lock_guard lock(run.Lock);
  --run.AtWork;
  run.Ended.notify_one();
}

}  // namespace

int ThreadCount(int wanted) {
  if (wanted > 0) return std::min(wanted, kMostThreads);
  cpu_set_t set;
  if (sched_getaffinity(0, sizeof set, &set) == 0) return std::max(CPU_COUNT(&set), 1);
  return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, kMostThreads);
}

bool RunParallel(std::size_t count, int wanted, const std::function<void(std::size_t, std::stop_token)>& task,
                 const std::function<bool(std::size_t done)>& keepGoing) {
  constexpr auto kTurn = std::chrono::milliseconds(20);
  if (count == 0) return true;
  Run run;
  bool wantedStill = true;
  {
    // Destroyed, and so joined, before what they share. The calling thread does no task, since it must not be late.
    std::vector<std::jthread> threads;
    const std::size_t n = std::min(static_cast<std::size_t>(ThreadCount(wanted)), count);
    std::unique_lock lock(run.Lock);
    for (std::size_t i = 0; i < n; ++i) {
      try {
        threads.emplace_back([&] { Work(run, count, task); });
        ++run.AtWork;
      } catch (const std::system_error&) {
        // The system has no more of them: fewer will do, if there is any.
        if (threads.empty()) throw;
        break;
      }
    }
    while (!run.Ended.wait_for(lock, kTurn, [&] { return run.AtWork == 0; })) {
      lock.unlock();
      try {
        wantedStill = wantedStill && keepGoing(run.Done);
      } catch (...) {
        run.Stop.request_stop();
        throw;
      }
      if (!wantedStill) run.Stop.request_stop();
      lock.lock();
    }
  }
  if (run.Fault) std::rethrow_exception(run.Fault);
  return wantedStill && keepGoing(run.Done);
}

}  // namespace quorvex
