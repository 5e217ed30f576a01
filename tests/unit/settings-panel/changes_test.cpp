#include "model/changes.h"

#include <gmock/gmock.h>

using namespace tool::panel;
using namespace std::chrono_literals;

namespace {

constexpr size_t kKey = 115;
const Clock::time_point kStart{};

TEST(PanelChanges, AChangeIsPendingUntilItsValueIsTold) {
  Changes changes;
  EXPECT_EQ(changes.StateOf(kKey), ChangeState::kNone);
  changes.Start(kKey, L"20", kStart);
  EXPECT_EQ(changes.StateOf(kKey), ChangeState::kPending);
  EXPECT_EQ(*changes.WantedOf(kKey), L"20");
  changes.OnTold(kKey, L"20");
  EXPECT_EQ(changes.StateOf(kKey), ChangeState::kNone);
  EXPECT_EQ(changes.WantedOf(kKey), nullptr);
}

TEST(PanelChanges, AValueThatWasOnItsWayBeforeDoesNotSettleTheChange) {
  Changes changes;
  changes.Start(kKey, L"20", kStart);
  changes.Start(kKey, L"21", kStart);
  changes.OnTold(kKey, L"20");
  EXPECT_EQ(*changes.WantedOf(kKey), L"21");
}

TEST(PanelChanges, WithoutItsCallbackAChangeIsNotTakenAfterThreeSeconds) {
  Changes changes;
  changes.Start(kKey, L"20", kStart);
  EXPECT_FALSE(changes.OnTime(kStart + 2999ms));
  EXPECT_EQ(changes.StateOf(kKey), ChangeState::kPending);
  EXPECT_TRUE(changes.OnTime(kStart + 3s));
  EXPECT_EQ(changes.StateOf(kKey), ChangeState::kNotTaken);
  EXPECT_EQ(changes.WantedOf(kKey), nullptr);
  EXPECT_FALSE(changes.ArePending());
  EXPECT_FALSE(changes.OnTime(kStart + 9s));
}

TEST(PanelChanges, ANewerChangeHasThreeSecondsOfItsOwn) {
  Changes changes;
  changes.Start(kKey, L"20", kStart);
  changes.Start(kKey, L"21", kStart + 2s);
  EXPECT_FALSE(changes.OnTime(kStart + 4s));
  EXPECT_TRUE(changes.OnTime(kStart + 5s));
}

TEST(PanelChanges, WhatWasNotTakenIsForgottenWithTheNextNews) {
  Changes changes;
  changes.Start(kKey, L"20", kStart);
  changes.OnTime(kStart + 3s);
  changes.OnTold(kKey + 1, L"20");
  EXPECT_EQ(changes.StateOf(kKey), ChangeState::kNotTaken);
  changes.OnTold(kKey, L"7");
  EXPECT_EQ(changes.StateOf(kKey), ChangeState::kNone);
}

}  // namespace
