// Each function stands for the slot of its name, and gets that slot's arguments.

#include <cstring>

#include <gmock/gmock.h>

#include "integration/wrapper/c_interface.h"
#include "korvu/settings.hpp"

using namespace support;

namespace {

// The library is not needed: the test calls the slots as it would.
class WrapperSlots : public testing::Test {
 protected:
  const CInterface::Registered& Register(korvu::Callbacks callbacks) {
    registration.emplace(std::move(callbacks));
    return CInterface::Instance().registered.back();
  }

  static ButtonRecord Button(int32_t function, const wchar_t* name) {
    ButtonRecord record{};
    record.function = function;
    std::wcscpy(record.name, name);
    return record;
  }

  std::optional<korvu::Registration> registration;
};

TEST_F(WrapperSlots, OnlyTheFunctionsThatAreThereAreAskedFor) {
  korvu::Callbacks callbacks;
  callbacks.OnTiltSensitivity = [](int32_t) {};
  KorvuISD_Callbacks expected{};
  const auto& registered = Register(std::move(callbacks));
  expected.OnTiltSensitivity = registered.callbacks.OnTiltSensitivity;
  EXPECT_TRUE(registered.callbacks.OnTiltSensitivity);
  EXPECT_EQ(std::memcmp(&registered.callbacks, &expected, sizeof expected), 0);
}

#define KORVU_VALUE_SLOTS(X) \
  X(OnPressureCurve)         \
  X(OnTiltSensitivity)       \
  X(OnBatteryAlertDelay)     \
  X(OnCenterRightClick)      \
  X(OnOpaqueEnabledGlobal)   \
  X(OnOpaqueOrientation)     \
  X(OnOpaqueInputMode)       \
  X(OnOpaqueMapping)         \
  X(OnPenDockPowerSaving)    \
  X(OnPenAlertEnabled)       \
  X(OnOpaqueInSetupGuide)    \
  X(OnOpaqueRememberDisplay) X(OnUndockedTimerWait) X(OnPenGesturesEnabled) X(OnMagnifierEnabled)
#define KORVU_BUTTON_SLOTS(X) \
  X(OnEraserSingle) X(OnEraserDouble) X(OnEraserLong) X(OnAutoExecuteButton)
#define KORVU_SIDE_SWITCH_SLOTS(X) X(OnUpperSideSwitch) X(OnLowerSideSwitch)
#define KORVU_OPTION_SLOTS(X) \
  X(OnRunAppOptions)          \
  X(OnTopButtonSingleOptions) \
  X(OnTopButtonDoubleOptions) \
  X(OnTopButtonLongOptions) X(OnSideSwitchOptions) X(OnRadialWedgeOptions) X(OnAutoUndockOptions)
#define KORVU_RANGE_SLOTS(X) X(OnFirstRange) X(OnSecondRange)

TEST_F(WrapperSlots, NumbersArrive) {
  std::vector<std::pair<std::string, int32_t>> told;
  korvu::Callbacks callbacks;
#define KORVU_SET(slot) callbacks.slot = [&](int32_t value) { told.emplace_back(#slot, value); };
  KORVU_VALUE_SLOTS(KORVU_SET)
#undef KORVU_SET
  const auto registered = Register(std::move(callbacks));
  std::vector<std::pair<std::string, int32_t>> expected;
  int32_t value = -7;
#define KORVU_CALL(slot)                                \
  registered.callbacks.slot(registered.context, value); \
  expected.emplace_back(#slot, value++);
  KORVU_VALUE_SLOTS(KORVU_CALL)
#undef KORVU_CALL
  EXPECT_EQ(told, expected);
}

TEST_F(WrapperSlots, ButtonsArrive) {
  std::vector<std::string> told;
  const void* toldRecord = nullptr;
  korvu::Callbacks callbacks;
#define KORVU_SET(slot)                      \
  callbacks.slot = [&](const auto& record) { \
    told.emplace_back(#slot);                \
    toldRecord = &record;                    \
  };
  KORVU_BUTTON_SLOTS(KORVU_SET)
  KORVU_SIDE_SWITCH_SLOTS(KORVU_SET)
  KORVU_SET(OnRadialWedgeEx)
#undef KORVU_SET
  const auto registered = Register(std::move(callbacks));
  const ButtonRecord button = Button(9, L"Undo");
  const KorvuISD_SideSwitch sideSwitch{button, 1};
  std::vector<std::string> expected;
#define KORVU_CALL(slot)                                     \
  registered.callbacks.slot(registered.context, &button, 0); \
  expected.emplace_back(#slot);                              \
  EXPECT_EQ(toldRecord, &button);
  KORVU_BUTTON_SLOTS(KORVU_CALL)
#undef KORVU_CALL
#define KORVU_CALL(slot)                                         \
  registered.callbacks.slot(registered.context, &sideSwitch, 0); \
  expected.emplace_back(#slot);                                  \
  EXPECT_EQ(toldRecord, &sideSwitch);
  KORVU_SIDE_SWITCH_SLOTS(KORVU_CALL)
#undef KORVU_CALL
  registered.callbacks.OnRadialWedgeEx(registered.context, 0, &button);
  expected.emplace_back("OnRadialWedgeEx");
  EXPECT_EQ(toldRecord, &button);
  EXPECT_EQ(told, expected);
}

TEST_F(WrapperSlots, OptionListsArriveAsSpans) {
  std::vector<std::string> told;
  korvu::Callbacks callbacks;
#define KORVU_SET(slot)                                         \
  callbacks.slot = [&](std::span<const ButtonRecord> options) { \
    told.emplace_back(#slot);                                   \
    ASSERT_EQ(options.size(), 2u);                              \
    EXPECT_EQ(korvu::TextOf(options[1].name), L"Redo");         \
  };
  KORVU_OPTION_SLOTS(KORVU_SET)
#undef KORVU_SET
  const auto registered = Register(std::move(callbacks));
  const ButtonRecord options[] = {Button(9, L"Undo"), Button(10, L"Redo")};
  std::vector<std::string> expected;
#define KORVU_CALL(slot)                                     \
  registered.callbacks.slot(registered.context, options, 2); \
  expected.emplace_back(#slot);
  KORVU_OPTION_SLOTS(KORVU_CALL)
#undef KORVU_CALL
  EXPECT_EQ(told, expected);
}

TEST_F(WrapperSlots, RecordsTextsAndPairsArrive) {
  std::vector<std::string> told;
  korvu::Callbacks callbacks;
  callbacks.OnVersions = [&](const VersionInfo& versions) {
    told.emplace_back(korvu::TextOf(versions.serviceVersion) == L"6.4" ? "versions" : "?");
  };
  callbacks.OnPenInfo = [&](const PenInfo& pen) {
    told.emplace_back(pen.sensorId == 7 ? "pen" : "?");
  };
  callbacks.OnCapturedKeystrokes = [&](std::wstring_view text) {
    told.emplace_back(text == L"Ctrl" ? "keystrokes" : "?");
  };
  callbacks.OnOpaqueDisplayPath = [&](std::wstring_view text) {
    told.emplace_back(text == L"Ctrl+S" ? "path" : "?");
  };
  callbacks.OnDisplayZoomMap = [&](std::span<const KorvuISD_ZoomMapEntry> entries) {
    told.emplace_back(entries.size() == 1 && entries[0].d == 4 ? "map" : "?");
  };
  callbacks.OnMonitorOptions = [&](std::span<const KorvuISD_MonitorOption> monitors,
                                   int32_t selected) {
    told.emplace_back(monitors.empty() && selected == -1 ? "monitors" : "?");
  };
  callbacks.OnFirstRange = [&](int32_t low, int32_t high) {
    told.emplace_back(low == 0 && high == 6 ? "first range" : "?");
  };
  callbacks.OnSecondRange = [&](int32_t low, int32_t high) {
    told.emplace_back(low == -90 && high == 90 ? "second range" : "?");
  };
  callbacks.OnWedgeCapacity = [&](uint64_t count) {
    told.emplace_back(count == 16 ? "capacity" : "?");
  };
  callbacks.OnRadialZonesCount = [&](int32_t ring, uint8_t count) {
    told.emplace_back(ring == 1 && count == 255 ? "zones" : "?");
  };
  callbacks.OnFeatureSupport = [&](int32_t feature, bool isSupported) {
    told.emplace_back(feature == KORVUISD_FEATURE_OPAQUE_MODE && isSupported ? "feature" : "?");
  };
  const auto registered = Register(std::move(callbacks));
  const KorvuISD_Callbacks& slots = registered.callbacks;
  void* const context = registered.context;

  VersionInfo versions{};
  std::wcscpy(versions.serviceVersion, L"6.4");
  slots.OnVersions(context, &versions);
  PenInfo pen{};
  pen.sensorId = 7;
  slots.OnPenInfo(context, &pen);
  slots.OnCapturedKeystrokes(context, L"Ctrl+S", 4);
  slots.OnOpaqueDisplayPath(context, L"Ctrl+S");
  const KorvuISD_ZoomMapEntry entry{1, 2, 3, 4};
  slots.OnDisplayZoomMap(context, &entry, 1);
  slots.OnMonitorOptions(context, nullptr, 0, -1);
  slots.OnFirstRange(context, 0, 6);
  slots.OnSecondRange(context, -90, 90);
  slots.OnWedgeCapacity(context, 16);
  slots.OnRadialZonesCount(context, 1, 255);
  slots.OnFeatureSupport(context, KORVUISD_FEATURE_OPAQUE_MODE, 1);
  EXPECT_EQ(told, (std::vector<std::string>{"versions", "pen", "keystrokes", "path", "map",
                                            "monitors", "first range", "second range", "capacity",
                                            "zones", "feature"}));
}

TEST_F(WrapperSlots, ALateCallbackOfAnEndedRegistrationIsDropped) {
  int callCount = 0;
  korvu::Callbacks callbacks;
  callbacks.OnTiltSensitivity = [&](int32_t) { ++callCount; };
  const auto registered = Register(std::move(callbacks));
  registered.callbacks.OnTiltSensitivity(registered.context, 1);
  registration.reset();
  registered.callbacks.OnTiltSensitivity(registered.context, 2);
  EXPECT_EQ(callCount, 1);
}

TEST(WrapperText, ATextThatFillsItsArrayHasNoTerminator) {
  const wchar_t full[3] = {L'a', L'b', L'c'};
  const wchar_t terminated[4] = {L'a', L'\0', L'c', L'\0'};
  const wchar_t empty[2] = {};
  EXPECT_EQ(korvu::TextOf(full), L"abc");
  EXPECT_EQ(korvu::TextOf(terminated), L"a");
  EXPECT_EQ(korvu::TextOf(empty), L"");
}

}  // namespace
