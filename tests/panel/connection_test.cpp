// The service comes, goes and comes back; and the window is closed in each of these states.

#include "panel/panel_test.h"

using namespace support;
using testing::Lt;
using testing::Optional;
using namespace std::chrono_literals;

namespace {

// A moment, on a machine that has much to do; the library itself would take up to half a minute.
constexpr std::chrono::milliseconds kMoment = 5s;

// How long a change may go unanswered.
constexpr std::chrono::milliseconds kChangePatience = 3s;

TEST(PanelConnection, WithoutAServiceItOpensAndSaysSoAndCloses) {
  Panel panel;
  EXPECT_TRUE(panel.ShowsStatus(L"No settings service yet."));
  EXPECT_FALSE(IsWindowEnabled(panel.Control(L"Pen gestures")));
  EXPECT_THAT(panel.Close(), Optional(Lt(kMoment)));
}

TEST(PanelConnection, ItConnectsWhenThereIsAServiceAndFollowsItsLossAndReturn) {
  Panel panel;
  auto service = std::make_unique<StandInService>();
  ASSERT_TRUE(panel.ShowsStatus(L"Connected to the settings service 6"));
  const HWND box = panel.Control(L"Pen gestures");
  EXPECT_TRUE(Eventually([&] { return IsWindowEnabled(box) && IsChecked(box); }));

  service.reset();
  ASSERT_TRUE(panel.ShowsStatus(L"The settings service is away."));
  EXPECT_FALSE(IsWindowEnabled(box));

  service = std::make_unique<StandInService>();
  ASSERT_TRUE(panel.ShowsStatus(L"Connected to the settings service 6"));
  service->Give("set TiltSensitivity 77");
  EXPECT_TRUE(Eventually([&] { return PositionOf(panel.Control(L"Tilt sensitivity:")) == 77; }));

  service.reset();
  ASSERT_TRUE(panel.ShowsStatus(L"The settings service is away."));
  EXPECT_THAT(panel.Close(), Optional(Lt(kMoment)));
}

TEST(PanelConnection, AChangeThatIsLostIsNotTaken) {
  StandInService service;
  Panel panel;
  ASSERT_TRUE(panel.ShowsStatus(L"Connected to the settings service 6"));
  const HWND slider = panel.Control(L"Tilt sensitivity:");
  ASSERT_TRUE(Eventually([&] { return PositionOf(slider) == 12; }));
  // Nothing is answered, and the connection that breaks of that does not come back.
  service.Give("refuse");
  service.Give("drop");
  PressKey(slider, VK_RIGHT);
  EXPECT_EQ(panel.NoteOf(slider), L"Saving\x2026");
  EXPECT_EQ(PositionOf(slider), 13);
  EXPECT_TRUE(Eventually([&] { return panel.NoteOf(slider) == L"Not taken"; }));
  EXPECT_TRUE(Eventually([&] { return PositionOf(slider) == 12; }));
  EXPECT_THAT(panel.Close(), Optional(Lt(kMoment)));
}

TEST(PanelConnection, AChangeRightBeforeTheEndReachesTheService) {
  StandInService service;
  Panel panel;
  ASSERT_TRUE(panel.ShowsStatus(L"Connected to the settings service 6"));
  const HWND slider = panel.Control(L"Tilt sensitivity:");
  ASSERT_TRUE(Eventually([&] { return PositionOf(slider) == 12; }));
  PressKey(slider, VK_RIGHT);
  EXPECT_THAT(panel.Close(), Optional(Lt(kMoment)));
  EXPECT_EQ(service.Stored("TiltSensitivity"), "13");
}

TEST(PanelConnection, AServiceThatStopsAnsweringKeepsNobodyFromClosing) {
  StandInService service;
  Panel panel;
  ASSERT_TRUE(panel.ShowsStatus(L"Connected to the settings service 6"));
  service.Give("hold");
  const HWND box = panel.Control(L"Pen gestures");
  const auto start = Clock::now();
  Click(box);
  EXPECT_THAT(panel.Close(), Optional(Lt(kChangePatience + kMoment)));
  EXPECT_GE(MsSince(start), kChangePatience) << "the change was given up too early";
}

}  // namespace
