#include "model/presence.h"

#include <gmock/gmock.h>

using namespace tool::panel;
using namespace std::chrono_literals;
using enum Presence::State;
using enum Presence::Question;

namespace {

const Clock::time_point kBegin{};

// The service was found, and has answered for all its values.
Presence There() {
  Presence presence;
  presence.OnConnected(kBegin);
  presence.OnAnswer(true, kBegin);
  return presence;
}

TEST(PanelPresence, AtFirstItIsSearchedForAndNothingIsAsked) {
  Presence presence;
  EXPECT_EQ(presence.Get(), kSearching);
  EXPECT_EQ(presence.OnTime(kBegin + 1h), kNone);
  EXPECT_EQ(presence.Get(), kSearching);
}

TEST(PanelPresence, ItIsThereWhenItsValuesAreRead) {
  Presence presence;
  EXPECT_EQ(presence.OnConnected(kBegin), kAreValuesRead);
  EXPECT_EQ(presence.Get(), kReading);
  EXPECT_EQ(presence.OnAnswer(true, kBegin), kNone);
  EXPECT_EQ(presence.Get(), kThere);
}

TEST(PanelPresence, ItIsAskedASecondAfterItsLastAnswer) {
  Presence presence = There();
  EXPECT_EQ(presence.OnTime(kBegin + 999ms), kNone);
  EXPECT_EQ(presence.OnTime(kBegin + 1s), kIsAlive);
  EXPECT_EQ(presence.OnTime(kBegin + 1s), kNone);
}

TEST(PanelPresence, FourSecondsOfSilenceAreItsAbsence) {
  Presence presence = There();
  presence.OnTime(kBegin + 1s);
  presence.OnTime(kBegin + 4999ms);
  EXPECT_EQ(presence.Get(), kThere);
  EXPECT_EQ(presence.OnTime(kBegin + 5s), kNone);
  EXPECT_EQ(presence.Get(), kAway);
}

TEST(PanelPresence, TheQuestionThatWasUnansweredTellsOfTheReturn) {
  Presence presence = There();
  presence.OnTime(kBegin + 1s);
  presence.OnTime(kBegin + 5s);
  EXPECT_EQ(presence.OnAnswer(false, kBegin + 60s), kAreValuesRead);
  EXPECT_EQ(presence.Get(), kReturning);
  EXPECT_EQ(presence.OnAnswer(true, kBegin + 61s), kNone);
  EXPECT_EQ(presence.Get(), kThere);
}

TEST(PanelPresence, AnEmptyAnswerIsALossUntilTheNextOne) {
  Presence presence = There();
  presence.OnTime(kBegin + 1s);
  EXPECT_EQ(presence.OnAnswer(false, kBegin + 2s), kAreValuesRead);
  EXPECT_EQ(presence.Get(), kAway);
  presence.OnAnswer(true, kBegin + 3s);
  EXPECT_EQ(presence.Get(), kThere);
}

TEST(PanelPresence, ALateAnswerIsAnAnswer) {
  Presence presence = There();
  presence.OnTime(kBegin + 1s);
  presence.OnTime(kBegin + 5s);
  presence.OnAnswer(true, kBegin + 6s);
  EXPECT_EQ(presence.Get(), kThere);
  EXPECT_EQ(presence.OnTime(kBegin + 7s), kIsAlive);
}

TEST(PanelPresence, AReturnThatEndsInSilenceIsALoss) {
  Presence presence = There();
  presence.OnTime(kBegin + 1s);
  presence.OnTime(kBegin + 5s);
  presence.OnAnswer(false, kBegin + 60s);
  presence.OnTime(kBegin + 90s);
  EXPECT_EQ(presence.Get(), kAway);
}

}  // namespace
