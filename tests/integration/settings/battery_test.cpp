// The battery of the current pen, which the pen and its module both report.

#include "integration/settings/pen_fixture.h"

using namespace settings_test;

namespace {

class Battery : public PenTest {};

TEST_F(Battery, IsIgnoredWhileNoPenIsKnown) {
  Begin();
  ASSERT_EQ(AnnouncedAll({{kTabletPenSerial, L"S1"}, {kPenSerial, L"S1"}}), kNothing);
  for (const int index : {kPenBattery, kPenCharging, kModuleBattery, kModuleCharging}) {
    EXPECT_EQ(Announced(index, L"50"), kNothing);
    EXPECT_EQ(Announced(index, L""), kNothing);
    EXPECT_EQ(Announced(index, L"abc"), kNothing);
  }
  ASSERT_EQ(Announced(kPenId, L"P1"), kNothing) << "the pen is new: none of them made a record";
  EXPECT_EQ(Proximity(L"S1", L"P1", true),
            Both({PenFired({.serial = L"S1", .id = L"P1", .inProximity = 1})}));
}

TEST_F(Battery, BelongsToThePenThatTheTabletReported) {
  Begin();
  Meet(L"S1", L"P1");
  Meet(L"S2", L"P2");
  ASSERT_EQ(Announced(kTabletPenSerial, L"S1"), kNothing);
  EXPECT_EQ(Announced(kPenBattery, L"50"),
            Both({PenFired({.serial = L"S1", .id = L"P1", .battery = 50})}));
  ASSERT_EQ(Announced(kTabletPenSerial, L"S2"), kNothing);
  EXPECT_EQ(Announced(kPenBattery, L"50"),
            Both({PenFired({.serial = L"S2", .id = L"P2", .battery = 50})}));
  EXPECT_EQ(Announced(kPenCharging, L"1"),
            Both({PenFired({.serial = L"S2", .id = L"P2", .battery = 50, .charging = 1})}));
}

TEST_F(Battery, BelongsToThePenBeingAnnouncedUntilTheTabletHasReportedOne) {
  Begin();
  Meet(L"S1", L"P1");
  Meet(L"S2", L"P2");
  EXPECT_EQ(Announced(kPenBattery, L"50"),
            Both({PenFired({.serial = L"S2", .id = L"P2", .battery = 50})}));
  ASSERT_EQ(Announced(kPenSerial, L"S1"), kNothing);
  EXPECT_EQ(Announced(kPenBattery, L"60"),
            Both({PenFired({.serial = L"S1", .id = L"P1", .battery = 60})}));
}

TEST_F(Battery, OfPenAndModuleIsOneAndTheSame) {
  Begin();
  Meet(L"S1", L"P1");
  EXPECT_EQ(Announced(kPenBattery, L"50"),
            Both({PenFired({.serial = L"S1", .id = L"P1", .battery = 50})}));
  EXPECT_EQ(Announced(kModuleBattery, L"50"), kNothing);
  EXPECT_EQ(Announced(kModuleBattery, L"60"),
            Both({PenFired({.serial = L"S1", .id = L"P1", .battery = 60})}));
  EXPECT_EQ(Announced(kModuleCharging, L"1"),
            Both({PenFired({.serial = L"S1", .id = L"P1", .battery = 60, .charging = 1})}));
  EXPECT_EQ(Announced(kPenCharging, L"1"), kNothing);
}

TEST_F(Battery, OfACurrentPenWithoutRecordMakesAnEmptyOne) {
  Begin();
  Meet(L"S1", L"P1");
  ASSERT_EQ(Announced(kTabletPenSerial, L"S9"), kNothing);
  EXPECT_EQ(Announced(kModuleCharging, L"2"), Both({PenFired({.serial = L"S9", .charging = 2})}));
  EXPECT_EQ(Announced(kPenBattery, L"70"),
            Both({PenFired({.serial = L"S9", .battery = 70, .charging = 2})}));
}

TEST_F(Battery, WithAnEmptyValueMakesTheRecordAndReportsNothing) {
  Begin();
  Meet(L"S1", L"P1");
  ASSERT_EQ(Announced(kTabletPenSerial, L"S9"), kNothing);
  EXPECT_EQ(Announced(kPenBattery, L""), kNothing);
  EXPECT_EQ(Announced(kSensor, L"42"), Both({PenFired({.serial = L"S1", .id = L"P1", .sensor = 42}),
                                             PenFired({.serial = L"S9", .sensor = 42})}));
}

TEST_F(Battery, WithAValueThatDoesNotConvertMakesNoRecord) {
  Begin();
  Meet(L"S1", L"P1");
  ASSERT_EQ(Announced(kTabletPenSerial, L"S9"), kNothing);
  for (const int index : {kPenBattery, kPenCharging, kModuleBattery, kModuleCharging}) {
    EXPECT_EQ(Announced(index, L"abc"), kNothing);
    EXPECT_EQ(Announced(index, L"12345678901"), kNothing);
  }
  EXPECT_EQ(Announced(kSensor, L"42"),
            Both({PenFired({.serial = L"S1", .id = L"P1", .sensor = 42})}));
}

TEST_F(Battery, StatusIsStoredWholeAndChargingInEightBits) {
  Begin();
  Meet(L"S1", L"P1");
  EXPECT_EQ(Announced(kPenBattery, L"65793"),
            Both({PenFired({.serial = L"S1", .id = L"P1", .battery = 65793})}));
  EXPECT_EQ(Announced(kPenCharging, L"261"),
            Both({PenFired({.serial = L"S1", .id = L"P1", .battery = 65793, .charging = 5})}));
  EXPECT_EQ(Announced(kPenCharging, L"5"), kNothing);
  EXPECT_EQ(Announced(kPenCharging, L"65536"),
            Both({PenFired({.serial = L"S1", .id = L"P1", .battery = 65793})}));
}

TEST_F(Battery, RecordIsCompletedByThePenWhenItIsAnnounced) {
  Begin();
  Meet(L"S1", L"P1");
  ASSERT_EQ(Announced(kTabletPenSerial, L"S9"), kNothing);
  ASSERT_EQ(Announced(kPenBattery, L"70"), Both({PenFired({.serial = L"S9", .battery = 70})}));
  EXPECT_EQ(AnnouncedAll({{kPenVendor, L"3"}, {kPenSerial, L"S9"}, {kPenId, L"P9"}}),
            Both({PenFired({.serial = L"S9", .id = L"P9", .battery = 70, .vendor = 3})}));
}

}  // namespace
