// The wheels: a click on a wedge selects it, and its function is chosen from the list.

#include "panel/panel_test.h"

using namespace support;

namespace {

class PanelRadialPage : public PanelTest {
 protected:
  void SetUp() override { panel->GoTo(2); }
};

// A share of the wheel's radius from its middle, to the right and down.
void ClickWheel(HWND wheel, double right, double down) {
  RECT box{};
  GetClientRect(wheel, &box);
  const int radius = std::min(box.right, box.bottom) / 2;
  const auto place = [&](LONG size, double share) {
    return size / 2 + static_cast<int>(radius * share);
  };
  const LPARAM point = MAKELPARAM(place(box.right, right), place(box.bottom, down));
  SendMessageW(wheel, WM_LBUTTONDOWN, MK_LBUTTON, point);
  SendMessageW(wheel, WM_LBUTTONUP, 0, point);
}

TEST_F(PanelRadialPage, AWedgeThatIsClickedGetsWhatIsChosenInTheList) {
  ClickWheel(panel->Control(L"First ring"), 0, 0.6);
  ASSERT_TRUE(Eventually([] { return panel->Has(L"First ring, South:"); }));
  const HWND list = panel->Control(L"First ring, South:");
  EXPECT_TRUE(Eventually([&] { return SendMessageW(list, CB_GETDROPPEDSTATE, 0, 0) != 0; }));
  PressKey(list, VK_HOME);
  PressKey(list, VK_RETURN);
  EXPECT_TRUE(Stores("ButtonRadialSouth\\ButtonSingle\\ButtonFunction", "0"));
  EXPECT_TRUE(Eventually([&] { return ChosenIn(list) == L"Disabled"; }));
}

TEST_F(PanelRadialPage, TheSecondRingIsAnotherOne) {
  const HWND wheel = panel->Control(L"Second ring");
  service->Give("set RadialMenuZonesCount2 8");
  const HWND count = panel->Control(L"Wedges of the second ring:");
  ASSERT_TRUE(Eventually([&] { return ChosenIn(count) == L"8"; }));
  ClickWheel(wheel, -0.6, 0);
  ASSERT_TRUE(Eventually([] { return panel->Has(L"Second ring, West:"); }));
  const HWND list = panel->Control(L"Second ring, West:");
  PressKey(list, VK_ESCAPE);  // an open list keeps still
  service->Give("set ButtonRadialWest2\\ButtonSingle\\ButtonFunction 20");
  EXPECT_TRUE(Eventually([&] { return ChosenIn(list) == L"Save"; }));
}

TEST_F(PanelRadialPage, ArrowsMoveTheSelection) {
  const HWND wheel = panel->Control(L"First ring");
  ClickWheel(wheel, 0.6, 0);
  ASSERT_TRUE(Eventually([] { return panel->Has(L"First ring, East:"); }));
  PressKey(panel->Control(L"First ring, East:"), VK_ESCAPE);
  PressKey(wheel, VK_RIGHT);
  EXPECT_TRUE(Eventually([] { return panel->Has(L"First ring, Southeast:"); }));
}

TEST_F(PanelRadialPage, TheNumberOfWedgesIsSetAndFollows) {
  const HWND list = panel->Control(L"Wedges of the first ring:");
  service->Give("set RadialMenuZonesCount 5");
  EXPECT_TRUE(Eventually([&] { return ChosenIn(list) == L"5"; }));
  ChooseIn(list, VK_DOWN);
  EXPECT_TRUE(Stores("RadialMenuZonesCount", "6"));
  service->Give("set RadialMenuZonesCount 8");
  EXPECT_TRUE(Eventually([&] { return ChosenIn(list) == L"8"; }));
}

TEST_F(PanelRadialPage, TheRightClickInTheCentreIsASwitch) {
  const HWND box = panel->Control(L"Right click in the centre of the radial menu");
  ASSERT_TRUE(Eventually([&] { return IsChecked(box); }));
  Click(box);
  EXPECT_TRUE(Stores("RadialMenuCenterRightClick", "0"));
}

}  // namespace
