#include "settings/handler_table.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include "KorvuTabletSettingsAPI.h"
#include "settings/handlers/button_handlers.h"
#include "settings/handlers/integer_handlers.h"
#include "settings/handlers/option_list_handlers.h"
#include "settings/handlers/pen_handlers.h"
#include "settings/handlers/tablet_handlers.h"
#include "settings/handlers/text_handlers.h"
#include "settings/handlers/version_handlers.h"
#include "settings/local_values.h"
#include "settings/setting_keys.h"

namespace KorvuISD {
namespace {

using Slots = KorvuISD_Callbacks;

// The index of a setting that gets a handler. Every connection requests all of those, but services
// do not answer for the path and the keystrokes of a button: those have none, or it does not
// compile.
class HandledSetting {
 public:
  // The rows below name the index alone.
  // NOLINTNEXTLINE(google-explicit-constructor)
  consteval HandledSetting(int32_t index) : index(index) {
    if (IsPathOrKeystrokes(index)) throw "a path or keystrokes are not requested";
  }
  std::wstring_view Key() const { return SettingKey(index); }

 private:
  int32_t index;
};

template <class Add, int32_t... kWedge>
void AddWedges(const Add& add, std::integer_sequence<int32_t, kWedge...>) {
  ((add(kFirstWedge + kWedge * kWedgeStride, WedgeFunction(kWedge)),
    add(kFirstWedge + kWedge * kWedgeStride + kNameOffset, WedgeName(kWedge))),
   ...);
}

std::vector<HandlerEntry> BuildHandlers() {
  std::vector<HandlerEntry> table;
  const auto add = [&table](HandledSetting setting, SettingHandler handler) {
    table.push_back({setting.Key(), std::move(handler)});
  };

  add(kServiceVersion, VersionText(&LocalValues::serviceVersion));
  add(kHidRouterVersion, VersionText(&LocalValues::hidRouterVersion));
  add(kFirmwareVersion, FirmwareVersion());
  add(kSensorId, SensorId());

  // The pen's attributes before the tablet's word on which pen it is.
  add(kPenVendorId, PenVendorId());
  add(kPenType, PenType());
  add(kPenInProximity, PenInProximity());
  add(kPenSerial, PenText(&PenStaging::serialNumber));
  add(kPenId, PenText(&PenStaging::penId));
  add(kModuleConnected, ModuleConnection());
  add(kModuleVersion, ModuleText(&ModuleStaging::version));
  add(kModuleProductId, ModuleProductId());
  add(kModuleSerial, ModuleText(&ModuleStaging::serialNumber));
  add(kModuleId, ModuleText(&ModuleStaging::moduleId));
  add(kTabletPenSerial, TabletPenSerial());

  add(kEraserSingle, ButtonFunction(&LocalValues::eraserSingle));
  add(kEraserSingle + kNameOffset, ButtonName(&LocalValues::eraserSingle, &Slots::OnEraserSingle));
  add(kEraserDouble, ButtonFunction(&LocalValues::eraserDouble));
  add(kEraserDouble + kNameOffset, ButtonName(&LocalValues::eraserDouble, &Slots::OnEraserDouble));
  add(kEraserLong, ButtonFunction(&LocalValues::eraserLong));
  add(kEraserLong + kNameOffset, ButtonName(&LocalValues::eraserLong, &Slots::OnEraserLong));
  add(kUpperSideSwitch, ButtonFunction(&LocalValues::upperSideSwitch));
  add(kUpperSideSwitch + kNameOffset,
      ButtonName(&LocalValues::upperSideSwitch, &Slots::OnUpperSideSwitch));
  add(kUpperHoverClick, HoverClick(&LocalValues::upperSideSwitch, &Slots::OnUpperSideSwitch));
  add(kLowerSideSwitch, ButtonFunction(&LocalValues::lowerSideSwitch));
  add(kLowerSideSwitch + kNameOffset,
      ButtonName(&LocalValues::lowerSideSwitch, &Slots::OnLowerSideSwitch));
  add(kLowerHoverClick, HoverClick(&LocalValues::lowerSideSwitch, &Slots::OnLowerSideSwitch));

  add(kPenAlertEnabled, Flag(&LocalValues::penAlertEnabled, &Slots::OnPenAlertEnabled));
  add(kIsDockable, Feature(KORVUISD_FEATURE_DOCKABLE));
  add(kPenDockPowerSaving, Flag(&LocalValues::penDockPowerSaving, &Slots::OnPenDockPowerSaving));
  add(kAutoExecuteButton, ButtonFunction(&LocalValues::autoExecuteButton));
  add(kAutoExecuteButton + kNameOffset,
      ButtonName(&LocalValues::autoExecuteButton, &Slots::OnAutoExecuteButton));
  add(kAutoUndockOptions,
      FunctionOptions(&LocalValues::autoUndockOptions, &Slots::OnAutoUndockOptions));
  add(kUndockedTimerWait, Integer(&LocalValues::undockedTimerWait, &Slots::OnUndockedTimerWait));
  add(kPenIsDocked, DockState());
  add(kPenGesturesEnabled, Flag(&LocalValues::penGesturesEnabled, &Slots::OnPenGesturesEnabled, 8));
  add(kMagnifierEnabled, Flag(&LocalValues::magnifierEnabled, &Slots::OnMagnifierEnabled, 8));

  add(kRadialZonesCount, ZonesCount(&LocalValues::radialZonesCount, 0));
  add(kRadialZonesCount2, ZonesCount(&LocalValues::radialZonesCount2, 1));
  add(kCenterRightClick, Flag(&LocalValues::centerRightClick, &Slots::OnCenterRightClick));
  AddWedges(add, std::make_integer_sequence<int32_t, kWedgeCount>());

  add(kPenBatteryStatus, BatteryStatus());
  add(kPenBatteryCharging, BatteryCharging());
  add(kModuleBatteryStatus, BatteryStatus());
  add(kModuleBatteryCharging, BatteryCharging());
  add(kBatteryAlertDelay, Integer(&LocalValues::batteryAlertDelay, &Slots::OnBatteryAlertDelay));
  add(kTiltSensitivity, Integer(&LocalValues::tiltSensitivity, &Slots::OnTiltSensitivity));
  add(kPressureCurve, Integer(&LocalValues::pressureCurve, &Slots::OnPressureCurve));
  add(kCapturedKeystrokesEntities, CapturedKeystrokesEntities());
  add(kCapturedKeystrokes, CapturedKeystrokes());

  add(kRunAppOptions, RunAppOptions());
  add(kTopButtonSingleOptions,
      FunctionOptions(&LocalValues::topButtonSingleOptions, &Slots::OnTopButtonSingleOptions));
  add(kTopButtonDoubleOptions,
      FunctionOptions(&LocalValues::topButtonDoubleOptions, &Slots::OnTopButtonDoubleOptions));
  add(kTopButtonLongOptions,
      FunctionOptions(&LocalValues::topButtonLongOptions, &Slots::OnTopButtonLongOptions));
  add(kSideSwitchOptions,
      FunctionOptions(&LocalValues::sideSwitchOptions, &Slots::OnSideSwitchOptions));
  add(kRadialWedgeOptions,
      FunctionOptions(&LocalValues::radialWedgeOptions, &Slots::OnRadialWedgeOptions));
  add(kDisplayZoomMap, DisplayZoomMap());

  add(kOpaqueModeSupported, Feature(KORVUISD_FEATURE_OPAQUE_MODE));
  add(kOpaqueEnabledGlobal, Flag(&LocalValues::opaqueEnabledGlobal, &Slots::OnOpaqueEnabledGlobal));
  add(kOpaqueInSetupGuide, Flag(&LocalValues::opaqueInSetupGuide, &Slots::OnOpaqueInSetupGuide));
  add(kOpaqueRememberDisplay,
      Flag(&LocalValues::opaqueRememberDisplay, &Slots::OnOpaqueRememberDisplay));
  add(kMonitorOptions, MonitorOptions());
  add(kOpaqueOrientation, TranslatedCode(&LocalValues::opaqueOrientation,
                                         &Slots::OnOpaqueOrientation, OrientationFromService));
  add(kOpaqueInputMode, TranslatedCode(&LocalValues::opaqueInputMode, &Slots::OnOpaqueInputMode,
                                       InputModeFromService));
  add(kOpaqueMapping,
      TranslatedCode(&LocalValues::opaqueMapping, &Slots::OnOpaqueMapping, MappingFromService));
  add(kOpaqueDisplayPath, DisplayPath());
  return table;
}

}  // namespace

const std::vector<HandlerEntry> g_settingHandlers = BuildHandlers();

namespace {

// Two keys of one length are the rule and eight the most, so comparing those is less work than
// reading a key of sixty characters for a hash; and the table's last key is found as fast as its
// first. What is looked at lies together: whenever an announcement arrives, another process has
// just had the processor's caches.
struct IndexedHandler {
  std::wstring_view key;
  const SettingHandler* handler;

  size_t Length() const { return key.size(); }

  // Of a key of this length. Keys differ at their ends more often than at their beginnings. The C
  // library takes eight bytes at once, but wide characters one by one.
  bool IsFor(std::wstring_view other) const {
    return key.back() == other.back() &&
           std::memcmp(key.data(), other.data(), key.size() * sizeof(wchar_t)) == 0;
  }
};

std::vector<IndexedHandler> SortHandlers() {
  std::vector<IndexedHandler> sorted;
  for (const HandlerEntry& entry : g_settingHandlers) sorted.push_back({entry.key, &entry.handler});
  std::ranges::sort(sorted, {}, &IndexedHandler::Length);
  return sorted;
}

const std::vector<IndexedHandler> kHandlersByLength = SortHandlers();

// The handlers of keys of length n are those from the nth of these on, up to the next.
std::vector<const IndexedHandler*> IndexLengths() {
  std::vector<const IndexedHandler*> begins;
  for (const IndexedHandler& handler : kHandlersByLength) {
    begins.resize(std::max(begins.size(), handler.Length() + 1), &handler);
  }
  begins.push_back(kHandlersByLength.data() + kHandlersByLength.size());
  return begins;
}

const std::vector<const IndexedHandler*> kBeginOfLength = IndexLengths();

}  // namespace

const SettingHandler* FindHandler(std::wstring_view key) {
  if (key.size() + 1 >= kBeginOfLength.size()) return nullptr;
  const auto* const end = kBeginOfLength[key.size() + 1];
  for (const auto* handler = kBeginOfLength[key.size()]; handler != end; ++handler) {
    if (handler->IsFor(key)) return handler->handler;
  }
  return nullptr;
}

}  // namespace KorvuISD
