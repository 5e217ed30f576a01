// The local copy of every value that the service has sent: what makes a record for a callback
// whole, and what tells a change from a repetition.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "KorvuTabletSettingsAPI.h"
#include "settings/setting_keys.h"

namespace KorvuISD {

// The battery status of a pen of which none has arrived.
inline constexpr int32_t kNoBatteryStatus = -1;

// What has been announced of the pen at hand, until it makes or completes a record.
struct PenStaging {
  uint8_t vendorId = 0;
  uint16_t penType = 0;
  int32_t inProximity = 0;
  std::wstring serialNumber;
  std::wstring penId;
};

// The same of the Bluetooth module.
struct ModuleStaging {
  std::wstring version;
  std::wstring serialNumber;
  std::wstring moduleId;
  uint16_t productId = 0;
  int32_t connected = 0;
};

// Pens by serial number. A record does not move while the table lives: handlers keep a reference to
// one while others come.
using PenTable = std::map<std::wstring, PenInfo>;

// Options of one list by function code.
using OptionNames = std::map<int32_t, std::wstring>;

struct MonitorEntry {
  std::wstring displayPath;
  std::wstring displayName;
};

// Only under g_apiMutex. Zero and empty at first.
struct LocalValues {
  std::wstring hidRouterVersion;
  std::wstring serviceVersion;
  std::wstring firmwareVersion;
  int32_t sensorId = 0;

  ButtonRecord eraserSingle{};
  ButtonRecord eraserDouble{};
  ButtonRecord eraserLong{};
  KorvuISD_SideSwitch upperSideSwitch{};
  KorvuISD_SideSwitch lowerSideSwitch{};

  int32_t pressureCurve = 0;
  int32_t tiltSensitivity = 0;
  int32_t batteryAlertDelay = 0;
  int32_t centerRightClick = 0;
  uint8_t radialZonesCount = 0;
  uint8_t radialZonesCount2 = 0;
  std::array<ButtonRecord, kWedgeCount> wedges{};  // in the order of the keys

  std::vector<wchar_t> capturedKeystrokes;  // the sequence, not the display text; not terminated
  std::vector<KorvuISD_ZoomMapEntry> displayZoomMap;

  int32_t opaqueEnabledGlobal = 0;
  int32_t opaqueOrientation = 0;
  int32_t opaqueInputMode = 0;
  int32_t opaqueMapping = 0;
  std::wstring opaqueDisplayPath;
  int32_t opaqueRememberDisplay = 0;
  int32_t opaqueInSetupGuide = 0;

  ButtonRecord autoExecuteButton{};
  int32_t penDockPowerSaving = 0;
  int32_t penAlertEnabled = 0;
  int32_t undockedTimerWait = 0;
  int32_t penGesturesEnabled = 0;
  int32_t magnifierEnabled = 0;
  uint32_t featureFlags = 0;  // bit number: KORVUISD_FEATURE_...

  PenTable pens;
  std::wstring currentPenSerial;  // as the tablet reported it
  PenStaging penStaging;
  ModuleStaging moduleStaging;

  OptionNames topButtonSingleOptions;
  OptionNames topButtonDoubleOptions;
  OptionNames topButtonLongOptions;
  OptionNames sideSwitchOptions;
  OptionNames radialWedgeOptions;
  OptionNames autoUndockOptions;
  std::vector<MonitorEntry> monitors;
};

}  // namespace KorvuISD
