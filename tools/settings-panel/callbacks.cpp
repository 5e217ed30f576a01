// Each callback copies what it was handed and puts it into the mailbox. It runs on the library's
// thread, with the library's lock held: waiting here for the window, which calls setters, would be
// the end of both.

#include "callbacks.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "KorvuTabletSettingsAPI.h"
#include "model/letters.h"
#include "shared/keys.h"

namespace tool::panel {
namespace {

std::vector<Function> FunctionsOf(std::span<const ButtonRecord> records) {
  std::vector<Function> functions;
  functions.reserve(records.size());
  for (const ButtonRecord& record : records) {
    functions.push_back({record.function, std::wstring(korvu::TextOf(record.name))});
  }
  return functions;
}

Pen PenOf(const PenInfo& info) {
  Pen pen;
  pen.serialNumber = korvu::TextOf(info.serialNumber);
  pen.penId = korvu::TextOf(info.penId);
  pen.moduleId = korvu::TextOf(info.module.moduleId);
  pen.moduleVersion = korvu::TextOf(info.module.version);
  pen.firmwareVersion = korvu::TextOf(info.firmwareVersion);
  pen.batteryStatus = info.batteryStatus;
  pen.batteryCharging = info.batteryCharging;
  pen.isNear = info.inProximity != 0;
  pen.isModuleConnected = info.moduleConnected != 0;
  pen.isDocked = info.docked != 0;
  return pen;
}

ZoomMap ZoomMapOf(std::span<const KorvuISD_ZoomMapEntry> entries) {
  ZoomMap map;
  for (const KorvuISD_ZoomMapEntry& entry : entries) {
    map.areas.push_back({entry.a, entry.b, entry.c, entry.d});
  }
  return map;
}

Monitors MonitorsOf(std::span<const KorvuISD_MonitorOption> options) {
  Monitors copied;
  for (const KorvuISD_MonitorOption& option : options) {
    copied.monitors.push_back({std::wstring(korvu::TextOf(option.displayPath)),
                               std::wstring(korvu::TextOf(option.displayName))});
  }
  return copied;
}

}  // namespace

korvu::Callbacks CallbacksInto(Mailbox& mailbox) {
  korvu::Callbacks callbacks;
  const auto number = [&mailbox](size_t key) {
    return [&mailbox, key](int32_t value) { mailbox.Put(Number{key, value}); };
  };
  const auto button = [&mailbox](size_t key) {
    return [&mailbox, key](const ButtonRecord& record) {
      mailbox.Put(Button{key, record.function, std::wstring(korvu::TextOf(record.name))});
    };
  };
  const auto sideSwitch = [&](size_t key, size_t hoverClickKey) {
    return [putButton = button(key),
            putNumber = number(hoverClickKey)](const KorvuISD_SideSwitch& record) {
      putButton(record.button);
      putNumber(record.hoverClick);
    };
  };
  const auto options = [&mailbox](OptionList list) {
    return [&mailbox, list](std::span<const ButtonRecord> records) {
      mailbox.Put(Options{list, FunctionsOf(records)});
    };
  };

  callbacks.OnPressureCurve = number(tool::kPressureCurveKey);
  callbacks.OnTiltSensitivity = number(tool::kTiltSensitivityKey);
  callbacks.OnBatteryAlertDelay = number(tool::kBatteryAlertDelayKey);
  callbacks.OnPenAlertEnabled = number(tool::kPenAlertKey);
  callbacks.OnPenGesturesEnabled = number(tool::kPenGesturesKey);
  callbacks.OnMagnifierEnabled = number(tool::kMagnifierKey);
  callbacks.OnPenDockPowerSaving = number(tool::kDockPowerSavingKey);
  callbacks.OnUndockedTimerWait = number(tool::kDockAlertTimeKey);
  callbacks.OnCenterRightClick = number(tool::kCenterRightClickKey);
  callbacks.OnOpaqueEnabledGlobal = number(tool::kOpaqueEnabledKey);
  callbacks.OnOpaqueOrientation = number(tool::kOpaqueOrientationKey);
  callbacks.OnOpaqueInputMode = number(tool::kOpaqueInputModeKey);
  callbacks.OnOpaqueMapping = number(tool::kOpaqueMappingKey);
  callbacks.OnOpaqueRememberDisplay = number(tool::kOpaqueSetupSaveKey);

  callbacks.OnEraserSingle = button(tool::kEraserSingleKey);
  callbacks.OnEraserDouble = button(tool::kEraserDoubleKey);
  callbacks.OnEraserLong = button(tool::kEraserLongKey);
  callbacks.OnAutoExecuteButton = button(tool::kDockDetachKey);
  callbacks.OnUpperSideSwitch = sideSwitch(tool::kUpperButtonKey, tool::kUpperHoverClickKey);
  callbacks.OnLowerSideSwitch = sideSwitch(tool::kLowerButtonKey, tool::kLowerHoverClickKey);
  callbacks.OnRadialWedgeEx = [&mailbox](const ButtonRecord&) { mailbox.Put(WedgeChanged{}); };
  callbacks.OnRadialZonesCount = [&mailbox](int32_t ring, uint8_t count) {
    mailbox.Put(RingSize{ring, count});
  };

  callbacks.OnTopButtonSingleOptions = options(OptionList::kEraserSingle);
  callbacks.OnTopButtonDoubleOptions = options(OptionList::kEraserDouble);
  callbacks.OnTopButtonLongOptions = options(OptionList::kEraserLong);
  callbacks.OnSideSwitchOptions = options(OptionList::kSideSwitch);
  callbacks.OnRadialWedgeOptions = options(OptionList::kWedge);
  callbacks.OnAutoUndockOptions = options(OptionList::kUndock);
  callbacks.OnRunAppOptions = options(OptionList::kApplication);

  callbacks.OnDisplayZoomMap = [&mailbox](std::span<const KorvuISD_ZoomMapEntry> entries) {
    mailbox.Put(ZoomMapOf(entries));
  };
  callbacks.OnMonitorOptions = [&mailbox](std::span<const KorvuISD_MonitorOption> monitors,
                                          int32_t) { mailbox.Put(MonitorsOf(monitors)); };
  callbacks.OnOpaqueDisplayPath = [&mailbox](std::wstring_view path) {
    mailbox.Put(DisplayPath{std::wstring(path)});
  };
  callbacks.OnVersions = [&mailbox](const VersionInfo& versions) {
    mailbox.Put(Versions{std::wstring(korvu::TextOf(versions.hidRouterVersion)),
                         std::wstring(korvu::TextOf(versions.serviceVersion))});
  };
  callbacks.OnPenInfo = [&mailbox](const PenInfo& pen) { mailbox.Put(PenOf(pen)); };
  callbacks.OnFeatureSupport = [&mailbox](int32_t feature, bool isSupported) {
    mailbox.Put(Feature{feature, isSupported});
  };
  callbacks.OnCapturedKeystrokes = [&mailbox](std::wstring_view text) {
    mailbox.Put(CapturedKeys{std::wstring(text)});
  };
  return callbacks;
}

}  // namespace tool::panel
