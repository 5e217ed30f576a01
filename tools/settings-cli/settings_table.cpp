#include "settings_table.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <system_error>

#include "arguments.h"
#include "text.h"

namespace tool {
namespace {

constexpr int32_t kAny = std::numeric_limits<int32_t>::max();
// The setter would cut a higher value to this one without a word.
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
    PlainSetting{"tip-sensitivity", "number of the pressure curve", kNumber, 0, kAny,
                 kTipSensitivityKey, KorvuISD_SetTipSensitivity},
    PlainSetting{"tilt-sensitivity", "tilt sensitivity, in steps", kNumber, 0, kAny,
                 kTiltSensitivityKey, KorvuISD_SetTiltSensitivity},
    PlainSetting{"upper-hover-click", "the upper side switch clicks while the pen hovers", kSwitch, 0, 1,
                 kUpperHoverClickKey, KorvuISD_SetTopHoverClick},
    PlainSetting{"lower-hover-click", "the lower side switch clicks while the pen hovers", kSwitch, 0, 1,
                 kLowerHoverClickKey, KorvuISD_SetBottomHoverClick},
    PlainSetting{"battery-alert-delay", "delay of the battery alert, in the service's unit", kNumber, 0, kAny,
                 kBatteryAlertDelayKey, KorvuISD_SetBatteryAlertDelay},
    PlainSetting{"pen-alert", "alert for a pen left behind", kSwitch, 0, 1,
                 kPenAlertKey, KorvuISD_SetPenAlert},
    PlainSetting{"pen-gestures", "pen gestures", kSwitch, 0, 1,
                 kPenGesturesKey, KorvuISD_SetPenGesturesEnabled},
    PlainSetting{"magnifier", "magnifier", kSwitch, 0, 1,
                 kMagnifierKey, KorvuISD_SetMagnifierEnabled},
    PlainSetting{"dock-power-saving", "power saving in the dock", kSwitch, 0, 1,
                 kDockPowerSavingKey, KorvuISD_SetDockPowerSaving},
    PlainSetting{"dock-alert-time", "time until the alert for an undocked pen, in the service's unit", kNumber, 0,
                 kLongestDockAlertTime, kDockAlertTimeKey, KorvuISD_SetDockAlertTime},
    PlainSetting{"center-right-click", "right click in the centre of the radial menu", kSwitch, 0, 1,
                 kCenterRightClickKey, KorvuISD_SetMenuCenterRightClick},
};

const std::array kOpaqueSettings{
    PlainSetting{"enable", "opaque mode on or off", kSwitch, 0, 1,
                 kOpaqueEnabledKey, SetOpaqueEnabled, false},
    PlainSetting{"orientation", "orientation of the display", kNumber, 0, 3,
                 kOpaqueOrientationKey, KorvuISD_SetOpaqueModeOrientation, true, kOrientationCodes},
    PlainSetting{"input-mode", "input mode", kNumber, 0, 1,
                 kOpaqueInputModeKey, KorvuISD_SetOpaqueModeInputMode},
    PlainSetting{"mapping", "mapping of the tablet", kNumber, 0, 1,
                 kOpaqueMappingKey, KorvuISD_SetOpaqueModeMapping, true, kMappingCodes},
    PlainSetting{"setup-state", "step of the setup guide that is shown", kNumber, 0, 2,
                 kOpaqueSetupStateKey, KorvuISD_SetOpaqueModeSetupState},
    PlainSetting{"setup-save", "the display is remembered", kSwitch, 0, 1,
                 kOpaqueSetupSaveKey, KorvuISD_SetOpaqueModeSetupSave},
};
// clang-format on

// Of the service's texts; all of them are ASCII where they are numbers.
std::optional<int64_t> NumberIn(std::wstring_view stored) {
  const std::string text = ToUtf8(stored);
  int64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [parsedTo, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || parsedTo != end) return std::nullopt;
  return number;
}

// The service's number as a value of the setting.
std::optional<int64_t> ValueIn(const PlainSetting& setting, std::wstring_view stored) {
  const std::optional<int64_t> number = NumberIn(stored);
  if (!number) return std::nullopt;
  if (!setting.serviceCodes.empty()) {
    const auto code = std::find(setting.serviceCodes.begin(), setting.serviceCodes.end(), *number);
    if (code == setting.serviceCodes.end()) return std::nullopt;
    return code - setting.serviceCodes.begin();
  }
  if (setting.kind == kSwitch) return *number != 0 ? 1 : 0;
  return number;
}

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

std::string ValueRange(const PlainSetting& setting) {
  if (setting.kind == kSwitch) return "on or off";
  if (setting.maximum == kAny) return fmt::format("{} or more", setting.minimum);
  return fmt::format("{} to {}", setting.minimum, setting.maximum);
}

int32_t ParseValue(const PlainSetting& setting, std::string_view text) {
  const std::string argument = fmt::format("VALUE of {}", setting.name);
  if (setting.kind == kSwitch) return ParseSwitch(argument, text) ? 1 : 0;
  return ParseNumber(argument, text, setting.minimum, setting.maximum);
}

std::string ReadableValue(const PlainSetting& setting, int32_t value) {
  if (setting.kind == kSwitch) return value != 0 ? "on" : "off";
  return fmt::format("{}", value);
}

std::string ReadableStored(const PlainSetting& setting, std::wstring_view stored) {
  const std::optional<int64_t> value = ValueIn(setting, stored);
  if (!value) return Quoted(stored);
  if (setting.kind == kSwitch) return *value != 0 ? "on" : "off";
  return fmt::format("{}", *value);
}

bool IsStored(const PlainSetting& setting, std::wstring_view stored, int32_t value) {
  return ValueIn(setting, stored) == value;
}

}  // namespace tool
