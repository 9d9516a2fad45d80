#include "core/ParallelRuns.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <charconv>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace quorvex {
namespace {

constexpr int kMostThreads = 1024;
constexpr auto kTurn = std::chrono::milliseconds(20);

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

// At most `most` threads that all run `work`. The system may have no more of them: fewer will do, if there is any.
// They are joined when the vector goes.
void StartThreads(std::vector<std::jthread>& threads, std::size_t most, const std::function<void()>& work) {
  for (std::size_t i = 0; i < most; ++i) {
    try {
      threads.emplace_back(work);
    } catch (const std::system_error&) {
      if (threads.empty()) throw;
      return;
    }
  }
}

// One call of RunInOrder.
class OrderedRun {
 public:
  explicit OrderedRun(const OrderedTasks& tasks)
      : tasks_(tasks), ahead_(std::clamp<std::size_t>(tasks.Ahead, 1, tasks.Count)), slots_(ahead_) {}

  bool Run(std::size_t threads) {
    // Destroyed, and so joined, before what they share.
    std::vector<std::jthread> workers;
    const Stopping stopping{*this};
    StartThreads(workers, std::min(threads, ahead_), [this] { Work(); });
    for (;;) {
      if (!PrepareNext()) end_ = prepared_;
      if (finished_ == end_) return true;
      std::unique_lock lock(lock_);
      woken_.wait_for(lock, kTurn, [this] { return HasMuchToFinish(); });
      isIdle_ = false;
      doneSince_ = 0;
      lock.unlock();
      if (!tasks_.KeepGoing()) return false;
      while (finished_ < prepared_ && IsDone(finished_)) {
        Slot& slot = slots_[finished_ % ahead_];
        if (slot.Fault) std::rethrow_exception(slot.Fault);
        if (!tasks_.Finish(finished_)) return false;
        slot = {};
        ++finished_;
        if (!PrepareNext()) end_ = prepared_;
      }
    }
  }

 private:
  struct Slot {
    bool Done = false;
    std::exception_ptr Fault;
  };
  // However the calling thread leaves, the others end.
  struct Stopping {
    OrderedRun& Of;
    ~Stopping() {
      const std::lock_guard lock(Of.lock_);
      Of.stop_.request_stop();
      Of.more_.notify_all();
    }
  };

  // Many at a time, so that nobody is woken for each. False where there are no more tasks.
  bool PrepareNext() {
    if (prepared_ - finished_ > ahead_ / 2) return true;
    std::size_t prepared = prepared_;
    bool more = true;
    while (prepared < end_ && prepared < finished_ + ahead_) {
      more = !tasks_.Prepare || tasks_.Prepare(prepared);
      if (!more) break;
      ++prepared;
    }
    const std::lock_guard lock(lock_);
    if (std::exchange(prepared_, prepared) < prepared) more_.notify_all();
    return more;
  }

  bool IsDone(std::size_t i) {
    const std::lock_guard lock(lock_);
    return slots_[i % ahead_].Done;
  }

  // Worth waking the calling thread for: as each task would be for nothing where they are short. Under the lock.
  bool HasMuchToFinish() const { return isIdle_ || doneSince_ >= (ahead_ + 1) / 2; }

  void Work() {
    std::unique_lock lock(lock_);
    for (;;) {
      if (next_ == prepared_ && !stop_.stop_requested()) {
        isIdle_ = true;
        woken_.notify_one();
      }
      more_.wait(lock, [&] { return next_ < prepared_ || stop_.stop_requested(); });
      if (stop_.stop_requested()) return;
      const std::size_t i = next_++;
      lock.unlock();
      std::exception_ptr fault;
      try {
        tasks_.Do(i, stop_.get_token());
      } catch (...) {
        fault = std::current_exception();
      }
      lock.lock();
      slots_[i % ahead_] = {true, std::move(fault)};
      ++doneSince_;
      if (HasMuchToFinish()) woken_.notify_one();
    }
  }

  const OrderedTasks& tasks_;
  const std::size_t ahead_;
  std::vector<Slot> slots_;   // a ring
  std::size_t finished_ = 0;  // of the calling thread alone
  std::size_t end_ = tasks_.Count;
  std::mutex lock_;
  std::condition_variable more_, woken_;
  std::size_t prepared_ = 0, next_ = 0, doneSince_ = 0;
  bool isIdle_ = false;  // a thread found nothing to do
  std::stop_source stop_;
};

// Of the process, in bytes; nothing where the system does not tell.
std::optional<double> AddressSpaceInUse() {
  const int file = open("/proc/self/statm", O_RDONLY | O_CLOEXEC);
  if (file < 0) return std::nullopt;
  char text[32];
  const ssize_t count = read(file, text, sizeof text);
  close(file);
  double pages = 0;
  if (count <= 0 || std::from_chars(text, text + count, pages).ec != std::errc()) return std::nullopt;
  return pages * static_cast<double>(sysconf(_SC_PAGESIZE));
}

// Where the address space is limited, as batch queues do it.
int ThreadsWithRoom() {
  rlimit limit;
  if (getrlimit(RLIMIT_AS, &limit) != 0 || limit.rlim_cur == RLIM_INFINITY) return kMostThreads;
  return ThreadsWithin(static_cast<double>(limit.rlim_cur) - AddressSpaceInUse().value_or(0));
}

}  // namespace

int ThreadsWithin(double bytes) {
  constexpr double kPool = 2 * 64 * 0x1p20, kStack = 8 * 0x1p20;
  return static_cast<int>(std::clamp(bytes / 2 / (kPool + kStack), 1.0, double{kMostThreads}));
}

int ThreadCount(int wanted) {
  int count = wanted;
  cpu_set_t set;
  if (wanted <= 0)
    count = sched_getaffinity(0, sizeof set, &set) == 0 ? CPU_COUNT(&set)
                                                        : static_cast<int>(std::thread::hardware_concurrency());
  count = std::clamp(count, 1, kMostThreads);
  return count > 1 ? std::min(count, ThreadsWithRoom()) : count;
}

int ThreadsOfEach(int wanted, std::size_t things) {
  const auto count = static_cast<std::size_t>(ThreadCount(wanted));
  return static_cast<int>(std::max<std::size_t>(count / std::max<std::size_t>(things, 1), 1));
}

bool RunParallel(std::size_t count, int wanted, const std::function<void(std::size_t, std::stop_token)>& task,
                 const std::function<bool(std::size_t done)>& keepGoing) {
  if (count == 0) return true;
  Run run;
  bool wantedStill = true;
  {
    // Destroyed, and so joined, before what they share. The calling thread does no task, since it must not be late.
    std::vector<std::jthread> threads;
    std::unique_lock lock(run.Lock);
    StartThreads(threads, std::min(static_cast<std::size_t>(ThreadCount(wanted)), count),
                 [&] { Work(run, count, task); });
    run.AtWork = threads.size();
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

bool RunInOrder(const OrderedTasks& tasks, int wanted) {
  return tasks.Count == 0 || OrderedRun(tasks).Run(static_cast<std::size_t>(ThreadCount(wanted)));
}

}  // namespace quorvex
