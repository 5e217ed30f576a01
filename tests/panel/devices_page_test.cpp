// The Devices page: pens as they come, and what is told of driver and tablet.

#include "panel/panel_test.h"

using namespace support;

namespace {

class PanelDevicesPage : public PanelTest {
 protected:
  void SetUp() override { panel->GoTo(4); }
};

TEST_F(PanelDevicesPage, VersionsAndFeaturesAreTold) {
  EXPECT_EQ(TextOf(panel->Control(L"Settings service:")), L"6.4.2-17");
  EXPECT_EQ(TextOf(panel->Control(L"HID router:")), L"2.11.0-4");
  EXPECT_EQ(TextOf(panel->Control(L"The tablet supports:")), L"a dock, opaque mode");
  service->Give("announce OpaqueModeSupported 0");
  EXPECT_TRUE(
      Eventually([] { return TextOf(panel->Control(L"The tablet supports:")) == L"a dock"; }));
  service->Give("announce OpaqueModeSupported 1");
}

TEST_F(PanelDevicesPage, EachPenHasALine) {
  const HWND list = panel->Control(L"Pens");
  service->Give("pen 4E7A10C3 100237 in");
  service->Give("battery 83 charging");
  EXPECT_TRUE(Eventually([&] { return CellOf(list, 0, 3) == L"83 %"; }));
  EXPECT_EQ(CellOf(list, 0, 0), L"4E7A10C3");
  EXPECT_TRUE(Eventually([&] { return CellOf(list, 0, 4) == L"yes"; }));

  service->Give("pen 51B2094D 100954 in");
  service->Give("battery 46 discharging");
  EXPECT_TRUE(Eventually([&] { return CellOf(list, 1, 3) == L"46 %"; }));
  EXPECT_EQ(CellOf(list, 1, 1), L"100954");

  service->Give("dock on");
  EXPECT_TRUE(Eventually([&] { return CellOf(list, 1, 6) == L"yes"; }));
  EXPECT_EQ(CellOf(list, 0, 6), L"yes");
  service->Give("dock off");
  EXPECT_TRUE(Eventually([&] { return CellOf(list, 0, 6) == L"no"; }));
}

TEST_F(PanelDevicesPage, ItsNumbersAndSwitchesAreSetAndFollow) {
  const HWND delay = panel->Control(L"Battery alert delay:");
  service->Give("set EPXBatteryAlertDelay 45");
  EXPECT_TRUE(Eventually([&] { return TextOf(delay) == L"45"; }));
  TypeInto(delay, L"50");
  panel->PressReturnIn(delay);
  EXPECT_TRUE(Stores("EPXBatteryAlertDelay", "50"));

  const HWND wait = panel->Control(L"Undocked pen alert after:");
  TypeInto(wait, L"99999");
  panel->PressReturnIn(wait);
  // More than there is: it is not sent, and the stored one comes back.
  EXPECT_TRUE(Eventually([&] { return TextOf(wait) == L"15"; }));
  EXPECT_EQ(service->Stored("UndockedTimerWait"), "15");

  Click(panel->Control(L"Alert for a pen left behind"));
  EXPECT_TRUE(Stores("PenAlertEnabled", "0"));
  Click(panel->Control(L"Power saving in the dock"));
  EXPECT_TRUE(Stores("PenDockPowerSavingEnabled", "0"));
}

}  // namespace
