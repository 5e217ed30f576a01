#include "settings-cli/callbacks.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cwchar>
#include <span>
#include <string>
#include <utility>

#include "settings-cli/events.h"
#include "settings-cli/inbox.h"

namespace tool::cli {
namespace {

// Called with the library's lock held. Nothing may be thrown from here; where no memory is left for
// the copy, ending the program is all that remains.
void Deliver(void* inbox, Slot slot, Payload payload) noexcept {
  static_cast<Inbox*>(inbox)->Put(
      Event{slot, std::move(payload), std::chrono::system_clock::now()});
}

// Of a text that fills its array there is no terminator.
template <size_t capacity>
std::wstring FixedText(const wchar_t (&text)[capacity]) {
  return {text, std::find(text, text + capacity, L'\0')};
}

Function FunctionOf(const ButtonRecord& record) {
  return {record.function, FixedText(record.name)};
}

Pen PenOf(const PenInfo& info) {
  Pen pen;
  pen.serialNumber = FixedText(info.serialNumber);
  pen.penId = FixedText(info.penId);
  pen.moduleVersion = FixedText(info.module.version);
  pen.moduleId = FixedText(info.module.moduleId);
  pen.moduleSerialNumber = FixedText(info.module.serialNumber);
  pen.firmwareVersion = FixedText(info.firmwareVersion);
  pen.moduleProductId = info.module.productId;
  pen.batteryStatus = info.batteryStatus;
  pen.batteryCharging = info.batteryCharging;
  pen.vendorId = info.vendorId;
  pen.penType = info.penType;
  pen.sensorId = info.sensorId;
  pen.isInProximity = info.inProximity != 0;
  pen.isModuleConnected = info.moduleConnected != 0;
  pen.isDocked = info.docked != 0;
  return pen;
}

void KORVUISD_CALL OnVersions(void* inbox, const VersionInfo* versions) {
  Deliver(inbox, Slot::kVersions,
          Versions{FixedText(versions->hidRouterVersion), FixedText(versions->serviceVersion)});
}

void KORVUISD_CALL OnPenInfo(void* inbox, const PenInfo* pen) {
  Deliver(inbox, Slot::kPenInfo, PenOf(*pen));
}

template <Slot slot>
void KORVUISD_CALL OnButton(void* inbox, const ButtonRecord* button, int32_t) {
  Deliver(inbox, slot, FunctionOf(*button));
}

template <Slot slot>
void KORVUISD_CALL OnSideSwitch(void* inbox, const KorvuISD_SideSwitch* sideSwitch, int32_t) {
  Deliver(inbox, slot, SideSwitch{FunctionOf(sideSwitch->button), sideSwitch->hoverClick != 0});
}

template <Slot slot>
void KORVUISD_CALL OnValue(void* inbox, int32_t value) {
  Deliver(inbox, slot, Number{value});
}

void KORVUISD_CALL OnWedge(void* inbox, int32_t, const ButtonRecord* wedge) {
  Deliver(inbox, Slot::kRadialWedgeEx, FunctionOf(*wedge));
}

void KORVUISD_CALL OnKeystrokes(void* inbox, const wchar_t* text, uint64_t codeUnits) {
  Deliver(inbox, Slot::kCapturedKeystrokes, Text{std::wstring(text, codeUnits)});
}

void KORVUISD_CALL OnDisplayPath(void* inbox, const wchar_t* path) {
  Deliver(inbox, Slot::kOpaqueDisplayPath, Text{path});
}

void KORVUISD_CALL OnZoomMap(void* inbox, const KorvuISD_ZoomMapEntry* entries, uint64_t count) {
  Deliver(inbox, Slot::kDisplayZoomMap, ZoomMap{{entries, entries + count}});
}

template <Slot slot>
void KORVUISD_CALL OnOptions(void* inbox, const ButtonRecord* options, uint64_t count) {
  Options copied;
  for (const ButtonRecord& option : std::span(options, count)) {
    copied.functions.push_back(FunctionOf(option));
  }
  Deliver(inbox, slot, std::move(copied));
}

void KORVUISD_CALL OnMonitors(void* inbox, const KorvuISD_MonitorOption* monitors, uint64_t count,
                              int32_t selected) {
  Monitors copied;
  for (const KorvuISD_MonitorOption& monitor : std::span(monitors, count)) {
    copied.monitors.push_back({FixedText(monitor.displayPath), FixedText(monitor.displayName)});
  }
  copied.selected = selected;
  Deliver(inbox, Slot::kMonitorOptions, std::move(copied));
}

template <Slot slot>
void KORVUISD_CALL OnRange(void* inbox, int32_t minimum, int32_t maximum) {
  Deliver(inbox, slot, Range{minimum, maximum});
}

void KORVUISD_CALL OnCapacity(void* inbox, uint64_t count) {
  Deliver(inbox, Slot::kWedgeCapacity, Count{count});
}

void KORVUISD_CALL OnRingCount(void* inbox, int32_t ring, uint8_t count) {
  Deliver(inbox, Slot::kRadialZonesCount, RingCount{ring, count});
}

void KORVUISD_CALL OnFeature(void* inbox, int32_t feature, int32_t supported) {
  Deliver(inbox, Slot::kFeatureSupport, Feature{feature, supported != 0});
}

}  // namespace

KorvuISD_Callbacks CallbacksIntoInbox() {
  KorvuISD_Callbacks callbacks{};
  callbacks.OnVersions = OnVersions;
  callbacks.OnPenInfo = OnPenInfo;
  callbacks.OnEraserSingle = OnButton<Slot::kEraserSingle>;
  callbacks.OnEraserDouble = OnButton<Slot::kEraserDouble>;
  callbacks.OnEraserLong = OnButton<Slot::kEraserLong>;
  callbacks.OnUpperSideSwitch = OnSideSwitch<Slot::kUpperSideSwitch>;
  callbacks.OnLowerSideSwitch = OnSideSwitch<Slot::kLowerSideSwitch>;
  callbacks.OnPressureCurve = OnValue<Slot::kPressureCurve>;
  callbacks.OnTiltSensitivity = OnValue<Slot::kTiltSensitivity>;
  callbacks.OnBatteryAlertDelay = OnValue<Slot::kBatteryAlertDelay>;
  callbacks.OnRadialWedge = OnButton<Slot::kRadialWedge>;
  callbacks.OnCenterRightClick = OnValue<Slot::kCenterRightClick>;
  callbacks.OnCapturedKeystrokes = OnKeystrokes;
  callbacks.OnDisplayZoomMap = OnZoomMap;
  callbacks.OnRunAppOptions = OnOptions<Slot::kRunAppOptions>;
  callbacks.OnTopButtonSingleOptions = OnOptions<Slot::kTopButtonSingleOptions>;
  callbacks.OnTopButtonDoubleOptions = OnOptions<Slot::kTopButtonDoubleOptions>;
  callbacks.OnTopButtonLongOptions = OnOptions<Slot::kTopButtonLongOptions>;
  callbacks.OnSideSwitchOptions = OnOptions<Slot::kSideSwitchOptions>;
  callbacks.OnFirstRange = OnRange<Slot::kFirstRange>;
  callbacks.OnSecondRange = OnRange<Slot::kSecondRange>;
  callbacks.OnRadialWedgeOptions = OnOptions<Slot::kRadialWedgeOptions>;
  callbacks.OnWedgeCapacity = OnCapacity;
  callbacks.OnOpaqueEnabledGlobal = OnValue<Slot::kOpaqueEnabledGlobal>;
  callbacks.OnOpaqueDisplayPath = OnDisplayPath;
  callbacks.OnOpaqueOrientation = OnValue<Slot::kOpaqueOrientation>;
  callbacks.OnOpaqueInputMode = OnValue<Slot::kOpaqueInputMode>;
  callbacks.OnOpaqueMapping = OnValue<Slot::kOpaqueMapping>;
  callbacks.OnMonitorOptions = OnMonitors;
  callbacks.OnRadialWedgeEx = OnWedge;
  callbacks.OnRadialZonesCount = OnRingCount;
  callbacks.OnAutoExecuteButton = OnButton<Slot::kAutoExecuteButton>;
  callbacks.OnAutoUndockOptions = OnOptions<Slot::kAutoUndockOptions>;
  callbacks.OnPenDockPowerSaving = OnValue<Slot::kPenDockPowerSaving>;
  callbacks.OnPenAlertEnabled = OnValue<Slot::kPenAlertEnabled>;
  callbacks.OnFeatureSupport = OnFeature;
  callbacks.OnOpaqueInSetupGuide = OnValue<Slot::kOpaqueInSetupGuide>;
  callbacks.OnOpaqueRememberDisplay = OnValue<Slot::kOpaqueRememberDisplay>;
  callbacks.OnUndockedTimerWait = OnValue<Slot::kUndockedTimerWait>;
  callbacks.OnPenGesturesEnabled = OnValue<Slot::kPenGesturesEnabled>;
  callbacks.OnMagnifierEnabled = OnValue<Slot::kMagnifierEnabled>;
  return callbacks;
}

}  // namespace tool::cli
