#include "geometry/desktop_map.h"

#include <limits>

#include <gmock/gmock.h>

using namespace tool::panel;

namespace {

constexpr int32_t kLeast = std::numeric_limits<int32_t>::min();
constexpr int32_t kMost = std::numeric_limits<int32_t>::max();

TEST(PanelDesktopMap, TwoMonitorsLieSideBySideWithTheirProportions) {
  const DesktopMap map({0, 0, 300, 100}, {{0, 0, 1000, 1000}, {1000, 0, 3000, 1000}});
  EXPECT_EQ(map.ToBox({0, 0, 1000, 1000}), (Box{0, 0, 100, 100}));
  EXPECT_EQ(map.ToBox({1000, 0, 3000, 1000}), (Box{100, 0, 300, 100}));
}

TEST(PanelDesktopMap, WhatIsLeftOverIsOnBothSides) {
  const DesktopMap map({0, 0, 300, 100}, {{0, 0, 100, 100}});
  EXPECT_EQ(map.ToBox({0, 0, 100, 100}), (Box{100, 0, 200, 100}));
}

TEST(PanelDesktopMap, CornersMayComeInAnyOrder) {
  const DesktopMap map({0, 0, 100, 100}, {{100, 100, 0, 0}});
  EXPECT_EQ(map.ToBox({75, 50, 25, 0}), (Box{25, 0, 75, 50}));
}

TEST(PanelDesktopMap, ADrawnAreaIsOneOfTheDesktop) {
  const DesktopMap map({0, 0, 192, 108}, {{0, 0, 1920, 1080}});
  EXPECT_EQ(map.FromPoints({96, 54}, {0, 0}), (ZoomArea{0, 0, 960, 540}));
}

TEST(PanelDesktopMap, TheLargestNumbersStayInTheBox) {
  const DesktopMap map({5, 5, 105, 55}, {{kLeast, kLeast, kMost, kMost}, {0, 0, 1920, 1080}});
  const Box all = map.ToBox({kLeast, kLeast, kMost, kMost});
  EXPECT_EQ(all, (Box{30, 5, 80, 55}));
  EXPECT_EQ(map.FromPoints({30, 5}, {80, 55}).left, kLeast);
  EXPECT_EQ(map.FromPoints({-30000, 5}, {30000, 55}).right, kMost);
}

TEST(PanelDesktopMap, NothingToShowAndNoRoomAreNoHarm) {
  EXPECT_EQ(DesktopMap({0, 0, 10, 10}, {}).ToBox({2, 2, 4, 4}), (Box{2, 2, 4, 4}));
  EXPECT_EQ(DesktopMap({3, 3, 3, 3}, {{0, 0, 9, 9}}).ToBox({0, 0, 9, 9}), (Box{3, 3, 3, 3}));
  EXPECT_EQ(DesktopMap({0, 0, 50, 50}, {{7, 7, 7, 7}}).ToBox({7, 7, 7, 7}).Width(), 0);
}

}  // namespace
