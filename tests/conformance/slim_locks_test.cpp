// Locks without a handle.

#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "conformance/pipes.h"

using namespace conformance;

namespace {

SRWLOCK slimLock = SRWLOCK_INIT;

TEST(SlimLocks, KeepOtherThreadsOutUntilTheyAreReleased) {
  struct Work {
    Handle started{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    Handle entered{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  } work;
  AcquireSRWLockExclusive(&slimLock);
  std::thread other([&] {
    SetEvent(work.started.Get());
    AcquireSRWLockExclusive(&slimLock);
    SetEvent(work.entered.Get());
    ReleaseSRWLockExclusive(&slimLock);
  });
  EXPECT_EQ(WaitForSingleObject(work.started.Get(), kPatienceMs), WAIT_OBJECT_0);
  EXPECT_EQ(WaitForSingleObject(work.entered.Get(), 20), DWORD{WAIT_TIMEOUT});
  ReleaseSRWLockExclusive(&slimLock);
  EXPECT_EQ(WaitForSingleObject(work.entered.Get(), kPatienceMs), WAIT_OBJECT_0);
  other.join();
}

TEST(SlimLocks, MakeOneStepOfAChange) {
  constexpr int kThreads = 4;
  constexpr int kChanges = 20000;
  int sum = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&] {
      for (int change = 0; change < kChanges; ++change) {
        AcquireSRWLockExclusive(&slimLock);
        ++sum;
        ReleaseSRWLockExclusive(&slimLock);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(sum, kThreads * kChanges);
}

}  // namespace
