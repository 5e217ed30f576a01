#include "platform/call_frame.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace KorvuISD;

namespace {

// Can another thread have the lock right now?
bool IsFree() {
  bool ran = false;
  std::atomic<bool> shuttingDown = false;
  std::thread other([&] { RunLocked(shuttingDown, [&] { ran = true; }); });
  other.join();  // hangs if not
  return ran;
}

TEST(RunLocked, RunsTheWorkOnTheCallersThread) {
  const std::atomic<bool> shuttingDown = false;
  std::thread::id thread;
  RunLocked(shuttingDown, [&] { thread = std::this_thread::get_id(); });
  EXPECT_EQ(thread, std::this_thread::get_id());
}

TEST(RunLocked, SkipsTheWorkOfAClientThatShutsDown) {
  const std::atomic<bool> shuttingDown = true;
  bool ran = false;
  RunLocked(shuttingDown, [&] { ran = true; });
  EXPECT_FALSE(ran);
  EXPECT_TRUE(IsFree());
}

TEST(RunLocked, LooksAtTheShutdownOnceItHasTheLock) {
  std::atomic<bool> shuttingDown = false;
  bool ran = false;
  std::thread other;
  RunLocked(shuttingDown, [&] {
    other = std::thread([&] { RunLocked(shuttingDown, [&] { ran = true; }); });
    // Whether it waits for the lock by now or comes later: it finds the client shutting down.
    shuttingDown = true;
  });
  other.join();
  EXPECT_FALSE(ran);
}

TEST(RunLocked, OfAnEmptyFunctionThrows) {
  const std::atomic<bool> shuttingDown = false;
  EXPECT_THROW(RunLocked(shuttingDown, nullptr), std::bad_function_call);
  EXPECT_TRUE(IsFree());
}

TEST(RunLocked, OfAnEmptyFunctionWhileShuttingDownDoesNothing) {
  const std::atomic<bool> shuttingDown = true;
  EXPECT_NO_THROW(RunLocked(shuttingDown, nullptr));
}

TEST(RunLocked, LetsExceptionsThroughAndGivesTheLockBack) {
  const std::atomic<bool> shuttingDown = false;
  EXPECT_THROW(RunLocked(shuttingDown, [] { throw std::out_of_range("no"); }), std::out_of_range);
  EXPECT_TRUE(IsFree());
}

TEST(RunLocked, NestsOnOneThread) {
  const std::atomic<bool> shuttingDown = false;
  std::vector<int> order;
  RunLocked(shuttingDown, [&] {
    order.push_back(1);
    RunLocked(shuttingDown, [&] { RunLocked(shuttingDown, [&] { order.push_back(2); }); });
    order.push_back(3);
  });
  EXPECT_EQ(order, std::vector<int>({1, 2, 3}));
  EXPECT_TRUE(IsFree());
}

TEST(RunLocked, NestedWorkIsSkippedOnceTheShutdownHasBegun) {
  std::atomic<bool> shuttingDown = false;
  bool ran = false;
  RunLocked(shuttingDown, [&] {
    shuttingDown = true;
    RunLocked(shuttingDown, [&] { ran = true; });
  });
  EXPECT_FALSE(ran);
}

TEST(RunLocked, HasOneLockForAllClients) {
  const std::atomic<bool> first = false;
  const std::atomic<bool> second = false;
  std::atomic<bool> secondRan = false;
  std::thread other;
  RunLocked(first, [&] {
    other = std::thread([&] { RunLocked(second, [&] { secondRan = true; }); });
    // Long enough for a wrong program to be seen; a right one never fails here.
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_FALSE(secondRan);
  });
  other.join();
  EXPECT_TRUE(secondRan);
}

TEST(RunLocked, LetsOneThreadInAtATime) {
  const std::atomic<bool> shuttingDown = false;
  int count = 0;  // not atomic: the lock is what makes it right
  std::atomic<int> inside = 0;
  std::atomic<bool> met = false;
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&] {
      for (int i = 0; i < 5000; ++i) {
        RunLocked(shuttingDown, [&] {
          if (++inside != 1) met = true;
          ++count;
          --inside;
        });
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(count, 20000);
  EXPECT_FALSE(met);
}

}  // namespace
