// Callbacks that change the registrations while these are being called one after another.

#include "integration/settings/settings_test.h"

using namespace settings_test;

namespace {

class CallbackThatRegisters : public SettingsTest {
 protected:
  static inline void* const kFirst = Context(100);
  static inline void* const kMiddle = Context(200);
  static inline void* const kLast = Context(300);

  // Three registrations; while the middle one is being told of the alert delay, `action` runs.
  void BeginWith(std::function<void()> action) {
    library.KorvuISD_SetAPIVersion(9);
    for (void* const context : {kFirst, kMiddle, kLast}) Register(context);
    recorder.WhenCalled([action = std::move(action)](const Call& call) {
      if (call.slot == kOnAlertDelay && call.context == kMiddle) action();
    });
    ConnectQuietly();
  }
  void TearDown() override { recorder.WhenCalled(nullptr); }

  void Remove(void* context) { library.KorvuISD_RegisterCallbacks(nullptr, context); }

  // A record with nothing but the alert delay, so that registering calls nothing.
  void RegisterAlertDelay(void* context) {
    KorvuISD_Callbacks callbacks{};
    callbacks.OnBatteryAlertDelay = CallbackRecorder::All().OnBatteryAlertDelay;
    library.KorvuISD_RegisterCallbacks(&callbacks, context);
  }

  // The contexts that are told of a change, in order.
  std::vector<void*> Told(int index) {
    std::vector<void*> told;
    for (const Call& call : Announced(index, std::to_wstring(++number))) {
      told.push_back(call.context);
    }
    return told;
  }
  using Contexts = std::vector<void*>;

 private:
  int number = 0;
};

TEST_F(CallbackThatRegisters, MayRemoveItself) {
  BeginWith([this] { Remove(kMiddle); });
  EXPECT_EQ(Told(kAlertDelay), (Contexts{kFirst, kMiddle, kLast}));
  EXPECT_EQ(Told(kAlertDelay), (Contexts{kFirst, kLast}));
}

TEST_F(CallbackThatRegisters, MayRemoveTheOneBeforeIt) {
  bool removed = false;
  BeginWith([&] {
    if (!removed) Remove(kFirst);
    removed = true;
  });
  EXPECT_EQ(Told(kAlertDelay), (Contexts{kFirst, kMiddle, kLast}));
  EXPECT_EQ(Told(kAlertDelay), (Contexts{kMiddle, kLast}));
}

TEST_F(CallbackThatRegisters, MayRemoveTheOneAfterItWhichIsNotCalledAnyMore) {
  bool removed = false;
  BeginWith([&] {
    if (!removed) Remove(kLast);
    removed = true;
  });
  EXPECT_EQ(Told(kAlertDelay), (Contexts{kFirst, kMiddle}));
  EXPECT_EQ(Told(kAlertDelay), (Contexts{kFirst, kMiddle}));
}

TEST_F(CallbackThatRegisters, MayRemoveAll) {
  BeginWith([this] {
    for (void* const context : {kFirst, kMiddle, kLast}) Remove(context);
  });
  EXPECT_EQ(Told(kAlertDelay), (Contexts{kFirst, kMiddle}));
  EXPECT_EQ(Told(kAlertDelay), (Contexts{}));
}

TEST_F(CallbackThatRegisters, MayAddOneBeforeItWhichIsCalledFromTheNextValueOn) {
  BeginWith([this] { RegisterAlertDelay(Context(150)); });
  EXPECT_EQ(Told(kAlertDelay), (Contexts{kFirst, kMiddle, kLast}));
  EXPECT_EQ(Told(kAlertDelay), (Contexts{kFirst, Context(150), kMiddle, kLast}));
}

TEST_F(CallbackThatRegisters, MayAddOneAfterItWhichIsCalledInItsTurn) {
  BeginWith([this] { RegisterAlertDelay(Context(250)); });
  EXPECT_EQ(Told(kAlertDelay), (Contexts{kFirst, kMiddle, Context(250), kLast}));
  EXPECT_EQ(Told(kAlertDelay), (Contexts{kFirst, kMiddle, Context(250), kLast}));
}

TEST_F(CallbackThatRegisters, MayReplaceItself) {
  BeginWith([this] {
    KorvuISD_Callbacks callbacks{};
    callbacks.OnUndockedTimerWait = CallbackRecorder::All().OnUndockedTimerWait;
    library.KorvuISD_RegisterCallbacks(&callbacks, kMiddle);
  });
  EXPECT_EQ(Told(kAlertDelay), (Contexts{kFirst, kMiddle, kLast}));
  EXPECT_EQ(Told(kAlertDelay), (Contexts{kFirst, kLast}));
  EXPECT_EQ(Told(kUndockedWait), (Contexts{kFirst, kMiddle, kLast}));
}

TEST_F(CallbackThatRegisters, MayAddAndRemoveManyInEveryRound) {
  BeginWith([this] {
    for (uintptr_t i = 1; i <= 200; ++i) RegisterAlertDelay(Context(1000 + i));
    for (uintptr_t i = 1; i <= 200; ++i) Remove(Context(1000 + i));
  });
  for (int round = 0; round < 50; ++round) {
    ASSERT_EQ(Told(kAlertDelay), (Contexts{kFirst, kMiddle, kLast}));
  }
}

TEST_F(CallbackThatRegisters, MayRemoveItselfWhileItIsBeingRegistered) {
  recorder.WhenCalled([this](const Call& call) {
    if (call.slot == kOnWedgeCapacity) Remove(call.context);
  });
  library.KorvuISD_SetAPIVersion(9);
  Register(kMiddle);
  recorder.WhenCalled(nullptr);
  EXPECT_EQ(recorder.Calls(), (Calls{{kOnWedgeCapacity, kMiddle, L"16"}}));
  Register(kLast);
  ConnectQuietly();
  EXPECT_EQ(Told(kAlertDelay), (Contexts{kLast}));
}

TEST_F(CallbackThatRegisters, IsToldTheFixedNumbersBeforeItGoesOn) {
  BeginWith([this] { Register(kFirst); });
  EXPECT_EQ(Announced(kAlertDelay, L"1"), (Calls{{kOnAlertDelay, kFirst, L"1"},
                                                 {kOnAlertDelay, kMiddle, L"1"},
                                                 {kOnWedgeCapacity, kFirst, L"16"},
                                                 {kOnFirstRange, kFirst, L"0 6"},
                                                 {kOnSecondRange, kFirst, L"-90 90"},
                                                 {kOnAlertDelay, kLast, L"1"}}));
}

}  // namespace
