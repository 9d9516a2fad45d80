#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <numeric>
#include <thread>
#include <utility>

#include "core/NumericFault.h"
#include "core/ParallelRuns.h"

namespace quorvex {
namespace {

TEST(ParallelRuns, HaveNoMoreThreadsThanTheAddressSpaceHasRoomFor) {
  constexpr double kMega = 1 << 20;
  const std::pair<double, int> cases[] = {{-kMega, 1},       {0, 1},      {100 * kMega, 1}, {2 * 2 * 136 * kMega, 2},
                                          {1024 * kMega, 3}, {1e15, 1024}};
  for (const auto& [bytes, threads] : cases) EXPECT_EQ(ThreadsWithin(bytes), threads) << bytes;
}

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

TEST(ParallelRuns, TellInOrderOfTasksThatEndInAny) {
  for (const int threads : {1, 2, 3, 16}) {
    for (const std::size_t ahead : {1u, 7u, 500u}) {
      std::vector<std::size_t> done(500, 0), prepared, finished;
      OrderedTasks tasks{.Count = done.size(), .Ahead = ahead};
      tasks.Prepare = [&](std::size_t i) {
        EXPECT_LT(i, finished.size() + ahead);
        prepared.push_back(i);
        return i < 450;
      };
      tasks.Do = [&](std::size_t i, std::stop_token) {
        if (i % 50 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        done[i] = i + 1;
      };
      tasks.Finish = [&](std::size_t i) {
        EXPECT_EQ(done[i], i + 1);
        finished.push_back(i);
        return true;
      };
      tasks.KeepGoing = [] { return true; };
      EXPECT_TRUE(RunInOrder(tasks, threads));
      std::vector<std::size_t> numbers(450);
      std::iota(numbers.begin(), numbers.end(), 0u);
      EXPECT_EQ(finished, numbers);
      numbers.push_back(450);
      EXPECT_EQ(prepared, numbers);
    }
  }
}

TEST(ParallelRuns, EndInOrderAtAFaultAnEndOrAStop) {
  enum Way { Fault, Enough, Stop };
  for (const Way way : {Fault, Enough, Stop}) {
    std::size_t finished = 0;
    OrderedTasks tasks{.Count = 1000, .Ahead = 100};
    tasks.Do = [&](std::size_t i, std::stop_token stop) {
      if (way == Fault && i == 20) throw NumericFault();
      while (way == Stop && i == 20 && !stop.stop_requested())
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    };
    tasks.Finish = [&](std::size_t i) {
      EXPECT_EQ(i, finished);
      return way != Enough || ++finished <= 20;
    };
    if (way != Enough) tasks.Finish = [&](std::size_t) { return ++finished > 0; };
    int turns = 0;
    tasks.KeepGoing = [&] { return way != Stop || finished < 20 || ++turns < 3; };
    if (way == Fault)
      EXPECT_THROW(RunInOrder(tasks, 3), NumericFault);
    else
      EXPECT_FALSE(RunInOrder(tasks, 3));
    EXPECT_EQ(finished, way == Enough ? 21u : 20u);
  }
}

}  // namespace
}  // namespace quorvex
