#include "settings-cli/callbacks.h"

#include <algorithm>
#include <bit>
#include <memory>

#include <gmock/gmock.h>

#include "settings-cli/event_text.h"
#include "settings-cli/inbox.h"
#include "settings-cli/json_text.h"

using namespace tool::cli;

namespace {

class CliCallbacks : public testing::Test {
 protected:
  // What the last callback left in the inbox.
  Event Delivered() {
    Delivery delivery = inbox.Take(Clock::now());
    EXPECT_EQ(delivery.wake, Wake::kLetter);
    return std::get<Event>(delivery.letter);
  }
  std::string Line() { return EventLine(Delivered()); }

  Inbox inbox;
  const KorvuISD_Callbacks callbacks = CallbacksIntoInbox();
};

template <size_t capacity>
void Fill(wchar_t (&field)[capacity], std::wstring_view text) {
  std::fill_n(field, capacity, L'\0');
  std::copy(text.begin(), text.end(), field);
}

ButtonRecord Record(int32_t function, std::wstring_view name) {
  ButtonRecord record{};
  record.function = function;
  Fill(record.name, name);
  return record;
}

TEST_F(CliCallbacks, EverySlotIsTaken) {
  const auto slots = std::bit_cast<std::array<void*, 41>>(callbacks);
  EXPECT_EQ(std::count(slots.begin(), slots.end(), nullptr), 0);
}

TEST_F(CliCallbacks, ValuesComeUnderTheirOwnNames) {
  const std::vector<std::pair<const char*, KorvuISD_ValueCallback>> slots = {
      {"OnPressureCurve", callbacks.OnPressureCurve},
      {"OnTiltSensitivity", callbacks.OnTiltSensitivity},
      {"OnBatteryAlertDelay", callbacks.OnBatteryAlertDelay},
      {"OnOpaqueOrientation", callbacks.OnOpaqueOrientation},
      {"OnOpaqueInputMode", callbacks.OnOpaqueInputMode},
      {"OnOpaqueMapping", callbacks.OnOpaqueMapping},
      {"OnUndockedTimerWait", callbacks.OnUndockedTimerWait}};
  for (const auto& [name, callback] : slots) {
    callback(&inbox, -7);
    EXPECT_EQ(Line(), std::string(name) + " value=-7");
  }
}

TEST_F(CliCallbacks, SwitchesReadAsOnAndOff) {
  const std::vector<std::pair<const char*, KorvuISD_ValueCallback>> slots = {
      {"OnCenterRightClick", callbacks.OnCenterRightClick},
      {"OnOpaqueEnabledGlobal", callbacks.OnOpaqueEnabledGlobal},
      {"OnPenDockPowerSaving", callbacks.OnPenDockPowerSaving},
      {"OnPenAlertEnabled", callbacks.OnPenAlertEnabled},
      {"OnOpaqueInSetupGuide", callbacks.OnOpaqueInSetupGuide},
      {"OnOpaqueRememberDisplay", callbacks.OnOpaqueRememberDisplay},
      {"OnPenGesturesEnabled", callbacks.OnPenGesturesEnabled},
      {"OnMagnifierEnabled", callbacks.OnMagnifierEnabled}};
  for (const auto& [name, callback] : slots) {
    callback(&inbox, 1);
    EXPECT_EQ(Line(), std::string(name) + " value=on");
    callback(&inbox, 0);
    EXPECT_EQ(Line(), std::string(name) + " value=off");
  }
}

TEST_F(CliCallbacks, ButtonsComeUnderTheirOwnNames) {
  const std::vector<std::pair<const char*, KorvuISD_ButtonCallback>> slots = {
      {"OnEraserSingle", callbacks.OnEraserSingle},
      {"OnEraserDouble", callbacks.OnEraserDouble},
      {"OnEraserLong", callbacks.OnEraserLong},
      {"OnRadialWedge", callbacks.OnRadialWedge},
      {"OnAutoExecuteButton", callbacks.OnAutoExecuteButton}};
  const ButtonRecord record = Record(8, L"Undo");
  for (const auto& [name, callback] : slots) {
    callback(&inbox, &record, 0);
    EXPECT_EQ(Line(), std::string(name) + " function=8 name=\"Undo\"");
  }
  callbacks.OnRadialWedgeEx(&inbox, 0, &record);
  EXPECT_EQ(Line(), "OnRadialWedgeEx function=8 name=\"Undo\"");
}

TEST_F(CliCallbacks, SideSwitchesBringTheirHoverClick) {
  const KorvuISD_SideSwitch sideSwitch{Record(2, L"Pan"), 1};
  callbacks.OnUpperSideSwitch(&inbox, &sideSwitch, 0);
  EXPECT_EQ(Line(), "OnUpperSideSwitch function=2 name=\"Pan\" hover-click=on");
  callbacks.OnLowerSideSwitch(&inbox, &sideSwitch, 0);
  EXPECT_EQ(Line(), "OnLowerSideSwitch function=2 name=\"Pan\" hover-click=on");
}

TEST_F(CliCallbacks, OptionListsComeUnderTheirOwnNames) {
  const std::vector<std::pair<const char*, KorvuISD_OptionsCallback>> slots = {
      {"OnRunAppOptions", callbacks.OnRunAppOptions},
      {"OnTopButtonSingleOptions", callbacks.OnTopButtonSingleOptions},
      {"OnTopButtonDoubleOptions", callbacks.OnTopButtonDoubleOptions},
      {"OnTopButtonLongOptions", callbacks.OnTopButtonLongOptions},
      {"OnSideSwitchOptions", callbacks.OnSideSwitchOptions},
      {"OnRadialWedgeOptions", callbacks.OnRadialWedgeOptions},
      {"OnAutoUndockOptions", callbacks.OnAutoUndockOptions}};
  const std::vector<ButtonRecord> options = {Record(2, L"Zoom"), Record(5, L"Pan")};
  for (const auto& [name, callback] : slots) {
    callback(&inbox, options.data(), options.size());
    EXPECT_EQ(Line(), std::string(name) + " count=2 2=\"Zoom\" 5=\"Pan\"");
    callback(&inbox, nullptr, 0);
    EXPECT_EQ(Line(), std::string(name) + " count=0");
  }
}

TEST_F(CliCallbacks, ANameThatFillsItsArrayIsReadToItsEnd) {
  const auto record = std::make_unique<ButtonRecord>();
  std::fill_n(record->name, KORVUISD_NAME_CAPACITY, L'x');
  callbacks.OnSideSwitchOptions(&inbox, record.get(), 1);
  EXPECT_EQ(std::get<Options>(Delivered().payload).functions.at(0).name, std::wstring(512, L'x'));
}

TEST_F(CliCallbacks, CountedTextNeedsNoTerminator) {
  callbacks.OnCapturedKeystrokes(&inbox, L"Ctrl+Zxxx", 6);
  EXPECT_EQ(Line(), "OnCapturedKeystrokes text=\"Ctrl+Z\"");
  callbacks.OnCapturedKeystrokes(&inbox, L"", 0);
  EXPECT_EQ(Line(), "OnCapturedKeystrokes text=\"\"");
}

TEST_F(CliCallbacks, TheOthersBringAllTheirArguments) {
  VersionInfo versions{};
  Fill(versions.hidRouterVersion, L"3.2");
  Fill(versions.serviceVersion, L"6.4");
  callbacks.OnVersions(&inbox, &versions);
  EXPECT_EQ(Line(), "OnVersions service=\"6.4\" hid-router=\"3.2\"");

  callbacks.OnOpaqueDisplayPath(&inbox, LR"(\\.\DISPLAY1)");
  EXPECT_EQ(Line(), R"(OnOpaqueDisplayPath text="\\.\DISPLAY1")");

  const KorvuISD_ZoomMapEntry entries[] = {{0, 0, 1920, 1080}, {-1, 2, -3, 4}};
  callbacks.OnDisplayZoomMap(&inbox, entries, 2);
  EXPECT_EQ(Line(), "OnDisplayZoomMap count=2 0,0,1920,1080 -1,2,-3,4");

  KorvuISD_MonitorOption monitor{};
  Fill(monitor.displayPath, L"path");
  Fill(monitor.displayName, L"Name");
  callbacks.OnMonitorOptions(&inbox, &monitor, 1, 0);
  EXPECT_EQ(Line(), "OnMonitorOptions count=1 selected=0 \"path\"=\"Name\"");
  callbacks.OnMonitorOptions(&inbox, &monitor, 1, -1);
  EXPECT_EQ(Line(), "OnMonitorOptions count=1 selected=none \"path\"=\"Name\"");

  callbacks.OnFirstRange(&inbox, 0, 6);
  EXPECT_EQ(Line(), "OnFirstRange minimum=0 maximum=6");
  callbacks.OnSecondRange(&inbox, -90, 90);
  EXPECT_EQ(Line(), "OnSecondRange minimum=-90 maximum=90");
  callbacks.OnWedgeCapacity(&inbox, 16);
  EXPECT_EQ(Line(), "OnWedgeCapacity count=16");
  callbacks.OnRadialZonesCount(&inbox, 1, 6);
  EXPECT_EQ(Line(), "OnRadialZonesCount ring=2 count=6");
  callbacks.OnFeatureSupport(&inbox, 0, 1);
  EXPECT_EQ(Line(), "OnFeatureSupport feature=dockable supported=yes");
  callbacks.OnFeatureSupport(&inbox, 1, 0);
  EXPECT_EQ(Line(), "OnFeatureSupport feature=opaque-mode supported=no");
}

TEST_F(CliCallbacks, APenBringsEveryField) {
  PenInfo info{};
  Fill(info.serialNumber, L"S1");
  Fill(info.penId, L"P1");
  Fill(info.module.version, L"V2");
  Fill(info.module.moduleId, L"M3");
  info.module.productId = 4;
  Fill(info.module.serialNumber, L"S5");
  info.batteryStatus = 60;
  info.batteryCharging = 2;
  info.inProximity = 1;
  info.vendorId = 7;
  info.penType = 8;
  Fill(info.firmwareVersion, L"F9");
  info.sensorId = 10;
  info.moduleConnected = 1;
  info.docked = 0;
  callbacks.OnPenInfo(&inbox, &info);
  const Event event = Delivered();
  EXPECT_EQ(EventLine(event),
            "OnPenInfo serial=\"S1\" id=\"P1\" type=8 vendor=7 in-proximity=yes docked=no "
            "battery=60 charging=2 firmware=\"F9\" sensor=10 module-connected=yes module-id=\"M3\" "
            "module-serial=\"S5\" module-version=\"V2\" module-product=4");
  EXPECT_EQ(EventJsonLine(event, std::nullopt),
            R"({"event":"OnPenInfo","serialNumber":"S1","penId":"P1","penType":8,"vendorId":7,)"
            R"("inProximity":true,"docked":false,"batteryStatus":60,"batteryCharging":2,)"
            R"("firmwareVersion":"F9","sensorId":10,"moduleConnected":true,"module":{"id":"M3",)"
            R"("serialNumber":"S5","version":"V2","productId":4}})");
}

}  // namespace
