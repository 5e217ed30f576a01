// Whether a pen is in the tablet's dock.

#include "integration/settings/pen_fixture.h"

using namespace settings_test;

namespace {

class Dock : public PenTest {};

TEST_F(Dock, AtApiVersionSixIsIgnoredOnceAPenIsKnown) {
  Begin(6);
  Meet(L"S1", L"P1");
  EXPECT_EQ(Announced(kDocked, L"1"), kNothing);
  EXPECT_EQ(Announced(kDocked, L"abc"), kNothing);
  EXPECT_EQ(Proximity(L"S1", L"P1", true),
            Both({PenFired({.serial = L"S1", .id = L"P1", .inProximity = 1})}));
}

TEST_F(Dock, AtApiVersionSixIsTakenOnceWhileNoPenIsKnown) {
  Begin(6);
  ASSERT_EQ(Announced(kTabletPenSerial, L"S1"), kNothing);
  EXPECT_EQ(Announced(kDocked, L"1"), Both({PenFired({.serial = L"S1", .docked = 1})}));
  // That has made a record.
  EXPECT_EQ(Announced(kDocked, L"0"), kNothing);
  // From the next version on it counts again, with what was stored.
  library.KorvuISD_SetAPIVersion(7);
  EXPECT_EQ(Announced(kDocked, L"1"), kNothing);
  EXPECT_EQ(Announced(kDocked, L"0"), Both({PenFired({.serial = L"S1"})}));
}

TEST_F(Dock, AtApiVersionZeroIsTakenWhileNoPenIsKnown) {
  Begin(0);
  EXPECT_EQ(Announced(kDocked, L"abc"), kNothing);
  EXPECT_EQ(Announced(kDocked, L"1"), Both({PenFired({.docked = 1})}));
  EXPECT_EQ(Announced(kDocked, L"0"), kNothing);
}

TEST_F(Dock, AtApiVersionSevenIsTakenWithAndWithoutPens) {
  Begin(7);
  ASSERT_EQ(Announced(kTabletPenSerial, L"S1"), kNothing);
  EXPECT_EQ(Announced(kDocked, L"1"), Both({PenFired({.serial = L"S1", .docked = 1})}));
  EXPECT_EQ(Announced(kDocked, L"0"), Both({PenFired({.serial = L"S1"})}));
  EXPECT_EQ(Announced(kDocked, L"5"), Both({PenFired({.serial = L"S1", .docked = 1})}));
}

TEST_F(Dock, IsStoredForEveryPenAndReportedWithTheCurrentOne) {
  Begin(7);
  Meet(L"S1", L"P1");
  Meet(L"S2", L"P2");
  Meet(L"S3", L"P3");
  ASSERT_EQ(Announced(kTabletPenSerial, L"S2"), kNothing);
  EXPECT_EQ(Announced(kDocked, L"1"),
            Both({PenFired({.serial = L"S2", .id = L"P2", .docked = 1})}));
  EXPECT_EQ(Announced(kSensor, L"42"),
            Both({PenFired({.serial = L"S1", .id = L"P1", .sensor = 42, .docked = 1}),
                  PenFired({.serial = L"S2", .id = L"P2", .sensor = 42, .docked = 1}),
                  PenFired({.serial = L"S3", .id = L"P3", .sensor = 42, .docked = 1})}));
  ASSERT_EQ(Announced(kTabletPenSerial, L"S3"), kNothing);
  EXPECT_EQ(Announced(kDocked, L"1"), kNothing);
  EXPECT_EQ(Announced(kDocked, L"0"),
            Both({PenFired({.serial = L"S3", .id = L"P3", .sensor = 42})}));
}

TEST_F(Dock, WithAnEmptyValueMakesARecordAndReportsNothing) {
  Begin(7);
  EXPECT_EQ(Announced(kDocked, L""), kNothing);
  EXPECT_EQ(Announced(kPenBattery, L"50"), Both({PenFired({.battery = 50})}));
}

TEST_F(Dock, WithAValueThatDoesNotConvertMakesNoRecord) {
  Begin(7);
  EXPECT_EQ(Announced(kDocked, L"abc"), kNothing);
  EXPECT_EQ(Announced(kDocked, L"12345678901"), kNothing);
  EXPECT_EQ(Announced(kPenBattery, L"50"), kNothing);
}

TEST_F(Dock, OfACurrentPenWithoutRecordIsStoredForTheOthersToo) {
  Begin(7);
  Meet(L"S1", L"P1");
  ASSERT_EQ(Announced(kTabletPenSerial, L"S9"), kNothing);
  EXPECT_EQ(Announced(kDocked, L"1"), Both({PenFired({.serial = L"S9", .docked = 1})}));
  EXPECT_EQ(Proximity(L"S1", L"P1", true),
            Both({PenFired({.serial = L"S1", .id = L"P1", .inProximity = 1, .docked = 1})}));
}

// The first by serial number, whichever pen is at hand.
TEST_F(Dock, OfANewPenIsWhatTheFirstRecordSays) {
  Begin(7);
  Meet(L"S5", L"P5");
  ASSERT_EQ(Announced(kTabletPenSerial, L"S5"), kNothing);
  ASSERT_EQ(Announced(kDocked, L"1"),
            Both({PenFired({.serial = L"S5", .id = L"P5", .docked = 1})}));
  ASSERT_EQ(Announced(kTabletPenSerial, L"S1"), kNothing);
  EXPECT_EQ(Announced(kPenBattery, L"50"), Both({PenFired({.serial = L"S1", .battery = 50})}))
      << "the record that a battery value makes is empty but for it";
  Meet(L"S9", L"P9");
  EXPECT_EQ(Proximity(L"S9", L"P9", true),
            Both({PenFired({.serial = L"S9", .id = L"P9", .inProximity = 1})}));
}

}  // namespace
