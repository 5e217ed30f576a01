#include "shared/start_thread.h"

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "support/wait.h"

using namespace support;

namespace {

constexpr int kThreads = 500;
constexpr int kMostAtATime = 5;

// Starts threads that end at once. How many of them have ended in time.
int StartAndCount() {
  const auto ended = std::make_shared<std::atomic<int>>(0);
  const auto hasEnded = [&ended](int count) {
    const Clock::time_point begin = Clock::now();
    while (*ended < count && MsSince(begin) < kPatience) std::this_thread::yield();
    return *ended >= count;
  };
  for (int started = 1; started <= kThreads; ++started) {
    tool::StartThread([ended] { ++*ended; });
    if (!hasEnded(started - kMostAtATime + 1)) break;
  }
  hasEnded(kThreads);
  return *ended;
}

// With std::thread::detach() some do not run, or crash, or never let another one begin.
TEST(StartThread, RunsEachOnceAlsoThoseThatEndAtOnce) {
  std::vector<int> counts(6);
  std::vector<std::thread> starters;
  for (int& count : counts) starters.emplace_back([&count] { count = StartAndCount(); });
  for (std::thread& starter : starters) starter.join();
  EXPECT_EQ(counts, std::vector<int>(counts.size(), kThreads));
}

}  // namespace
