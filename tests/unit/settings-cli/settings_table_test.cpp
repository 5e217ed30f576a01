#include "shared/settings_table.h"

#include <cstdint>
#include <cstring>
#include <iterator>
#include <set>
#include <string_view>

#include <gmock/gmock.h>

#include "settings-cli/buttons.h"
#include "settings-cli/exit_code.h"
#include "settings-cli/setting_values.h"

using namespace tool;
using namespace tool::cli;

namespace {

template <typename Setter>
struct Row {
  std::string_view name;
  size_t key;
  Setter set;
};
using SettingRow = Row<void(KORVUISD_CALL*)(int32_t, int32_t)>;
using ButtonRow = Row<void(KORVUISD_CALL*)(const ButtonFunctionValue*, int32_t)>;

// A function of a DLL may have two addresses in a program: its own, and that of a jump to it which
// the linker makes for what is initialised before the DLL is there.
template <typename Setter>
const uint8_t* Target(Setter setter) {
  const auto* const code = reinterpret_cast<const uint8_t*>(setter);
  constexpr size_t kJumpSize = 6;  // FF 25 and how far on the own address is
  if (code[0] != 0xFF || code[1] != 0x25) return code;
  int32_t distance = 0;
  std::memcpy(&distance, code + 2, sizeof(distance));
  const uint8_t* target = nullptr;
  std::memcpy(&target, code + kJumpSize + distance, sizeof(target));
  return target;
}

const SettingRow kSettingRows[] = {
    {"tip-sensitivity", 116, KorvuISD_SetTipSensitivity},
    {"tilt-sensitivity", 115, KorvuISD_SetTiltSensitivity},
    {"upper-hover-click", 29, KorvuISD_SetTopHoverClick},
    {"lower-hover-click", 34, KorvuISD_SetBottomHoverClick},
    {"battery-alert-delay", 114, KorvuISD_SetBatteryAlertDelay},
    {"pen-alert", 139, KorvuISD_SetPenAlert},
    {"pen-gestures", 149, KorvuISD_SetPenGesturesEnabled},
    {"magnifier", 150, KorvuISD_SetMagnifierEnabled},
    {"dock-power-saving", 141, KorvuISD_SetDockPowerSaving},
    {"dock-alert-time", 147, KorvuISD_SetDockAlertTime},
    {"center-right-click", 37, KorvuISD_SetMenuCenterRightClick},
};

const SettingRow kOpaqueRows[] = {
    {"orientation", 132, KorvuISD_SetOpaqueModeOrientation},
    {"input-mode", 133, KorvuISD_SetOpaqueModeInputMode},
    {"mapping", 134, KorvuISD_SetOpaqueModeMapping},
    {"setup-state", 128, KorvuISD_SetOpaqueModeSetupState},
    {"setup-save", 129, KorvuISD_SetOpaqueModeSetupSave},
};

const ButtonRow kButtonRows[] = {
    {"eraser-single", 13, KorvuISD_SetEraserSinglePress},
    {"eraser-double", 17, KorvuISD_SetEraserDoublePress},
    {"eraser-long", 21, KorvuISD_SetEraserLongPress},
    {"upper", 25, KorvuISD_SetTopSinglePress},
    {"lower", 30, KorvuISD_SetBottomSinglePress},
    {"dock-detach", 142, KorvuISD_SetDockDetachAction},
};

const PlainSetting& Plain(std::string_view name) {
  return *FindSetting(PlainSettings(), name);
}

const PlainSetting& Opaque(std::string_view name) {
  return *FindSetting(OpaqueSettings(), name);
}

TEST(CliSettingsTable, EverySettingHasItsKeyAndItsSetter) {
  EXPECT_EQ(PlainSettings().size(), std::size(kSettingRows));
  for (const auto& [name, key, set] : kSettingRows) {
    const PlainSetting* setting = FindSetting(PlainSettings(), name);
    ASSERT_TRUE(setting) << name;
    EXPECT_EQ(size_t{setting->key}, key) << name;
    EXPECT_EQ(Target(setting->set), Target(set)) << name;
  }
}

TEST(CliSettingsTable, EveryOpaqueSettingHasItsKeyAndItsSetter) {
  for (const auto& [name, key, set] : kOpaqueRows) {
    const PlainSetting* setting = FindSetting(OpaqueSettings(), name);
    ASSERT_TRUE(setting) << name;
    EXPECT_EQ(size_t{setting->key}, key) << name;
    EXPECT_EQ(Target(setting->set), Target(set)) << name;
    EXPECT_TRUE(setting->hasDefault) << name;
  }
  EXPECT_EQ(size_t{Opaque("enable").key}, 127u);
  EXPECT_FALSE(Opaque("enable").hasDefault);
  EXPECT_EQ(OpaqueSettings().size(), std::size(kOpaqueRows) + 1);
}

TEST(CliSettingsTable, EveryButtonHasItsKeyAndItsSetter) {
  EXPECT_EQ(Buttons().size(), std::size(kButtonRows));
  for (const auto& [name, key, set] : kButtonRows) {
    const Button* button = FindButton(name);
    ASSERT_TRUE(button) << name;
    EXPECT_EQ(size_t{button->functionKey}, key) << name;
    EXPECT_EQ(Target(button->set), Target(set)) << name;
  }
}

TEST(CliSettingsTable, NamesAreUniqueAndOthersAreNotFound) {
  std::set<std::string_view> names;
  for (const PlainSetting& setting : PlainSettings()) names.insert(setting.name);
  EXPECT_EQ(names.size(), PlainSettings().size());
  EXPECT_EQ(FindSetting(PlainSettings(), "tilt"), nullptr);
  EXPECT_EQ(FindSetting(PlainSettings(), "orientation"), nullptr);
  EXPECT_EQ(FindButton("middle"), nullptr);
}

TEST(CliSettingsTable, AValueThatTheSetterWouldChangeIsRefused) {
  EXPECT_EQ(ParseValue(Plain("dock-alert-time"), "35791"), 35791);
  EXPECT_THROW(ParseValue(Plain("dock-alert-time"), "35792"), UsageError);
  EXPECT_THROW(ParseValue(Plain("dock-alert-time"), "-1"), UsageError);
  EXPECT_THROW(ParseValue(Plain("tilt-sensitivity"), "-1"), UsageError);
  EXPECT_THROW(ParseValue(Opaque("orientation"), "4"), UsageError);
  EXPECT_THROW(ParseValue(Opaque("mapping"), "2"), UsageError);
  EXPECT_THROW(ParseValue(Opaque("setup-state"), "3"), UsageError);
}

TEST(CliSettingsTable, OrientationIsComparedInTheServicesNumbers) {
  const PlainSetting& orientation = Opaque("orientation");
  const std::vector<std::wstring> codes = {L"103", L"102", L"105", L"104"};
  for (int32_t value = 0; value < 4; ++value) {
    for (int32_t other = 0; other < 4; ++other) {
      EXPECT_EQ(IsStored(orientation, codes[static_cast<size_t>(other)], value), value == other);
    }
    EXPECT_EQ(ReadableStored(orientation, codes[static_cast<size_t>(value)]),
              std::to_string(value));
  }
  EXPECT_EQ(ReadableStored(orientation, L"7"), "\"7\"");
}

TEST(CliSettingsTable, MappingIsTheServicesOppositeAndInputModeIsNot) {
  EXPECT_TRUE(IsStored(Opaque("mapping"), L"0", 1));
  EXPECT_TRUE(IsStored(Opaque("mapping"), L"1", 0));
  EXPECT_TRUE(IsStored(Opaque("input-mode"), L"1", 1));
  EXPECT_FALSE(IsStored(Opaque("input-mode"), L"0", 1));
}

TEST(CliSettingsTable, ASwitchIsOnForEveryNumberButZero) {
  EXPECT_TRUE(IsStored(Plain("pen-alert"), L"1", 1));
  EXPECT_TRUE(IsStored(Plain("pen-alert"), L"3", 1));
  EXPECT_FALSE(IsStored(Plain("pen-alert"), L"0", 1));
  EXPECT_EQ(ReadableStored(Plain("pen-alert"), L"0"), "off");
}

TEST(CliSettingsTable, WhatIsNoNumberIsNotStored) {
  EXPECT_FALSE(IsStored(Plain("tilt-sensitivity"), L"", 0));
  EXPECT_FALSE(IsStored(Plain("tilt-sensitivity"), L"3x", 3));
  EXPECT_FALSE(IsStored(Plain("pen-alert"), L"", 0));
  EXPECT_EQ(ReadableStored(Plain("tilt-sensitivity"), L""), "\"\"");
}

}  // namespace
