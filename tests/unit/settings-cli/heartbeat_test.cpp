#include "settings-cli/heartbeat.h"

#include <gmock/gmock.h>

#include "shared/keys.h"

using namespace tool;
using namespace tool::cli;
using namespace std::chrono_literals;

namespace {

const Answer kAlive{1, L"?", L"1"};
const Answer kValue{1, L"ComponentsDriver\\\\ShowHoverClickUI", L""};
const Answer kLostAnswer{1, L"", L""};
const Answer kFailedProbe{1, L"?", L""};
const std::wstring kProbe(kConnectionProbe);

class CliHeartbeat : public testing::Test {
 protected:
  // Started, and all values are through.
  void Rest() {
    heartbeat.Start(now);
    const Heartbeat::Step step = heartbeat.OnAnswer(kValue, now);
    ASSERT_FALSE(step.ask || step.notice);
  }
  Heartbeat::Step WaitUntilNext() {
    now = heartbeat.NextTime();
    return heartbeat.OnTime(now);
  }

  Clock::time_point now{1h};
  Heartbeat heartbeat;
};

TEST_F(CliHeartbeat, AsksFirstForAValueThatTheLibraryDoesNotAskFor) {
  const Heartbeat::Step step = heartbeat.Start(now);
  EXPECT_EQ(step.ask, ValueRequest(130));
  EXPECT_FALSE(step.notice);
}

TEST_F(CliHeartbeat, RestsAfterAnAnswerAndAsksAgain) {
  Rest();
  EXPECT_EQ(heartbeat.NextTime(), now + 1s);
  const Heartbeat::Step step = WaitUntilNext();
  EXPECT_EQ(step.ask, kProbe);
  EXPECT_FALSE(step.notice);
  const Heartbeat::Step next = heartbeat.OnAnswer(kAlive, now);
  EXPECT_FALSE(next.ask || next.notice);
}

TEST_F(CliHeartbeat, DoesNothingBeforeItsTime) {
  Rest();
  const Heartbeat::Step step = heartbeat.OnTime(now + 500ms);
  EXPECT_FALSE(step.ask || step.notice);
}

TEST_F(CliHeartbeat, AnEmptyAnswerIsALossThatIsToldOnce) {
  Rest();
  WaitUntilNext();
  Heartbeat::Step step = heartbeat.OnAnswer(kLostAnswer, now);
  EXPECT_EQ(step.notice, Heartbeat::Notice::kLost);
  EXPECT_EQ(step.ask, kProbe);
  EXPECT_TRUE(heartbeat.IsLost());
  step = heartbeat.OnAnswer(kLostAnswer, now);
  EXPECT_FALSE(step.notice);
  EXPECT_EQ(step.ask, kProbe);
}

TEST_F(CliHeartbeat, AFailedProbeIsALossThoughItsRequestPartIsThere) {
  Rest();
  WaitUntilNext();
  EXPECT_EQ(heartbeat.OnAnswer(kFailedProbe, now).notice, Heartbeat::Notice::kLost);
}

TEST_F(CliHeartbeat, SilenceIsALossAndTheOpenRequestStays) {
  Rest();
  WaitUntilNext();
  EXPECT_EQ(heartbeat.NextTime(), now + 4s);
  const Heartbeat::Step step = WaitUntilNext();
  EXPECT_EQ(step.notice, Heartbeat::Notice::kLost);
  EXPECT_FALSE(step.ask);
  EXPECT_EQ(heartbeat.NextTime(), Clock::time_point::max());
}

TEST_F(CliHeartbeat, AnAnswerAfterALossTellsThatTheServiceIsBackAndStartsAnew) {
  Rest();
  WaitUntilNext();
  heartbeat.OnAnswer(kLostAnswer, now);
  const Heartbeat::Step step = heartbeat.OnAnswer(kAlive, now);
  EXPECT_EQ(step.notice, Heartbeat::Notice::kBack);
  EXPECT_EQ(step.ask, ValueRequest(130));
  EXPECT_FALSE(heartbeat.IsLost());
}

TEST_F(CliHeartbeat, AllValuesAreGivenMoreTimeThanOneAnswer) {
  heartbeat.Start(now);
  EXPECT_EQ(heartbeat.NextTime(), now + 30s);
  heartbeat.OnSignOfLife(now + 20s);
  EXPECT_EQ(heartbeat.NextTime(), now + 50s);
  EXPECT_EQ(WaitUntilNext().notice, Heartbeat::Notice::kLost);
}

TEST_F(CliHeartbeat, ACallbackIsASignOfLifeWhileAnAnswerIsDue) {
  Rest();
  WaitUntilNext();
  heartbeat.OnSignOfLife(now + 3s);
  EXPECT_EQ(heartbeat.NextTime(), now + 7s);
}

TEST_F(CliHeartbeat, ACallbackWhileRestingChangesNothing) {
  Rest();
  heartbeat.OnSignOfLife(now + 500ms);
  EXPECT_EQ(heartbeat.NextTime(), now + 1s);
}

}  // namespace
