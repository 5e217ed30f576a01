// The names of all settings, as the service publishes them, and where the tool finds its own.
//
// People write a key with single backslashes and messages carry them doubled; the table holds the
// readable form. All keys are ASCII.
//
// The library has a table of the same names, and they stay two: the tools know the public header
// only, as any application does, and what one table has wrong the other's tests show.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

inline constexpr size_t kKeyCount = 151;

// In the order of the service's numbering: a key's place is its setting index.
extern const std::array<std::string_view, kKeyCount> kKeys;

// Places in the table. A button is four settings in a row: its function, and these after it.
enum KeyIndex : size_t {
  kPenVendorIdKey = 3,
  kPenTypeKey = 4,
  kPenInProximityKey = 5,
  kPenSerialKey = 6,
  kPenIdKey = 7,
  kEraserSingleKey = 13,
  kEraserDoubleKey = 17,
  kEraserLongKey = 21,
  kUpperButtonKey = 25,
  kUpperHoverClickKey = 29,
  kLowerButtonKey = 30,
  kLowerHoverClickKey = 34,
  kFirstRingCountKey = 35,
  kSecondRingCountKey = 36,
  kCenterRightClickKey = 37,
  kFirstWedgeKey = 46,
  kBatteryAlertDelayKey = 114,
  kTiltSensitivityKey = 115,
  kPressureCurveKey = 116,
  kCapturedKeysKey = 117,
  kZoomMapKey = 125,
  kOpaqueEnabledKey = 127,
  kOpaqueSetupStateKey = 128,
  kOpaqueSetupSaveKey = 129,
  kHoverClickUiKey = 130,
  kOpaqueOrientationKey = 132,
  kOpaqueInputModeKey = 133,
  kOpaqueMappingKey = 134,
  kOpaqueDisplayPathKey = 135,
  kFirmwareVersionKey = 136,
  kSensorIdKey = 137,
  kPenAlertKey = 139,
  kDockPowerSavingKey = 141,
  kDockDetachKey = 142,
  kDockAlertTimeKey = 147,
  kPenIsDockedKey = 148,
  kPenGesturesKey = 149,
  kMagnifierKey = 150,
};
inline constexpr size_t kAppPathOffset = 1;
inline constexpr size_t kNameOffset = 2;
inline constexpr size_t kKeystrokesOffset = 3;
inline constexpr size_t kKeysPerButton = 4;
inline constexpr size_t kWedgesPerRing = 8;

// The part after the last backslash.
std::string_view LastComponent(std::string_view key);

// {"GetVal":"..."}: asks the service for the value of a key of the table.
std::wstring ValueRequest(size_t key);

// What the library itself asks first on a connection. Any service acknowledges it, so it also
// serves to learn whether the connection stands.
inline constexpr std::wstring_view kConnectionProbe = L"{\"Connected\":\"?\"}";

}  // namespace tool
