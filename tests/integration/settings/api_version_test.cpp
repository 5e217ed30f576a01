// What an application of an older API version does not hear of.

#include "integration/settings/expected_pen.h"
#include "integration/settings/key_cases.h"

using namespace settings_test;

namespace {

// A key whose callback came with `version`. Of its two values, each is a change after the other.
struct LateKey {
  int index;
  int32_t version;
  std::wstring first;
  Fired firstFires;
  std::wstring second;
  std::vector<Fired> firstFiresBelow = {};  // in an older callback
};

void PrintTo(const LateKey& key, std::ostream* out) {
  *out << NameOfKey(key.index);
}

std::vector<LateKey> KeysWithALateSlot() {
  const auto number = [](int slot, int32_t value) { return Fired{slot, arguments::Value(value)}; };
  std::vector<LateKey> keys = {
      {kOpaqueEnabled, 1, L"1", number(kOnOpaqueEnabled, 1), L"0"},
      {kDisplayPath, 1, L"path 1", {kOnDisplayPath, arguments::Text(L"path 1")}, L"path 2"},
      {kOrientation, 1, L"102", number(kOnOrientation, 1), L"103"},
      {kInputMode, 1, L"1", number(kOnInputMode, 1), L"0"},
      {kMapping, 1, L"0", number(kOnMapping, 1), L"1"},
      {kZonesCount, 2, L"6", {kOnZonesCount, arguments::Pair(0, 6)}, L"8"},
      {kZonesCount2, 2, L"6", {kOnZonesCount, arguments::Pair(1, 6)}, L"8"},
      {NameOf(kAutoExecute), 4, L"Pan", {kOnAutoExecute, arguments::Button(0, L"Pan")}, L"Zoom"},
      {kPowerSaving, 4, L"1", number(kOnPowerSaving, 1), L"0"},
      {kPenAlert, 4, L"1", number(kOnPenAlert, 1), L"0"},
      {kOpaqueSetup, 6, L"1", number(kOnOpaqueSetup, 1), L"0"},
      {kOpaqueRemember, 6, L"1", number(kOnOpaqueRemember, 1), L"0"},
      {kUndockedWait, 7, L"30", number(kOnUndockedWait, 30), L"60"},
  };
  for (int wedge = 0; wedge < 16; ++wedge) {
    LateKey key = {WedgeName(wedge), 2, L"Pan", {kOnWedgeEx, arguments::Wedge(0, L"Pan")}, L"Zoom"};
    if (wedge < 8) key.firstFiresBelow = {{kOnWedge, arguments::Button(0, L"Pan")}};
    keys.push_back(key);
  }
  return keys;
}

class LateSlot : public SettingsTest, public testing::WithParamInterface<LateKey> {};

TEST_P(LateSlot, IsCalledFromItsApiVersionOnAndTheValueIsStoredBelow) {
  const auto& [index, version, first, firstFires, second, firstFiresBelow] = GetParam();
  Begin(version - 1);
  EXPECT_EQ(Announced(index, first), Both(firstFiresBelow));

  library.KorvuISD_SetAPIVersion(version);
  EXPECT_EQ(Announced(index, second), kNothing) << "a registration of before lacks the slot";

  RegisterBoth();
  EXPECT_EQ(Announced(index, second), kNothing) << "the value was stored all the same";
  EXPECT_EQ(Announced(index, first), Both({firstFires}));
}

INSTANTIATE_TEST_SUITE_P(Of, LateSlot, testing::ValuesIn(KeysWithALateSlot()),
                         [](const auto& test) { return NameOfKey(test.param.index); });

// Lists and features are reported with every value, so that repeating one shows nothing.
std::vector<LateKey> KeysThatAlwaysFire() {
  const arguments::Monitor monitor = {L"path", L"Left"};
  return {
      {kMonitors, 1, LR"({"path":"Left"})", {kOnMonitors, arguments::Monitors({monitor}, -1)}, L""},
      {kUndockOptions,
       4,
       LR"({"2":"Zoom"})",
       {kOnUndockOptions, arguments::Options({{2, L"Zoom"}})},
       L""},
      {kDockable, 5, L"1", {kOnFeature, arguments::Pair(0, 1)}, L""},
      {kOpaqueSupported, 5, L"1", {kOnFeature, arguments::Pair(1, 1)}, L""},
  };
}

class LateSlotThatAlwaysFires : public SettingsTest, public testing::WithParamInterface<LateKey> {};

TEST_P(LateSlotThatAlwaysFires, IsCalledFromItsApiVersionOn) {
  const auto& [index, version, first, firstFires, second, firstFiresBelow] = GetParam();
  Begin(version - 1);
  EXPECT_EQ(Announced(index, first), kNothing);
  library.KorvuISD_SetAPIVersion(version);
  EXPECT_EQ(Announced(index, first), kNothing) << "a registration of before lacks the slot";
  RegisterBoth();
  EXPECT_EQ(Announced(index, first), Both({firstFires}));
}

INSTANTIATE_TEST_SUITE_P(Of, LateSlotThatAlwaysFires, testing::ValuesIn(KeysThatAlwaysFire()),
                         [](const auto& test) { return NameOfKey(test.param.index); });

// These keys are not even listened to, whatever slots a registration has.
std::vector<LateKey> KeysWithALateHandler() {
  return {
      {kPenGestures, 8, L"1", {kOnPenGestures, arguments::Value(1)}, L"0"},
      {kMagnifier, 8, L"1", {kOnMagnifier, arguments::Value(1)}, L"0"},
      {kDockable, 5, L"1", {kOnFeature, arguments::Pair(0, 1)}, L""},
      {kOpaqueSupported, 5, L"1", {kOnFeature, arguments::Pair(1, 1)}, L""},
      {kModuleConnected, 3, L"1", PenFired({.serial = L"S1", .id = L"P1", .moduleConnected = 1}),
       L"0"},
  };
}

class LateHandler : public SettingsTest, public testing::WithParamInterface<LateKey> {};

TEST_P(LateHandler, IgnoresValuesBelowItsApiVersion) {
  const auto& [index, version, first, firstFires, second, firstFiresBelow] = GetParam();
  Begin(9);
  ASSERT_EQ(AnnouncedAll({{kPenSerial, L"S1"}, {kPenId, L"P1"}}), kNothing);

  for (const int32_t below : {-5, 0, version - 1}) {
    library.KorvuISD_SetAPIVersion(below);
    EXPECT_EQ(Announced(index, first), kNothing) << below;
    EXPECT_EQ(Announced(index, L"abc"), kNothing) << below;
  }
  library.KorvuISD_SetAPIVersion(version);
  EXPECT_EQ(Announced(index, first), Both({firstFires})) << "as if it had never come";
}

INSTANTIATE_TEST_SUITE_P(Of, LateHandler, testing::ValuesIn(KeysWithALateHandler()),
                         [](const auto& test) { return NameOfKey(test.param.index); });

class ApiVersion : public SettingsTest {};

TEST_F(ApiVersion, ARegistrationKeepsItsSlotsWhenTheVersionIsLowered) {
  Begin(9);
  library.KorvuISD_SetAPIVersion(0);
  EXPECT_EQ(Announced(kOpaqueEnabled, L"1"), Both({{kOnOpaqueEnabled, arguments::Value(1)}}));
  EXPECT_EQ(Announced(kUndockedWait, L"30"), Both({{kOnUndockedWait, arguments::Value(30)}}));
}

TEST_F(ApiVersion, ANegativeVersionOpensWhatZeroOpens) {
  Begin(-5);
  EXPECT_EQ(Announced(kOpaqueEnabled, L"1"), kNothing);
  EXPECT_EQ(Announced(kDockable, L"1"), kNothing);
  EXPECT_EQ(Announced(kAlertDelay, L"5"), Both({{kOnAlertDelay, arguments::Value(5)}}));
  EXPECT_EQ(Announced(kCenterRightClick, L"1"), Both({{kOnCenterRightClick, arguments::Value(1)}}));
  EXPECT_EQ(Announced(kUpperHoverClick, L"1"),
            Both({{kOnUpperSwitch, arguments::SideSwitch(0, L"", 1)}}));
  EXPECT_EQ(Announced(WedgeName(0), L"Pan"), Both({{kOnWedge, arguments::Button(0, L"Pan")}}));
  EXPECT_EQ(Announced(WedgeName(8), L"Pan"), kNothing);
  EXPECT_EQ(Announced(kTopLongOptions, L""), Both({{kOnTopLongOptions, arguments::Options({})}}));
}

TEST_F(ApiVersion, ANegativeVersionStoresWhatZeroStores) {
  Begin(-5);
  const std::vector<Value> flags = {{kOpaqueEnabled, L"1"},
                                    {kOpaqueSetup, L"1"},
                                    {kOpaqueRemember, L"1"},
                                    {kPenAlert, L"1"},
                                    {kPowerSaving, L"1"}};
  EXPECT_EQ(AnnouncedAll(flags), kNothing);
  library.KorvuISD_SetAPIVersion(9);
  RegisterBoth();
  EXPECT_EQ(AnnouncedAll(flags), kNothing) << "stored already";
}

}  // namespace
