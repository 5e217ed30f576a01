// Handles of all kinds: closing and duplicating.

#include <gtest/gtest.h>

#include "conformance/pipes.h"

using namespace conformance;

namespace {

HANDLE Duplicate(HANDLE handle) {
  HANDLE duplicate = nullptr;
  EXPECT_EQ(Try([&] {
              return DuplicateHandle(GetCurrentProcess(), handle, GetCurrentProcess(), &duplicate,
                                     0, FALSE, DUPLICATE_SAME_ACCESS);
            }),
            kSuccess);
  return duplicate;
}

TEST(Handles, AreClosedOnce) {
  const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  EXPECT_EQ(Try([&] { return CloseHandle(event); }), kSuccess);
  EXPECT_EQ(Try([&] { return CloseHandle(event); }), FailsWith(ERROR_INVALID_HANDLE));
}

TEST(Handles, ThatAreNullCannotBeClosed) {
  EXPECT_EQ(Try([] { return CloseHandle(nullptr); }), FailsWith(ERROR_INVALID_HANDLE));
}

TEST(Handles, AreDifferentFromOneAnother) {
  const Handle one(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  const Handle other(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  EXPECT_TRUE(one.IsOpen());
  EXPECT_TRUE(other.IsOpen());
  EXPECT_NE(one.Get(), other.Get());
}

TEST(Handles, ThatAreDuplicatesMeanTheSameObject) {
  const Handle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  const Handle duplicate(Duplicate(event.Get()));
  EXPECT_NE(duplicate.Get(), event.Get());
  SetEvent(event.Get());
  EXPECT_EQ(WaitForSingleObject(duplicate.Get(), 0), WAIT_OBJECT_0);
  ResetEvent(duplicate.Get());
  EXPECT_EQ(WaitForSingleObject(event.Get(), 0), DWORD{WAIT_TIMEOUT});
}

TEST(Handles, ThatAreDuplicatesOutliveTheirOriginal) {
  Handle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  const Handle duplicate(Duplicate(event.Get()));
  event.Close();
  EXPECT_EQ(Try([&] { return SetEvent(duplicate.Get()); }), kSuccess);
  EXPECT_EQ(WaitForSingleObject(duplicate.Get(), 0), WAIT_OBJECT_0);
}

TEST(Handles, ThatAreClosedCannotBeDuplicated) {
  HANDLE duplicate = nullptr;
  EXPECT_EQ(Try([&] {
              return DuplicateHandle(GetCurrentProcess(), ClosedHandle(), GetCurrentProcess(),
                                     &duplicate, 0, FALSE, DUPLICATE_SAME_ACCESS);
            }),
            FailsWith(ERROR_INVALID_HANDLE));
}

}  // namespace
