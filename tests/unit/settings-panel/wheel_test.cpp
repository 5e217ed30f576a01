#include "geometry/wheel.h"

#include <gmock/gmock.h>

using namespace tool::panel;

namespace {

const Box kBox{0, 0, 202, 202};  // a radius of 100 around (101, 101)

TEST(PanelWheel, TheFirstWedgeIsInTheEastAndTheyRunClockwise) {
  const Wheel wheel(kBox, 8);
  EXPECT_EQ(wheel.WedgeAt({171, 101}), 0);
  EXPECT_EQ(wheel.WedgeAt({151, 151}), 1);
  EXPECT_EQ(wheel.WedgeAt({101, 171}), 2);
  EXPECT_EQ(wheel.WedgeAt({31, 101}), 4);
  EXPECT_EQ(wheel.WedgeAt({101, 31}), 6);
  EXPECT_EQ(wheel.WedgeAt({151, 51}), 7);
}

TEST(PanelWheel, TheMiddleOfEachWedgeIsInIt) {
  for (int count = 1; count <= 255; ++count) {
    const Wheel wheel({0, 0, 1002, 1002}, count);
    for (int wedge = 0; wedge < count; ++wedge) {
      EXPECT_EQ(wheel.WedgeAt(wheel.MiddleOf(wedge)), wedge) << count;
    }
  }
}

TEST(PanelWheel, TheHubAndTheOutsideAreNoWedge) {
  const Wheel wheel(kBox, 8);
  EXPECT_EQ(wheel.WedgeAt({101, 101}), std::nullopt);
  EXPECT_EQ(wheel.WedgeAt({121, 101}), std::nullopt);
  EXPECT_EQ(wheel.WedgeAt({202, 101}), std::nullopt);
  EXPECT_EQ(wheel.WedgeAt({1, 1}), std::nullopt);
}

TEST(PanelWheel, BordersLieBetweenWedges) {
  const Wheel wheel(kBox, 4);
  EXPECT_EQ(wheel.BorderAt(1, 100), (Point{172, 172}));
}

TEST(PanelWheel, AWheelWithoutWedgesOrRoomIsNoHarm) {
  EXPECT_EQ(Wheel(kBox, 0).WedgeAt({171, 101}), std::nullopt);
  EXPECT_EQ(Wheel(kBox, -3).WedgeCount(), 0);
  const Wheel tiny({0, 0, 0, 0}, 8);
  EXPECT_EQ(tiny.OuterRadius(), 0);
  EXPECT_GE(tiny.TextWidth(), 0);
}

}  // namespace
