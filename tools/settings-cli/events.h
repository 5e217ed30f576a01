// What a callback told, copied, so that it can be looked at after the callback has returned.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "KorvuTabletSettingsAPI.h"

namespace tool::cli {

// In the order of the members of KorvuISD_Callbacks.
enum class Slot : size_t {
  kVersions,
  kPenInfo,
  kEraserSingle,
  kEraserDouble,
  kEraserLong,
  kUpperSideSwitch,
  kLowerSideSwitch,
  kPressureCurve,
  kTiltSensitivity,
  kBatteryAlertDelay,
  kRadialWedge,
  kCenterRightClick,
  kCapturedKeystrokes,
  kDisplayZoomMap,
  kRunAppOptions,
  kTopButtonSingleOptions,
  kTopButtonDoubleOptions,
  kTopButtonLongOptions,
  kSideSwitchOptions,
  kFirstRange,
  kSecondRange,
  kRadialWedgeOptions,
  kWedgeCapacity,
  kOpaqueEnabledGlobal,
  kOpaqueDisplayPath,
  kOpaqueOrientation,
  kOpaqueInputMode,
  kOpaqueMapping,
  kMonitorOptions,
  kRadialWedgeEx,
  kRadialZonesCount,
  kAutoExecuteButton,
  kAutoUndockOptions,
  kPenDockPowerSaving,
  kPenAlertEnabled,
  kFeatureSupport,
  kOpaqueInSetupGuide,
  kOpaqueRememberDisplay,
  kUndockedTimerWait,
  kPenGesturesEnabled,
  kMagnifierEnabled,
};
inline constexpr size_t kSlotCount = 41;

// The member's name: "OnVersions".
std::string_view SlotName(Slot slot);

// Whether the number of an OnValue-like slot is 0 or 1 for off or on.
bool IsSwitch(Slot slot);

struct Versions {
  std::wstring hidRouter;
  std::wstring service;
};

struct Pen {
  std::wstring serialNumber;
  std::wstring penId;
  std::wstring moduleVersion;
  std::wstring moduleId;
  std::wstring moduleSerialNumber;
  std::wstring firmwareVersion;
  uint16_t moduleProductId = 0;
  int32_t batteryStatus = -1;
  uint8_t batteryCharging = 0;
  uint8_t vendorId = 0;
  uint16_t penType = 0;
  int32_t sensorId = 0;
  bool isInProximity = false;
  bool isModuleConnected = false;
  bool isDocked = false;
};

// A button's function, or an entry of an option list.
struct Function {
  int32_t code = 0;
  std::wstring name;
};

struct SideSwitch {
  Function function;
  bool hoverClick = false;
};

struct Number {
  int32_t value = 0;
};

struct Text {
  std::wstring text;
};

struct ZoomMap {
  std::vector<KorvuISD_ZoomMapEntry> entries;
};

struct Options {
  std::vector<Function> functions;
};

struct Monitor {
  std::wstring displayPath;
  std::wstring displayName;
};

struct Monitors {
  std::vector<Monitor> monitors;
  int32_t selected = -1;
};

struct Range {
  int32_t minimum = 0;
  int32_t maximum = 0;
};

struct Count {
  uint64_t count = 0;
};

// Of a ring of the radial menu, counted from 0.
struct RingCount {
  int32_t ring = 0;
  uint8_t count = 0;
};

struct Feature {
  int32_t feature = 0;
  bool isSupported = false;
};

using Payload = std::variant<Versions, Pen, Function, SideSwitch, Number, Text, ZoomMap, Options,
                             Monitors, Range, Count, RingCount, Feature>;

struct Event {
  Slot slot;
  Payload payload;
  std::chrono::system_clock::time_point time = {};
};

}  // namespace tool::cli
