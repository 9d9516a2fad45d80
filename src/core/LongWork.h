#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <stop_token>

namespace quorvex {

// A piece of work that may take long, as the one who does it and the one who waits for it share it. They may be on two
// threads: the worker tells how far it is and asks whether it is still wanted, the other looks and cancels. Copies are
// the same piece; one that is made by itself has nobody who looks.
class LongWork {
 public:
  void Cancel() { stop_.request_stop(); }
  bool Cancelled() const { return stop_.stop_requested(); }
  // For what must be called to end the work where it waits for something else.
  std::stop_token Stop() const { return stop_.get_token(); }

  // How far it is, in a unit of its own. `Total` is 0 while nobody knows how much there will be.
  void ShowProgress(std::size_t done, std::size_t total) const {
    progress_->Done.store(done, std::memory_order_relaxed);
    progress_->Total.store(total, std::memory_order_relaxed);
  }
  std::size_t Done() const { return progress_->Done.load(std::memory_order_relaxed); }
  std::size_t Total() const { return progress_->Total.load(std::memory_order_relaxed); }

 private:
  struct Progress {
    std::atomic<std::size_t> Done = 0, Total = 0;
  };
  std::stop_source stop_;
  std::shared_ptr<Progress> progress_ = std::make_shared<Progress>();
};

// Does `work` on a thread of its own, and calls `keepWaiting` on this one every few hundredths of a second until the
// work is at its end: true then, and an exception that ended it is thrown here. Where keepWaiting returns false the
// work is cancelled and left to itself, since a driver or a disk may not hear of it: false, and what the work touches
// must be its own. It doesn't keep the program from ending.
bool RunBeside(const std::function<void(const LongWork&)>& work,
               const std::function<bool(const LongWork&)>& keepWaiting);

}  // namespace quorvex
