#include "settings-cli/events.h"

#include <array>

namespace tool::cli {
namespace {

constexpr std::array<std::string_view, kSlotCount> kSlotNames{
    "OnVersions",
    "OnPenInfo",
    "OnEraserSingle",
    "OnEraserDouble",
    "OnEraserLong",
    "OnUpperSideSwitch",
    "OnLowerSideSwitch",
    "OnPressureCurve",
    "OnTiltSensitivity",
    "OnBatteryAlertDelay",
    "OnRadialWedge",
    "OnCenterRightClick",
    "OnCapturedKeystrokes",
    "OnDisplayZoomMap",
    "OnRunAppOptions",
    "OnTopButtonSingleOptions",
    "OnTopButtonDoubleOptions",
    "OnTopButtonLongOptions",
    "OnSideSwitchOptions",
    "OnFirstRange",
    "OnSecondRange",
    "OnRadialWedgeOptions",
    "OnWedgeCapacity",
    "OnOpaqueEnabledGlobal",
    "OnOpaqueDisplayPath",
    "OnOpaqueOrientation",
    "OnOpaqueInputMode",
    "OnOpaqueMapping",
    "OnMonitorOptions",
    "OnRadialWedgeEx",
    "OnRadialZonesCount",
    "OnAutoExecuteButton",
    "OnAutoUndockOptions",
    "OnPenDockPowerSaving",
    "OnPenAlertEnabled",
    "OnFeatureSupport",
    "OnOpaqueInSetupGuide",
    "OnOpaqueRememberDisplay",
    "OnUndockedTimerWait",
    "OnPenGesturesEnabled",
    "OnMagnifierEnabled",
};

}  // namespace

std::string_view SlotName(Slot slot) {
  return kSlotNames.at(static_cast<size_t>(slot));
}

bool IsSwitch(Slot slot) {
  switch (slot) {
    case Slot::kCenterRightClick:
    case Slot::kOpaqueEnabledGlobal:
    case Slot::kPenDockPowerSaving:
    case Slot::kPenAlertEnabled:
    case Slot::kOpaqueInSetupGuide:
    case Slot::kOpaqueRememberDisplay:
    case Slot::kPenGesturesEnabled:
    case Slot::kMagnifierEnabled:
      return true;
    default:
      return false;
  }
}

}  // namespace tool::cli
