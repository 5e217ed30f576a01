#include "platform/unique_handle.h"

#include <type_traits>

#include <gtest/gtest.h>

using namespace KorvuISD;

namespace {

// Nothing else in this program makes handles meanwhile, so a closed one names nothing.
bool Exists(HANDLE handle) {
  return WaitForSingleObject(handle, 0) != WAIT_FAILED;
}

HANDLE NewEvent() {
  return CreateEventW(nullptr, TRUE, FALSE, nullptr);
}

TEST(UniqueHandle, NoPipeIsAllBitsSetAndNoEventIsNull) {
  EXPECT_EQ(PipeHandle().Get(), INVALID_HANDLE_VALUE);
  EXPECT_EQ(EventHandle().Get(), nullptr);
  EXPECT_FALSE(PipeHandle().IsOpen());
  EXPECT_FALSE(EventHandle().IsOpen());
  EXPECT_FALSE(PipeHandle(INVALID_HANDLE_VALUE).IsOpen());
  EXPECT_FALSE(EventHandle(nullptr).IsOpen());
}

TEST(UniqueHandle, ClosesItsHandleWhenItGoes) {
  const HANDLE event = NewEvent();
  {
    const EventHandle owner(event);
    EXPECT_TRUE(owner.IsOpen());
    EXPECT_EQ(owner.Get(), event);
    EXPECT_TRUE(Exists(event));
  }
  EXPECT_FALSE(Exists(event));
}

TEST(UniqueHandle, GivesItsHandleAwayOpen) {
  EventHandle owner(NewEvent());
  const HANDLE event = owner.Release();
  EXPECT_FALSE(owner.IsOpen());
  EXPECT_TRUE(Exists(event));
  owner.Reset();
  EXPECT_TRUE(Exists(event));
  CloseHandle(event);
}

TEST(UniqueHandle, ResetClosesTheOldHandleAndTakesTheNew) {
  const HANDLE first = NewEvent();
  const HANDLE second = NewEvent();
  EventHandle owner(first);
  owner.Reset(second);
  EXPECT_FALSE(Exists(first));
  EXPECT_EQ(owner.Get(), second);
  owner.Reset();
  EXPECT_FALSE(Exists(second));
  EXPECT_EQ(owner.Get(), nullptr);
}

TEST(UniqueHandle, AMoveLeavesNothingBehind) {
  const HANDLE event = NewEvent();
  EventHandle first(event);
  EventHandle second(std::move(first));
  EXPECT_FALSE(first.IsOpen());
  EXPECT_EQ(second.Get(), event);
  EXPECT_TRUE(Exists(event));
}

TEST(UniqueHandle, AMoveOverAnotherClosesThat) {
  const HANDLE kept = NewEvent();
  const HANDLE replaced = NewEvent();
  EventHandle source(kept);
  EventHandle target(replaced);
  target = std::move(source);
  EXPECT_FALSE(Exists(replaced));
  EXPECT_TRUE(Exists(kept));
  EXPECT_EQ(target.Get(), kept);
  EXPECT_FALSE(source.IsOpen());
}

TEST(UniqueHandle, AMoveOntoItselfKeepsTheHandle) {
  const HANDLE event = NewEvent();
  EventHandle owner(event);
  EventHandle& alias = owner;
  owner = std::move(alias);
  EXPECT_EQ(owner.Get(), event);
  EXPECT_TRUE(Exists(event));
}

TEST(UniqueHandle, HasOneOwner) {
  EXPECT_FALSE(std::is_copy_constructible_v<EventHandle>);
  EXPECT_FALSE(std::is_copy_assignable_v<EventHandle>);
}

TEST(ManualResetEvent, IsNotSignalledAtFirstAndStaysSignalled) {
  const EventHandle event = CreateManualResetEvent();
  ASSERT_TRUE(event.IsOpen());
  EXPECT_EQ(WaitForSingleObject(event.Get(), 0), DWORD{WAIT_TIMEOUT});
  SetEvent(event.Get());
  EXPECT_EQ(WaitForSingleObject(event.Get(), 0), DWORD{WAIT_OBJECT_0});
  EXPECT_EQ(WaitForSingleObject(event.Get(), 0), DWORD{WAIT_OBJECT_0});
  ResetEvent(event.Get());
  EXPECT_EQ(WaitForSingleObject(event.Get(), 0), DWORD{WAIT_TIMEOUT});
}

}  // namespace
