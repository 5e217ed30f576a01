#include "settings-cli/status_report.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string_view>

#include <fmt/core.h>
#include <nlohmann/json.hpp>

#include "KorvuTabletSettingsAPI.h"
#include "settings-cli/buttons.h"
#include "settings-cli/events.h"
#include "settings-cli/json_text.h"
#include "settings-cli/text.h"
#include "shared/keys.h"
#include "shared/settings_table.h"

namespace tool::cli {
namespace {

// Whose callback tells of a setting.
struct SettingSlot {
  KeyIndex key;
  Slot slot;
  std::string_view toldAs = {};  // where the callback tells of something else than is set
};

constexpr std::array kSettingSlots{
    SettingSlot{kPressureCurveKey, Slot::kPressureCurve},
    SettingSlot{kTiltSensitivityKey, Slot::kTiltSensitivity},
    SettingSlot{kUpperHoverClickKey, Slot::kUpperSideSwitch},
    SettingSlot{kLowerHoverClickKey, Slot::kLowerSideSwitch},
    SettingSlot{kBatteryAlertDelayKey, Slot::kBatteryAlertDelay},
    SettingSlot{kPenAlertKey, Slot::kPenAlertEnabled},
    SettingSlot{kPenGesturesKey, Slot::kPenGesturesEnabled},
    SettingSlot{kMagnifierKey, Slot::kMagnifierEnabled},
    SettingSlot{kDockPowerSavingKey, Slot::kPenDockPowerSaving},
    SettingSlot{kDockAlertTimeKey, Slot::kUndockedTimerWait},
    SettingSlot{kCenterRightClickKey, Slot::kCenterRightClick},
    SettingSlot{kOpaqueEnabledKey, Slot::kOpaqueEnabledGlobal},
    SettingSlot{kOpaqueOrientationKey, Slot::kOpaqueOrientation},
    SettingSlot{kOpaqueInputModeKey, Slot::kOpaqueInputMode},
    SettingSlot{kOpaqueMappingKey, Slot::kOpaqueMapping},
    // A step is set; whether there is one is told.
    SettingSlot{kOpaqueSetupStateKey, Slot::kOpaqueInSetupGuide, "in-setup-guide"},
    SettingSlot{kOpaqueSetupSaveKey, Slot::kOpaqueRememberDisplay},
};

struct Row {
  std::string_view name;
  Slot slot;
};

Row RowOf(const PlainSetting& setting) {
  const auto found =
      std::find_if(kSettingSlots.begin(), kSettingSlots.end(),
                   [&](const SettingSlot& entry) { return entry.key == setting.key; });
  if (found == kSettingSlots.end()) throw std::logic_error("a setting without a slot");
  return {found->toldAs.empty() ? setting.name : found->toldAs, found->slot};
}

// A value that equals the one that the library starts with, 0 or off, is not called back.
Json SettingValue(const Snapshot& values, Slot slot) {
  if (slot == Slot::kUpperSideSwitch || slot == Slot::kLowerSideSwitch) {
    const auto* sideSwitch = values.Last<SideSwitch>(slot);
    return sideSwitch && sideSwitch->hoverClick;
  }
  const auto* number = values.Last<Number>(slot);
  const int32_t value = number ? number->value : 0;
  return IsSwitch(slot) ? Json(value != 0) : Json(value);
}

// Nothing where no name was told: then the function is not known either.
const Function* ButtonFunction(const Snapshot& values, Slot slot) {
  if (const auto* sideSwitch = values.Last<SideSwitch>(slot)) return &sideSwitch->function;
  return values.Last<Function>(slot);
}

std::wstring DisplayPath(const Snapshot& values) {
  const auto* path = values.Last<Text>(Slot::kOpaqueDisplayPath);
  return path ? path->text : std::wstring();
}

std::string Readable(const Json& value) {
  if (value.is_boolean()) return value.get<bool>() ? "on" : "off";
  return value.dump();
}

std::string YesNo(std::optional<bool> value) {
  return !value ? "unknown" : *value ? "yes" : "no";
}

std::string Line(std::string_view name, std::string_view value) {
  return fmt::format("  {:<20} {}\n", name, value);
}

std::string PenText(const Pen& pen) {
  std::string text = Line("serial number", OnOneLine(pen.serialNumber));
  text += Line("pen id", OnOneLine(pen.penId));
  text += Line("type, vendor", fmt::format("{}, {}", pen.penType, pen.vendorId));
  text += Line("near the tablet", YesNo(pen.isInProximity));
  text += Line("docked", YesNo(pen.isDocked));
  text += Line("battery",
               pen.batteryStatus < 0
                   ? std::string("unknown")
                   : fmt::format("{}, charging state {}", pen.batteryStatus, pen.batteryCharging));
  text += Line("tablet firmware", OnOneLine(pen.firmwareVersion));
  text += Line("tablet sensor", fmt::format("{}", pen.sensorId));
  text += Line("Bluetooth module",
               pen.moduleId.empty()
                   ? "none known"
                   : fmt::format("id {}, version {}, {}", OnOneLine(pen.moduleId),
                                 OnOneLine(pen.moduleVersion),
                                 pen.isModuleConnected ? "connected" : "not connected"));
  return text;
}

std::string VersionsText(const Snapshot& values) {
  const auto* versions = values.Last<Versions>(Slot::kVersions);
  std::string text = "Versions\n";
  text += Line("settings service", versions ? OnOneLine(versions->service) : "unknown");
  text += Line("HID router", versions ? OnOneLine(versions->hidRouter) : "unknown");
  return text;
}

std::string PensText(const Snapshot& values) {
  std::string text;
  for (const auto& [serialNumber, pen] : values.Pens()) text += "Pen\n" + PenText(pen);
  return text.empty() ? "Pen\n  none known\n" : text;
}

std::string SettingsText(std::string_view title, const Snapshot& values,
                         std::span<const PlainSetting> settings) {
  std::string text = fmt::format("{}\n", title);
  for (const PlainSetting& setting : settings) {
    const Row row = RowOf(setting);
    text += Line(row.name, Readable(SettingValue(values, row.slot)));
  }
  return text;
}

Json SettingsJson(const Snapshot& values, std::span<const PlainSetting> settings) {
  Json json = Json::object();
  for (const PlainSetting& setting : settings) {
    const Row row = RowOf(setting);
    json[std::string(row.name)] = SettingValue(values, row.slot);
  }
  return json;
}

std::string ButtonsText(const Snapshot& values) {
  std::string text = "Buttons\n";
  for (const Button& button : Buttons()) {
    const Function* function = ButtonFunction(values, button.slot);
    text +=
        Line(button.name, function ? fmt::format("{} {}", function->code, Quoted(function->name))
                                   : std::string("unknown"));
  }
  return text;
}

Json Optional(std::optional<bool> value) {
  return value ? Json(*value) : Json(nullptr);
}

}  // namespace

std::string StatusText(const Snapshot& values) {
  std::string text = VersionsText(values);
  text += "Features\n";
  text += Line("dockable", YesNo(values.IsSupported(KORVUISD_FEATURE_DOCKABLE)));
  text += Line("opaque mode", YesNo(values.IsSupported(KORVUISD_FEATURE_OPAQUE_MODE)));
  text += PensText(values);
  text += SettingsText("Settings", values, PlainSettings());
  text += Line("menu-limit 1", fmt::format("{}", values.RingCountOf(0).value_or(0)));
  text += Line("menu-limit 2", fmt::format("{}", values.RingCountOf(1).value_or(0)));
  text += SettingsText("Opaque mode", values, OpaqueSettings());
  text += Line("display-path", Quoted(DisplayPath(values)));
  text += ButtonsText(values);
  return text;
}

std::string StatusJson(const Snapshot& values) {
  Json json;
  const auto* versions = values.Last<Versions>(Slot::kVersions);
  json["versions"] = {{"service", versions ? Json(ToUtf8(versions->service)) : Json(nullptr)},
                      {"hidRouter", versions ? Json(ToUtf8(versions->hidRouter)) : Json(nullptr)}};
  json["features"] = {{"dockable", Optional(values.IsSupported(KORVUISD_FEATURE_DOCKABLE))},
                      {"opaqueMode", Optional(values.IsSupported(KORVUISD_FEATURE_OPAQUE_MODE))}};
  json["pens"] = Json::array();
  for (const auto& [serialNumber, pen] : values.Pens()) json["pens"].push_back(PenJson(pen));
  json["settings"] = SettingsJson(values, PlainSettings());
  json["settings"]["menu-limit"] =
      Json::array({values.RingCountOf(0).value_or(0), values.RingCountOf(1).value_or(0)});
  json["opaque"] = SettingsJson(values, OpaqueSettings());
  json["opaque"]["display-path"] = ToUtf8(DisplayPath(values));
  json["buttons"] = Json::object();
  for (const Button& button : Buttons()) {
    const Function* function = ButtonFunction(values, button.slot);
    json["buttons"][std::string(button.name)] = function ? FunctionJson(*function) : Json(nullptr);
  }
  return IndentedJsonText(json);
}

}  // namespace tool::cli
