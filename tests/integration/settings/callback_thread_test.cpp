// Where callbacks run, what they hold, and what they may do.

#include <atomic>
#include <set>
#include <thread>

#include "integration/settings/settings_test.h"
#include "support/gate.h"

using namespace settings_test;
using namespace std::chrono_literals;

namespace {

class ValueCallback : public SettingsTest {
 protected:
  void TearDown() override { recorder.WhenCalled(nullptr); }
};

TEST_F(ValueCallback, RunsOnTheLibrarysThread) {
  Begin();
  const Calls calls = AnnouncedAll({{kAlertDelay, L"1"},
                                    {kDockable, L"1"},
                                    {NameOf(kEraserSingle), L"Pan"},
                                    {kSideSwitchOptions, L""},
                                    {kKeystrokes, L""}});
  std::set<DWORD> threads;
  for (const Call& call : calls) threads.insert(call.thread);
  ASSERT_EQ(calls.size(), 10U);
  EXPECT_EQ(threads.size(), 1U);
  EXPECT_FALSE(threads.contains(GetCurrentThreadId()));
}

TEST_F(ValueCallback, HoldsTheLockThatRegisteringNeeds) {
  Begin();
  const support::Gate gate;
  recorder.WhenCalled([&](const Call& call) {
    if (call.slot != kOnAlertDelay || call.context != LowerContext()) return;
    gate.Pass();
  });
  service.Announce(Key(kAlertDelay), L"1");
  ASSERT_TRUE(gate.WaitForArrival());

  const support::Gate registered = support::OpenGate();
  std::thread other([&] {
    Register(Context(7));
    registered.Pass();
  });
  EXPECT_FALSE(registered.WaitForArrival(300ms)) << "registered in the middle of a callback";
  EXPECT_EQ(recorder.CountOf(kOnWedgeCapacity), 0U);
  gate.Open();
  EXPECT_TRUE(registered.WaitForArrival());
  other.join();
  EXPECT_EQ(Settle(), (Calls{{kOnAlertDelay, LowerContext(), L"1"},
                             {kOnAlertDelay, HigherContext(), L"1"},
                             {kOnWedgeCapacity, Context(7), L"16"},
                             {kOnFirstRange, Context(7), L"0 6"},
                             {kOnSecondRange, Context(7), L"-90 90"}}));
}

TEST_F(ValueCallback, MayCallSetters) {
  Begin();
  service.Forget();
  recorder.WhenCalled([this](const Call& call) {
    if (call.slot == kOnAlertDelay && call.context == LowerContext()) {
      library.KorvuISD_SetDockPowerSaving(1, 0);
    }
  });
  EXPECT_EQ(Announced(kAlertDelay, L"1"), Both({{kOnAlertDelay, arguments::Value(1)}}));
  EXPECT_EQ(service.WaitForRequests(2),
            (std::vector<std::wstring>{ScriptedService::SetMessage(Key(kPowerSaving), L"1"),
                                       ScriptedService::ValueRequest(Key(kPowerSaving))}));
}

TEST_F(ValueCallback, MayChangeTheApiVersionAndConnectAgain) {
  Begin();
  std::atomic<int> connected{-1};
  recorder.WhenCalled([&](const Call& call) {
    if (call.slot != kOnAlertDelay || call.context != LowerContext()) return;
    library.KorvuISD_SetAPIVersion(1);
    connected = library.KorvuISD_Connect(1000);
  });
  EXPECT_EQ(Announced(kAlertDelay, L"1").size(), 2U);
  EXPECT_EQ(connected, KorvuISD_ErrorNone) << "it is connected already";
  EXPECT_EQ(Announced(WedgeName(0), L"Pan"), Both({{kOnWedge, arguments::Button(0, L"Pan")}}));
  EXPECT_EQ(service.ConnectionCount(), 1);
}

// Arguments that the recorder does not write down ------------------------------------------------

std::atomic<int32_t> g_thirdArgument{-1};
void KORVUISD_CALL NoteThirdArgument(void*, const KorvuISD_SideSwitch*, int32_t reserved) {
  g_thirdArgument = reserved;
}

TEST_F(ValueCallback, OfASideSwitchHasZeroAfterItsSwitchWhenTheNameChanged) {
  KorvuISD_Callbacks callbacks{};
  callbacks.OnUpperSideSwitch = NoteThirdArgument;
  callbacks.OnLowerSideSwitch = NoteThirdArgument;
  library.KorvuISD_RegisterCallbacks(&callbacks, LowerContext());
  ConnectQuietly();
  for (const int index : {NameOf(kUpperSwitch), NameOf(kLowerSwitch)}) {
    for (const wchar_t* name : {L"Pan", L"Zoom", L""}) {
      g_thirdArgument = -1;
      ASSERT_EQ(Announced(index, name), kNothing);
      EXPECT_EQ(g_thirdArgument, 0);
    }
  }
}

struct CapturedText {
  std::atomic<bool> called{false};
  std::atomic<bool> isNull{true};
  std::atomic<uint64_t> codeUnits{~uint64_t{0}};
} g_capturedText;
void KORVUISD_CALL NoteText(void*, const wchar_t* text, uint64_t codeUnits) {
  g_capturedText.called = true;
  g_capturedText.isNull = text == nullptr;
  g_capturedText.codeUnits = codeUnits;
}

TEST_F(ValueCallback, OfAnEmptyCaptureHasATextOfNoUnitsAndNotNull) {
  KorvuISD_Callbacks callbacks{};
  callbacks.OnCapturedKeystrokes = NoteText;
  library.KorvuISD_RegisterCallbacks(&callbacks, LowerContext());
  ConnectQuietly();
  ASSERT_EQ(Announced(kKeystrokes, L""), kNothing);
  EXPECT_TRUE(g_capturedText.called);
  EXPECT_FALSE(g_capturedText.isNull);
  EXPECT_EQ(g_capturedText.codeUnits, 0U);
}

}  // namespace
