#include "settings-cli/event_text.h"

#include <string_view>
#include <variant>

#include <fmt/core.h>

#include "KorvuTabletSettingsAPI.h"
#include "settings-cli/text.h"

namespace tool::cli {
namespace {

std::string_view OnOff(bool isOn) {
  return isOn ? "on" : "off";
}

std::string_view YesNo(bool isTrue) {
  return isTrue ? "yes" : "no";
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

}  // namespace

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

std::string EventLine(const Event& event) {
  return fmt::format("{} {}", SlotName(event.slot),
                     std::visit(LineWriter{event.slot}, event.payload));
}

}  // namespace tool::cli
