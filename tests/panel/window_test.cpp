// The window as a whole: bursts, nonsense from the service, names and keyboard, sizes, a second
// start.

#include <algorithm>

#include "panel/panel_test.h"

using namespace support;
using testing::HasSubstr;
using testing::Lt;
using testing::Optional;
using namespace std::chrono_literals;

namespace {

constexpr int kPages = 5;

class PanelWindow : public PanelTest {};

TEST_F(PanelWindow, TenThousandAnnouncementsLeaveItAnsweringAndShowTheLast) {
  panel->GoTo(0);
  const HWND slider = panel->Control(L"Tilt sensitivity:");
  const HWND number = GetWindow(slider, GW_HWNDNEXT);
  std::chrono::milliseconds longest = 200ms + 1ms;
  // Another program may have had the processor: a panel that waits does so in every burst.
  for (int burst = 0; burst < 5 && longest > 200ms; ++burst) {
    service->Give("announce TiltSensitivity 0");
    EXPECT_TRUE(Eventually([&] { return TextOf(number) == L"0"; }));
    service->Give("burst TiltSensitivity 10000");
    longest = 0ms;
    EXPECT_TRUE(Eventually([&] {
      longest = std::max(longest, AnswerTime(panel->Window()));
      return TextOf(number) == L"10000";
    }));
  }
  EXPECT_LE(longest, 200ms);
}

TEST_F(PanelWindow, NonsenseFromTheServiceLeavesItStanding) {
  const std::string longText(511, 'W');
  for (const char* key :
       {"PressureCurve", "TiltSensitivity", "EPXBatteryAlertDelay", "UndockedTimerWait",
        "RadialMenuZonesCount", "RadialMenuZonesCount2", "OpaqueOrientation", "OpaqueMapping",
        "PenGesturesEnabled", "PenBatteryStatus", "SlavedDisplayZoomMap", "OpaqueDisplayPath",
        "ButtonUpperSide\\ButtonSingle\\ButtonFunction",
        "ButtonUpperSide\\ButtonSingle\\ButtonFunctionName",
        "ButtonRadialEast\\ButtonSingle\\ButtonFunction",
        "ButtonRadialEast\\ButtonSingle\\ButtonFunctionName", "ServiceVersion", "FWVersion"}) {
    for (const std::string& value : {std::string(), std::string("-1"), std::string("-2147483648"),
                                     std::string("2147483647"), std::string("99999999999999999999"),
                                     std::string("{ -2147483648, 7, 2147483647, -7 }"), longText}) {
      service->Give(std::string("announce ") + key + ' ' + value);
    }
  }
  for (const char* list : {"RunAppOptionsList", "SideSwitchOptionsList", "RadialWedgeOptionsList",
                           "TopButtonSingleOptionsList", "MonitorOptionsList"}) {
    service->Give("raw {\"" + std::string(list) + "\":\"\"}");
    service->Give("raw {\"" + std::string(list) + "\":[]}");
    service->Give("raw {\"" + std::string(list) + "\":[{\"1\":\"" + longText +
                  "\"},{\"x\":\"y\"}]}");
  }
  service->Give("raw {\"");
  service->Give("raw nothing at all");
  // A value behind all of it.
  service->Give("announce TiltSensitivity 31");
  panel->GoTo(0);
  EXPECT_TRUE(Eventually([] { return PositionOf(panel->Control(L"Tilt sensitivity:")) == 31; }));
  for (int page = 0; page < kPages; ++page) {
    panel->GoTo(page);
    EXPECT_THAT(AnswerTime(panel->Window()), Lt(5s));
  }
  EXPECT_TRUE(panel->process.IsRunning());
}

bool IsStatic(HWND window) {
  wchar_t name[16] = {};
  GetClassNameW(window, name, 16);
  return std::wstring_view(name) == L"Static";
}

TEST_F(PanelWindow, EveryControlThatTheTabKeyReachesHasAName) {
  for (int page = 0; page < kPages; ++page) {
    panel->GoTo(page);
    for (const HWND control : ChildrenOf(panel->Page())) {
      if ((GetWindowLongPtrW(control, GWL_STYLE) & WS_TABSTOP) == 0) continue;
      const HWND before = GetWindow(control, GW_HWNDPREV);
      const bool hasLabel = before && IsStatic(before) && !TextOf(before).empty();
      EXPECT_TRUE(hasLabel || !TextOf(control).empty()) << "page " << page;
    }
  }
}

// What is shown lies inside of its page, and apart from the others.
void ExpectRoomForAll(const Panel& panel) {
  RECT page{};
  GetWindowRect(panel.Page(), &page);
  std::vector<RECT> boxes;
  for (const HWND control : ChildrenOf(panel.Page())) {
    RECT box{};
    GetWindowRect(control, &box);
    if (!IsWindowVisible(control) || box.left == box.right || TextOf(control).empty()) continue;
    EXPECT_GE(box.left, page.left) << testing::PrintToString(TextOf(control));
    EXPECT_LE(box.right, page.right) << testing::PrintToString(TextOf(control));
    EXPECT_GE(box.top, page.top) << testing::PrintToString(TextOf(control));
    EXPECT_LE(box.bottom, page.bottom) << testing::PrintToString(TextOf(control));
    for (const RECT& other : boxes) {
      RECT common{};
      EXPECT_FALSE(IntersectRect(&common, &box, &other)) << testing::PrintToString(TextOf(control));
    }
    boxes.push_back(box);
  }
}

TEST_F(PanelWindow, EverythingHasRoomAtItsLeastSizeAndWhenItIsLarge) {
  for (const int side : {1, 900}) {
    SetWindowPos(panel->Window(), nullptr, 0, 0, side, side, SWP_NOMOVE | SWP_NOZORDER);
    for (int page = 0; page < kPages; ++page) {
      panel->GoTo(page);
      ExpectRoomForAll(*panel);
    }
  }
}

TEST_F(PanelWindow, ASecondStartWithAPageBringsTheFirstToThatPageAndEnds) {
  panel->GoTo(0);
  EXPECT_EQ(RunProgram(kPanelProgram, {"--page", "devices"}).exitCode, 0);
  EXPECT_TRUE(Eventually([] { return panel->Has(L"HID router:"); }));
  EXPECT_EQ(GetWindow(FindWindowW(L"KorvuSettingsPanel", nullptr), GW_OWNER), nullptr);
}

TEST(PanelProgram, HelpIsWrittenWhereOutputGoes) {
  const Ending ending = RunProgram(kPanelProgram, {"--help"});
  EXPECT_EQ(ending.exitCode, 0);
  EXPECT_THAT(ending.output, HasSubstr("--trace"));
}

TEST(PanelProgram, AnUnknownOptionIsWrongUsage) {
  const Ending ending = RunProgram(kPanelProgram, {"--colour"});
  EXPECT_EQ(ending.exitCode, 2);
  EXPECT_THAT(ending.output, HasSubstr("\"--colour\""));
}

TEST(PanelProgram, TheTitleSaysThatThereIsATrace) {
  Panel panel({"--trace"});
  EXPECT_THAT(testing::PrintToString(TextOf(panel.Window())), HasSubstr("trace"));
  EXPECT_TRUE(panel.Close());
}

}  // namespace
