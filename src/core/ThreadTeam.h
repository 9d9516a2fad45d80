#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <thread>
#include <vector>

namespace quorvex {

// Threads for work that comes in many short turns, such as the passes of a fit over its points. They wait between the
// turns, at first awake, so that a turn begins within microseconds, and end with the object. The calling thread is one
// of them, and needs none of the others to come to its end.
class ThreadTeam {
 public:
  // `size` counts the calling thread. Where the system has no more threads it is fewer.
  explicit ThreadTeam(std::size_t size);
  ~ThreadTeam();
  ThreadTeam(const ThreadTeam&) = delete;
  ThreadTeam& operator=(const ThreadTeam&) = delete;

  std::size_t Size() const { return threads_.size() + 1; }

  // One turn: the calling thread calls `task` with 0, and meanwhile each of the others with its own number, but those
  // that find no processor before the calling thread has done: so a task takes a piece of work after the other as long
  // as there are any. Returns when all calls have. Throws what a call has thrown, of several that with the least
  // number.
  void Run(const std::function<void(std::size_t member)>& task);

 private:
  void Serve(std::size_t member);
  void Do(std::size_t member);
  void Leave();

  const std::function<void(std::size_t)>* task_ = nullptr;  // of the present turn
  std::atomic<std::uint32_t> turn_ = 0;                     // its number
  std::atomic<std::uint32_t> gate_ = 0;                     // whether it may be entered, of which turn, who is inside
  std::atomic<bool> ending_ = false;
  std::vector<std::exception_ptr> faults_;
  std::vector<std::thread> threads_;
};

}  // namespace quorvex
