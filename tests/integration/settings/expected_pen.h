// A pen's record as a callback should show it, by the fields that are not at rest.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "integration/settings/settings_test.h"

namespace settings_test {

struct ExpectedPen {
  std::wstring serial{};
  std::wstring id{};
  std::wstring moduleVersion{};
  std::wstring moduleId{};
  uint16_t moduleProduct = 0;
  std::wstring moduleSerial{};
  int32_t battery = -1;
  uint8_t charging = 0;
  int32_t inProximity = 0;
  uint8_t vendor = 0;
  uint16_t type = 0;
  std::wstring firmware{};
  int32_t sensor = 0;
  int32_t moduleConnected = 0;
  int32_t docked = 0;
};

// A call of OnPenInfo with this pen.
inline Fired PenFired(const ExpectedPen& expected) {
  const auto copy = [](const std::wstring& text, wchar_t(&field)[KORVUISD_SHORT_TEXT_CAPACITY]) {
    text.copy(field, KORVUISD_SHORT_TEXT_CAPACITY - 1);
  };
  PenInfo pen{};
  copy(expected.serial, pen.serialNumber);
  copy(expected.id, pen.penId);
  copy(expected.moduleVersion, pen.module.version);
  copy(expected.moduleId, pen.module.moduleId);
  pen.module.productId = expected.moduleProduct;
  copy(expected.moduleSerial, pen.module.serialNumber);
  pen.batteryStatus = expected.battery;
  pen.batteryCharging = expected.charging;
  pen.inProximity = expected.inProximity;
  pen.vendorId = expected.vendor;
  pen.penType = expected.type;
  copy(expected.firmware, pen.firmwareVersion);
  pen.sensorId = expected.sensor;
  pen.moduleConnected = expected.moduleConnected;
  pen.docked = expected.docked;
  return {kOnPenInfo, arguments::Pen(pen)};
}

}  // namespace settings_test
