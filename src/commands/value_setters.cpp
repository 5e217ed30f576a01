// The setters of one number with a flag for "empty".

#include <algorithm>
#include <cstdint>

#include "KorvuTabletSettingsAPI.h"
#include "commands/write_routines.h"
#include "core/current_client.h"
#include "platform/mutex.h"
#include "settings/setting_keys.h"

using namespace KorvuISD;

namespace {

using Translation = int32_t (*)(int32_t argument);

int32_t AsItIs(int32_t value) {
  return value;
}

// The longest time that the tablet's timer holds, in its own unit.
int32_t DockAlertTime(int32_t time) {
  return time < 0 ? 1 : std::min(time, 35791);
}

// The service's codes, which it counts around the display: hence the crossed pairs.
int32_t Orientation(int32_t orientation) {
  switch (orientation) {
    case 1:
      return 102;
    case 2:
      return 105;
    case 3:
      return 104;
    default:
      return 103;
  }
}

int32_t InputMode(int32_t mode) {
  return mode == 1 ? 1 : 0;
}

// The service counts the two mappings the other way round.
int32_t Mapping(int32_t mapping) {
  return mapping == 1 ? 0 : 1;
}

int32_t SetupState(int32_t state) {
  return state == 1 || state == 2 ? state : 0;
}

void Set(Setting setting, Translation translation, int32_t leastApiVersion, int32_t value,
         int32_t empty) {
  const auto client = CurrentClient();
  if (client->APIVersion() < leastApiVersion) return;
  WriteSettingValue(*client, static_cast<uint32_t>(translation(value)), setting, empty != 0);
}

}  // namespace

#define SETTER(name, setting, translation, leastApiVersion)   \
  void KORVUISD_CALL name(int32_t value, int32_t empty) {     \
    Set(setting, translation, leastApiVersion, value, empty); \
  }

// A version of INT32_MIN is open to all, negative versions too.
#define ANY INT32_MIN

// clang-format off
//     export                             setting                 sent as        API
SETTER(KorvuISD_SetTopHoverClick,         kUpperHoverClick,       AsItIs,        ANY)
SETTER(KorvuISD_SetBottomHoverClick,      kLowerHoverClick,       AsItIs,        ANY)
SETTER(KorvuISD_SetTipSensitivity,        kPressureCurve,         AsItIs,        ANY)
SETTER(KorvuISD_SetTiltSensitivity,       kTiltSensitivity,       AsItIs,        ANY)
SETTER(KorvuISD_SetBatteryAlertDelay,     kBatteryAlertDelay,     AsItIs,        ANY)
SETTER(KorvuISD_SetPenAlert,              kPenAlertEnabled,       AsItIs,        ANY)
SETTER(KorvuISD_SetPenGesturesEnabled,    kPenGesturesEnabled,    AsItIs,        ANY)
SETTER(KorvuISD_SetMagnifierEnabled,      kMagnifierEnabled,      AsItIs,        ANY)
SETTER(KorvuISD_SetDockPowerSaving,       kPenDockPowerSaving,    AsItIs,        ANY)
SETTER(KorvuISD_SetDockAlertTime,         kUndockedTimerWait,     DockAlertTime, 7)
SETTER(KorvuISD_SetMenuCenterRightClick,  kCenterRightClick,      AsItIs,        ANY)
SETTER(KorvuISD_SetOpaqueModeOrientation, kOpaqueOrientation,     Orientation,   1)
SETTER(KorvuISD_SetOpaqueModeInputMode,   kOpaqueInputMode,       InputMode,     1)
SETTER(KorvuISD_SetOpaqueModeMapping,     kOpaqueMapping,         Mapping,       1)
SETTER(KorvuISD_SetOpaqueModeSetupState,  kOpaqueInSetupGuide,    SetupState,    6)
SETTER(KorvuISD_SetOpaqueModeSetupSave,   kOpaqueRememberDisplay, AsItIs,        6)
// clang-format on
