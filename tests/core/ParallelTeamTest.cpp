#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>

#include "core/ThreadTeam.h"

namespace quorvex {
namespace {

// Waits until `count` is reached: a turn in which all threads take part.
void Meet(std::atomic<std::size_t>& here, std::size_t count) {
  ++here;
  while (here < count) std::this_thread::yield();
}

TEST(ParallelTeam, CallsEachThreadOnceInATurn) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{2}, std::size_t{5}}) {
    ThreadTeam team(size);
    ASSERT_EQ(team.Size(), std::max(size, std::size_t{1}));
    std::vector<std::thread::id> threads(team.Size());
    std::vector<int> turns(team.Size(), 0);
    for (int turn = 1; turn <= 100; ++turn) {
      std::atomic<std::size_t> here = 0;
      team.Run([&](std::size_t member) {
        Meet(here, team.Size());
        if (turn == 1) threads[member] = std::this_thread::get_id();
        EXPECT_EQ(threads[member], std::this_thread::get_id());
        ++turns[member];
      });
      ASSERT_EQ(turns, std::vector<int>(team.Size(), turn));
      // Some sleep by then.
      if (turn % 20 == 0) std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    EXPECT_EQ(threads[0], std::this_thread::get_id());
  }
}

TEST(ParallelTeam, SharesWorkWithoutWaitingForAnybody) {
  for (const std::size_t size : {std::size_t{2}, std::size_t{3}, std::size_t{16}}) {
    ThreadTeam team(size);
    std::vector<int> calls(team.Size()), pieces(50);
    for (int turn = 1; turn <= 2000; ++turn) {
      std::fill(calls.begin(), calls.end(), 0);
      std::atomic<std::size_t> next = 0;
      team.Run([&](std::size_t member) {
        ++calls[member];
        for (std::size_t i = next++; i < pieces.size(); i = next++) ++pieces[i];
      });
      // Plain numbers: the caller reads what the turn has written, and the next turn what the caller has.
      ASSERT_EQ(pieces, std::vector<int>(pieces.size(), turn));
      ASSERT_EQ(calls[0], 1);
      ASSERT_LE(*std::max_element(calls.begin(), calls.end()), 1);
    }
  }
}

TEST(ParallelTeam, CarriesTheFaultOfTheFirstThreadToTheCaller) {
  ThreadTeam team(4);
  for (int turn = 0; turn < 20; ++turn) {
    std::atomic<std::size_t> here = 0, done = 0;
    try {
      team.Run([&](std::size_t member) {
        Meet(here, team.Size());
        if (member == 1 || member == 3) throw std::runtime_error(std::to_string(member));
        std::this_thread::sleep_for(std::chrono::microseconds(100));
        ++done;
      });
      FAIL();
    } catch (const std::runtime_error& fault) {
      EXPECT_STREQ(fault.what(), "1");
    }
    EXPECT_EQ(done, 2u);  // the others have come to their end
    team.Run([&](std::size_t) { ++done; });
  }
}

TEST(ParallelTeam, EndsWithoutATurn) {
  for (int i = 0; i < 50; ++i) const ThreadTeam team(3);
}

// More threads than processors, so that some are on their way into a turn when the team ends.
TEST(ParallelTeam, EndsWhileThreadsComeLate) {
  for (int i = 0; i < 2000; ++i) {
    ThreadTeam team(6);
    for (int turn = 0; turn <= i % 3; ++turn) team.Run([](std::size_t) {});
  }
}

}  // namespace
}  // namespace quorvex
