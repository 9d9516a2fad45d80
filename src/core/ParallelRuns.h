#pragma once

#include <cstddef>
#include <functional>
#include <stop_token>

namespace quorvex {

// Threads for work that is asked to use `wanted` of them, or with 0 as many as the process may use: the processors that
// the system or a batch queue leaves it (its affinity), not those of the machine.
int ThreadCount(int wanted);

// Does `task` for each number from 0 to count - 1, on as many threads as ThreadCount tells, in any order: what a task
// writes must be its own, and what it does must not depend on the thread or on other tasks, so that the results are the
// same for any number of threads. Meanwhile the calling thread calls `keepGoing` some fifty times a second with the
// number of tasks done. Where that returns false the tasks hear of it by their token, no other is begun, and the answer
// is false. An exception of a task ends the others in the same way and is thrown here, as one of `keepGoing` is.
bool RunParallel(std::size_t count, int wanted, const std::function<void(std::size_t, std::stop_token)>& task,
                 const std::function<bool(std::size_t done)>& keepGoing);

}  // namespace quorvex
