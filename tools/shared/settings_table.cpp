#include "shared/settings_table.h"

#include <algorithm>
#include <array>

namespace tool {
namespace {

// The setter would silently cut a higher value to this one.
constexpr int32_t kLongestDockAlertTime = 35791;

constexpr std::array<int32_t, 4> kOrientationCodes = {103, 102, 105, 104};
constexpr std::array<int32_t, 2> kMappingCodes = {1, 0};

// This one setter has no empty value.
void KORVUISD_CALL SetOpaqueEnabled(int32_t value, int32_t) {
  KorvuISD_SetOpaqueModeEnabled(value);
}

using enum ValueKind;

// clang-format off
const std::array kPlainSettings{
    PlainSetting{"tip-sensitivity", "Pressure curve",
                 "number of the pressure curve", kNumber, 0, kNoMaximum,
                 kPressureCurveKey, KorvuISD_SetTipSensitivity, true, {}, 6},
    PlainSetting{"tilt-sensitivity", "Tilt sensitivity",
                 "tilt sensitivity, in steps", kNumber, 0, kNoMaximum,
                 kTiltSensitivityKey, KorvuISD_SetTiltSensitivity, true, {}, 90},
    PlainSetting{"upper-hover-click", "Upper side switch clicks while the pen hovers",
                 "the upper side switch clicks while the pen hovers", kSwitch, 0, 1,
                 kUpperHoverClickKey, KorvuISD_SetTopHoverClick},
    PlainSetting{"lower-hover-click", "Lower side switch clicks while the pen hovers",
                 "the lower side switch clicks while the pen hovers", kSwitch, 0, 1,
                 kLowerHoverClickKey, KorvuISD_SetBottomHoverClick},
    PlainSetting{"battery-alert-delay", "Battery alert delay",
                 "delay of the battery alert, in the service's unit", kNumber, 0, kNoMaximum,
                 kBatteryAlertDelayKey, KorvuISD_SetBatteryAlertDelay},
    PlainSetting{"pen-alert", "Alert for a pen left behind",
                 "alert for a pen left behind", kSwitch, 0, 1,
                 kPenAlertKey, KorvuISD_SetPenAlert},
    PlainSetting{"pen-gestures", "Pen gestures",
                 "pen gestures", kSwitch, 0, 1,
                 kPenGesturesKey, KorvuISD_SetPenGesturesEnabled},
    PlainSetting{"magnifier", "Magnifier",
                 "magnifier", kSwitch, 0, 1,
                 kMagnifierKey, KorvuISD_SetMagnifierEnabled},
    PlainSetting{"dock-power-saving", "Power saving in the dock",
                 "power saving in the dock", kSwitch, 0, 1,
                 kDockPowerSavingKey, KorvuISD_SetDockPowerSaving},
    PlainSetting{"dock-alert-time", "Undocked pen alert after",
                 "time until the alert for an undocked pen, in the service's unit", kNumber, 0,
                 kLongestDockAlertTime, kDockAlertTimeKey, KorvuISD_SetDockAlertTime},
    PlainSetting{"center-right-click", "Right click in the centre of the radial menu",
                 "right click in the centre of the radial menu", kSwitch, 0, 1,
                 kCenterRightClickKey, KorvuISD_SetMenuCenterRightClick},
};

const std::array kOpaqueSettings{
    PlainSetting{"enable", "Opaque mode",
                 "opaque mode on or off", kSwitch, 0, 1,
                 kOpaqueEnabledKey, SetOpaqueEnabled, false},
    PlainSetting{"orientation", "Orientation",
                 "orientation of the display", kNumber, 0, 3,
                 kOpaqueOrientationKey, KorvuISD_SetOpaqueModeOrientation, true, kOrientationCodes},
    PlainSetting{"input-mode", "Input mode",
                 "input mode", kNumber, 0, 1,
                 kOpaqueInputModeKey, KorvuISD_SetOpaqueModeInputMode},
    PlainSetting{"mapping", "Mapping",
                 "mapping of the tablet", kNumber, 0, 1,
                 kOpaqueMappingKey, KorvuISD_SetOpaqueModeMapping, true, kMappingCodes},
    PlainSetting{"setup-state", "Step of the setup guide",
                 "step of the setup guide that is shown", kNumber, 0, 2,
                 kOpaqueSetupStateKey, KorvuISD_SetOpaqueModeSetupState},
    PlainSetting{"setup-save", "Remember the display",
                 "the display is remembered", kSwitch, 0, 1,
                 kOpaqueSetupSaveKey, KorvuISD_SetOpaqueModeSetupSave},
};
// clang-format on

}  // namespace

std::span<const PlainSetting> PlainSettings() {
  return kPlainSettings;
}

std::span<const PlainSetting> OpaqueSettings() {
  return kOpaqueSettings;
}

const PlainSetting* FindSetting(std::span<const PlainSetting> settings, std::string_view name) {
  const auto found =
      std::find_if(settings.begin(), settings.end(),
                   [&](const PlainSetting& setting) { return setting.name == name; });
  return found == settings.end() ? nullptr : &*found;
}

}  // namespace tool
