// Setting indices and callback slots by name. Of a button, the index is that of its function.
#pragma once

namespace settings_test {

enum Index : int {
  kServiceVersion = 0,
  kHidRouterVersion = 1,
  kTabletPenSerial = 2,
  kPenVendor = 3,
  kPenType = 4,
  kPenInProximity = 5,
  kPenSerial = 6,
  kPenId = 7,
  kModuleConnected = 8,
  kModuleVersion = 9,
  kModuleProduct = 10,
  kModuleSerial = 11,
  kModuleId = 12,
  kEraserSingle = 13,
  kEraserDouble = 17,
  kEraserLong = 21,
  kUpperSwitch = 25,
  kUpperHoverClick = 29,
  kLowerSwitch = 30,
  kLowerHoverClick = 34,
  kZonesCount = 35,
  kZonesCount2 = 36,
  kCenterRightClick = 37,
  kWedges = 46,  // sixteen, four indices apart
  kPenBattery = 110,
  kPenCharging = 111,
  kModuleBattery = 112,
  kModuleCharging = 113,
  kAlertDelay = 114,
  kTilt = 115,
  kPressureCurve = 116,
  kEntities = 117,
  kKeystrokes = 118,
  kRunAppOptions = 119,
  kTopSingleOptions = 120,
  kTopDoubleOptions = 121,
  kTopLongOptions = 122,
  kSideSwitchOptions = 123,
  kWedgeOptions = 124,
  kZoomMap = 125,
  kOpaqueSupported = 126,
  kOpaqueEnabled = 127,
  kOpaqueSetup = 128,
  kOpaqueRemember = 129,
  kMonitors = 131,
  kOrientation = 132,
  kInputMode = 133,
  kMapping = 134,
  kDisplayPath = 135,
  kFirmware = 136,
  kSensor = 137,
  kPenAlert = 139,
  kDockable = 140,
  kPowerSaving = 141,
  kAutoExecute = 142,
  kUndockOptions = 146,
  kUndockedWait = 147,
  kDocked = 148,
  kPenGestures = 149,
  kMagnifier = 150,
};

// The name of a button, from its function.
constexpr int NameOf(int function) {
  return function + 2;
}

// Wedges are counted from 0, clockwise from East, first ring first.
constexpr int WedgeFunction(int wedge) {
  return kWedges + 4 * wedge;
}
constexpr int WedgeName(int wedge) {
  return NameOf(WedgeFunction(wedge));
}

enum Slot : int {
  kOnVersions = 0,
  kOnPenInfo = 1,
  kOnEraserSingle = 2,
  kOnEraserDouble = 3,
  kOnEraserLong = 4,
  kOnUpperSwitch = 5,
  kOnLowerSwitch = 6,
  kOnPressureCurve = 7,
  kOnTilt = 8,
  kOnAlertDelay = 9,
  kOnWedge = 10,
  kOnCenterRightClick = 11,
  kOnKeystrokes = 12,
  kOnZoomMap = 13,
  kOnRunAppOptions = 14,
  kOnTopSingleOptions = 15,
  kOnTopDoubleOptions = 16,
  kOnTopLongOptions = 17,
  kOnSideSwitchOptions = 18,
  kOnFirstRange = 19,
  kOnSecondRange = 20,
  kOnWedgeOptions = 21,
  kOnWedgeCapacity = 22,
  kOnOpaqueEnabled = 23,
  kOnDisplayPath = 24,
  kOnOrientation = 25,
  kOnInputMode = 26,
  kOnMapping = 27,
  kOnMonitors = 28,
  kOnWedgeEx = 29,
  kOnZonesCount = 30,
  kOnAutoExecute = 31,
  kOnUndockOptions = 32,
  kOnPowerSaving = 33,
  kOnPenAlert = 34,
  kOnFeature = 35,
  kOnOpaqueSetup = 36,
  kOnOpaqueRemember = 37,
  kOnUndockedWait = 38,
  kOnPenGestures = 39,
  kOnMagnifier = 40,
};

}  // namespace settings_test
