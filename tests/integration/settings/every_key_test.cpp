// Every key with a handler, one after another: what changes is stored and reported to each
// registration, and what does not convert is as if it had never come.

#include <algorithm>

#include "integration/settings/key_cases.h"

using namespace settings_test;

namespace {

class EveryKey : public SettingsTest, public testing::WithParamInterface<int> {};

TEST_P(EveryKey, IsReportedToEachRegistrationWhenItChanges) {
  const KeyCase keyCase = KeyCaseOf(GetParam());
  if (keyCase.index == kTilt) fence.UsePressureCurve();
  Begin();
  for (size_t i = 0; i < keyCase.steps.size(); ++i) {
    const auto& [value, fires] = keyCase.steps[i];
    EXPECT_EQ(Announced(value.index, value.text), Both(fires))
        << "step " << i << ", " << NameOfKey(value.index) << " = "
        << testing::PrintToString(value.text);
  }
  EXPECT_EQ(service.ConnectionCount(), 1);
}

// By their indices: what a test's parameters keep is searched for leaks at the end of each native
// test, which is a process.
INSTANTIATE_TEST_SUITE_P(With, EveryKey, testing::ValuesIn(expected::HandledIndices()),
                         [](const auto& test) { return NameOfKey(test.param); });

class SameValueForManyKeys : public SettingsTest {};

TEST_F(SameValueForManyKeys, IsAChangeForEachOfThem) {
  fence.UsePressureCurve();
  Begin();
  for (const int index :
       {kTilt, kAlertDelay, kUndockedWait, kZonesCount, kZonesCount2, kUpperHoverClick,
        kLowerHoverClick, kCenterRightClick, kOpaqueEnabled, kOpaqueSetup, kOpaqueRemember,
        kInputMode, kPenAlert, kPowerSaving, kPenGestures, kMagnifier}) {
    EXPECT_EQ(Announced(index, L"1").size(), 2U) << NameOfKey(index);
  }
  EXPECT_EQ(Announced(kOrientation, L"102").size(), 2U);
  EXPECT_EQ(Announced(kMapping, L"0").size(), 2U);

  std::vector<int> buttons = {kEraserSingle, kEraserDouble, kEraserLong,
                              kUpperSwitch,  kLowerSwitch,  kAutoExecute};
  for (int wedge = 0; wedge < 16; ++wedge) buttons.push_back(WedgeFunction(wedge));
  for (const int button : buttons) {
    EXPECT_EQ(Announced(NameOf(button), L"Pan").size(), 2U) << NameOfKey(button);
  }
  for (const int index : {kHidRouterVersion, kServiceVersion, kDisplayPath}) {
    EXPECT_EQ(Announced(index, L"1").size(), 2U) << NameOfKey(index);
  }
}

TEST(EveryKeyTable, HasEachKeyWithAHandlerOnce) {
  std::vector<int> covered;
  for (const KeyCase& keyCase : AllKeyCases()) covered.push_back(keyCase.index);
  std::ranges::sort(covered);
  std::vector<int> handled = expected::HandledIndices();
  std::ranges::sort(handled);
  EXPECT_EQ(covered, handled);
}

}  // namespace
