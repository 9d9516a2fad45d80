#include "core/ThreadTeam.h"

#include <algorithm>
#include <system_error>

namespace quorvex {
namespace {

// Looks before a thread goes to sleep: some ten microseconds. On a busy machine others may need the processor more, and
// whoever sleeps is woken before those who have had their share.
constexpr int kLooks = 200;

// Tells the processor that nothing is to be hurried.
inline void Breathe() {
#ifdef __x86_64__
  __builtin_ia32_pause();
#endif
}

// What the gate holds: whether it may be entered, the last digits of the number of its turn, and how many are inside.
constexpr std::uint32_t kOpen = std::uint32_t{1} << 31, kNumber = 0x7FFF0000, kInside = 0xFFFF;
constexpr int kNumberShift = 16;

// Waits until the value is another one.
void Await(const std::atomic<std::uint32_t>& value, std::uint32_t old) {
  for (int i = 0; i < kLooks; ++i) {
    if (value.load(std::memory_order_acquire) != old) return;
    Breathe();
  }
  value.wait(old, std::memory_order_acquire);
}

}  // namespace

ThreadTeam::ThreadTeam(std::size_t size) : faults_(std::max(size, std::size_t{1})) {
  threads_.reserve(faults_.size());
  for (std::size_t member = 1; member < size; ++member) {
    try {
      threads_.emplace_back([this, member] { Serve(member); });
    } catch (const std::system_error&) {
      break;
    }
  }
}

ThreadTeam::~ThreadTeam() {
  ending_ = true;
  ++turn_;
  turn_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void ThreadTeam::Serve(std::size_t member) {
  std::uint32_t done = 0;
  for (std::uint32_t seen = 0;;) {
    Await(turn_, seen);
    // In this order: whoever has seen the number of the end sees that it is the end, too.
    seen = turn_;
    if (ending_) return;
    // A turn's gate is open before its number is told, so that nobody comes too early; who comes late may find it
    // closed, or the next one's, whose number it then has.
    const std::uint32_t gate = gate_.fetch_add(1);
    if ((gate & kOpen) != 0 && (gate & kNumber) != done) {
      done = gate & kNumber;
      Do(member);
    }
    Leave();
  }
}

void ThreadTeam::Do(std::size_t member) {
  try {
    (*task_)(member);
  } catch (...) {
    faults_[member] = std::current_exception();
  }
}

void ThreadTeam::Leave() {
  if ((--gate_ & (kOpen | kInside)) == 0) gate_.notify_one();
}

void ThreadTeam::Run(const std::function<void(std::size_t member)>& task) {
  task_ = &task;
  const std::uint32_t number = ((turn_ + 1) << kNumberShift) & kNumber;
  for (std::uint32_t gate = gate_; !gate_.compare_exchange_weak(gate, kOpen | number | (gate & kInside));) {
  }
  ++turn_;
  turn_.notify_all();
  Do(0);
  gate_ &= ~kOpen;
  for (std::uint32_t gate = gate_; (gate & kInside) != 0; gate = gate_) Await(gate_, gate);
  std::exception_ptr first;
  for (std::exception_ptr& fault : faults_) {
    if (!first) first = fault;
    fault = nullptr;
  }
  if (first) std::rethrow_exception(first);
}

}  // namespace quorvex
