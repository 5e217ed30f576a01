#include "platform/call_frame.h"

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

using namespace KorvuISD;

namespace {

class Target : public CallTarget {
 public:
  void ShutDown() { shuttingDown = true; }
};

bool Opens(const CallTarget& target) {
  const CallFrame frame(target);
  return static_cast<bool>(frame);
}

// Can another thread have the lock right now?
bool IsFree() {
  const Target target;
  bool opened = false;
  std::thread other([&] { opened = Opens(target); });
  other.join();  // hangs if not
  return opened;
}

TEST(CallFrame, OpensUntilTheTargetShutsDown) {
  Target target;
  EXPECT_TRUE(Opens(target));
  EXPECT_TRUE(Opens(target));
  target.ShutDown();
  EXPECT_FALSE(Opens(target));
  EXPECT_FALSE(Opens(target));
  EXPECT_TRUE(IsFree());
}

TEST(CallFrame, LooksAtTheShutdownOnceItHasTheLock) {
  Target target;
  bool opened = true;
  std::thread other;
  if (const CallFrame frame(target); frame) {
    other = std::thread([&] { opened = Opens(target); });
    // Whether it waits for the lock by now or comes later: it finds the target shutting down.
    target.ShutDown();
  }
  other.join();
  EXPECT_FALSE(opened);
}

TEST(CallFrame, StaysOpenForTheWorkThatIsInItWhenTheTargetShutsDown) {
  Target target;
  const CallFrame frame(target);
  target.ShutDown();
  EXPECT_TRUE(frame);
}

TEST(CallFrame, LetsExceptionsThroughAndGivesTheLockBack) {
  const Target target;
  const auto call = [&] {
    if (const CallFrame frame(target); frame) throw std::out_of_range("no");
  };
  EXPECT_THROW(call(), std::out_of_range);
  EXPECT_TRUE(IsFree());
}

TEST(CallFrame, NestsOnOneThread) {
  const Target target;
  std::vector<int> order;
  const auto inner = [&] {
    if (const CallFrame frame(target); frame) order.push_back(2);
  };
  const auto middle = [&] {
    if (const CallFrame frame(target); frame) inner();
  };
  if (const CallFrame frame(target); frame) {
    order.push_back(1);
    middle();
    order.push_back(3);
  }
  EXPECT_EQ(order, std::vector<int>({1, 2, 3}));
  EXPECT_TRUE(IsFree());
}

TEST(CallFrame, DoesNotOpenInAnotherOnceTheShutdownHasBegun) {
  Target target;
  bool opened = true;
  if (const CallFrame frame(target); frame) {
    target.ShutDown();
    opened = Opens(target);
  }
  EXPECT_FALSE(opened);
}

TEST(CallFrame, HasOneLockForAllTargets) {
  const Target first;
  const Target second;
  std::atomic<bool> secondOpened = false;
  std::thread other;
  if (const CallFrame frame(first); frame) {
    other = std::thread([&] { secondOpened = Opens(second); });
    // Long enough for a wrong program to be seen; a right one never fails here.
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_FALSE(secondOpened);
  }
  other.join();
  EXPECT_TRUE(secondOpened);
}

// A closed frame holds the lock all the same: whoever shuts a target down and then takes the lock
// knows that all work on it is over.
TEST(CallFrame, HoldsTheLockThoughItIsNotOpen) {
  Target down;
  down.ShutDown();
  const Target other;
  std::atomic<bool> opened = false;
  std::thread thread;
  {
    const CallFrame frame(down);
    thread = std::thread([&] { opened = Opens(other); });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_FALSE(opened);
  }
  thread.join();
  EXPECT_TRUE(opened);
}

TEST(CallFrame, LetsOneThreadInAtATime) {
  const Target target;
  int count = 0;  // not atomic: the lock is what makes it right
  std::atomic<int> inside = 0;
  std::atomic<bool> met = false;
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&] {
      for (int i = 0; i < 5000; ++i) {
        if (const CallFrame frame(target); frame) {
          if (++inside != 1) met = true;
          ++count;
          --inside;
        }
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(count, 20000);
  EXPECT_FALSE(met);
}

}  // namespace
