// What the tablet says of its pens: firmware, sensor, and which pen is the current one.

#include "integration/settings/pen_fixture.h"

using namespace settings_test;

namespace {

class TabletPen : public PenTest {};

TEST_F(TabletPen, FirmwareAndSensorThatArriveFirstWaitForThePen) {
  Begin();
  EXPECT_EQ(Announced(kFirmware, L"1.0"), kNothing);
  EXPECT_EQ(Announced(kSensor, L"42"), kNothing);
  Meet(L"S1", L"P1");
  EXPECT_EQ(
      Proximity(L"S1", L"P1", true),
      Both({PenFired(
          {.serial = L"S1", .id = L"P1", .inProximity = 1, .firmware = L"1.0", .sensor = 42})}));
}

TEST_F(TabletPen, FirmwareAndSensorThatArriveLaterAreReportedWithEachPen) {
  Begin();
  Meet(L"S2", L"P2");
  Meet(L"S1", L"P1");
  EXPECT_EQ(Announced(kFirmware, L"1.0"),
            Both({PenFired({.serial = L"S1", .id = L"P1", .firmware = L"1.0"}),
                  PenFired({.serial = L"S2", .id = L"P2", .firmware = L"1.0"})}));
  EXPECT_EQ(Announced(kSensor, L"42"),
            Both({PenFired({.serial = L"S1", .id = L"P1", .firmware = L"1.0", .sensor = 42}),
                  PenFired({.serial = L"S2", .id = L"P2", .firmware = L"1.0", .sensor = 42})}));
}

TEST_F(TabletPen, FirmwareIsReportedOnlyIfWhatTheRecordShowsHasChanged) {
  Begin();
  Meet(L"S1", L"P1");
  const std::wstring cut = L"123456789012345";
  EXPECT_EQ(Announced(kFirmware, cut + L"A"),
            Both({PenFired({.serial = L"S1", .id = L"P1", .firmware = cut})}));
  EXPECT_EQ(Announced(kFirmware, cut + L"B"), kNothing);
  EXPECT_EQ(Announced(kFirmware, cut), kNothing);
}

TEST_F(TabletPen, SensorIsReportedOnlyForPensThatDidNotHaveIt) {
  Begin();
  Meet(L"S2", L"P2");
  ASSERT_EQ(Announced(kSensor, L"42"),
            Both({PenFired({.serial = L"S2", .id = L"P2", .sensor = 42})}));
  // A record that a battery value makes starts without one.
  ASSERT_EQ(Announced(kTabletPenSerial, L"S1"), kNothing);
  ASSERT_EQ(Announced(kPenBattery, L"50"), Both({PenFired({.serial = L"S1", .battery = 50})}));
  EXPECT_EQ(Announced(kSensor, L"43"),
            Both({PenFired({.serial = L"S1", .battery = 50, .sensor = 43}),
                  PenFired({.serial = L"S2", .id = L"P2", .sensor = 43})}));
}

TEST_F(TabletPen, SerialNumberNamesARecordThatWasMadeBefore) {
  Begin();
  ASSERT_EQ(Announced(kPenSerial, L"S1"), kNothing);
  ASSERT_EQ(Announced(kDocked, L"1"), Both({PenFired({.docked = 1})}));
  EXPECT_EQ(Announced(kTabletPenSerial, L"S1"), Both({PenFired({.serial = L"S1", .docked = 1})}));
  EXPECT_EQ(Announced(kTabletPenSerial, L"S1"), kNothing);
}

TEST_F(TabletPen, SerialNumberOfAKnownPenChangesNothingInItsRecord) {
  Begin();
  Meet(L"S1", L"P1");
  EXPECT_EQ(Announced(kTabletPenSerial, L"S1"), kNothing);
  EXPECT_EQ(Announced(kTabletPenSerial, L""), kNothing);
  EXPECT_EQ(Announced(kTabletPenSerial, L"S1"), kNothing);
}

}  // namespace
