#include "status_report.h"

#include <fmt/core.h>
#include <nlohmann/json.hpp>

#include <array>
#include <utility>

#include "json_text.h"
#include "text.h"

namespace tool {
namespace {

struct Row {
  std::string_view name;  // as `set`, `opaque` and `button` call it
  Slot slot;
};

constexpr std::array kSettings{
    Row{"tip-sensitivity", Slot::kPressureCurve},
    Row{"tilt-sensitivity", Slot::kTiltSensitivity},
    Row{"upper-hover-click", Slot::kUpperSideSwitch},
    Row{"lower-hover-click", Slot::kLowerSideSwitch},
    Row{"battery-alert-delay", Slot::kBatteryAlertDelay},
    Row{"pen-alert", Slot::kPenAlertEnabled},
    Row{"pen-gestures", Slot::kPenGesturesEnabled},
    Row{"magnifier", Slot::kMagnifierEnabled},
    Row{"dock-power-saving", Slot::kPenDockPowerSaving},
    Row{"dock-alert-time", Slot::kUndockedTimerWait},
    Row{"center-right-click", Slot::kCenterRightClick},
};

constexpr std::array kOpaqueSettings{
    Row{"enable", Slot::kOpaqueEnabledGlobal},
    Row{"orientation", Slot::kOpaqueOrientation},
    Row{"input-mode", Slot::kOpaqueInputMode},
    Row{"mapping", Slot::kOpaqueMapping},
    Row{"in-setup-guide", Slot::kOpaqueInSetupGuide},
    Row{"setup-save", Slot::kOpaqueRememberDisplay},
};

constexpr std::array kButtons{
    Row{"eraser-single", Slot::kEraserSingle}, Row{"eraser-double", Slot::kEraserDouble},
    Row{"eraser-long", Slot::kEraserLong},     Row{"upper", Slot::kUpperSideSwitch},
    Row{"lower", Slot::kLowerSideSwitch},      Row{"dock-detach", Slot::kAutoExecuteButton},
};

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

template <size_t count>
std::string SettingsText(std::string_view title, const Snapshot& values,
                         const std::array<Row, count>& rows) {
  std::string text = fmt::format("{}\n", title);
  for (const Row& row : rows) text += Line(row.name, Readable(SettingValue(values, row.slot)));
  return text;
}

template <size_t count>
Json SettingsJson(const Snapshot& values, const std::array<Row, count>& rows) {
  Json json = Json::object();
  for (const Row& row : rows) json[std::string(row.name)] = SettingValue(values, row.slot);
  return json;
}

std::string ButtonsText(const Snapshot& values) {
  std::string text = "Buttons\n";
  for (const Row& row : kButtons) {
    const Function* function = ButtonFunction(values, row.slot);
    text += Line(row.name, function ? fmt::format("{} {}", function->code, Quoted(function->name))
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
  text += SettingsText("Settings", values, kSettings);
  text += Line("menu-limit 1", fmt::format("{}", values.RingCountOf(0).value_or(0)));
  text += Line("menu-limit 2", fmt::format("{}", values.RingCountOf(1).value_or(0)));
  text += SettingsText("Opaque mode", values, kOpaqueSettings);
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
  json["settings"] = SettingsJson(values, kSettings);
  json["settings"]["menu-limit"] =
      Json::array({values.RingCountOf(0).value_or(0), values.RingCountOf(1).value_or(0)});
  json["opaque"] = SettingsJson(values, kOpaqueSettings);
  json["opaque"]["display-path"] = ToUtf8(DisplayPath(values));
  json["buttons"] = Json::object();
  for (const Row& row : kButtons) {
    const Function* function = ButtonFunction(values, row.slot);
    json["buttons"][std::string(row.name)] = function ? FunctionJson(*function) : Json(nullptr);
  }
  return IndentedJsonText(json);
}

}  // namespace tool
