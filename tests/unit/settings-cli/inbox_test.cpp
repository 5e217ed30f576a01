#include "settings-cli/inbox.h"

#include <thread>

#include <gmock/gmock.h>

using namespace tool::cli;
using namespace std::chrono_literals;

namespace {

Letter Numbered(int32_t number) {
  return Event{Slot::kTiltSensitivity, Number{number}};
}

int32_t NumberOf(const Delivery& delivery) {
  return std::get<Number>(std::get<Event>(delivery.letter).payload).value;
}

TEST(CliInbox, LettersComeInOrder) {
  Inbox inbox;
  for (int32_t number = 0; number < 3; ++number) inbox.Put(Numbered(number));
  for (int32_t number = 0; number < 3; ++number) {
    EXPECT_EQ(NumberOf(inbox.Take(Clock::now())), number);
  }
  EXPECT_EQ(inbox.Take(Clock::now()).wake, Wake::kDeadline);
}

TEST(CliInbox, ALetterWakesTheOneThatWaits) {
  Inbox inbox;
  std::thread sender([&] { inbox.Put(Numbered(7)); });
  EXPECT_EQ(NumberOf(inbox.Take(Clock::now() + 30s)), 7);
  sender.join();
}

TEST(CliInbox, AWaitWithoutEndIsWokenToo) {
  Inbox inbox;
  std::thread sender([&] { inbox.Interrupt(); });
  EXPECT_EQ(inbox.Take(Clock::time_point::max()).wake, Wake::kInterrupt);
  sender.join();
}

TEST(CliInbox, ADeadlineLongPastDoesNotWait) {
  Inbox inbox;
  EXPECT_EQ(inbox.Take(Clock::time_point::min()).wake, Wake::kDeadline);
  inbox.Put(Numbered(1));
  EXPECT_EQ(inbox.Take(Clock::time_point::min()).wake, Wake::kLetter);
}

TEST(CliInbox, AnInterruptionComesFirstUntilItIsForgotten) {
  Inbox inbox;
  inbox.Put(Numbered(1));
  inbox.Interrupt();
  EXPECT_EQ(inbox.Take(Clock::now()).wake, Wake::kInterrupt);
  EXPECT_EQ(inbox.Take(Clock::now()).wake, Wake::kInterrupt);
  inbox.ForgetInterrupt();
  EXPECT_EQ(NumberOf(inbox.Take(Clock::now())), 1);
}

}  // namespace
