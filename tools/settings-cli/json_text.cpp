#include "settings-cli/json_text.h"

#include <variant>

#include <nlohmann/json.hpp>

#include "KorvuTabletSettingsAPI.h"
#include "settings-cli/event_text.h"
#include "settings-cli/text.h"

namespace tool::cli {
namespace {

struct JsonWriter {
  Slot slot;

  Json operator()(const Versions& versions) const {
    return {{"service", ToUtf8(versions.service)}, {"hidRouter", ToUtf8(versions.hidRouter)}};
  }
  Json operator()(const Pen& pen) const { return PenJson(pen); }
  Json operator()(const Function& function) const { return FunctionJson(function); }
  Json operator()(const SideSwitch& sideSwitch) const {
    Json json = FunctionJson(sideSwitch.function);
    json["hoverClick"] = sideSwitch.hoverClick;
    return json;
  }
  Json operator()(const Number& number) const {
    if (IsSwitch(slot)) return {{"value", number.value != 0}};
    return {{"value", number.value}};
  }
  Json operator()(const Text& text) const { return {{"text", ToUtf8(text.text)}}; }
  Json operator()(const ZoomMap& map) const {
    Json entries = Json::array();
    for (const KorvuISD_ZoomMapEntry& entry : map.entries) {
      entries.push_back(Json::array({entry.a, entry.b, entry.c, entry.d}));
    }
    return {{"entries", entries}};
  }
  Json operator()(const Options& options) const {
    Json functions = Json::array();
    for (const Function& function : options.functions) functions.push_back(FunctionJson(function));
    return {{"options", functions}};
  }
  Json operator()(const Monitors& monitors) const {
    Json list = Json::array();
    for (const Monitor& monitor : monitors.monitors) {
      list.push_back({{"displayPath", ToUtf8(monitor.displayPath)},
                      {"displayName", ToUtf8(monitor.displayName)}});
    }
    Json json = {{"monitors", list}, {"selected", nullptr}};
    if (monitors.selected >= 0) json["selected"] = monitors.selected;
    return json;
  }
  Json operator()(const Range& range) const {
    return {{"minimum", range.minimum}, {"maximum", range.maximum}};
  }
  Json operator()(const Count& count) const { return {{"count", count.count}}; }
  Json operator()(const RingCount& count) const {
    return {{"ring", count.ring + 1}, {"count", count.count}};
  }
  Json operator()(const Feature& feature) const {
    return {{"feature", FeatureName(feature.feature)}, {"supported", feature.isSupported}};
  }
};

Json EventJson(const Event& event) {
  Json json = {{"event", SlotName(event.slot)}};
  json.update(std::visit(JsonWriter{event.slot}, event.payload));
  return json;
}

std::string WithTime(Json json, const std::optional<std::string>& time) {
  if (time) json["time"] = *time;
  return json.dump();
}

}  // namespace

Json PenJson(const Pen& pen) {
  Json json = {{"serialNumber", ToUtf8(pen.serialNumber)},
               {"penId", ToUtf8(pen.penId)},
               {"penType", pen.penType},
               {"vendorId", pen.vendorId},
               {"inProximity", pen.isInProximity},
               {"docked", pen.isDocked},
               {"batteryStatus", nullptr},
               {"batteryCharging", pen.batteryCharging},
               {"firmwareVersion", ToUtf8(pen.firmwareVersion)},
               {"sensorId", pen.sensorId},
               {"moduleConnected", pen.isModuleConnected},
               {"module",
                {{"id", ToUtf8(pen.moduleId)},
                 {"serialNumber", ToUtf8(pen.moduleSerialNumber)},
                 {"version", ToUtf8(pen.moduleVersion)},
                 {"productId", pen.moduleProductId}}}};
  if (pen.batteryStatus >= 0) json["batteryStatus"] = pen.batteryStatus;
  return json;
}

Json FunctionJson(const Function& function) {
  return {{"function", function.code}, {"name", ToUtf8(function.name)}};
}

std::string EventJsonLine(const Event& event, const std::optional<std::string>& time) {
  return WithTime(EventJson(event), time);
}

std::string NoticeJsonLine(std::string_view name, const std::optional<std::string>& time) {
  return WithTime({{"event", name}}, time);
}

std::string ValuesJsonText(std::span<const KeyValue> values) {
  Json json = Json::object();
  for (const auto& [key, value] : values) {
    json[std::string(key)] = value ? Json(ToUtf8(*value)) : Json(nullptr);
  }
  return IndentedJsonText(json);
}

std::string IndentedJsonText(const Json& json) {
  return json.dump(2) + '\n';
}

}  // namespace tool::cli
