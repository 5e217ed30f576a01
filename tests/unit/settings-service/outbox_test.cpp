#include "settings-service/outbox.h"

#include <chrono>
#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace tool::service {
namespace {

using std::chrono::milliseconds;

SharedText Text(std::wstring text) {
  return std::make_shared<const std::wstring>(std::move(text));
}

class ServiceOutbox : public testing::Test {
 protected:
  const Outbox::Time start{std::chrono::seconds(1000)};
  Outbox outbox;
};

TEST_F(ServiceOutbox, IsFirstInFirstOut) {
  ASSERT_TRUE(outbox.Push(Text(L"a"), start));
  ASSERT_TRUE(outbox.Push(Text(L"b"), start));
  EXPECT_EQ(*outbox.TakeDue(start), L"a");
  EXPECT_EQ(*outbox.TakeDue(start), L"b");
  EXPECT_EQ(outbox.TakeDue(start), nullptr);
}

TEST_F(ServiceOutbox, KeepsAMessageUntilItIsDue) {
  ASSERT_TRUE(outbox.Push(Text(L"a"), start + milliseconds(5)));
  EXPECT_EQ(outbox.NextDue(), start + milliseconds(5));
  EXPECT_EQ(outbox.TakeDue(start + milliseconds(4)), nullptr);
  EXPECT_EQ(*outbox.TakeDue(start + milliseconds(5)), L"a");
  EXPECT_EQ(outbox.NextDue(), std::nullopt);
}

TEST_F(ServiceOutbox, MessageDoesNotOvertakeALateOne) {
  ASSERT_TRUE(outbox.Push(Text(L"late"), start + milliseconds(5)));
  ASSERT_TRUE(outbox.Push(Text(L"prompt"), start));
  EXPECT_EQ(outbox.TakeDue(start), nullptr);
  EXPECT_EQ(*outbox.TakeDue(start + milliseconds(5)), L"late");
  EXPECT_EQ(*outbox.TakeDue(start + milliseconds(5)), L"prompt");
}

TEST_F(ServiceOutbox, TakesTenThousandOfTheLongestAnnouncementsOnCommand) {
  const SharedText longest = Text(std::wstring(1300, L'x'));
  const size_t narrow = sizeof(wchar_t) / 2;  // the bound is in bytes, the promise is for Windows
  for (size_t i = 0; i < 10'000 / narrow; ++i) ASSERT_TRUE(outbox.Push(longest, start)) << i;
}

TEST_F(ServiceOutbox, IsFullAtItsBound) {
  const SharedText message = Text(std::wstring(1024 * 1024, L'x'));
  size_t taken = 0;
  while (outbox.Push(message, start)) ++taken;
  EXPECT_EQ(taken, Outbox::kMostBytes / (1024 * 1024 * sizeof(wchar_t)) - 1);
  EXPECT_FALSE(outbox.Push(message, start));
}

TEST_F(ServiceOutbox, ShortMessagesCountWithWhatTheyTake) {
  size_t taken = 0;
  while (outbox.Push(Text(L""), start)) ++taken;
  EXPECT_LE(taken, Outbox::kMostBytes / 64);
}

TEST_F(ServiceOutbox, HasRoomAgainWhenMessagesAreTaken) {
  const SharedText message = Text(std::wstring(1024 * 1024, L'x'));
  while (outbox.Push(message, start)) {
  }
  outbox.TakeDue(start);
  EXPECT_TRUE(outbox.Push(message, start));
  EXPECT_FALSE(outbox.Push(message, start));
}

}  // namespace
}  // namespace tool::service
