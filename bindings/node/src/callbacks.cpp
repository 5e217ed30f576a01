// Out of memory, a callback ends the process, as the script's engine does: an exception must not
// get into the library. Hence "noexcept" on all of them.

#include "callbacks.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "mailbox.h"

namespace korvu_node {
namespace {

template <size_t capacity>
std::wstring TextOf(const wchar_t (&array)[capacity]) {
  return {array, std::find(array, array + capacity, L'\0')};
}

void Post(uint32_t kind, void* context, std::vector<Field> fields) {
  TheMailbox().Post({kind, reinterpret_cast<uintptr_t>(context), std::move(fields)});
}

template <uint32_t kind, class... Numbers>
void KORVUISD_CALL OnNumbers(void* context, Numbers... numbers) noexcept {
  Post(kind, context, {static_cast<double>(numbers)...});
}

template <uint32_t kind>
void KORVUISD_CALL OnVersions(void* context, const VersionInfo* versions) noexcept {
  Post(kind, context, {TextOf(versions->hidRouterVersion), TextOf(versions->serviceVersion)});
}

template <uint32_t kind>
void KORVUISD_CALL OnPenInfo(void* context, const PenInfo* pen) noexcept {
  const KorvuISD_ModuleIdentity& module = pen->module;
  const auto number = [](auto value) { return static_cast<double>(value); };
  Post(kind, context,
       {TextOf(pen->serialNumber), TextOf(pen->penId), TextOf(module.version),
        TextOf(module.moduleId), number(module.productId), TextOf(module.serialNumber),
        number(pen->batteryStatus), number(pen->batteryCharging), number(pen->inProximity),
        number(pen->vendorId), number(pen->penType), TextOf(pen->firmwareVersion),
        number(pen->sensorId), number(pen->moduleConnected), number(pen->docked)});
}

template <uint32_t kind>
void KORVUISD_CALL OnButton(void* context, const ButtonRecord* button, int32_t) noexcept {
  Post(kind, context, {static_cast<double>(button->function), TextOf(button->name)});
}

template <uint32_t kind>
void KORVUISD_CALL OnWedge(void* context, int32_t, const ButtonRecord* wedge) noexcept {
  OnButton<kind>(context, wedge, 0);
}

template <uint32_t kind>
void KORVUISD_CALL OnSideSwitch(void* context, const KorvuISD_SideSwitch* sideSwitch,
                                int32_t) noexcept {
  Post(kind, context,
       {static_cast<double>(sideSwitch->button.function), TextOf(sideSwitch->button.name),
        static_cast<double>(sideSwitch->hoverClick)});
}

template <uint32_t kind>
void KORVUISD_CALL OnCountedText(void* context, const wchar_t* text, uint64_t codeUnits) noexcept {
  Post(kind, context, {std::wstring(text, static_cast<size_t>(codeUnits))});
}

template <uint32_t kind>
void KORVUISD_CALL OnText(void* context, const wchar_t* text) noexcept {
  Post(kind, context, {std::wstring(text)});
}

template <uint32_t kind>
void KORVUISD_CALL OnZoomMap(void* context, const KorvuISD_ZoomMapEntry* entries,
                             uint64_t count) noexcept {
  std::vector<Field> fields;
  std::for_each_n(entries, count, [&](const KorvuISD_ZoomMapEntry& entry) {
    for (const int32_t number : {entry.a, entry.b, entry.c, entry.d}) {
      fields.emplace_back(static_cast<double>(number));
    }
  });
  Post(kind, context, std::move(fields));
}

template <uint32_t kind>
void KORVUISD_CALL OnOptions(void* context, const ButtonRecord* options, uint64_t count) noexcept {
  std::vector<Field> fields;
  std::for_each_n(options, count, [&](const ButtonRecord& option) {
    fields.emplace_back(static_cast<double>(option.function));
    fields.emplace_back(TextOf(option.name));
  });
  Post(kind, context, std::move(fields));
}

template <uint32_t kind>
void KORVUISD_CALL OnMonitors(void* context, const KorvuISD_MonitorOption* monitors, uint64_t count,
                              int32_t selected) noexcept {
  std::vector<Field> fields{static_cast<double>(selected)};
  std::for_each_n(monitors, count, [&](const KorvuISD_MonitorOption& monitor) {
    fields.emplace_back(TextOf(monitor.displayPath));
    fields.emplace_back(TextOf(monitor.displayName));
  });
  Post(kind, context, std::move(fields));
}

}  // namespace

KorvuISD_Callbacks CallbacksIntoMailbox() {
  return {
      .OnVersions = OnVersions<0>,
      .OnPenInfo = OnPenInfo<1>,
      .OnEraserSingle = OnButton<2>,
      .OnEraserDouble = OnButton<3>,
      .OnEraserLong = OnButton<4>,
      .OnUpperSideSwitch = OnSideSwitch<5>,
      .OnLowerSideSwitch = OnSideSwitch<6>,
      .OnPressureCurve = OnNumbers<7>,
      .OnTiltSensitivity = OnNumbers<8>,
      .OnBatteryAlertDelay = OnNumbers<9>,
      .OnRadialWedge = OnButton<10>,
      .OnCenterRightClick = OnNumbers<11>,
      .OnCapturedKeystrokes = OnCountedText<12>,
      .OnDisplayZoomMap = OnZoomMap<13>,
      .OnRunAppOptions = OnOptions<14>,
      .OnTopButtonSingleOptions = OnOptions<15>,
      .OnTopButtonDoubleOptions = OnOptions<16>,
      .OnTopButtonLongOptions = OnOptions<17>,
      .OnSideSwitchOptions = OnOptions<18>,
      .OnFirstRange = OnNumbers<19>,
      .OnSecondRange = OnNumbers<20>,
      .OnRadialWedgeOptions = OnOptions<21>,
      .OnWedgeCapacity = OnNumbers<22>,
      .OnOpaqueEnabledGlobal = OnNumbers<23>,
      .OnOpaqueDisplayPath = OnText<24>,
      .OnOpaqueOrientation = OnNumbers<25>,
      .OnOpaqueInputMode = OnNumbers<26>,
      .OnOpaqueMapping = OnNumbers<27>,
      .OnMonitorOptions = OnMonitors<28>,
      .OnRadialWedgeEx = OnWedge<29>,
      .OnRadialZonesCount = OnNumbers<30>,
      .OnAutoExecuteButton = OnButton<31>,
      .OnAutoUndockOptions = OnOptions<32>,
      .OnPenDockPowerSaving = OnNumbers<33>,
      .OnPenAlertEnabled = OnNumbers<34>,
      .OnFeatureSupport = OnNumbers<35>,
      .OnOpaqueInSetupGuide = OnNumbers<36>,
      .OnOpaqueRememberDisplay = OnNumbers<37>,
      .OnUndockedTimerWait = OnNumbers<38>,
      .OnPenGesturesEnabled = OnNumbers<39>,
      .OnMagnifierEnabled = OnNumbers<40>,
  };
}

void KORVUISD_CALL OnManualReply(void* context, const wchar_t* text, size_t* partLengths,
                                 size_t) noexcept {
  Post(kManualReply, context,
       {std::wstring(text, partLengths[0]), std::wstring(text + partLengths[0], partLengths[1])});
}

}  // namespace korvu_node
