// The two waits.

#include <array>
#include <chrono>
#include <thread>

#include <gtest/gtest.h>

#include "conformance/pipes.h"

using namespace conformance;

namespace {

struct ThreeEvents {
  Handle first{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  Handle second{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  Handle third{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  std::array<HANDLE, 3> all{first.Get(), second.Get(), third.Get()};

  DWORD WaitForAny(DWORD ms) { return WaitForMultipleObjects(3, all.data(), FALSE, ms); }
};

// Sets an event a little later, on another thread.
class LateSignal {
 public:
  explicit LateSignal(HANDLE event)
      : thread([=] {
          Sleep(50);
          SetEvent(event);
        }) {}
  ~LateSignal() { thread.join(); }
  LateSignal(const LateSignal&) = delete;
  LateSignal& operator=(const LateSignal&) = delete;

 private:
  std::thread thread;
};

TEST(Waits, EndAtOnceIfTheObjectIsSignalled) {
  ThreeEvents events;
  SetEvent(events.first.Get());
  EXPECT_EQ(WaitForSingleObject(events.first.Get(), INFINITE), WAIT_OBJECT_0);
}

TEST(Waits, TimeOutAfterTheTimeAndLeaveTheLastErrorAlone) {
  ThreeEvents events;
  SetLastError(kUntouched);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(WaitForSingleObject(events.first.Get(), 100), DWORD{WAIT_TIMEOUT});
  EXPECT_EQ(events.WaitForAny(100), DWORD{WAIT_TIMEOUT});
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(150));
  EXPECT_EQ(GetLastError(), kUntouched);
}

TEST(Waits, OfNoTimeOnlyLook) {
  ThreeEvents events;
  EXPECT_EQ(WaitForSingleObject(events.first.Get(), 0), DWORD{WAIT_TIMEOUT});
  EXPECT_EQ(events.WaitForAny(0), DWORD{WAIT_TIMEOUT});
}

TEST(Waits, EndWhenAnotherThreadSignals) {
  ThreeEvents events;
  {
    const LateSignal late(events.first.Get());
    EXPECT_EQ(WaitForSingleObject(events.first.Get(), INFINITE), WAIT_OBJECT_0);
  }
  ResetEvent(events.first.Get());
  const LateSignal late(events.third.Get());
  EXPECT_EQ(events.WaitForAny(INFINITE), WAIT_OBJECT_0 + 2);
}

TEST(Waits, TellTheLowestOfSeveralSignalledObjects) {
  ThreeEvents events;
  SetEvent(events.third.Get());
  EXPECT_EQ(events.WaitForAny(INFINITE), WAIT_OBJECT_0 + 2);
  SetEvent(events.second.Get());
  EXPECT_EQ(events.WaitForAny(INFINITE), WAIT_OBJECT_0 + 1);
  SetEvent(events.first.Get());
  EXPECT_EQ(events.WaitForAny(INFINITE), WAIT_OBJECT_0);
}

TEST(Waits, ForAllNeedAllOfThem) {
  ThreeEvents events;
  SetEvent(events.first.Get());
  SetEvent(events.third.Get());
  EXPECT_EQ(WaitForMultipleObjects(3, events.all.data(), TRUE, 0), DWORD{WAIT_TIMEOUT});
  SetEvent(events.second.Get());
  EXPECT_EQ(WaitForMultipleObjects(3, events.all.data(), TRUE, 0), WAIT_OBJECT_0);
}

TEST(Waits, ForAClosedHandleFail) {
  const HANDLE closed = ClosedHandle();
  EXPECT_EQ(Try([&] { return WaitForSingleObject(closed, 0) != WAIT_FAILED; }),
            FailsWith(ERROR_INVALID_HANDLE));
}

TEST(Waits, ForNoHandleFail) {
  EXPECT_EQ(Try([] { return WaitForSingleObject(nullptr, 0) != WAIT_FAILED; }),
            FailsWith(ERROR_INVALID_HANDLE));
}

TEST(Waits, ThatIncludeAClosedHandleFailEvenIfAnotherIsSignalled) {
  ThreeEvents events;
  SetEvent(events.first.Get());
  events.third.Close();
  EXPECT_EQ(Try([&] { return events.WaitForAny(INFINITE) != WAIT_FAILED; }),
            FailsWith(ERROR_INVALID_HANDLE));
}

TEST(Waits, ForNothingAreRefused) {
  ThreeEvents events;
  EXPECT_EQ(
      Try([&] { return WaitForMultipleObjects(0, events.all.data(), FALSE, 0) != WAIT_FAILED; }),
      FailsWith(ERROR_INVALID_PARAMETER));
}

}  // namespace
