// The Display page: the zoom area, and opaque mode.

#include "panel/panel_test.h"

using namespace support;

namespace {

class PanelDisplayPage : public PanelTest {
 protected:
  void SetUp() override { panel->GoTo(3); }

  static bool Shows(const wchar_t* field, const wchar_t* number) {
    return Eventually([&] { return TextOf(panel->Control(field)) == number; });
  }
};

TEST_F(PanelDisplayPage, TheZoomAreaIsTypedAndFollows) {
  service->Give("set SlavedDisplayZoomMap { 10, -20, 300, 400 }");
  EXPECT_TRUE(Shows(L"Left", L"10"));
  EXPECT_TRUE(Shows(L"Top", L"-20"));
  EXPECT_TRUE(Shows(L"Bottom", L"400"));
  TypeInto(panel->Control(L"Right"), L"640");
  panel->PressReturnIn(panel->Control(L"Right"));
  EXPECT_TRUE(Stores("SlavedDisplayZoomMap", "{ 10, -20, 640, 400 }"));
  EXPECT_TRUE(Eventually([] { return panel->NoteOf(panel->Control(L"Default")).empty(); }));
}

TEST_F(PanelDisplayPage, TheZoomAreaGoesBackToTheDefault) {
  service->Give("set SlavedDisplayZoomMap { 1, 2, 3, 4 }");
  ASSERT_TRUE(Shows(L"Left", L"1"));
  Click(panel->Control(L"Default"));
  EXPECT_TRUE(Stores("SlavedDisplayZoomMap", "{ 0, 0, 1920, 1080 }"));
  EXPECT_TRUE(Shows(L"Right", L"1920"));
}

TEST_F(PanelDisplayPage, AnAreaIsDrawnWithTheMouse) {
  const std::string before = service->Stored("SlavedDisplayZoomMap");
  const HWND desktop = panel->Control(L"Monitors and zoom area");
  RECT box{};
  GetClientRect(desktop, &box);
  const auto at = [&](int percentX, int percentY) {
    return MAKELPARAM(box.right * percentX / 100, box.bottom * percentY / 100);
  };
  SendMessageW(desktop, WM_LBUTTONDOWN, MK_LBUTTON, at(45, 25));
  SendMessageW(desktop, WM_MOUSEMOVE, MK_LBUTTON, at(50, 50));
  SendMessageW(desktop, WM_LBUTTONUP, 0, at(55, 75));
  EXPECT_TRUE(Eventually([&] { return service->Stored("SlavedDisplayZoomMap") != before; }));
}

TEST_F(PanelDisplayPage, OpaqueModeHasItsChoices) {
  const HWND enabled = panel->Control(L"Opaque mode");
  ASSERT_TRUE(Eventually([&] { return IsChecked(enabled); }));
  Click(enabled);
  EXPECT_TRUE(Stores("OpaqueModeEnabledGlobal", "0"));

  const HWND orientation = panel->Control(L"Orientation:");
  service->Give("set OpaqueOrientation 104");
  EXPECT_TRUE(Eventually([&] { return ChosenIn(orientation) == L"3"; }));
  ChooseIn(orientation, VK_UP);
  EXPECT_TRUE(Stores("OpaqueOrientation", "105"));

  service->Give("set OpaqueMapping 0");
  const HWND mapping = panel->Control(L"Mapping:");
  EXPECT_TRUE(Eventually([&] { return ChosenIn(mapping) == L"1"; }));
  ChooseIn(mapping, VK_HOME);
  EXPECT_TRUE(Stores("OpaqueMapping", "1"));

  service->Give("set OpaqueInputMode 0");
  const HWND inputMode = panel->Control(L"Input mode:");
  EXPECT_TRUE(Eventually([&] { return ChosenIn(inputMode) == L"0"; }));
  ChooseIn(inputMode, VK_DOWN);
  EXPECT_TRUE(Stores("OpaqueInputMode", "1"));

  Click(panel->Control(L"Remember the display"));
  EXPECT_TRUE(Stores("OpaqueModeRememberDisplay", "0"));
}

TEST_F(PanelDisplayPage, TheDisplayIsChosenByItsNameAndStoredByItsPath) {
  const HWND display = panel->Control(L"Display:");
  service->Give("set OpaqueDisplayPath \\\\.\\DISPLAY2");
  EXPECT_TRUE(Eventually([&] { return ChosenIn(display) == L"Pen Display (1920 x 1080)"; }));
  ChooseIn(display, VK_HOME);
  EXPECT_TRUE(Stores("OpaqueDisplayPath", "\\\\.\\DISPLAY1"));
}

TEST_F(PanelDisplayPage, ATabletWithoutOpaqueModeOffersNone) {
  const HWND enabled = panel->Control(L"Opaque mode");
  service->Give("announce OpaqueModeSupported 0");
  EXPECT_TRUE(Eventually([&] { return !IsWindowVisible(enabled); }));
  service->Give("announce OpaqueModeSupported 1");
  EXPECT_TRUE(Eventually([&] { return IsWindowVisible(enabled) != 0; }));
}

}  // namespace
