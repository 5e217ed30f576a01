#include "geometry/curve.h"

#include <gmock/gmock.h>

using namespace tool::panel;

namespace {

constexpr int kLast = 6;

TEST(PanelCurve, TheMiddleNumberIsStraight) {
  for (const double pressure : {0.0, 0.25, 0.5, 1.0}) {
    EXPECT_DOUBLE_EQ(StrokeFor(pressure, 3, kLast), pressure);
  }
}

TEST(PanelCurve, ALowNumberGivesMuchForALightTouchAndAHighOneLittle) {
  double before = 1;
  for (int number = 0; number <= kLast; ++number) {
    const double stroke = StrokeFor(0.3, number, kLast);
    EXPECT_LT(stroke, before) << number;
    before = stroke;
  }
  EXPECT_DOUBLE_EQ(StrokeFor(0, 0, kLast), 0);
  EXPECT_DOUBLE_EQ(StrokeFor(1, kLast, kLast), 1);
}

TEST(PanelCurve, NumbersBeyondTheRangeCountAsItsEnds) {
  EXPECT_DOUBLE_EQ(StrokeFor(0.3, -2147483647, kLast), StrokeFor(0.3, 0, kLast));
  EXPECT_DOUBLE_EQ(StrokeFor(0.3, 2147483647, kLast), StrokeFor(0.3, kLast, kLast));
}

TEST(PanelCurve, ItRunsFromTheLowerLeftCornerToTheUpperRightOne) {
  const auto points = CurvePoints({10, 20, 111, 71}, 5, kLast);
  ASSERT_EQ(points.size(), 101u);
  EXPECT_EQ(points.front(), (Point{10, 70}));
  EXPECT_EQ(points.back(), (Point{110, 20}));
  for (size_t at = 1; at < points.size(); ++at) EXPECT_LE(points[at].y, points[at - 1].y);
}

TEST(PanelCurve, ABoxWithoutRoomHasNoCurve) {
  EXPECT_TRUE(CurvePoints({0, 0, 1, 50}, 3, kLast).empty());
  EXPECT_TRUE(CurvePoints({0, 0, -5, -5}, 3, kLast).empty());
}

}  // namespace
