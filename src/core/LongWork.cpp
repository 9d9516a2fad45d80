#include "core/LongWork.h"

#include <stdlib.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <exception>
#include <mutex>
#include <thread>

namespace quorvex {
namespace {

struct Shared {
  LongWork Work;
  std::mutex Lock;
  std::condition_variable Ended;
  bool AtEnd = false, LeftAlone = false;
  std::exception_ptr Fault;
};

std::atomic<int> leftAlone = 0;  // works that nobody waits for any more and that are not at their end

// At exit the libraries that such a work is in are taken down under it. By then the program has said and saved
// everything, so it goes without that.
void EndBesideWorks(int status, void*) {
  if (leftAlone == 0) return;
  std::fflush(nullptr);
  _exit(status);
}

}  // namespace

bool RunBeside(const std::function<void(const LongWork&)>& work,
               const std::function<bool(const LongWork&)>& keepWaiting) {
  constexpr auto kTurn = std::chrono::milliseconds(20);
  // Held by both sides, since either may be the last to need it.
  const auto shared = std::make_shared<Shared>();
  // Detached below: a work that is left alone may never end, and waiting for it would hang the program.
  std::thread([shared, work] {
    std::exception_ptr fault;
    try {
      work(shared->Work);
    } catch (...) {
      fault = std::current_exception();
    }
    const std::lock_guard lock(shared->Lock);
    shared->Fault = fault;
    shared->AtEnd = true;
    if (shared->LeftAlone) --leftAlone;
    shared->Ended.notify_one();
  }).detach();

  std::unique_lock lock(shared->Lock);
  while (!shared->Ended.wait_for(lock, kTurn, [&] { return shared->AtEnd; })) {
    lock.unlock();
    // Unlocked, for the caller's turn may be long, and the work must be able to tell its end.
    const bool wanted = keepWaiting(shared->Work);
    lock.lock();
    if (wanted) continue;
    // Once in a program's life, and only where it is needed.
    static const int registered = on_exit(EndBesideWorks, nullptr);
    static_cast<void>(registered);
    // It may have come to its end during the caller's turn.
    if (!shared->AtEnd) {
      shared->LeftAlone = true;
      ++leftAlone;
    }
    lock.unlock();
    shared->Work.Cancel();
    return false;
  }
  if (shared->Fault) std::rethrow_exception(shared->Fault);
  return true;
}

}  // namespace quorvex
