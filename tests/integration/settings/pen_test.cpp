// How the attributes of a pen become its record.

#include "integration/settings/pen_fixture.h"

using namespace settings_test;

namespace {

class Pen : public PenTest {};

TEST_F(Pen, SeenForTheFirstTimeIsNotReportedAndItsNextChangeOfProximityIs) {
  Begin();
  EXPECT_EQ(AnnouncedAll({{kPenVendor, L"17"},
                          {kPenType, L"300"},
                          {kPenInProximity, L"1"},
                          {kPenSerial, L"S1"},
                          {kPenId, L"P1"}}),
            kNothing);
  EXPECT_EQ(Proximity(L"S1", L"P1", false),
            Both({PenFired(
                {.serial = L"S1", .id = L"P1", .inProximity = 0, .vendor = 17, .type = 300})}));
}

TEST_F(Pen, ProximityIsReportedWhenThePenIdFollowsIt) {
  Begin();
  Meet(L"S1", L"P1");
  EXPECT_EQ(Announced(kPenInProximity, L"1"), kNothing);
  EXPECT_EQ(Announced(kPenSerial, L"S1"), kNothing);
  EXPECT_EQ(Announced(kPenId, L"P1"),
            Both({PenFired({.serial = L"S1", .id = L"P1", .inProximity = 1})}));
}

TEST_F(Pen, TwoPensTakingTurnsAreEachReportedWithTheirOwnRecord) {
  Begin();
  ASSERT_EQ(AnnouncedAll({{kPenVendor, L"1"}, {kPenSerial, L"S1"}, {kPenId, L"P1"}}), kNothing);
  ASSERT_EQ(AnnouncedAll({{kPenVendor, L"2"}, {kPenSerial, L"S2"}, {kPenId, L"P2"}}), kNothing);
  for (int turn = 0; turn < 3; ++turn) {
    for (const bool isNear : {true, false}) {
      const int32_t flag = isNear ? 1 : 0;
      EXPECT_EQ(Proximity(L"S1", L"P1", isNear),
                Both({PenFired({.serial = L"S1", .id = L"P1", .inProximity = flag, .vendor = 1})}));
      EXPECT_EQ(Proximity(L"S1", L"P1", isNear), kNothing);
      EXPECT_EQ(Proximity(L"S2", L"P2", isNear),
                Both({PenFired({.serial = L"S2", .id = L"P2", .inProximity = flag, .vendor = 2})}));
    }
  }
}

TEST_F(Pen, AttributesOfAKnownPenAreNotOverwritten) {
  Begin();
  ASSERT_EQ(
      AnnouncedAll({{kPenVendor, L"1"}, {kPenType, L"2"}, {kPenSerial, L"S1"}, {kPenId, L"P1"}}),
      kNothing);
  EXPECT_EQ(AnnouncedAll({{kPenVendor, L"7"}, {kPenType, L"8"}, {kPenId, L"P9"}}), kNothing);
  EXPECT_EQ(
      Proximity(L"S1", L"P9", true),
      Both({PenFired({.serial = L"S1", .id = L"P1", .inProximity = 1, .vendor = 1, .type = 2})}));
}

TEST_F(Pen, AttributesOfOnePenDoNotPassToTheNext) {
  Begin();
  ASSERT_EQ(AnnouncedAll({{kPenVendor, L"1"},
                          {kPenType, L"2"},
                          {kPenInProximity, L"1"},
                          {kPenSerial, L"S1"},
                          {kPenId, L"P1"}}),
            kNothing);
  Meet(L"S2", L"P2");
  EXPECT_EQ(Proximity(L"S2", L"P2", true),
            Both({PenFired({.serial = L"S2", .id = L"P2", .inProximity = 1})}));
}

TEST_F(Pen, AttributesWaitForSerialNumberAndPenIdInAnyOrder) {
  Begin();
  EXPECT_EQ(AnnouncedAll({{kPenId, L"P1"}, {kPenVendor, L"3"}, {kPenType, L"4"}}), kNothing);
  EXPECT_EQ(Announced(kPenSerial, L"S1"), kNothing);
  EXPECT_EQ(
      Proximity(L"S1", L"P1", true),
      Both({PenFired({.serial = L"S1", .id = L"P1", .inProximity = 1, .vendor = 3, .type = 4})}));
}

TEST_F(Pen, VendorKeepsEightBitsAndTypeSixteen) {
  Begin();
  ASSERT_EQ(AnnouncedAll(
                {{kPenVendor, L"261"}, {kPenType, L"65543"}, {kPenSerial, L"S1"}, {kPenId, L"P1"}}),
            kNothing);
  EXPECT_EQ(
      Proximity(L"S1", L"P1", true),
      Both({PenFired({.serial = L"S1", .id = L"P1", .inProximity = 1, .vendor = 5, .type = 7})}));

  ASSERT_EQ(
      AnnouncedAll({{kPenVendor, L"-1"}, {kPenType, L"-2"}, {kPenSerial, L"S2"}, {kPenId, L"P2"}}),
      kNothing);
  EXPECT_EQ(Proximity(L"S2", L"P2", true),
            Both({PenFired(
                {.serial = L"S2", .id = L"P2", .inProximity = 1, .vendor = 255, .type = 65534})}));
}

TEST_F(Pen, EmptyVendorAndTypeLeaveWhatWasStaged) {
  Begin();
  ASSERT_EQ(AnnouncedAll({{kPenVendor, L"3"},
                          {kPenType, L"4"},
                          {kPenVendor, L""},
                          {kPenType, L""},
                          {kPenSerial, L"S1"},
                          {kPenId, L"P1"}}),
            kNothing);
  EXPECT_EQ(
      Proximity(L"S1", L"P1", true),
      Both({PenFired({.serial = L"S1", .id = L"P1", .inProximity = 1, .vendor = 3, .type = 4})}));
}

TEST_F(Pen, TextsOfMoreThanFifteenUnitsAreCutAndPensStayApart) {
  Begin();
  const std::wstring cut = L"123456789012345";
  // Alike in what the record shows, different in what names the pen.
  Meet(cut + L"A", cut + L"C");
  Meet(cut + L"B", cut + L"D");
  EXPECT_EQ(Proximity(cut + L"A", cut + L"C", true),
            Both({PenFired({.serial = cut, .id = cut, .inProximity = 1})}));
  EXPECT_EQ(Proximity(cut + L"B", cut + L"D", true),
            Both({PenFired({.serial = cut, .id = cut, .inProximity = 1})}));
  EXPECT_EQ(Announced(kSensor, L"4"),
            Both({PenFired({.serial = cut, .id = cut, .inProximity = 1, .sensor = 4}),
                  PenFired({.serial = cut, .id = cut, .inProximity = 1, .sensor = 4})}));
}

TEST_F(Pen, NewOneTakesFirmwareSensorAndDockFromTheTablet) {
  Begin();
  ASSERT_EQ(AnnouncedAll({{kFirmware, L"1.0"}, {kSensor, L"42"}}), kNothing);
  Meet(L"S1", L"P1");
  ASSERT_EQ(Announced(kDocked, L"1"),
            Both({PenFired(
                {.serial = L"S1", .id = L"P1", .firmware = L"1.0", .sensor = 42, .docked = 1})}));
  Meet(L"S2", L"P2");
  EXPECT_EQ(Proximity(L"S2", L"P2", true), Both({PenFired({.serial = L"S2",
                                                           .id = L"P2",
                                                           .inProximity = 1,
                                                           .firmware = L"1.0",
                                                           .sensor = 42,
                                                           .docked = 1})}));
}

TEST_F(Pen, TakesOverTheRecordThatADockValueMadeForIt) {
  Begin();
  ASSERT_EQ(Announced(kPenSerial, L"S1"), kNothing);
  ASSERT_EQ(Announced(kDocked, L"1"), Both({PenFired({.docked = 1})}));
  EXPECT_EQ(
      AnnouncedAll(
          {{kPenVendor, L"3"}, {kPenType, L"4"}, {kPenInProximity, L"1"}, {kPenId, L"P1"}}),
      Both({PenFired(
          {.serial = L"S1", .id = L"P1", .inProximity = 1, .vendor = 3, .type = 4, .docked = 1})}));
  // Once it has an id, that stays.
  EXPECT_EQ(AnnouncedAll({{kPenInProximity, L"1"}, {kPenId, L"P2"}}), kNothing);
}

}  // namespace
