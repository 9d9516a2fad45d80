#pragma once

#include <cstddef>
#include <functional>
#include <stop_token>

namespace quorvex {

// Threads for work that is asked to use `wanted` of them, or with 0 as many as the process may use: the processors that
// the system or a batch queue leaves it (its affinity), not those of the machine. Fewer where the address space is
// limited and has no room for their stacks and allocations.
int ThreadCount(int wanted);

// The same for each of several things that are side by side.
int ThreadsOfEach(int wanted, std::size_t things);

// How many threads have room in so much address space, at least 1: each takes its stack and a pool for its allocations,
// of which the system reserves twice 64 MB, and half of all is for the data.
int ThreadsWithin(double bytes);

// Does `task` for each number from 0 to count - 1, on as many threads as ThreadCount tells, in any order: what a task
// writes must be its own, and what it does must not depend on the thread or on other tasks, so that the results are the
// same for any number of threads. Meanwhile the calling thread calls `keepGoing` some fifty times a second with the
// number of tasks done. Where that returns false the tasks hear of it by their token, no other is begun, and the answer
// is false. An exception of a task ends the others in the same way and is thrown here, as one of `keepGoing` is.
bool RunParallel(std::size_t count, int wanted, const std::function<void(std::size_t, std::stop_token)>& task,
                 const std::function<bool(std::size_t done)>& keepGoing);

// Tasks side by side of which something is to be told or written in order.
struct OrderedTasks {
  std::size_t Count = 0;
  // So many are prepared or done at most before the turn of the first of them.
  std::size_t Ahead = 0;
  // On the calling thread, each in order and before its Do; may be left out. False where there are no more tasks.
  std::function<bool(std::size_t)> Prepare = {};
  // On any thread, in any order, like the tasks of RunParallel.
  std::function<void(std::size_t, std::stop_token)> Do = {};
  // On the calling thread, each in order and behind its Do. False where no other is wanted.
  std::function<bool(std::size_t)> Finish = {};
  // Some fifty times a second, on the calling thread. Where it returns false the tasks hear of it by their token, and
  // none is prepared, begun or finished any more.
  std::function<bool()> KeepGoing = {};
};

// Does the tasks on as many threads as ThreadCount tells of `wanted`, beside the calling one. False where KeepGoing or
// Finish returned false. The exception of a task is thrown in the place of its Finish. All Do have ended behind this.
bool RunInOrder(const OrderedTasks& tasks, int wanted);

}  // namespace quorvex
