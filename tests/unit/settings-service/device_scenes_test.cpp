#include "settings-service/device_scenes.h"

#include <string>

#include <gmock/gmock.h>

#include "service_printers.h"

namespace tool::service {
namespace {

using testing::ElementsAre;

const std::wstring kPen = L"ComponentsDriver\\\\PenHandler\\\\PenTransducer\\\\";
const std::wstring kModule = L"ComponentsDriver\\\\BTButtonHandler\\\\BTModule\\\\";
const std::wstring kTabletSerial = L"ComponentsDriver\\\\PenHandler\\\\LastEPXSerialNumber";

class ServiceScene : public testing::Test {
 protected:
  void Play(const Changes& scene) {
    for (const Change& change : scene) state.Store(change.key, change.value);
  }

  std::wstring Value(const std::wstring& key) { return *state.Value(key); }

  SettingsState state{Catalogue::BuiltIn()};
};

TEST_F(ServiceScene, PenThatComesIsIntroducedAsAwayAndThenComesNear) {
  EXPECT_THAT(
      PenScene(state, L"S1", L"7", true),
      ElementsAre(Change{kPen + L"EPXVendorID", Value(kPen + L"EPXVendorID")},
                  Change{kPen + L"LastEPXType", Value(kPen + L"LastEPXType")},
                  Change{kPen + L"PenInProx", L"0"}, Change{kPen + L"LastEPXSerialNumber", L"S1"},
                  Change{kPen + L"PenID", L"7"}, Change{kTabletSerial, L"S1"},
                  Change{kPen + L"PenInProx", L"1"}, Change{kPen + L"PenID", L"7"}));
}

TEST_F(ServiceScene, PenThatIsNearAlreadyDoesNotSeemToLeave) {
  Play(PenScene(state, L"S1", L"7", true));
  EXPECT_THAT(PenScene(state, L"S1", L"7", true),
              ElementsAre(Change{kPen + L"PenInProx", L"1"}, Change{kPen + L"PenID", L"7"}));
}

TEST_F(ServiceScene, PenThatLeavesIsNamedAfterItsProximity) {
  Play(PenScene(state, L"S1", L"7", true));
  EXPECT_THAT(
      PenScene(state, L"S1", L"7", false),
      ElementsAre(Change{kPen + L"EPXVendorID", Value(kPen + L"EPXVendorID")},
                  Change{kPen + L"LastEPXType", Value(kPen + L"LastEPXType")},
                  Change{kPen + L"PenInProx", L"0"}, Change{kPen + L"LastEPXSerialNumber", L"S1"},
                  Change{kPen + L"PenID", L"7"}, Change{kTabletSerial, L"S1"}));
}

TEST_F(ServiceScene, SecondPenIsIntroducedThoughTheFirstIsNear) {
  Play(PenScene(state, L"S1", L"7", true));
  EXPECT_EQ(PenScene(state, L"S2", L"8", true).size(), 8u);
}

TEST_F(ServiceScene, BatteryIsReportedByPenAndModuleAlike) {
  EXPECT_THAT(BatteryScene(55, std::nullopt),
              ElementsAre(Change{kPen + L"PenBatteryStatus", L"55"},
                          Change{kModule + L"BTBatteryStatus", L"55"}));
  EXPECT_THAT(BatteryScene(0, true), ElementsAre(Change{kPen + L"PenBatteryStatus", L"0"},
                                                 Change{kModule + L"BTBatteryStatus", L"0"},
                                                 Change{kPen + L"PenBatteryCharging", L"1"},
                                                 Change{kModule + L"BTBatteryCharging", L"1"}));
  EXPECT_EQ(BatteryScene(0, false).back(), (Change{kModule + L"BTBatteryCharging", L"0"}));
}

TEST_F(ServiceScene, ModuleTellsItsIdentityBeforeItConnects) {
  Play(PenScene(state, L"S1", L"7", true));
  EXPECT_THAT(ModuleScene(state, true, L""),
              ElementsAre(Change{kModule + L"BTVersion", Value(kModule + L"BTVersion")},
                          Change{kModule + L"BTProductID", Value(kModule + L"BTProductID")},
                          Change{kModule + L"LastEPXSerialNumber", L"S1"},
                          Change{kModule + L"BTID", Value(kModule + L"BTID")},
                          Change{kModule + L"BTConnected", L"1"}));
}

TEST_F(ServiceScene, ModuleMayBelongToAnotherPen) {
  EXPECT_THAT(ModuleScene(state, true, L"S9"),
              testing::Contains(Change{kModule + L"LastEPXSerialNumber", L"S9"}));
}

TEST_F(ServiceScene, ModuleThatDisconnectsSaysNoMore) {
  EXPECT_THAT(ModuleScene(state, false, L""), ElementsAre(Change{kModule + L"BTConnected", L"0"}));
}

TEST_F(ServiceScene, DockTellsWhetherAPenIsInIt) {
  const std::wstring key = L"ComponentsDriver\\\\ComponentsTablet\\\\PenIsDocked";
  EXPECT_THAT(DockScene(true), ElementsAre(Change{key, L"1"}));
  EXPECT_THAT(DockScene(false), ElementsAre(Change{key, L"0"}));
}

TEST_F(ServiceScene, AllKeysExist) {
  for (const Changes& scene :
       {PenScene(state, L"S1", L"7", true), BatteryScene(1, true), ModuleScene(state, true, L""),
        ModuleScene(state, false, L""), DockScene(true)}) {
    for (const Change& change : scene) EXPECT_NE(state.Value(change.key), nullptr);
  }
}

}  // namespace
}  // namespace tool::service
