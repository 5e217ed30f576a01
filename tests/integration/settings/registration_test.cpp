// Registering callbacks: what is taken from the record, and what is told at once.

#include "integration/settings/registration_fixture.h"

using namespace settings_test;

namespace {

TEST_F(Registration, IsToldTheWedgeCountAndTheTwoRangesInThisOrder) {
  Register(Context(7));
  EXPECT_EQ(recorder.Calls(), Greeting(Context(7)));
}

TEST_F(Registration, OfASecondContextTellsThatOneOnly) {
  Register(Context(7));
  recorder.Forget();
  Register(Context(8));
  EXPECT_EQ(recorder.Calls(), Greeting(Context(8)));
}

TEST_F(Registration, IsToldOnTheThreadThatRegisters) {
  Register(Context(7));
  ASSERT_EQ(recorder.Calls().size(), 3U);
  for (const Call& call : recorder.Calls()) EXPECT_EQ(call.thread, GetCurrentThreadId());
}

TEST_F(Registration, SkipsTheNullSlotsOfItsGreeting) {
  RegisterOnly(Context(7), {kOnFirstRange, kOnSecondRange});
  RegisterOnly(Context(8), {kOnWedgeCapacity, kOnSecondRange});
  RegisterOnly(Context(9), {kOnWedgeCapacity, kOnFirstRange});
  RegisterOnly(Context(10), {});
  EXPECT_EQ(recorder.Calls(),
            (Calls{Greeting(Context(7))[1], Greeting(Context(7))[2], Greeting(Context(8))[0],
                   Greeting(Context(8))[2], Greeting(Context(9))[0], Greeting(Context(9))[1]}));
}

TEST_F(Registration, UnderTheSameContextReplacesTheOneBefore) {
  Begin();
  RegisterOnly(LowerContext(), {kOnAlertDelay});
  RegisterOnly(LowerContext(), {kOnUndockedWait, kOnFirstRange});
  EXPECT_EQ(recorder.Calls(), (Calls{Greeting(LowerContext())[1]}));
  EXPECT_EQ(AnnouncedAll({{kAlertDelay, L"1"}, {kUndockedWait, L"2"}}),
            (Calls{{kOnAlertDelay, HigherContext(), L"1"},
                   {kOnUndockedWait, LowerContext(), L"2"},
                   {kOnUndockedWait, HigherContext(), L"2"}}));
}

TEST_F(Registration, UnderTheSameContextIsToldTheFixedNumbersAgain) {
  Begin();
  Register(LowerContext());
  EXPECT_EQ(recorder.Calls(), Greeting(LowerContext()));
}

TEST_F(Registration, OfNullRemovesTheOneBeforeAndTellsNothing) {
  Begin();
  library.KorvuISD_RegisterCallbacks(nullptr, LowerContext());
  EXPECT_EQ(recorder.Calls(), kNothing);
  EXPECT_EQ(Announced(kAlertDelay, L"1"), (Calls{{kOnAlertDelay, HigherContext(), L"1"}}));
  library.KorvuISD_RegisterCallbacks(nullptr, HigherContext());
  EXPECT_EQ(Announced(kAlertDelay, L"2"), kNothing);
}

TEST_F(Registration, AfterARemovalStartsAfresh) {
  library.KorvuISD_SetAPIVersion(9);
  Register(LowerContext());
  library.KorvuISD_RegisterCallbacks(nullptr, LowerContext());
  library.KorvuISD_SetAPIVersion(0);
  recorder.Forget();
  Register(LowerContext());
  EXPECT_EQ(recorder.Calls(), Greeting(LowerContext()));
  ConnectQuietly();
  EXPECT_EQ(SlotsOf(FireEverySlot()), ValueSlots(0, 23)) << "no later slot of before is left";
}

TEST_F(Registration, MayHaveANullContext) {
  Begin();
  Register(nullptr);
  EXPECT_EQ(Announced(kAlertDelay, L"1"), (Calls{{kOnAlertDelay, nullptr, L"1"},
                                                 {kOnAlertDelay, LowerContext(), L"1"},
                                                 {kOnAlertDelay, HigherContext(), L"1"}}));
}

TEST_F(Registration, OutlivesTheRecordThatWasHandedOver) {
  library.KorvuISD_SetAPIVersion(9);
  KorvuISD_Callbacks callbacks = CallbackRecorder::All();
  library.KorvuISD_RegisterCallbacks(&callbacks, LowerContext());
  callbacks = {};
  ConnectQuietly();
  EXPECT_EQ(Announced(kMagnifier, L"1"), (Calls{{kOnMagnifier, LowerContext(), L"1"}}));
}

TEST_F(Registration, ReceivesNoValuesThatCameBeforeIt) {
  Begin();
  ASSERT_EQ(Announced(kAlertDelay, L"1").size(), 2U);
  recorder.Forget();
  Register(Context(7));
  EXPECT_EQ(Settle(), Greeting(Context(7)));
  EXPECT_EQ(Announced(kAlertDelay, L"1"), kNothing);
}

TEST_F(Registration, LacksExactlyTheCallbacksThatAreNull) {
  library.KorvuISD_SetAPIVersion(9);
  // One context for each slot, without that slot.
  std::vector<void*> contexts;
  for (int slot = 0; slot < support::kSlotCount; ++slot) {
    KorvuISD_Callbacks callbacks = CallbackRecorder::All();
    CallbackRecorder::ClearSlot(callbacks, slot);
    contexts.push_back(Context(static_cast<uintptr_t>(slot) + 1));
    library.KorvuISD_RegisterCallbacks(&callbacks, contexts.back());
  }
  ConnectQuietly();
  const Calls calls = FireEverySlot();
  for (const int slot : ValueSlots(0, support::kSlotCount)) {
    std::vector<void*> called;
    for (const Call& call : calls) {
      if (call.slot == slot) called.push_back(call.context);
    }
    std::vector<void*> expected = contexts;
    expected.erase(expected.begin() + slot);
    EXPECT_EQ(called, expected) << support::SlotName(slot);
  }
}

TEST_F(Registration, EndsWithAShutdownAndSoDoTheValues) {
  Begin();
  ASSERT_EQ(Announced(kAlertDelay, L"1").size(), 2U);
  library.KorvuISD_Shutdown();
  ConnectQuietly();
  EXPECT_EQ(Announced(kAlertDelay, L"2"), kNothing);
  RegisterBoth();
  EXPECT_EQ(Announced(kAlertDelay, L"2"), kNothing) << "the new client has stored it";
  EXPECT_EQ(Announced(kAlertDelay, L"1"), Both({{kOnAlertDelay, arguments::Value(1)}}));
  EXPECT_EQ(Announced(kUndockedWait, L"0"), kNothing) << "zero at first again";
}

TEST_F(Registration, ShutdownForgetsTheValuesOfBefore) {
  Begin();
  ASSERT_EQ(AnnouncedAll({{kAlertDelay, L"1"},
                          {kHidRouterVersion, L"1.0"},
                          {kSideSwitchOptions, LR"({"5":"Pan"})"},
                          {kPenSerial, L"S1"},
                          {kPenId, L"P1"}})
                .size(),
            6U);
  library.KorvuISD_Shutdown();
  ConnectQuietly();
  RegisterBoth();
  EXPECT_EQ(AnnouncedAll({{kAlertDelay, L"1"},
                          {kServiceVersion, L"2.0"},
                          {kSideSwitchOptions, L""},
                          {kPenBattery, L"50"}}),
            Both({{kOnAlertDelay, arguments::Value(1)},
                  {kOnVersions, arguments::Versions(L"", L"2.0")},
                  {kOnSideSwitchOptions, arguments::Options({})}}));
}

}  // namespace
