// Registrations, and values that call every slot of them.
#pragma once

#include <set>
#include <vector>

#include "integration/settings/settings_test.h"

namespace settings_test {

class Registration : public SettingsTest {
 protected:
  static Calls Greeting(void* context) {
    return {{kOnWedgeCapacity, context, arguments::Value(16)},
            {kOnFirstRange, context, arguments::Pair(0, 6)},
            {kOnSecondRange, context, arguments::Pair(-90, 90)}};
  }

  void RegisterOnly(void* context, const std::set<int>& slots) {
    KorvuISD_Callbacks callbacks = CallbackRecorder::All();
    for (int slot = 0; slot < support::kSlotCount; ++slot) {
      if (!slots.contains(slot)) CallbackRecorder::ClearSlot(callbacks, slot);
    }
    library.KorvuISD_RegisterCallbacks(&callbacks, context);
  }

  // Values of which each slot that values reach is called once, on a fresh connection. The old
  // callback for wedges takes an old API version. Returns what was called.
  Calls FireEverySlot() {
    library.KorvuISD_SetAPIVersion(1);
    Calls calls = Announced(WedgeName(0), L"old");
    library.KorvuISD_SetAPIVersion(9);
    const Calls later = AnnouncedAll({{kHidRouterVersion, L"1"},
                                      {kPenSerial, L"S1"},
                                      {kPenId, L"P1"},
                                      {kSensor, L"1"},
                                      {NameOf(kEraserSingle), L"a"},
                                      {NameOf(kEraserDouble), L"a"},
                                      {NameOf(kEraserLong), L"a"},
                                      {NameOf(kUpperSwitch), L"a"},
                                      {NameOf(kLowerSwitch), L"a"},
                                      {kPressureCurve, L"1"},
                                      {kTilt, L"1"},
                                      {kAlertDelay, L"1"},
                                      {kCenterRightClick, L"1"},
                                      {kKeystrokes, L"a"},
                                      {kZoomMap, L"{ 1, 2, 3, 4 }"},
                                      {kRunAppOptions, L""},
                                      {kTopSingleOptions, L""},
                                      {kTopDoubleOptions, L""},
                                      {kTopLongOptions, L""},
                                      {kSideSwitchOptions, L""},
                                      {kWedgeOptions, L""},
                                      {kOpaqueEnabled, L"1"},
                                      {kDisplayPath, L"a"},
                                      {kOrientation, L"102"},
                                      {kInputMode, L"1"},
                                      {kMapping, L"0"},
                                      {kMonitors, L""},
                                      {WedgeName(0), L"new"},
                                      {kZonesCount, L"1"},
                                      {NameOf(kAutoExecute), L"a"},
                                      {kUndockOptions, L""},
                                      {kPowerSaving, L"1"},
                                      {kPenAlert, L"1"},
                                      {kDockable, L"1"},
                                      {kOpaqueSetup, L"1"},
                                      {kOpaqueRemember, L"1"},
                                      {kUndockedWait, L"1"},
                                      {kPenGestures, L"1"},
                                      {kMagnifier, L"1"}});
    calls.insert(calls.end(), later.begin(), later.end());
    return calls;
  }

  static std::set<int> SlotsOf(const Calls& calls) {
    std::set<int> slots;
    for (const Call& call : calls) slots.insert(call.slot);
    return slots;
  }

  // From `first` to before `end`, but for those that only registration calls.
  static std::set<int> ValueSlots(int first, int end) {
    std::set<int> slots;
    for (int slot = first; slot < end; ++slot) slots.insert(slot);
    for (const int slot : {kOnFirstRange, kOnSecondRange, kOnWedgeCapacity}) slots.erase(slot);
    return slots;
  }
};

}  // namespace settings_test
