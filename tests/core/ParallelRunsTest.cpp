#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <numeric>
#include <thread>

#include "core/NumericFault.h"
#include "core/ParallelRuns.h"

namespace quorvex {
namespace {

TEST(ParallelRuns, DoEachTaskOnce) {
  for (const int threads : {0, 1, 2, 3, 16}) {
    std::vector<int> times(1000, 0);
    const std::thread::id caller = std::this_thread::get_id();
    std::size_t seen = 0;
    EXPECT_TRUE(RunParallel(
        times.size(), threads, [&](std::size_t i, std::stop_token) { ++times[i]; },
        [&](std::size_t done) {
          EXPECT_EQ(std::this_thread::get_id(), caller);
          EXPECT_GE(done, seen);
          seen = done;
          return true;
        }));
    EXPECT_EQ(seen, times.size());
    EXPECT_EQ(times, std::vector<int>(1000, 1));
  }
  EXPECT_TRUE(RunParallel(0, 4, nullptr, nullptr));
  EXPECT_GE(ThreadCount(0), 1);
  EXPECT_EQ(ThreadCount(3), 3);
}

TEST(ParallelRuns, EndWhenNobodyWaitsAnyMore) {
  const auto untilStopped = [](std::size_t, std::stop_token stop) {
    while (!stop.stop_requested()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  };
  int turns = 0;
  EXPECT_FALSE(RunParallel(100, 3, untilStopped, [&](std::size_t) { return ++turns < 3; }));
  EXPECT_EQ(turns, 3);
  EXPECT_THROW(RunParallel(100, 3, untilStopped, [](std::size_t) -> bool { throw NumericFault(); }), NumericFault);
}

TEST(ParallelRuns, CarryTheFaultOfATaskToTheCaller) {
  std::atomic<int> begun = 0;
  const auto failing = [&](std::size_t i, std::stop_token) {
    ++begun;
    if (i == 5) throw NumericFault();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  };
  EXPECT_THROW(RunParallel(10'000, 2, failing, [](std::size_t) { return true; }), NumericFault);
  EXPECT_LT(begun, 1000);
}

}  // namespace
}  // namespace quorvex
