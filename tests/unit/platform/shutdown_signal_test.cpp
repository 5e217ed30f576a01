#include "platform/shutdown_signal.h"

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

using namespace KorvuISD;

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr DWORD kLongMs = 60000;  // a pause that a test does not sit out
constexpr milliseconds kPatience{30000};

milliseconds TimeOf(const std::function<void()>& work) {
  const auto start = Clock::now();
  work();
  return std::chrono::duration_cast<milliseconds>(Clock::now() - start);
}

TEST(ShutdownSignal, IsNotGivenAtFirst) {
  const ShutdownSignal signal;
  EXPECT_FALSE(signal.IsSignalled());
  EXPECT_EQ(WaitForSingleObject(signal.WaitHandle(), 0), DWORD{WAIT_TIMEOUT});
}

TEST(ShutdownSignal, StaysGiven) {
  ShutdownSignal signal;
  EXPECT_TRUE(signal.Signal());
  EXPECT_TRUE(signal.Signal());
  EXPECT_TRUE(signal.IsSignalled());
  EXPECT_TRUE(signal.IsSignalled());
  EXPECT_EQ(WaitForSingleObject(signal.WaitHandle(), 0), DWORD{WAIT_OBJECT_0});
}

TEST(ShutdownSignal, CannotBeGivenOnceItsEventIsTaken) {
  ShutdownSignal signal;
  const HANDLE event = signal.WaitHandle();
  EXPECT_EQ(signal.Take(), event);
  EXPECT_FALSE(signal.Signal());
  EXPECT_EQ(WaitForSingleObject(event, 0), DWORD{WAIT_TIMEOUT});  // left alone
  CloseHandle(event);
  EXPECT_FALSE(signal.Signal());
}

TEST(ShutdownSignal, CountsAsGivenOnceItsEventIsTaken) {
  ShutdownSignal signal;
  CloseHandle(signal.Take());
  EXPECT_TRUE(signal.IsSignalled());
  EXPECT_EQ(signal.WaitHandle(), INVALID_HANDLE_VALUE);
}

TEST(ShutdownSignal, IsTakenOnce) {
  ShutdownSignal signal;
  CloseHandle(signal.Take());
  EXPECT_EQ(signal.Take(), INVALID_HANDLE_VALUE);
}

TEST(ShutdownSignal, NeverReachesAnEventThatGotTheNumberOfTheClosedOne) {
  ShutdownSignal signal;
  CloseHandle(signal.Take());
  // One of these has the number by now.
  std::vector<HANDLE> events;
  for (int i = 0; i < 100; ++i) events.push_back(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  EXPECT_FALSE(signal.Signal());
  signal.Pause(0);
  for (const HANDLE event : events) {
    EXPECT_EQ(WaitForSingleObject(event, 0), DWORD{WAIT_TIMEOUT});
    CloseHandle(event);
  }
}

TEST(ShutdownSignal, LeavesATakenEventOpen) {
  HANDLE event = nullptr;
  {
    ShutdownSignal signal;
    event = signal.Take();
  }
  EXPECT_TRUE(SetEvent(event));
  CloseHandle(event);
}

TEST(Pause, TakesItsTime) {
  const ShutdownSignal signal;
  EXPECT_GE(TimeOf([&] { signal.Pause(200); }).count(), 150);
}

TEST(Pause, DoesNotPassTheSignal) {
  ShutdownSignal signal;
  signal.Signal();
  EXPECT_LT(TimeOf([&] { signal.Pause(kLongMs); }), kPatience);
}

TEST(Pause, IsEndedByTheSignal) {
  ShutdownSignal signal;
  std::atomic<bool> isOver = false;
  std::thread pausing([&] {
    signal.Pause(kLongMs);
    isOver = true;
  });
  // Most likely it is in the pause by then; if not, it still must not sit it out.
  std::this_thread::sleep_for(milliseconds(100));
  EXPECT_FALSE(isOver);
  EXPECT_LT(TimeOf([&] {
              signal.Signal();
              pausing.join();
            }),
            kPatience);
}

TEST(Pause, IsNoneOnceTheEventIsTaken) {
  ShutdownSignal signal;
  CloseHandle(signal.Take());
  EXPECT_LT(TimeOf([&] { signal.Pause(kLongMs); }), kPatience);
}

TEST(Pause, SurvivesThatTheEventIsTakenAndClosedMeanwhile) {
  ShutdownSignal signal;
  std::thread pausing([&] { signal.Pause(kLongMs); });
  std::this_thread::sleep_for(milliseconds(100));
  EXPECT_LT(TimeOf([&] {
              signal.Signal();
              CloseHandle(signal.Take());
              pausing.join();
            }),
            kPatience);
}

TEST(Pause, DoesNotHoldUpTheSignal) {
  ShutdownSignal signal;
  std::thread pausing([&] { signal.Pause(kLongMs); });
  std::this_thread::sleep_for(milliseconds(100));
  EXPECT_LT(TimeOf([&] { EXPECT_FALSE(signal.IsSignalled()); }), kPatience);
  signal.Signal();
  pausing.join();
}

TEST(ShutdownSignal, MaySignalFromManyThreadsWhileTheEventGoes) {
  for (int round = 0; round < 200; ++round) {
    ShutdownSignal signal;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 3; ++thread) {
      threads.emplace_back([&] {
        while (signal.Signal()) signal.Pause(0);
      });
    }
    CloseHandle(signal.Take());
    for (std::thread& thread : threads) thread.join();
    ASSERT_TRUE(signal.IsSignalled());
  }
}

}  // namespace
