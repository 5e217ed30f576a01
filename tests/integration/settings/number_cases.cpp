#include "integration/settings/key_cases.h"

namespace settings_test {
namespace {

Fired Number(int slot, int32_t value) {
  return {slot, arguments::Value(value)};
}

KeyCase Integer(int index, int slot) {
  return Script(index)
      .Silent(L"0")  // as it is at first
      .Fires(L"5", {Number(slot, 5)})
      .Silent(L"5")
      .Silent(L"")
      .Silent(L"5")  // the empty value has changed nothing
      .Unconvertible()
      .Silent(L"5")
      .Fires(L"-7", {Number(slot, -7)})
      .Fires(L"12abc", {Number(slot, 12)})
      .Silent(L" \t+12")
      .Fires(L"2147483647", {Number(slot, 2147483647)})
      .Fires(L"-2147483648", {Number(slot, -2147483647 - 1)})
      .Fires(L"0", {Number(slot, 0)});
}

KeyCase Flag(int index, int slot) {
  return Script(index)
      .Silent(L"0")
      .Fires(L"2", {Number(slot, 1)})
      .Silent(L"1")
      .Silent(L"-3")
      .Silent(L"")
      .Unconvertible()
      .Silent(L"1")
      .Fires(L"0", {Number(slot, 0)})
      .Silent(L"00")
      .Fires(L"256", {Number(slot, 1)});  // nonzero, though its low byte is zero
}

KeyCase HoverClick(int index, int slot) {
  const auto fired = [slot](int32_t hoverClick) {
    return Fired{slot, arguments::SideSwitch(0, L"", hoverClick)};
  };
  return Script(index)
      .Silent(L"0")
      .Fires(L"1", {fired(1)})
      .Silent(L"5")
      .Silent(L"")
      .Unconvertible()
      .Silent(L"1")
      .Fires(L"0", {fired(0)});
}

KeyCase ZonesCount(int index, int ring) {
  const auto fired = [ring](int count) {
    return Fired{kOnZonesCount, arguments::Pair(ring, count)};
  };
  return Script(index)
      .Silent(L"0")
      .Fires(L"6", {fired(6)})
      .Silent(L"6")
      .Silent(L"262")  // 8 bits are kept
      .Fires(L"261", {fired(5)})
      .Silent(L"")
      .Unconvertible()
      .Silent(L"5")
      .Fires(L"-1", {fired(255)})
      .Silent(L"65791")
      .Fires(L"65536", {fired(0)});
}

// Never compared; an empty value is a value.
KeyCase Feature(int index, int feature) {
  const auto fired = [feature](int flag) {
    return Fired{kOnFeature, arguments::Pair(feature, flag)};
  };
  return Script(index)
      .Fires(L"0", {fired(0)})
      .Fires(L"1", {fired(1)})
      .Fires(L"1", {fired(1)})
      .Unconvertible()
      .Fires(L"", {fired(0)})
      .Fires(L"", {fired(0)})
      .Fires(L"-4", {fired(1)});
}

}  // namespace

std::vector<KeyCase> NumberCases() {
  return {
      HoverClick(kUpperHoverClick, kOnUpperSwitch),
      HoverClick(kLowerHoverClick, kOnLowerSwitch),
      ZonesCount(kZonesCount, 0),
      ZonesCount(kZonesCount2, 1),
      Flag(kCenterRightClick, kOnCenterRightClick),
      Integer(kAlertDelay, kOnAlertDelay),
      Integer(kTilt, kOnTilt),
      Integer(kPressureCurve, kOnPressureCurve),
      Feature(kOpaqueSupported, 1),
      Flag(kOpaqueEnabled, kOnOpaqueEnabled),
      Flag(kOpaqueSetup, kOnOpaqueSetup),
      Flag(kOpaqueRemember, kOnOpaqueRemember),
      Flag(kPenAlert, kOnPenAlert),
      Feature(kDockable, 0),
      Flag(kPowerSaving, kOnPowerSaving),
      Integer(kUndockedWait, kOnUndockedWait),
      Flag(kPenGestures, kOnPenGestures),
      Flag(kMagnifier, kOnMagnifier),

      // The service's codes have an order of their own.
      Script(kOrientation)
          .Silent(L"103")  // stands for 0, as it is at first
          .Fires(L"102", {Number(kOnOrientation, 1)})
          .Silent(L"102")
          .Fires(L"103", {Number(kOnOrientation, 0)})
          .Fires(L"104", {Number(kOnOrientation, 3)})
          .Fires(L"105", {Number(kOnOrientation, 2)})
          .Silent(L"-1")
          .Silent(L"")
          .Unconvertible()
          .Silent(L"105")
          .Fires(L"101", {Number(kOnOrientation, -1)})
          .Silent(L"106")
          .Silent(L"0")
          .Silent(L"-1")
          .Silent(L"-2")
          .Fires(L"102", {Number(kOnOrientation, 1)}),
      Script(kInputMode)
          .Silent(L"0")
          .Fires(L"1", {Number(kOnInputMode, 1)})
          .Silent(L"1")
          .Silent(L"-1")
          .Silent(L"")
          .Unconvertible()
          .Silent(L"1")
          .Fires(L"2", {Number(kOnInputMode, -1)})
          .Silent(L"-2")
          .Fires(L"0", {Number(kOnInputMode, 0)}),
      Script(kMapping)
          .Silent(L"1")  // stands for 0
          .Fires(L"0", {Number(kOnMapping, 1)})
          .Silent(L"0")
          .Silent(L"-1")
          .Silent(L"")
          .Unconvertible()
          .Silent(L"0")
          .Fires(L"1", {Number(kOnMapping, 0)})
          .Fires(L"2", {Number(kOnMapping, -1)})
          .Silent(L"-2")
          .Fires(L"1", {Number(kOnMapping, 0)}),
  };
}

}  // namespace settings_test
