#include "event_text.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "text.h"

namespace tool {
namespace {

std::string_view OnOff(bool isOn) {
  return isOn ? "on" : "off";
}

std::string_view YesNo(bool isTrue) {
  return isTrue ? "yes" : "no";
}

std::string FeatureName(int32_t feature) {
  switch (feature) {
    case KORVUISD_FEATURE_DOCKABLE:
      return "dockable";
    case KORVUISD_FEATURE_OPAQUE_MODE:
      return "opaque-mode";
    default:
      return fmt::format("{}", feature);
  }
}

// The fields of each kind of event, after the callback's name.
struct LineWriter {
  Slot slot;

  std::string operator()(const Versions& versions) const {
    return fmt::format("service={} hid-router={}", Quoted(versions.service),
                       Quoted(versions.hidRouter));
  }
  std::string operator()(const Pen& pen) const {
    return fmt::format(
        "serial={} id={} type={} vendor={} in-proximity={} docked={} battery={} charging={} "
        "firmware={} sensor={} module-connected={} module-id={} module-serial={} "
        "module-version={} module-product={}",
        Quoted(pen.serialNumber), Quoted(pen.penId), pen.penType, pen.vendorId,
        YesNo(pen.isInProximity), YesNo(pen.isDocked),
        pen.batteryStatus < 0 ? "unknown" : fmt::format("{}", pen.batteryStatus),
        pen.batteryCharging, Quoted(pen.firmwareVersion), pen.sensorId,
        YesNo(pen.isModuleConnected), Quoted(pen.moduleId), Quoted(pen.moduleSerialNumber),
        Quoted(pen.moduleVersion), pen.moduleProductId);
  }
  std::string operator()(const Function& function) const {
    return fmt::format("function={} name={}", function.code, Quoted(function.name));
  }
  std::string operator()(const SideSwitch& sideSwitch) const {
    return fmt::format("{} hover-click={}", (*this)(sideSwitch.function),
                       OnOff(sideSwitch.hoverClick));
  }
  std::string operator()(const Number& number) const {
    if (IsSwitch(slot)) return fmt::format("value={}", OnOff(number.value != 0));
    return fmt::format("value={}", number.value);
  }
  std::string operator()(const Text& text) const {
    return fmt::format("text={}", Quoted(text.text));
  }
  std::string operator()(const ZoomMap& map) const {
    std::string line = fmt::format("count={}", map.entries.size());
    for (const KorvuISD_ZoomMapEntry& entry : map.entries) {
      line += fmt::format(" {},{},{},{}", entry.a, entry.b, entry.c, entry.d);
    }
    return line;
  }
  std::string operator()(const Options& options) const {
    std::string line = fmt::format("count={}", options.functions.size());
    for (const Function& function : options.functions) {
      line += fmt::format(" {}={}", function.code, Quoted(function.name));
    }
    return line;
  }
  std::string operator()(const Monitors& monitors) const {
    std::string line =
        fmt::format("count={} selected={}", monitors.monitors.size(),
                    monitors.selected < 0 ? "none" : fmt::format("{}", monitors.selected));
    for (const Monitor& monitor : monitors.monitors) {
      line += fmt::format(" {}={}", Quoted(monitor.displayPath), Quoted(monitor.displayName));
    }
    return line;
  }
  std::string operator()(const Range& range) const {
    return fmt::format("minimum={} maximum={}", range.minimum, range.maximum);
  }
  std::string operator()(const Count& count) const { return fmt::format("count={}", count.count); }
  std::string operator()(const RingCount& count) const {
    return fmt::format("ring={} count={}", count.ring + 1, count.count);
  }
  std::string operator()(const Feature& feature) const {
    return fmt::format("feature={} supported={}", FeatureName(feature.feature),
                       YesNo(feature.isSupported));
  }
};

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

}  // namespace

std::string EventLine(const Event& event) {
  return fmt::format("{} {}", SlotName(event.slot),
                     std::visit(LineWriter{event.slot}, event.payload));
}

Json EventJson(const Event& event) {
  Json json = {{"event", SlotName(event.slot)}};
  json.update(std::visit(JsonWriter{event.slot}, event.payload));
  return json;
}

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

std::string JsonText(const Json& json) {
  return json.dump();
}

std::string IndentedJsonText(const Json& json) {
  return json.dump(2);
}

}  // namespace tool
