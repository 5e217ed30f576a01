// The Pen page: what is moved arrives at the service, and what the service announces is shown.

#include "panel/panel_test.h"

using namespace support;

namespace {

class PanelPenPage : public PanelTest {
 protected:
  void SetUp() override { panel->GoTo(0); }
};

TEST_F(PanelPenPage, ASliderThatIsMovedWithTheKeyboardReachesTheService) {
  service->Give("set TiltSensitivity 12");
  const HWND slider = panel->Control(L"Tilt sensitivity:");
  ASSERT_TRUE(Eventually([&] { return PositionOf(slider) == 12; }));
  PressKey(slider, VK_RIGHT);
  EXPECT_TRUE(Stores("TiltSensitivity", "13"));
  EXPECT_TRUE(Eventually([&] { return panel->NoteOf(slider).empty(); }));
}

TEST_F(PanelPenPage, AnAnnouncedNumberMovesTheSliderAndIsWrittenBesideIt) {
  const HWND slider = panel->Control(L"Pressure curve:");
  service->Give("set PressureCurve 5");
  EXPECT_TRUE(Eventually([&] { return PositionOf(slider) == 5; }));
  service->Give("set PressureCurve 900");
  EXPECT_TRUE(Eventually([&] { return PositionOf(slider) == 6; }));
  EXPECT_TRUE(Eventually([&] { return TextOf(GetWindow(slider, GW_HWNDNEXT)) == L"900"; }));
}

struct Switch {
  const wchar_t* name;
  const char* key;
};

TEST_F(PanelPenPage, EverySwitchIsSetAndFollows) {
  for (const auto& [name, key] :
       {Switch{L"Pen gestures", "PenGesturesEnabled"}, Switch{L"Magnifier", "MagnifierEnabled"},
        Switch{L"Upper side switch clicks while the pen hovers", "ButtonUpperSide\\HoverClick"},
        Switch{L"Lower side switch clicks while the pen hovers", "ButtonLowerSide\\HoverClick"}}) {
    const HWND box = panel->Control(name);
    service->Give(std::string("set ") + key + " 1");
    ASSERT_TRUE(Eventually([&] { return IsChecked(box); })) << key;
    Click(box);
    EXPECT_TRUE(Stores(key, "0")) << key;
    EXPECT_FALSE(IsChecked(box)) << key;
    service->Give(std::string("set ") + key + " 1");
    EXPECT_TRUE(Eventually([&] { return IsChecked(box); })) << key;
  }
}

}  // namespace
