// Locks without a handle.

#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "conformance/pipes.h"

using namespace conformance;

namespace {

SRWLOCK g_slimLock = SRWLOCK_INIT;

TEST(SlimLocks, KeepOtherThreadsOutUntilTheyAreReleased) {
  struct Work {
    Handle started{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    Handle entered{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  } work;
  AcquireSRWLockExclusive(&g_slimLock);
  std::thread other([&] {
    SetEvent(work.started.Get());
    AcquireSRWLockExclusive(&g_slimLock);
    SetEvent(work.entered.Get());
    ReleaseSRWLockExclusive(&g_slimLock);
  });
  EXPECT_EQ(WaitForSingleObject(work.started.Get(), kPatienceMs), WAIT_OBJECT_0);
  EXPECT_EQ(WaitForSingleObject(work.entered.Get(), 20), DWORD{WAIT_TIMEOUT});
  ReleaseSRWLockExclusive(&g_slimLock);
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
        AcquireSRWLockExclusive(&g_slimLock);
        ++sum;
        ReleaseSRWLockExclusive(&g_slimLock);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(sum, kThreads * kChanges);
}

}  // namespace
