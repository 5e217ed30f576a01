// The Bluetooth module of a pen, which may be known before its pen is.

#include "integration/settings/pen_fixture.h"

using namespace settings_test;

namespace {

class Module : public PenTest {
 protected:
  static inline const std::vector<Value> kIdentity = {{kModuleVersion, L"2.0"},
                                                      {kModuleProduct, L"77"},
                                                      {kModuleSerial, L"S1"},
                                                      {kModuleId, L"M1"}};

  static ExpectedPen PenWithModule(int32_t connected) {
    return {.serial = L"S1",
            .id = L"P1",
            .moduleVersion = L"2.0",
            .moduleId = L"M1",
            .moduleProduct = 77,
            .moduleSerial = L"S1",
            .moduleConnected = connected};
  }
};

TEST_F(Module, ThatIsKnownBeforeItsPenIsReportedWhenThePenAppears) {
  Begin(9);
  EXPECT_EQ(Announced(kModuleConnected, L"1"), kNothing);
  EXPECT_EQ(AnnouncedAll(kIdentity), kNothing);
  EXPECT_EQ(Announced(kPenSerial, L"S1"), kNothing);
  EXPECT_EQ(Announced(kPenId, L"P1"), Both({PenFired(PenWithModule(1))}));
}

TEST_F(Module, ThatIsKnownBeforeItsPenWaitsForThatPenAndNotForAnother) {
  Begin(9);
  ASSERT_EQ(Announced(kModuleConnected, L"1"), kNothing);
  ASSERT_EQ(AnnouncedAll(kIdentity), kNothing);
  Meet(L"S2", L"P2");
  EXPECT_EQ(AnnouncedAll({{kPenSerial, L"S1"}, {kPenId, L"P1"}}),
            Both({PenFired(PenWithModule(1))}));
}

TEST_F(Module, ThatIsKnownAfterItsPenIsReportedWhenItConnects) {
  Begin(3);
  Meet(L"S1", L"P1");
  EXPECT_EQ(AnnouncedAll(kIdentity), kNothing);
  EXPECT_EQ(Announced(kModuleConnected, L"1"), Both({PenFired(PenWithModule(1))}));
}

TEST_F(Module, ThatIsConnectedBeforeItsIdentityIsKnownIsReportedTwice) {
  Begin(3);
  Meet(L"S1", L"P1");
  // The pen at hand has it.
  EXPECT_EQ(Announced(kModuleConnected, L"1"),
            Both({PenFired({.serial = L"S1", .id = L"P1", .moduleConnected = 1})}));
  EXPECT_EQ(AnnouncedAll(kIdentity), Both({PenFired(PenWithModule(1))}));
}

TEST_F(Module, BelowApiVersionThreeIsReportedWithoutAConnection) {
  Begin(2);
  Meet(L"S1", L"P1");
  EXPECT_EQ(Announced(kModuleConnected, L"1"), kNothing);
  EXPECT_EQ(AnnouncedAll(kIdentity), Both({PenFired(PenWithModule(0))}));
}

TEST_F(Module, BelowApiVersionThreeAndBeforeItsPenIsReportedWhenThePenAppears) {
  Begin(2);
  EXPECT_EQ(AnnouncedAll(kIdentity), kNothing);
  EXPECT_EQ(AnnouncedAll({{kPenSerial, L"S1"}, {kPenId, L"P1"}}),
            Both({PenFired(PenWithModule(0))}));
}

TEST_F(Module, GoesToThePenWithItsSerialNumberNotToThePenAtHand) {
  Begin(9);
  Meet(L"S1", L"P1");
  Meet(L"S2", L"P2");
  ASSERT_EQ(AnnouncedAll(kIdentity), kNothing);
  EXPECT_EQ(Announced(kModuleConnected, L"1"), Both({PenFired(PenWithModule(1))}));
  EXPECT_EQ(Proximity(L"S2", L"P2", true),
            Both({PenFired({.serial = L"S2", .id = L"P2", .inProximity = 1})}));
}

TEST_F(Module, ThatDisconnectsIsReportedWithThePenAtHandAndKeepsItsIdentity) {
  Begin(9);
  Meet(L"S1", L"P1");
  ASSERT_EQ(AnnouncedAll(kIdentity), kNothing);
  ASSERT_EQ(Announced(kModuleConnected, L"1"), Both({PenFired(PenWithModule(1))}));
  EXPECT_EQ(Announced(kModuleConnected, L"0"), Both({PenFired(PenWithModule(0))}));
  EXPECT_EQ(Announced(kModuleConnected, L"0"), kNothing);
  EXPECT_EQ(Announced(kModuleConnected, L"1"), Both({PenFired(PenWithModule(1))}));
}

TEST_F(Module, ThatDisconnectsIsReportedWithThePenAtHandEvenIfThatIsAnotherPen) {
  Begin(9);
  Meet(L"S1", L"P1");
  Meet(L"S2", L"P2");
  ASSERT_EQ(AnnouncedAll(kIdentity), kNothing);
  ASSERT_EQ(Announced(kModuleConnected, L"1"), Both({PenFired(PenWithModule(1))}));
  EXPECT_EQ(Announced(kModuleConnected, L"0"), Both({PenFired({.serial = L"S2", .id = L"P2"})}));
}

TEST_F(Module, IsNotMergedWhileItIsDisconnected) {
  Begin(9);
  Meet(L"S1", L"P1");
  EXPECT_EQ(AnnouncedAll(kIdentity), kNothing);
  EXPECT_EQ(AnnouncedAll({{kModuleVersion, L"2.1"}, {kModuleProduct, L"78"}}), kNothing);
  EXPECT_EQ(AnnouncedAll({{kModuleVersion, L"2.0"}, {kModuleProduct, L"77"}}), kNothing);
  EXPECT_EQ(Announced(kModuleConnected, L"1"), Both({PenFired(PenWithModule(1))}));
}

TEST_F(Module, ConnectionWithoutAnyPenIsKeptForLater) {
  Begin(9);
  EXPECT_EQ(Announced(kModuleConnected, L"1"), kNothing);
  Meet(L"S1", L"P1");
  EXPECT_EQ(Announced(kModuleConnected, L"1"), kNothing) << "no change";
  EXPECT_EQ(AnnouncedAll(kIdentity), Both({PenFired(PenWithModule(1))}));
}

TEST_F(Module, ChangesAreReportedOneByOne) {
  Begin(9);
  Meet(L"S1", L"P1");
  ASSERT_EQ(AnnouncedAll(kIdentity), kNothing);
  ASSERT_EQ(Announced(kModuleConnected, L"1"), Both({PenFired(PenWithModule(1))}));
  ExpectedPen changed = PenWithModule(1);
  changed.moduleVersion = L"2.1";
  EXPECT_EQ(Announced(kModuleVersion, L"2.1"), Both({PenFired(changed)}));
  changed.moduleProduct = 7;
  EXPECT_EQ(Announced(kModuleProduct, L"65543"), Both({PenFired(changed)}));
  changed.moduleProduct = 65535;
  EXPECT_EQ(Announced(kModuleProduct, L"-1"), Both({PenFired(changed)}));
  changed.moduleId = L"123456789012345";
  EXPECT_EQ(Announced(kModuleId, L"1234567890123456"), Both({PenFired(changed)}));
}

TEST_F(Module, ThatSaysTheSameAgainIsReportedAgain) {
  Begin(9);
  Meet(L"S1", L"P1");
  ASSERT_EQ(AnnouncedAll(kIdentity), kNothing);
  ASSERT_EQ(Announced(kModuleConnected, L"1"), Both({PenFired(PenWithModule(1))}));
  for (const Value& value : kIdentity) {
    EXPECT_EQ(Announced(value.index, value.text), Both({PenFired(PenWithModule(1))}))
        << value.index;
  }
  EXPECT_EQ(Announced(kModuleConnected, L"1"), kNothing) << "the connection is compared first";
  EXPECT_EQ(Announced(kModuleProduct, L""), kNothing) << "an empty number says nothing";
}

TEST_F(Module, ThatWaitedForARecordMadeByABatteryValueIsReportedWithIt) {
  Begin(9);
  Meet(L"S2", L"P2");
  ASSERT_EQ(AnnouncedAll(kIdentity), kNothing);
  ASSERT_EQ(Announced(kModuleConnected, L"1"),
            Both({PenFired({.serial = L"S2", .id = L"P2", .moduleConnected = 1})}))
      << "the pen at hand stands in until then";
  ASSERT_EQ(Announced(kTabletPenSerial, L"S1"), kNothing);
  ExpectedPen pen = PenWithModule(1);
  pen.id.clear();
  pen.battery = 50;
  EXPECT_EQ(Announced(kModuleBattery, L"50"), Both({PenFired(pen)}));
}

// The value that an empty record has anyway is no reason to keep the module from the application.
TEST_F(Module, ThatWaitedForARecordIsReportedWithAValueThatIsNoneTheLess) {
  Begin(9);
  Meet(L"S2", L"P2");
  ASSERT_EQ(AnnouncedAll(kIdentity), kNothing);
  ASSERT_EQ(Announced(kModuleConnected, L"1").size(), 2u);
  ASSERT_EQ(Announced(kTabletPenSerial, L"S1"), kNothing);
  ExpectedPen pen = PenWithModule(1);
  pen.id.clear();
  EXPECT_EQ(Announced(kModuleCharging, L"0"), Both({PenFired(pen)}));
  EXPECT_EQ(Announced(kModuleCharging, L"0"), kNothing);
}

TEST_F(Module, ThatWaitedForARecordMadeByADockValueIsReportedWithIt) {
  Begin(9);
  ASSERT_EQ(AnnouncedAll(kIdentity), kNothing);
  ASSERT_EQ(Announced(kModuleConnected, L"1"), kNothing);
  ASSERT_EQ(Announced(kTabletPenSerial, L"S1"), kNothing);
  ExpectedPen pen = PenWithModule(1);
  pen.id.clear();
  pen.docked = 1;
  EXPECT_EQ(Announced(kDocked, L"1"), Both({PenFired(pen)}));
}

TEST_F(Module, ThatWaitedForARecordMadeByAnEmptyValueIsReportedLater) {
  Begin(9);
  ASSERT_EQ(AnnouncedAll(kIdentity), kNothing);
  ASSERT_EQ(Announced(kModuleConnected, L"1"), kNothing);
  ASSERT_EQ(Announced(kTabletPenSerial, L"S1"), kNothing);
  EXPECT_EQ(Announced(kDocked, L""), kNothing);
  ExpectedPen pen = PenWithModule(1);
  pen.id.clear();
  pen.battery = 50;
  EXPECT_EQ(Announced(kPenBattery, L"50"), Both({PenFired(pen)}));
}

}  // namespace
