// The 151 settings: the key text of each setting index.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace KorvuISD {

inline constexpr size_t kSettingCount = 151;

// The key of an index, as it stands in messages: path separators doubled. Throws
// std::out_of_range("invalid map<K, T> key") for an index that the table does not hold.
std::wstring_view SettingKey(int32_t index);

// A button is four settings in a row: its function, and these.
inline constexpr int32_t kAppPathOffset = 1;
inline constexpr int32_t kNameOffset = 2;
inline constexpr int32_t kKeystrokesOffset = 3;

// A wedge of the radial menu after the other, clockwise from East, first ring first.
inline constexpr int32_t kWedgeStride = 4;
inline constexpr int32_t kWedgesPerRing = 8;
inline constexpr int32_t kWedgeCount = 16;

// The settings that the library itself addresses; of a button, its function. The numbers are fixed:
// those that look out of place came later than their neighbours.
enum Setting : int32_t {
  kServiceVersion = 0,
  kHidRouterVersion = 1,
  kTabletPenSerial = 2,
  kPenVendorId = 3,
  kPenType = 4,
  kPenInProximity = 5,
  kPenSerial = 6,
  kPenId = 7,
  kModuleConnected = 8,
  kModuleVersion = 9,
  kModuleProductId = 10,
  kModuleSerial = 11,
  kModuleId = 12,
  kEraserSingle = 13,
  kEraserDouble = 17,
  kEraserLong = 21,
  kUpperSideSwitch = 25,
  kUpperHoverClick = 29,
  kLowerSideSwitch = 30,
  kLowerHoverClick = 34,
  kRadialZonesCount = 35,
  kRadialZonesCount2 = 36,
  kCenterRightClick = 37,
  kFirstWedge = 46,
  kPenBatteryStatus = 110,
  kPenBatteryCharging = 111,
  kModuleBatteryStatus = 112,
  kModuleBatteryCharging = 113,
  kBatteryAlertDelay = 114,
  kTiltSensitivity = 115,
  kPressureCurve = 116,
  kCapturedKeystrokesEntities = 117,
  kCapturedKeystrokes = 118,
  kRunAppOptions = 119,
  kTopButtonSingleOptions = 120,
  kTopButtonDoubleOptions = 121,
  kTopButtonLongOptions = 122,
  kSideSwitchOptions = 123,
  kRadialWedgeOptions = 124,
  kDisplayZoomMap = 125,
  kOpaqueModeSupported = 126,
  kOpaqueEnabledGlobal = 127,
  kOpaqueInSetupGuide = 128,
  kOpaqueRememberDisplay = 129,
  kMonitorOptions = 131,
  kOpaqueOrientation = 132,
  kOpaqueInputMode = 133,
  kOpaqueMapping = 134,
  kOpaqueDisplayPath = 135,
  kFirmwareVersion = 136,
  kSensorId = 137,
  kPenAlertEnabled = 139,
  kIsDockable = 140,
  kPenDockPowerSaving = 141,
  kAutoExecuteButton = 142,
  kAutoUndockOptions = 146,
  kUndockedTimerWait = 147,
  kPenIsDocked = 148,
  kPenGesturesEnabled = 149,
  kMagnifierEnabled = 150,
};

// Is it the path or the keystrokes of a button? They go to the service, and never come back.
constexpr bool IsPathOrKeystrokes(int32_t index) {
  constexpr int32_t kRadialCenter = 38;
  constexpr int32_t kLastWedge = kFirstWedge + (kWedgeCount - 1) * kWedgeStride;
  const auto isOf = [index](int32_t button) {
    return index == button + kAppPathOffset || index == button + kKeystrokesOffset;
  };
  // The centre of the radial menu and its outside stand right before the wedges.
  for (int32_t button = kRadialCenter; button <= kLastWedge; button += kWedgeStride) {
    if (isOf(button)) return true;
  }
  return isOf(kEraserSingle) || isOf(kEraserDouble) || isOf(kEraserLong) ||
         isOf(kUpperSideSwitch) || isOf(kLowerSideSwitch) || isOf(kAutoExecuteButton);
}

}  // namespace KorvuISD
