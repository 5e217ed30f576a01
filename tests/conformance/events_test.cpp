// Events.

#include <gtest/gtest.h>

#include "conformance/pipes.h"

using namespace conformance;

namespace {

bool IsSet(const Handle& event) {
  return WaitForSingleObject(event.Get(), 0) == WAIT_OBJECT_0;
}

TEST(Events, AreSignalledFromTheStartOrNotAsAskedFor) {
  const Handle set(CreateEventW(nullptr, TRUE, TRUE, nullptr));
  const Handle unset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  EXPECT_TRUE(IsSet(set));
  EXPECT_FALSE(IsSet(unset));
}

TEST(Events, WithManualResetStaySignalledUntilTheyAreReset) {
  const Handle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  EXPECT_EQ(Try([&] { return SetEvent(event.Get()); }), kSuccess);
  EXPECT_TRUE(IsSet(event));
  EXPECT_TRUE(IsSet(event));
  EXPECT_EQ(Try([&] { return ResetEvent(event.Get()); }), kSuccess);
  EXPECT_FALSE(IsSet(event));
}

TEST(Events, WithAutomaticResetLetOneWaitThrough) {
  const Handle event(CreateEventW(nullptr, FALSE, TRUE, nullptr));
  EXPECT_TRUE(IsSet(event));
  EXPECT_FALSE(IsSet(event));
}

TEST(Events, AreSetAndResetTwiceWithoutHarm) {
  const Handle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  EXPECT_EQ(Try([&] { return ResetEvent(event.Get()); }), kSuccess);
  EXPECT_EQ(Try([&] { return SetEvent(event.Get()); }), kSuccess);
  EXPECT_EQ(Try([&] { return SetEvent(event.Get()); }), kSuccess);
  EXPECT_TRUE(IsSet(event));
}

TEST(Events, ThatAreClosedCannotBeSetOrReset) {
  const HANDLE closed = ClosedHandle();
  EXPECT_EQ(Try([&] { return SetEvent(closed); }), FailsWith(ERROR_INVALID_HANDLE));
  EXPECT_EQ(Try([&] { return ResetEvent(closed); }), FailsWith(ERROR_INVALID_HANDLE));
}

// All bits set and null are what stands for no handle.
TEST(Events, ThatAreNoneCannotBeSetOrReset) {
  for (const HANDLE none : {INVALID_HANDLE_VALUE, HANDLE{nullptr}}) {
    EXPECT_EQ(Try([&] { return SetEvent(none); }), FailsWith(ERROR_INVALID_HANDLE));
    EXPECT_EQ(Try([&] { return ResetEvent(none); }), FailsWith(ERROR_INVALID_HANDLE));
  }
}

TEST(Events, AreNotPipes) {
  const PipePair pair;
  EXPECT_EQ(Try([&] { return SetEvent(pair.client.Get()); }), FailsWith(ERROR_INVALID_HANDLE));
}

}  // namespace
